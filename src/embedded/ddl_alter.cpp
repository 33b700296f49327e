// alter table. A change that SQLite cannot make in place is made on a new table that takes the old one's rows, name and
// number.

#include <algorithm>

#include "embedded/session_impl.h"

namespace embedded {

using tsql::ColumnDef;
using tsql::KeyDef;
using tsql::quoteName;
using tsql::SqlError;
using tsql::TableDef;

namespace {

class TableChange {
public:
  TableChange(Session::Impl& session, const tsql::ast::AlterTable& text, const TableDef& old, Running& r)
      : session_(session), text_(text), old_(old), r_(r), t_(old) {
    for (const auto& c : t_.columns) from_.push_back(quoteName(c.name));
  }

  void run();

private:
  void addColumn(const tsql::ast::ColumnDefinition& d);
  void addKeyOrCheck(const tsql::ast::TableConstraint& c);
  void dropColumn(const std::string& name, tsql::SourcePos pos);
  void alterColumn(const tsql::ast::ColumnDefinition& d);
  void dropConstraint(const std::string& name, tsql::SourcePos pos);
  void requireIndependent(int column, tsql::SourcePos pos);
  std::string valueOfRows(const ColumnDef& c);
  bool hasRows() const;
  bool inPlace() const;
  void addInPlace();
  void makeAnew();
  void takeRows(const std::string& aside);
  std::string schema() const { return quoteName(old_.schemaName); }

