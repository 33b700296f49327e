// SQLite's failures in the server's words.

#include <set>

#include "embedded/session_impl.h"

namespace embedded {

using tsql::SqlError;
using tsql::TableDef;

namespace {

std::string object(const TableDef* t) {
  return t ? "dbo." + t->name : "?";
}

// "UNIQUE constraint failed: t.a, t.b" and "...: index 'x'": the key that it means.
const tsql::KeyDef* keyOf(const TableDef& t, const std::string& message) {
  const auto colon = message.find(": ");
  if (colon == std::string::npos) return nullptr;
  std::string rest = message.substr(colon + 2);
  if (rest.rfind("index '", 0) == 0) {
    rest = rest.substr(7, rest.size() - 8);
    for (const auto& k : t.keys)
      if (k.storageName == rest) return &k;
    return nullptr;
  }
  std::vector<std::string> names;
  const std::string prefix = t.storageName + ".";
  for (std::size_t i = 0; i <= rest.size();) {
    auto end = rest.find(", " + prefix, i);
    if (end == std::string::npos) end = rest.size();
    std::string n = rest.substr(i, end - i);
    if (n.rfind(prefix, 0) == 0) n.erase(0, prefix.size());
    names.push_back(n);
    i = end + 2;
  }
  for (const auto& k : t.keys) {
    if (!k.unique || k.parts.size() != names.size()) continue;
    bool all = true;
    for (std::size_t i = 0; i < names.size(); ++i)
      all = all && tsql::sameName(t.columns[static_cast<std::size_t>(k.parts[i].column)].name, names[i]);
    if (all) return &k;
  }
  return nullptr;
}

SqlError duplicate(const TableDef* t, const std::string& message) {
  const tsql::KeyDef* k = t ? keyOf(*t, message) : nullptr;
  if (k && !k->constraint)
    return SqlError(
        2601, "Cannot insert duplicate key row in object '" + object(t) + "' with unique index '" + k->name + "'.", {},
        14);
  const bool primary = !k || k->primary;
  return SqlError(2627,
                  std::string("Violation of ") + (primary ? "PRIMARY KEY" : "UNIQUE KEY") + " constraint '" +
                      (k ? k->name : std::string("PK")) + "'. Cannot insert duplicate key in object '" + object(t) +
                      "'.",
                  {}, 14);
}

std::string afterLast(const std::string& s, const char* mark) {
  const auto i = s.rfind(mark);
  return i == std::string::npos ? s : s.substr(i + std::string_view(mark).size());
}

// The server names the column when the check is about one alone.
std::string checkedColumn(const TableDef& t, const std::string& check) {
  std::set<int> columns;
  for (const auto& c : t.checks)
    if (tsql::sameName(c.name, check))
      for (const auto& token : tsql::lex(c.text).tokens)
        if (token.kind == tsql::TokenKind::identifier || token.kind == tsql::TokenKind::quotedIdentifier)
          if (const int n = t.find(token.text); n >= 0) columns.insert(n);
  return columns.size() == 1 ? t.columns[static_cast<std::size_t>(*columns.begin())].name : std::string();
}

SqlError violatedCheck(const TableDef* t, const std::string& check, std::string_view verb) {
  std::string text = "The " + std::string(verb) + " statement conflicted with the CHECK constraint \"" + check + "\".";
  if (t) {
    text += " The conflict occurred in database \"" + t->database + "\", table \"" + object(t) + "\"";
    const std::string column = checkedColumn(*t, check);
    text += column.empty() ? "." : ", column '" + column + "'.";
  }
  return SqlError(547, text);
}

}  // namespace

SqlError Session::Impl::translate(const SqliteFailure& f, const TableDef* table) {
  if (context.failure) {
    SqlError e = *context.failure;
    context.failure.reset();
    return e;
  }
  switch (f.code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
      return duplicate(table, f.message);
    case SQLITE_CONSTRAINT_NOTNULL: {
      const std::string column = afterLast(f.message, ".");
      const std::string verb(changingBy == "ALTER TABLE" ? "UPDATE" : changingBy);  // the server writes the rows anew
      return SqlError(515, "Cannot insert the value NULL into column '" + column + "', table '" +
                               (table ? table->database + ".dbo." + table->name : std::string("?")) +
                               "'; column does not allow nulls. " + verb + " fails.");
    }
    case SQLITE_CONSTRAINT_CHECK:
      return violatedCheck(table, afterLast(f.message, ": "), changingBy);
    default:
      break;
  }
  switch (f.primary()) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return SqlError(1222, "Lock request time out period exceeded.");
    case SQLITE_FULL:
      return SqlError(
          1105, "Could not allocate space in the database because the disk is full: " + server->impl().folder, {}, 17);
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return SqlError(3906, "Failed to update database because the database is read-only: " + server->impl().folder);
    case SQLITE_CANTOPEN:
      return SqlError(5105, "The server's folder or a file in it cannot be opened: " + server->impl().folder);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return SqlError(824, "A file of the server is no database or is damaged: " + f.message, {}, 24);
    case SQLITE_IOERR:
      return SqlError(
          823, "The operating system returned an error while reading or writing a database file: " + f.message, {}, 24);
    case SQLITE_NOMEM:
      return SqlError(701, "There is insufficient system memory to run this query.", {}, 17);
    case SQLITE_INTERRUPT:
      return SqlError(3621, "The statement has been terminated.");
    default:
      break;
  }
  if (f.message.find("integer overflow") != std::string::npos)
    return SqlError(8115, "Arithmetic overflow error converting expression to data type money.");
  return SqlError(50000, "The statement failed inside the server: " + f.message);
}

