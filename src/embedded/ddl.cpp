// Definitions: tables, columns, keys.

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "embedded/session_impl.h"

namespace embedded {

using tsql::ColumnDef;
using tsql::KeyDef;
using tsql::quoteName;
using tsql::SqlError;
using tsql::TableDef;
using tsql::TypeKind;

namespace {

// Storage names of # tables that a procedure made begin so; its nesting level follows.
constexpr std::string_view scopeMark = "_ts_scope";

// The nesting level of the procedure that made a # table; 0 for one of the batch itself.
int scopeOf(const std::string& storageName) {
  return storageName.starts_with(scopeMark) ? std::atoi(storageName.c_str() + scopeMark.size()) : 0;
}

const char* storageClass(const tsql::SqlType& t) {
  if (tsql::isText(t.kind)) return "TEXT COLLATE TQ";
  if (tsql::isApproximate(t.kind)) return "REAL";
  if (tsql::isBinary(t.kind)) return "BLOB";
  if (t.kind == TypeKind::uniqueidentifier) return "TEXT";
  return "INTEGER";
}

// An identity column is a whole number that takes no Null.
void checkIdentity(const tsql::ast::ColumnDefinition& d, const tsql::SqlType& type, const std::string& table) {
  const bool whole = (tsql::isExactInteger(type.kind) && type.kind != TypeKind::bit) ||
                     (type.kind == TypeKind::decimal && type.scale == 0);
  if (!whole)
    throw SqlError(2749,
                   "Identity column '" + d.name +
                       "' must be of data type int, bigint, smallint, tinyint, or decimal or numeric with a scale of "
                       "0, and constrained to be nonnullable.",
                   d.pos);
  if (d.nullable.value_or(false))
    throw SqlError(
        8147, "Could not create IDENTITY attribute on nullable column '" + d.name + "', table '" + table + "'.", d.pos);
  if (d.defaultValue)
    throw SqlError(1754,
                   "Defaults cannot be created on columns with an IDENTITY attribute. Table '" + table + "', column '" +
                       d.name + "'.",
                   d.pos);
  if (d.identity->increment == 0)
    throw SqlError(2753, "Identity column '" + d.name + "' contains invalid INCREMENT.", d.pos);
}

bool isConstant(const tsql::ast::Expr& e) {
  using tsql::ast::ExprKind;
  if (e.kind == ExprKind::literal || e.kind == ExprKind::null) return true;
  return e.kind == ExprKind::unary && isConstant(*static_cast<const tsql::ast::Unary&>(e).operand);
}

// The key's columns as SQLite's index has them. A unique key takes one Null like any other value, which SQLite's does
// not: columns that may be Null stand in it as an expression that is never Null.
std::string keyColumns(const TableDef& t, const KeyDef& k, bool nullAsValue) {
  std::string s;
  for (const auto& p : k.parts) {
    const auto& c = t.columns[static_cast<std::size_t>(p.column)];
    if (!s.empty()) s += ",";
    const std::string name = quoteName(c.name);
    if (nullAsValue && c.nullable)
      s += "ifnull(" + name + ",x'00')" + (tsql::isText(c.type.kind) ? " COLLATE TQ" : "");
    else
      s += name;
    if (p.descending) s += " DESC";
  }
  return s;
}

[[noreturn]] void nameTaken(const std::string& name, tsql::SourcePos pos) {
  throw SqlError(2714, "There is already an object named '" + name + "' in the database.", pos);
}

// column: its position in the table, negative when it is none of it.
void addPart(KeyDef& k, int column, const tsql::ast::KeyColumn& c) {
  if (column < 0)
    throw SqlError(1911, "Column name '" + c.name + "' does not exist in the target table or view.", c.pos);
  if (std::any_of(k.parts.begin(), k.parts.end(), [&](const auto& p) { return p.column == column; }))
    throw SqlError(
        1909, "Cannot use duplicate column names in index. Column name '" + c.name + "' listed more than once.", c.pos);
  k.parts.push_back({column, c.descending});
}

bool mayBeNull(const TableDef& t, const KeyDef& k) {
  return std::any_of(k.parts.begin(), k.parts.end(),
                     [&](const auto& p) { return t.columns[static_cast<std::size_t>(p.column)].nullable; });
}

}  // namespace

void Session::Impl::noSuchTable(const tsql::ast::Name& n, int number) {
  throw SqlError(
      number, "Cannot find the object \"" + n.last() + "\" because it does not exist or you do not have permissions.",
      n.pos);
}

tsql::SqlType Session::Impl::columnType(const tsql::ast::ColumnDefinition& d, std::size_t position) {
  constexpr int mostDigits = 38;
  std::optional<tsql::SqlType> type;
  try {
    type = tsql::typeByName(d.type.name, d.type.first, d.type.second, d.type.max, 1);
  } catch (const SqlError& e) {
    const int size = d.type.first.value_or(0);
    if (e.number == 131 && size > 8000)
      throw SqlError(131,
                     "The size (" + std::to_string(size) + ") given to the column '" + d.name +
                         "' exceeds the maximum allowed for any data type (8000).",
                     d.type.pos, 15);
    if (e.number == 1001 && size > mostDigits &&
        tsql::typeByName(d.type.name, {}, {}, false, 1)->kind == TypeKind::decimal)
      throw SqlError(2750,
                     "Column or parameter #" + std::to_string(position) + ": Specified column precision " +
                         std::to_string(size) + " is greater than the maximum precision of 38.",
                     d.type.pos);
    throw SqlError(e.number, e.what(), d.type.pos, e.severity);
  }
  if (!type)
    throw SqlError(
        2715,
        "Column, parameter, or variable #" + std::to_string(position) + ": Cannot find data type " + d.type.name + ".",
        d.type.pos);
  return *type;
}

ColumnDef Session::Impl::columnOf(const tsql::ast::ColumnDefinition& d, const std::string& tableName,
                                  std::size_t position) {
  ColumnDef c;
  c.name = d.name;
  if (d.computed) {
    c.computedText = d.computedText;
    return c;
  }
  c.type = columnType(d, position);
  if (d.identity) checkIdentity(d, c.type, tableName);
  c.identity = d.identity;
  c.rowGuid = d.rowGuid;
  c.nullable = d.nullable.value_or(true);
  for (const auto& k : d.constraints)
    if (k.kind == tsql::ast::TableConstraint::Kind::primaryKey) c.nullable = false;
  if (c.identity) c.nullable = false;
  c.defaultText = d.defaultText;
  c.defaultName = d.defaultName;
  if (!c.defaultText.empty()) c.defaultInTable = isConstantDefault(c.defaultText, c.type, d.pos);
  return c;
}

// Whether a column's default is the same for every row. One that cannot be stored, or is no value of its own, fails.
bool Session::Impl::isConstantDefault(const std::string& text, const tsql::SqlType& type, tsql::SourcePos pos) {
  const auto tokens = tsql::lex(text);
  const auto tree = tsql::parseExpression(tokens);
  try {
    scalar(*tree, tokens, type, nullptr);
  } catch (const SqlError& e) {
    constexpr int noSuchColumn = 207, notBound = 4104;
    if (e.number != noSuchColumn && e.number != notBound) throw SqlError(e.number, e.what(), pos, e.severity);
    const auto word = std::find_if(tokens.tokens.begin(), tokens.tokens.end() - 1,
                                   [&](const tsql::Token& x) { return x.pos.offset == e.pos.offset; });
    throw SqlError(128,
                   "The name \"" + word->text +
                       "\" is not permitted in this context. Valid expressions are constants, constant expressions, "
                       "and (in some contexts) variables. Column names are not permitted.",
                   pos, 15);
  }
  return isConstant(*tree);
}

std::string Session::Impl::columnSql(const ColumnDef& c, const TableDef& t) {
  std::string s = quoteName(c.name) + " ";
  if (!c.computedText.empty()) {
    const auto tokens = tsql::lex(c.computedText);
    const auto bound = tsql::bindTableExpression(*tsql::parseExpression(tokens), tokens, t, *this, false);
    return s + storageClass(bound.select->items[0].expr->type) + " GENERATED ALWAYS AS (" +
           tsql::emitDefinition(*bound.select->items[0].expr, bound.slots) + ") VIRTUAL";
  }
  if (c.identity) return s + "INTEGER PRIMARY KEY";
  s += storageClass(c.type);
  if (!c.nullable) s += " NOT NULL";
  if (c.defaultInTable) {
    const auto tokens = tsql::lex(c.defaultText);
    s += " DEFAULT " + tsql::sqliteLiteral(scalar(*tsql::parseExpression(tokens), tokens, c.type, nullptr));
  }
  return s;
}

// A procedure's # table stands beside its caller's, and hides it.
std::string Session::Impl::storageNameOf(const ObjectPlace& p) const {
  return p.temporary && nesting > 0 ? std::string(scopeMark) + std::to_string(nesting) + ":" + p.object : p.object;
}

bool Session::Impl::isTaken(const ObjectPlace& p) {
  const DatabaseCatalog* catalog = p.temporary ? temporary.get() : catalogOf(p.database);
  const auto it = catalog->tables.find(p.object);
  if (it != catalog->tables.end()) return !p.temporary || scopeOf(it->second->storageName) == nesting;
  return catalog->procedures.contains(p.object);
}

void Session::Impl::makeTable(TableDef t, const ObjectPlace& p, const std::function<void()>& fill) {
  t.database = p.database;
  t.schemaName = p.schemaName;
  if (t.storageName.empty()) t.storageName = storageNameOf(p);
  t.storage = quoteName(p.schemaName) + "." + quoteName(t.storageName);
  t.temporary = p.temporary;
  for (auto& c : t.columns) {
    if (c.computedText.empty()) continue;
    const auto tokens = tsql::lex(c.computedText);
    c.type =
        tsql::bindTableExpression(*tsql::parseExpression(tokens), tokens, t, *this, false).select->items[0].expr->type;
  }
  std::string sql = "CREATE TABLE " + t.storage + "(";
  for (std::size_t i = 0; i < t.columns.size(); ++i) sql += (i ? "," : "") + columnSql(t.columns[i], t);
  for (const auto& k : t.checks) {
    const auto tokens = tsql::lex(k.text);
    tsql::BoundStatement bound = [&] {
      // A check's text is a condition: it is parsed as the where clause of a selection.
      const auto where = tsql::lex("select 1 where " + k.text);
      const auto tree = tsql::parse(where);
      const auto& select = *static_cast<const tsql::ast::SelectStatement&>(*tree.statements.at(0)).select;
      return tsql::bindTableExpression(*select.where, where, t, *this, true);
    }();
    sql += ",CONSTRAINT " + quoteName(k.name) + " CHECK(" +
           tsql::emitDefinition(*bound.select->items[0].expr, bound.slots) + ")";
  }
  run(db.get(), sql + ")");
  auto keys = std::exchange(t.keys, {});
  t.id = storeTable(db.get(), p.schemaName, t);
  reloadCatalog(p.schemaName);
  if (fill) fill();
  for (auto& k : keys) {
    makeKey(t, k);
    storeKey(db.get(), p.schemaName, t.id, k);
  }
  if (!keys.empty()) reloadCatalog(p.schemaName);
}

void Session::Impl::makeKey(const TableDef& t, KeyDef& k) {
  if (k.unique && k.parts.size() == 1 && t.columns[static_cast<std::size_t>(k.parts[0].column)].identity) {
    k.storageName.clear();  // the row number is the key
    return;
  }
  k.storageName = t.storageName + ":" + k.name;
  const bool nullAsValue = k.unique && mayBeNull(t, k);
  try {
    run(db.get(), std::string("CREATE ") + (k.unique ? "UNIQUE " : "") + "INDEX " + quoteName(t.schemaName) + "." +
                      quoteName(k.storageName) + " ON " + quoteName(t.storageName) + "(" +
                      keyColumns(t, k, nullAsValue) + ")");
    if (nullAsValue)
      run(db.get(), "CREATE INDEX " + quoteName(t.schemaName) + "." + quoteName(k.storageName + ":plain") + " ON " +
                        quoteName(t.storageName) + "(" + keyColumns(t, k, false) + ")");
  } catch (const SqliteFailure& f) {
    if (f.primary() != SQLITE_CONSTRAINT) throw;
    throw SqlError(
        1505,
        "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the object name 'dbo." +
            t.name + "' and the index name '" + k.name + "'. The duplicate key value is (" + duplicateOf(t, k) + ").");
  }
}

// The first values that several rows have in the key's columns.
std::string Session::Impl::duplicateOf(const TableDef& t, const KeyDef& k) {
  std::string columns;
  for (const auto& p : k.parts)
    columns += (columns.empty() ? "" : ",") + quoteName(t.columns[static_cast<std::size_t>(p.column)].name);
  PreparedStatement s(db.get(), "SELECT " + columns + " FROM " + t.storage + " GROUP BY " + columns +
                                    " HAVING count(*)>1 ORDER BY " + columns + " LIMIT 1");
  std::string values;
  if (!s.step()) return values;
  for (std::size_t i = 0; i < k.parts.size(); ++i) {
    const auto& type = t.columns[static_cast<std::size_t>(k.parts[i].column)].type;
    const auto text = tsql::convert(s.column(static_cast<int>(i)), type, tsql::typeOf(TypeKind::nvarchar, 4000));
    values += (i ? ", " : "") + (text.index() == 3 ? std::get<std::string>(text) : std::string("<NULL>"));
  }
  return values;
}

// A constraint's name is taken when a table of the database has one of it; a # table's are its own affair.
void Session::Impl::requireFreeName(const TableDef& t, const std::string& name, tsql::SourcePos pos) {
  if (name.empty()) return;
  const auto has = [&](const TableDef& x) {
    return std::any_of(x.keys.begin(), x.keys.end(),
                       [&](const KeyDef& k) { return k.constraint && tsql::sameName(k.name, name); }) ||
           std::any_of(x.checks.begin(), x.checks.end(), [&](const auto& k) { return tsql::sameName(k.name, name); }) ||
           std::any_of(x.columns.begin(), x.columns.end(),
                       [&](const ColumnDef& k) { return tsql::sameName(k.defaultName, name); });
  };
  if (has(t)) nameTaken(name, pos);
  const DatabaseCatalog* catalog = t.name.starts_with("#") ? nullptr : catalogOf(t.database);
  if (catalog && std::any_of(catalog->tables.begin(), catalog->tables.end(),
                             [&](const auto& entry) { return has(*entry.second); }))
    nameTaken(name, pos);
}

void Session::Impl::addConstraint(TableDef& t, const tsql::ast::TableConstraint& c, std::vector<KeyDef>& keys,
                                  std::vector<tsql::CheckDef>& checks) {
  const auto named = [&](const auto& x) { return !c.name.empty() && tsql::sameName(x.name, c.name); };
  if (std::any_of(keys.begin(), keys.end(), named) || std::any_of(checks.begin(), checks.end(), named))
    nameTaken(c.name, c.pos);
  requireFreeName(t, c.name, c.pos);
  using Kind = tsql::ast::TableConstraint::Kind;
  const std::string number = std::to_string(t.keys.size() + keys.size() + t.checks.size() + checks.size() + 1);
  switch (c.kind) {
    case Kind::primaryKey:
    case Kind::unique: {
      KeyDef k;
      k.unique = k.constraint = true;
      k.primary = c.kind == Kind::primaryKey;
      k.name = !c.name.empty() ? c.name : (k.primary ? "PK__" : "UQ__") + t.name + "__" + number;
      for (const auto& part : c.columns) {
        const int n = t.find(part.name);
        addPart(k, n, part);
      }
      keys.push_back(std::move(k));
      break;
    }
    case Kind::check:
      checks.push_back({!c.name.empty() ? c.name : "CK__" + t.name + "__" + number, c.text});
      break;
    case Kind::default_: {
      const int n = t.find(c.columns.at(0).name);
      if (n < 0)
        throw SqlError(1752,
                       "Column '" + c.columns[0].name + "' in table '" + t.name +
                           "' is invalid for creating a default constraint.",
                       c.pos);
      auto& column = t.columns[static_cast<std::size_t>(n)];
      isConstantDefault(c.text, column.type, c.pos);
      column.defaultText = c.text;
      column.defaultName = c.name;
      column.defaultInTable = false;
      break;
    }
    case Kind::foreignKey:
      throwUnsupported("a foreign key", c.pos);
  }
}

void Session::Impl::createTable(const tsql::ast::CreateTable& s) {
  refreshCatalogs();
  const ObjectPlace p = place(s.name);
  if (!p.known) noSuchPlace(s.name);
  if (p.temporary) needTemporary();
  if (isTaken(p)) nameTaken(p.object, s.name.pos);
  TableDef t;
  t.name = p.object;
  t.database = p.database;
  int identities = 0;
  std::vector<tsql::ast::TableConstraint const*> constraints;
  for (const auto& d : s.columns) {
    if (t.find(d.name) >= 0)
      throw SqlError(2705,
                     "Column names in each table must be unique. Column name '" + d.name + "' in table '" + t.name +
                         "' is specified more than once.",
                     d.pos);
    requireFreeName(t, d.defaultName, d.pos);
    t.columns.push_back(columnOf(d, t.name, t.columns.size() + 1));
    if (t.columns.back().identity && ++identities > 1)
      throw SqlError(2744,
                     "Multiple identity columns specified for table '" + t.name +
                         "'. Only one identity column per table is allowed.",
                     d.pos);
    for (const auto& c : d.constraints) constraints.push_back(&c);
  }
  for (const auto& c : s.constraints) constraints.push_back(&c);
  bool hasPrimaryKey = false;
  for (const auto* c : constraints) {
    if (c->kind != tsql::ast::TableConstraint::Kind::primaryKey) continue;
    if (std::exchange(hasPrimaryKey, true))
      throw SqlError(8110, "Cannot add multiple PRIMARY KEY constraints to table '" + t.name + "'.", c->pos);
    for (const auto& part : c->columns) {
      const int n = t.find(part.name);
      if (n < 0) continue;  // addConstraint says so
      if (s.columns[static_cast<std::size_t>(n)].nullable.value_or(false))
        throw SqlError(8111, "Cannot define PRIMARY KEY constraint on nullable column in table '" + t.name + "'.",
                       c->pos);
      t.columns[static_cast<std::size_t>(n)].nullable = false;
    }
  }
  for (const auto* c : constraints) addConstraint(t, *c, t.keys, t.checks);
  check([&] { atomically([&] { makeTable(t, p); }); });
  rowCount = 0;
}

void Session::Impl::dropTable(const tsql::ast::DropTable& s) {
  refreshCatalogs();
  drainStreams();  // SQLite drops no table beside an open read
  for (const auto& n : s.names) {
    const TableDef* t = table(n);
    if (!t || t->system)
      throw SqlError(
          3701, "Cannot drop the table '" + n.last() + "', because it does not exist or you do not have permission.",
          n.pos, 11);
    dropFound(*t);
  }
  rowCount = 0;
}

void Session::Impl::dropFound(const TableDef& t) {
  const std::string schema = t.schemaName, storage = t.storage;
  const std::int64_t id = t.id;
  restartIdentity(t);
  check([&] {
    atomically([&] {
      dropObject(db.get(), schema, id);
      run(db.get(), "DROP TABLE " + storage);
    });
  });
  reloadCatalog(schema);
}

void Session::Impl::dropTablesOfEnded() {
  const auto ended = [&]() -> const TableDef* {
    if (temporary)
      for (const auto& [name, t] : temporary->tables)
        if (scopeOf(t->storageName) > nesting) return t.get();
    return nullptr;
  };
  if (!ended()) return;
  drainStreams();
  while (const TableDef* t = ended()) dropFound(*t);
}

void Session::Impl::truncate(const tsql::ast::Truncate& s, Running& r) {
  refreshCatalogs();
  const TableDef* t = table(s.target);
  if (!t || t->system) noSuchTable(s.target, 4701);
  check([&] {
    atomically([&] {
      run(db.get(), "DELETE FROM " + t->storage);
      run(db.get(),
          "DELETE FROM " + quoteName(t->schemaName) + "._ts_identity WHERE table_id=" + std::to_string(t->id));
      restartIdentity(*t);
    });
  });
  affected(0, r);
}

void Session::Impl::createIndex(const tsql::ast::CreateIndex& s) {
  refreshCatalogs();
  const TableDef* t = table(s.table);
  if (!t || t->system)
    throw SqlError(
        1088,
        "Cannot find the object \"" + s.table.last() + "\" because it does not exist or you do not have permissions.",
        s.pos);
  for (const auto& k : t->keys)
    if (tsql::sameName(k.name, s.index))
      throw SqlError(1913,
                     "The operation failed because an index or statistics with name '" + s.index +
                         "' already exists on table '" + t->name + "'.",
                     s.pos);
  KeyDef k;
  k.name = s.index;
  k.unique = s.unique;
  for (const auto& c : s.columns) {
    const int n = t->find(c.name);
    addPart(k, n, c);
  }
  const std::string schema = t->schemaName;
  check([&] {
    atomically([&] {
      makeKey(*t, k);
      storeKey(db.get(), schema, t->id, k);
    });
  });
  reloadCatalog(schema);
}

void Session::Impl::dropIndex(const tsql::ast::DropIndex& s) {
  refreshCatalogs();
  for (auto n : s.names) {
    const std::string index = n.last();
    n.parts.pop_back();
    const TableDef* t = table(n);
    const KeyDef* k = nullptr;
    if (t)
      for (const auto& x : t->keys)
        if (!x.constraint && tsql::sameName(x.name, index)) k = &x;
    if (!k)
      throw SqlError(3701,
                     "Cannot drop the index '" + n.last() + "." + index +
                         "', because it does not exist or you do not have permission.",
                     n.pos, 11);
    const std::string schema = t->schemaName;
    check([&] {
      atomically([&] {
        if (!k->storageName.empty()) {
          run(db.get(), "DROP INDEX " + quoteName(schema) + "." + quoteName(k->storageName));
          run(db.get(), "DROP INDEX IF EXISTS " + quoteName(schema) + "." + quoteName(k->storageName + ":plain"));
        }
        dropKey(db.get(), schema, t->id, index);
      });
    });
    reloadCatalog(schema);
  }
}

}  // namespace embedded