  Session::Impl& session_;
  const tsql::ast::AlterTable& text_;
  const TableDef& old_;
  Running& r_;
  TableDef t_;                     // as it shall be
  std::vector<std::string> from_;  // what the old table's rows give for each column of the new one
  std::vector<KeyDef> keys_;       // new ones
  std::vector<tsql::CheckDef> checks_;
};

// Whether a check or a computed column speaks of a column.
bool mentions(const std::string& text, const std::string& column) {
  const auto tokens = tsql::lex(text);
  return std::any_of(tokens.tokens.begin(), tokens.tokens.end(), [&](const tsql::Token& x) {
    return (x.kind == tsql::TokenKind::identifier || x.kind == tsql::TokenKind::quotedIdentifier) &&
           tsql::sameName(x.text, column);
  });
}

bool TableChange::hasRows() const {
  PreparedStatement any(session_.db.get(), "SELECT 1 FROM " + old_.storage + " LIMIT 1");
  return any.step();
}

void TableChange::run() {
  using Action = tsql::ast::AlterTable::Action;
  switch (text_.action) {
    case Action::add:
      for (const auto& d : text_.columns) addColumn(d);
      for (const auto& c : text_.constraints) addKeyOrCheck(c);
      break;
    case Action::dropColumns:
      for (const auto& [name, pos] : text_.names) dropColumn(name, pos);
      break;
    case Action::alterColumn:
      alterColumn(text_.columns.at(0));
      break;
    case Action::dropConstraints:
      for (const auto& [name, pos] : text_.names) dropConstraint(name, pos);
      break;
  }
  t_.keys.insert(t_.keys.end(), keys_.begin(), keys_.end());
  t_.checks.insert(t_.checks.end(), checks_.begin(), checks_.end());
  session_.changingBy = "ALTER TABLE";
  session_.check([&] { session_.atomically([&] { inPlace() ? addInPlace() : makeAnew(); }); }, &t_);
}

void TableChange::addColumn(const tsql::ast::ColumnDefinition& d) {
  if (t_.find(d.name) >= 0)
    throw SqlError(2705,
                   "Column names in each table must be unique. Column name '" + d.name + "' in table '" + t_.name +
                       "' is specified more than once.",
                   d.pos);
  session_.requireFreeName(t_, d.defaultName, d.pos);
  ColumnDef c = session_.columnOf(d, t_.name, t_.columns.size() - old_.columns.size() + 1);
  if (!c.nullable && c.defaultText.empty() && !c.identity && c.computedText.empty() && hasRows())
    throw SqlError(4901,
                   "ALTER TABLE only allows columns to be added that can contain nulls, or have a DEFAULT definition "
                   "specified, or the column being added is an identity or timestamp column. Column '" +
                       c.name + "' cannot be added to non-empty table '" + t_.name +
                       "' because it does not satisfy these conditions.",
                   d.pos);
  if (c.identity && old_.identityColumn() >= 0)
    throw SqlError(2744,
                   "Multiple identity columns specified for table '" + t_.name +
                       "'. Only one identity column per table is allowed.",
                   d.pos);
  from_.push_back(valueOfRows(c));
  t_.columns.push_back(std::move(c));
  for (const auto& k : d.constraints) session_.addConstraint(t_, k, keys_, checks_);
}

// What the rows that are there get in a new column.
std::string TableChange::valueOfRows(const ColumnDef& c) {
  if (c.identity)  // they are numbered
    return std::to_string(c.identity->seed) + "+" + std::to_string(c.identity->increment) +
           "*(row_number() OVER (ORDER BY " + old_.rowNumber + ")-1)";
  if (c.defaultText.empty()) return "NULL";
  const auto tokens = tsql::lex(c.defaultText);
  return tsql::sqliteLiteral(session_.scalar(*tsql::parseExpression(tokens), tokens, c.type, nullptr));
}

void TableChange::addKeyOrCheck(const tsql::ast::TableConstraint& c) {
  if (c.kind == tsql::ast::TableConstraint::Kind::primaryKey) {
    if (std::any_of(t_.keys.begin(), t_.keys.end(), [](const KeyDef& k) { return k.primary; }))
      throw SqlError(1779, "Table '" + t_.name + "' already has a primary key defined on it.", c.pos);
    for (const auto& part : c.columns)
      if (const int n = t_.find(part.name); n >= 0 && t_.columns[static_cast<std::size_t>(n)].nullable)
        throw SqlError(8111, "Cannot define PRIMARY KEY constraint on nullable column in table '" + t_.name + "'.",
                       c.pos);
  }
  session_.addConstraint(t_, c, keys_, checks_);
}

void TableChange::dropColumn(const std::string& name, tsql::SourcePos pos) {
  const int n = t_.find(name);
  if (n < 0)
    throw SqlError(
        4924, "ALTER TABLE DROP COLUMN failed because column '" + name + "' does not exist in table '" + t_.name + "'.",
        pos);
  if (t_.columns.size() == 1)
    throw SqlError(4923,
                   "ALTER TABLE DROP COLUMN failed because '" + t_.columns[0].name +
                       "' is the only data column in table '" + t_.name +
                       "'. A table must have at least one data column.",
                   pos);
  requireIndependent(n, pos);
  for (auto& k : t_.keys)
    for (auto& part : k.parts)
      if (part.column > n) --part.column;
  t_.columns.erase(t_.columns.begin() + n);
  from_.erase(from_.begin() + n);
}

// 5074 for each object that needs the column, and then 4922.
void TableChange::requireIndependent(int column, tsql::SourcePos pos) {
  const std::string& name = t_.columns[static_cast<std::size_t>(column)].name;
  bool needed = false;
  const auto dependent = [&](const char* what, const std::string& object) {
    session_.raised(
        SqlError(5074, "The " + std::string(what) + " '" + object + "' is dependent on column '" + name + "'.", pos),
        r_);
    needed = true;
  };
  for (const auto& k : t_.keys)
    if (std::any_of(k.parts.begin(), k.parts.end(), [&](const auto& part) { return part.column == column; }))
      dependent(k.constraint ? "object" : "index", k.name);
  for (const auto& c : t_.checks)
    if (mentions(c.text, name)) dependent("object", c.name);
  for (const auto& c : t_.columns)
    if (!c.computedText.empty() && mentions(c.computedText, name)) dependent("column", c.name);
  if (needed)
    throw SqlError(4922, "ALTER TABLE DROP COLUMN " + name + " failed because one or more objects access this column.",
                   pos);
}

void TableChange::alterColumn(const tsql::ast::ColumnDefinition& d) {
  const int n = t_.find(d.name);
  if (n < 0)
    throw SqlError(
        4924,
        "ALTER TABLE ALTER COLUMN failed because column '" + d.name + "' does not exist in table '" + t_.name + "'.",
        d.pos);
  auto& c = t_.columns[static_cast<std::size_t>(n)];
  const ColumnDef changed = session_.columnOf(d, t_.name, 1);
  from_[static_cast<std::size_t>(n)] = "ts_store(" + quoteName(c.name) + "," + std::to_string(c.type.pack()) + "," +
                                       std::to_string(changed.type.pack()) + ")";
  c.type = changed.type;
  c.nullable = changed.nullable;
}

void TableChange::dropConstraint(const std::string& name, tsql::SourcePos pos) {
  const auto same = [&](const auto& x) { return tsql::sameName(x.name, name); };
  bool found =
      std::erase_if(t_.keys, [&](const KeyDef& k) { return k.constraint && tsql::sameName(k.name, name); }) > 0;
  found = std::erase_if(t_.checks, same) > 0 || found;
  for (auto& c : t_.columns)
    if (!c.defaultName.empty() && tsql::sameName(c.defaultName, name)) {
      c.defaultText.clear();
      c.defaultName.clear();
      c.defaultInTable = false;
      found = true;
    }
  if (!found) throw SqlError(3728, "'" + name + "' is not a constraint.", pos);
}

// New columns alone whose value SQLite can give the rows that are there.
bool TableChange::inPlace() const {
  const auto simple = [](const ColumnDef& c) {
    return !c.identity && c.computedText.empty() && (c.defaultText.empty() ? c.nullable : c.defaultInTable);
  };
  return text_.action == tsql::ast::AlterTable::Action::add && text_.constraints.empty() && keys_.empty() &&
         checks_.empty() &&
         std::all_of(t_.columns.begin() + static_cast<std::ptrdiff_t>(old_.columns.size()), t_.columns.end(), simple);
}

void TableChange::addInPlace() {
  for (std::size_t i = old_.columns.size(); i < t_.columns.size(); ++i) {
    embedded::run(session_.db.get(),
                  "ALTER TABLE " + old_.storage + " ADD COLUMN " + session_.columnSql(t_.columns[i], t_));
    storeColumn(session_.db.get(), old_.schemaName, old_.id, static_cast<int>(i), t_.columns[i]);
  }
  session_.reloadCatalog(old_.schemaName);
}

// The table anew under another name, its rows over, then under its own name.
void TableChange::makeAnew() {
  sqlite3* db = session_.db.get();
  const std::string aside = schema() + ".\"_ts_old\"";
  for (const auto& k : old_.keys) {
    if (k.storageName.empty()) continue;
    embedded::run(db, "DROP INDEX " + schema() + "." + quoteName(k.storageName));
    embedded::run(db, "DROP INDEX IF EXISTS " + schema() + "." + quoteName(k.storageName + ":plain"));
  }
  embedded::run(db, "ALTER TABLE " + old_.storage + " RENAME TO \"_ts_old\"");
  PreparedStatement last(db,
                         "SELECT last FROM " + schema() + "._ts_identity WHERE table_id=" + std::to_string(old_.id));
  std::optional<std::int64_t> number;
  if (last.step()) number = last.integer(0);
  last = {};
  dropObject(db, old_.schemaName, old_.id);
  for (auto& k : t_.keys) k.storageName.clear();
  session_.makeTable(t_, session_.place(text_.name), [&] { takeRows(aside); });
  const TableDef* made = session_.table(text_.name);
  if (number)
    session_.identityGiven(*made, *number);
  else if (made->identityColumn() >= 0)
    session_.numbersGiven(*made);
}

void TableChange::takeRows(const std::string& aside) {
  std::string names, values;
  for (std::size_t i = 0; i < t_.columns.size(); ++i) {
    if (!t_.columns[i].computedText.empty()) continue;
    names += (names.empty() ? "" : ",") + quoteName(t_.columns[i].name);
    values += (values.empty() ? "" : ",") + from_[i];
  }
  const TableDef* made = session_.table(text_.name);
  if (made->identityColumn() < 0) {
    names = made->rowNumber + "," + names;
    values = old_.rowNumber + "," + values;
  }
  embedded::run(session_.db.get(), "INSERT INTO " + made->storage + "(" + names + ") SELECT " + values + " FROM " +
                                       aside + " ORDER BY " + old_.rowNumber);
  embedded::run(session_.db.get(), "DROP TABLE " + aside);
}

}  // namespace

void Session::Impl::alterTable(const tsql::ast::AlterTable& s, Running& r) {
  refreshCatalogs();
  drainStreams();
  const TableDef* old = table(s.name);
  const auto keep = currentCatalogs();  // `old` is read until the end
  if (!old || old->system) noSuchTable(s.name, 4902);
  TableChange(*this, s, *old, r).run();
  rowCount = 0;
}

}  // namespace embedded
