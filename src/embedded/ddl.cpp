// Definitions: tables, columns, keys.

#include <algorithm>
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

const char* storageClass(const tsql::SqlType& t) {
  if (tsql::isText(t.kind)) return "TEXT COLLATE TQ";
  if (tsql::isApproximate(t.kind)) return "REAL";
  if (tsql::isBinary(t.kind)) return "BLOB";
  if (t.kind == TypeKind::uniqueidentifier) return "TEXT";
  return "INTEGER";
}

[[noreturn]] void noSuchTable(const tsql::ast::Name& n, int number = 4902) {
  throw SqlError(
      number, "Cannot find the object \"" + n.last() + "\" because it does not exist or you do not have permissions.",
      n.pos);
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

bool mayBeNull(const TableDef& t, const KeyDef& k) {
  return std::any_of(k.parts.begin(), k.parts.end(),
                     [&](const auto& p) { return t.columns[static_cast<std::size_t>(p.column)].nullable; });
}

}  // namespace

ColumnDef Session::Impl::columnOf(const tsql::ast::ColumnDefinition& d, const std::string& tableName,
                                  std::size_t position) {
  ColumnDef c;
  c.name = d.name;
  if (d.computed) {
    c.computedText = d.computedText;
    return c;
  }
  const auto type = tsql::typeByName(d.type.name, d.type.first, d.type.second, d.type.max, 1);
  if (!type)
    throw SqlError(
        2715,
        "Column, parameter, or variable #" + std::to_string(position) + ": Cannot find data type " + d.type.name + ".",
        d.type.pos);
  c.type = *type;
  if (d.identity) checkIdentity(d, c.type, tableName);
  c.identity = d.identity;
  c.rowGuid = d.rowGuid;
  c.nullable = d.nullable.value_or(true);
  for (const auto& k : d.constraints)
    if (k.kind == tsql::ast::TableConstraint::Kind::primaryKey) c.nullable = false;
  if (c.identity) c.nullable = false;
  c.defaultText = d.defaultText;
  c.defaultName = d.defaultName;
  if (!c.defaultText.empty()) {
    const auto tokens = tsql::lex(c.defaultText);
    c.defaultInTable = isConstant(*tsql::parseExpression(tokens));
    scalar(*tsql::parseExpression(tokens), tokens, c.type, nullptr);  // a default that cannot be stored fails here
  }
  return c;
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

void Session::Impl::makeTable(TableDef t, const ObjectPlace& p) {
  t.database = p.database;
  t.schemaName = p.schemaName;
  t.storageName = t.name;
  t.storage = quoteName(p.schemaName) + "." + quoteName(t.name);
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
  t.id = storeTable(db.get(), p.schemaName, t);
  reloadCatalog(p.schemaName);
  for (auto& k : t.keys) makeKey(t, k);
  if (!t.keys.empty()) {
    run(db.get(), "DELETE FROM " + quoteName(p.schemaName) + "._ts_keys WHERE table_id=" + std::to_string(t.id));
    for (const auto& k : t.keys) storeKey(db.get(), p.schemaName, t.id, k);
    reloadCatalog(p.schemaName);
  }
}

void Session::Impl::makeKey(const TableDef& t, KeyDef& k) {
  if (k.unique && k.parts.size() == 1 && t.columns[static_cast<std::size_t>(k.parts[0].column)].identity) {
    k.storageName.clear();  // the row number is the key
    return;
  }
  k.storageName = t.name + ":" + k.name;
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
    throw SqlError(1505, "CREATE UNIQUE INDEX terminated because a duplicate key was found for the object name 'dbo." +
                             t.name + "' and the index name '" + k.name + "'.");
  }
}