void Session::Impl::failed(const SqliteFailure& f, const TableDef* table) {
  if (f.primary() == SQLITE_ERROR && !context.failure &&
      (f.message.rfind("no such table", 0) == 0 || f.message.rfind("no such column", 0) == 0 ||
       f.message.find(" has no column named ") != std::string::npos))
    throw StalePlan{};
  throw translate(f, table);
}

platform::Value cellValue(const PreparedStatement& rows, int column, const tsql::SqlType& t) {
  using platform::Value;
  using tsql::TypeKind;
  sqlite3_value* v = sqlite3_column_value(rows.get(), column);
  switch (sqlite3_value_type(v)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER: {
      const std::int64_t n = sqlite3_value_int64(v);
      switch (t.kind) {
        case TypeKind::bit:
          return Value(n != 0);
        case TypeKind::tinyint:
        case TypeKind::smallint:
        case TypeKind::integer:
        case TypeKind::bigint:
          return Value(n);
        case TypeKind::money:
          return Value(platform::Money::fromUnits(n));
        case TypeKind::datetime:
          return Value(platform::DateTime::fromTicks(n));
        default:
          break;
      }
      break;
    }
    case SQLITE_FLOAT:
      return Value(sqlite3_value_double(v));
    case SQLITE_TEXT: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(v));
      return Value(std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(v))));
    }
    default:
      break;
  }
  return toValue(rows.column(column), t);
}

platform::Value toValue(tsql::Datum d, const tsql::SqlType& t) {
  using platform::Value;
  using tsql::TypeKind;
  switch (d.index()) {
    case 0:
      return {};
    case 1: {
      const auto n = std::get<std::int64_t>(d);
      if (t.kind == TypeKind::bit) return Value(n != 0);
      if (tsql::isMoney(t.kind)) return Value(platform::Money::fromUnits(n));
      if (tsql::isDate(t.kind)) return Value(platform::DateTime::fromTicks(n));
      if (tsql::isApproximate(t.kind)) return Value(static_cast<double>(n));
      break;
    }
    case 2:
      return Value(std::get<double>(d));
    case 3:
      return Value(std::move(std::get<std::string>(d)));
    default:
      break;
  }
  if (t.kind == TypeKind::decimal) {
    // An amount where that is exact, else the digits as text: a double would lose some.
    const auto text = tsql::convert(d, t, tsql::typeOf(TypeKind::varchar, 60));
    std::string s = std::get<std::string>(text);
    if (const auto point = s.find('.'); point != std::string::npos) {
      while (s.back() == '0') s.pop_back();
      if (s.back() == '.') s.pop_back();
    }
    const auto point = s.find('.');
    const std::size_t decimals = point == std::string::npos ? 0 : s.size() - point - 1;
    if (decimals <= 4 && s.size() - decimals <= 15) return Value(platform::Money::parse(s));
    if (s.size() <= 16) return Value(std::stod(s));
    return Value(s);
  }
  if (d.index() == 1) return Value(std::get<std::int64_t>(d));
  return Value(platform::Bytes(std::get<tsql::Blob>(d)));
}

tsql::Datum fromValue(const platform::Value& v, tsql::SqlType& type) {
  using K = platform::Value::Kind;
  using tsql::TypeKind;
  switch (v.kind()) {
    case K::null:
      type = {};
      return {};
    case K::boolean:
      type = tsql::typeOf(TypeKind::bit);
      return std::int64_t{v.asBool() ? 1 : 0};
    case K::integer:
      type = tsql::typeOf(TypeKind::bigint);
      return v.asInteger();
    case K::money:
      type = tsql::typeOf(TypeKind::money);
      return v.asMoney().units();
    case K::real:
      type = tsql::typeOf(TypeKind::float_);
      return v.asDouble();
    case K::dateTime:
      type = tsql::typeOf(TypeKind::datetime);
      return v.asDateTime().ticks();
    case K::text:
      type = tsql::typeOf(TypeKind::nvarchar, tsql::SqlType::maxLength);
      return v.asText();
    case K::bytes:
      type = tsql::typeOf(TypeKind::varbinary, tsql::SqlType::maxLength);
      return tsql::Blob(v.asBytes());
  }
  return {};
}

}  // namespace embedded