void Session::Impl::addConstraint(TableDef& t, const tsql::ast::TableConstraint& c, std::vector<KeyDef>& keys,
                                  std::vector<tsql::CheckDef>& checks) {
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
        if (n < 0)
          throw SqlError(1911, "Column name '" + part.name + "' does not exist in the target table or view.", part.pos);
        k.parts.push_back({n, part.descending});
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
  const DatabaseCatalog* catalog = p.temporary ? temporary.get() : catalogOf(p.database);
  if (catalog->tables.contains(p.object) || catalog->procedures.contains(p.object))
    throw SqlError(2714, "There is already an object named '" + p.object + "' in the database.", s.name.pos);
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

void Session::Impl::alterTable(const tsql::ast::AlterTable& s) {
  using Action = tsql::ast::AlterTable::Action;
  refreshCatalogs();
  const auto keep = currentCatalogs();
  drainStreams();
  const TableDef* old = table(s.name);
  if (!old) noSuchTable(s.name);
  const ObjectPlace p = place(s.name);
  TableDef t = *old;
  // What the rows of the old table give for each column of the new one.
  std::vector<std::string> from;
  for (const auto& c : t.columns) from.push_back(quoteName(c.name));
  std::vector<KeyDef> keys;
  std::vector<tsql::CheckDef> checks;
  bool empty = false;
  check([&] {
    PreparedStatement any(db.get(), "SELECT 1 FROM " + old->storage + " LIMIT 1");
    empty = !any.step();
  });

  switch (s.action) {
    case Action::add:
      for (const auto& d : s.columns) {
        if (t.find(d.name) >= 0)
          throw SqlError(2705,
                         "Column names in each table must be unique. Column name '" + d.name + "' in table '" + t.name +
                             "' is specified more than once.",
                         d.pos);
        ColumnDef c = columnOf(d, t.name, t.columns.size() - old->columns.size() + 1);
        if (!c.nullable && c.defaultText.empty() && !c.identity && c.computedText.empty() && !empty)
          throw SqlError(
              4901,
              "ALTER TABLE only allows columns to be added that can contain nulls, or have a DEFAULT definition "
              "specified, or the column being added is an identity or timestamp column. Column '" +
                  c.name + "' cannot be added to non-empty table '" + t.name +
                  "' because it does not satisfy these conditions.",
              d.pos);
        std::string value = "NULL";
        if (!c.defaultText.empty()) {
          const auto tokens = tsql::lex(c.defaultText);
          value = tsql::sqliteLiteral(scalar(*tsql::parseExpression(tokens), tokens, c.type, nullptr));
        }
        if (c.identity && old->identityColumn() >= 0)
          throw SqlError(2744,
                         "Multiple identity columns specified for table '" + t.name +
                             "'. Only one identity column per table is allowed.",
                         d.pos);
        if (c.identity)  // the rows that are there are numbered
          value = std::to_string(c.identity->seed) + "+" + std::to_string(c.identity->increment) +
                  "*(row_number() OVER (ORDER BY " + old->rowNumber + ")-1)";
        t.columns.push_back(std::move(c));
        from.push_back(value);
        for (const auto& k : d.constraints) addConstraint(t, k, keys, checks);
      }
      for (const auto& c : s.constraints) {
        const bool primary = c.kind == tsql::ast::TableConstraint::Kind::primaryKey;
        if (primary && std::any_of(t.keys.begin(), t.keys.end(), [](const KeyDef& k) { return k.primary; }))
          throw SqlError(1779, "Table '" + t.name + "' already has a primary key defined on it.", c.pos);
        if (primary)
          for (const auto& part : c.columns)
            if (const int n = t.find(part.name); n >= 0 && t.columns[static_cast<std::size_t>(n)].nullable)
              throw SqlError(8111, "Cannot define PRIMARY KEY constraint on nullable column in table '" + t.name + "'.",
                             c.pos);
        addConstraint(t, c, keys, checks);
      }
      break;
    case Action::dropColumns:
      for (const auto& [name, pos] : s.names) {
        const int n = t.find(name);
        if (n < 0)
          throw SqlError(
              4924,
              "ALTER TABLE DROP COLUMN failed because column '" + name + "' does not exist in table '" + t.name + "'.",
              pos);
        for (auto& k : t.keys)
          for (auto& part : k.parts) {
            if (part.column == n)
              throw SqlError(5074, "The object '" + k.name + "' is dependent on column '" + name + "'.", pos);
            if (part.column > n) --part.column;
          }
        t.columns.erase(t.columns.begin() + n);
        from.erase(from.begin() + n);
      }
      break;
    case Action::alterColumn: {
      const auto& d = s.columns.at(0);
      const int n = t.find(d.name);
      if (n < 0)
        throw SqlError(
            4924,
            "ALTER TABLE ALTER COLUMN failed because column '" + d.name + "' does not exist in table '" + t.name + "'.",
            d.pos);
      auto& c = t.columns[static_cast<std::size_t>(n)];
      const ColumnDef changed = columnOf(d, t.name, 1);
      from[static_cast<std::size_t>(n)] = "ts_store(" + quoteName(c.name) + "," + std::to_string(c.type.pack()) + "," +
                                          std::to_string(changed.type.pack()) + ")";
      c.type = changed.type;
      c.nullable = changed.nullable;
      break;
    }
    case Action::dropConstraints:
      for (const auto& [name, pos] : s.names) {
        const auto same = [&n = name](const auto& x) { return tsql::sameName(x.name, n); };
        bool found = std::erase_if(t.keys, same) > 0;
        found = std::erase_if(t.checks, same) > 0 || found;
        for (auto& c : t.columns)
          if (!c.defaultName.empty() && tsql::sameName(c.defaultName, name)) {
            c.defaultText.clear();
            c.defaultName.clear();
            c.defaultInTable = false;
            found = true;
          }
        if (!found) throw SqlError(3728, "'" + name + "' is not a constraint.", pos);
      }
      break;
  }
  for (auto& k : keys) t.keys.push_back(std::move(k));
  for (auto& c : checks) t.checks.push_back(std::move(c));

  const bool inPlace = s.action == Action::add && checks.empty() && s.constraints.empty() &&
                       t.checks.size() == old->checks.size() && t.keys.size() == old->keys.size() &&
                       std::all_of(t.columns.begin() + static_cast<std::ptrdiff_t>(old->columns.size()),
                                   t.columns.end(), [](const ColumnDef& c) {
                                     return !c.identity && c.computedText.empty() &&
                                            (c.defaultText.empty() ? c.nullable : c.defaultInTable);
                                   });
  const std::int64_t oldId = old->id;
  const std::string storage = old->storage, rowNumber = old->rowNumber;
  const std::size_t oldColumns = old->columns.size();
  check(
      [&] {
        atomically([&] {
          if (inPlace) {
            for (std::size_t i = oldColumns; i < t.columns.size(); ++i) {
              run(db.get(), "ALTER TABLE " + storage + " ADD COLUMN " + columnSql(t.columns[i], t));
              storeColumn(db.get(), p.schemaName, oldId, static_cast<int>(i), t.columns[i]);
            }
            reloadCatalog(p.schemaName);
            return;
          }
          // The table anew under another name, its rows over, then under its own name.
          const std::string aside = quoteName(p.schemaName) + ".\"_ts_old\"";
          for (const auto& k : table(s.name)->keys) {
            if (k.storageName.empty()) continue;
            run(db.get(), "DROP INDEX " + quoteName(p.schemaName) + "." + quoteName(k.storageName));
            run(db.get(),
                "DROP INDEX IF EXISTS " + quoteName(p.schemaName) + "." + quoteName(k.storageName + ":plain"));
          }
          run(db.get(), "ALTER TABLE " + storage + " RENAME TO \"_ts_old\"");
          PreparedStatement last(db.get(), "SELECT last FROM " + quoteName(p.schemaName) +
                                               "._ts_identity WHERE table_id=" + std::to_string(oldId));
          const bool numbered = last.step();
          const std::int64_t number = numbered ? last.integer(0) : 0;
          last = {};
          dropObject(db.get(), p.schemaName, oldId);
          for (auto& k : t.keys) k.storageName.clear();
          makeTable(t, p);
          std::string names, values;
          for (std::size_t i = 0; i < t.columns.size(); ++i) {
            if (!t.columns[i].computedText.empty()) continue;
            names += (names.empty() ? "" : ",") + quoteName(t.columns[i].name);
            values += (values.empty() ? "" : ",") + from[i];
          }
          const TableDef* made = table(s.name);
          if (made->identityColumn() < 0) {
            names = made->rowNumber + "," + names;
            values = rowNumber + "," + values;
          }
          run(db.get(), "INSERT INTO " + made->storage + "(" + names + ") SELECT " + values + " FROM " + aside +
                            " ORDER BY " + rowNumber);
          run(db.get(), "DROP TABLE " + aside);
          if (numbered)
            identityGiven(*made, number);
          else if (made->identityColumn() >= 0)
            numbersGiven(*made);
        });
      },
      &t);
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
    const std::string schema = t->schemaName, storage = t->storage;
    const std::int64_t id = t->id;
    restartIdentity(*t);
    check([&] {
      atomically([&] {
        dropObject(db.get(), schema, id);
        run(db.get(), "DROP TABLE " + storage);
      });
    });
    reloadCatalog(schema);
  }
  rowCount = 0;
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
    if (n < 0) throw SqlError(1911, "Column name '" + c.name + "' does not exist in the target table or view.", c.pos);
    k.parts.push_back({n, c.descending});
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
    const TableDef* t = n.parts.empty() ? nullptr : table(n);
    const KeyDef* k = nullptr;
    if (t)
      for (const auto& x : t->keys)
        if (!x.constraint && tsql::sameName(x.name, index)) k = &x;
    if (!k)
      throw SqlError(3701,
                     "Cannot drop the index '" + index + "', because it does not exist or you do not have permission.",
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
