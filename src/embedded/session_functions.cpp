// Functions that ask the session: object_id, identity numbers, names.

#include <algorithm>
#include <utility>

#include "embedded/session_impl.h"

namespace embedded {

namespace {

Session::Impl& self(sqlite3_context* c) {
  return *static_cast<Session::Impl*>(sqlite3_user_data(c));
}

std::string argument(sqlite3_value* v) {
  const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(v));
  return p ? std::string(p, static_cast<std::size_t>(sqlite3_value_bytes(v))) : std::string();
}

void text(sqlite3_context* c, const std::string& s) {
  sqlite3_result_text64(c, s.data(), s.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

// No exception crosses SQLite: a failure is kept in the context and ends the statement.
template <class F>
void guarded(sqlite3_context* c, F&& f) {
  struct Preparing {  // what a function looks up it may prepare
    explicit Preparing(Session::Impl& s) : session(s), changing(std::exchange(s.changing, false)) {}
    ~Preparing() { session.changing = changing; }
    Session::Impl& session;
    bool changing;
  } const preparing(self(c));
  try {
    f();
  } catch (const tsql::SqlError& e) {
    self(c).context.fail(e);
    sqlite3_result_error(c, e.what(), -1);
  } catch (const SqliteFailure& e) {
    sqlite3_result_error(c, e.message.c_str(), -1);
  } catch (const std::exception& e) {
    sqlite3_result_error(c, e.what(), -1);
  }
}

void objectIdOf(sqlite3_context* c, int n, sqlite3_value** v) {
  guarded(c, [&] {
    if (sqlite3_value_type(v[0]) == SQLITE_NULL) return sqlite3_result_null(c);
    const auto id = self(c).objectId(argument(v[0]), n > 1 ? argument(v[1]) : "");
    if (id)
      sqlite3_result_int64(c, *id);
    else
      sqlite3_result_null(c);
  });
}

bool hasPrimaryKey(const tsql::TableDef& t) {
  return std::any_of(t.keys.begin(), t.keys.end(), [](const auto& k) { return k.primary; });
}

void objectProperty(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    sqlite3_result_null(c);
    if (sqlite3_value_type(v[0]) == SQLITE_NULL) return;
    const std::int64_t id = sqlite3_value_int64(v[0]);
    const std::string property = lowerName(argument(v[1]));
    const DatabaseCatalog* catalog = self(c).catalogOf(self(c).current);
    bool table = false, procedure = false, system = false;
    if (catalog) {
      for (const auto& [name, t] : catalog->tables)
        if (t->id == id) (t->system ? system : table) = true;
      for (const auto& [name, p] : catalog->procedures) procedure = procedure || p.id == id;
    }
    if (!table && !procedure && !system) return;
    if (property == "isusertable")
      sqlite3_result_int(c, table);
    else if (property == "isprocedure")
      sqlite3_result_int(c, procedure);
    else if (property == "istable")
      sqlite3_result_int(c, table || system);
    else if (property == "issystemtable")
      sqlite3_result_int(c, system);
    else if (property == "tablehasidentity" && table)
      sqlite3_result_int(c, self(c).tableOfId(id)->identityColumn() >= 0);
    else if (property == "tablehasprimarykey" && table)
      sqlite3_result_int(c, hasPrimaryKey(*self(c).tableOfId(id)));
    else if (property == "isview" || property == "istrigger")
      sqlite3_result_int(c, 0);
  });
}

void session(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    const std::string what = argument(v[0]);
    auto& s = self(c);
    if (what == "scope_identity") {
      if (s.scopeIdentity)
        sqlite3_result_int64(c, *s.scopeIdentity);
      else
        sqlite3_result_null(c);
    } else if (what == "db_name") {
      text(c, s.current.empty() ? "master" : s.current);
    } else if (what == "host_name") {
      text(c, "localhost");
    } else {
      text(c, "dbo");
    }
  });
}

void identity(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] { sqlite3_result_int64(c, self(c).nextIdentity(sqlite3_value_int64(v[0]))); });
}

void identCurrent(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    auto& s = self(c);
    sqlite3_result_null(c);
    const auto* t = s.tableOfText(argument(v[0]));
    if (!t || t->identityColumn() < 0) return;
    const auto last = s.currentIdentity(*t);
    sqlite3_result_int64(c, last.value_or(t->columns[static_cast<std::size_t>(t->identityColumn())].identity->seed));
  });
}

template <std::int64_t tsql::ast::IdentityClause::*part>
void identityClause(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    sqlite3_result_null(c);
    const auto* t = self(c).tableOfText(argument(v[0]));
    if (!t || t->identityColumn() < 0) return;
    sqlite3_result_int64(c, (*t->columns[static_cast<std::size_t>(t->identityColumn())].identity).*part);
  });
}

void columnProperty(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    sqlite3_result_null(c);
    const auto* t = self(c).tableOfId(sqlite3_value_int64(v[0]));
    const int n = t ? t->find(argument(v[1])) : -1;
    if (n < 0) return;
    const auto& column = t->columns[static_cast<std::size_t>(n)];
    const TypeFacts facts = typeFacts(column.type);
    const std::string property = lowerName(argument(v[2]));
    if (property == "isidentity")
      sqlite3_result_int(c, column.identity.has_value());
    else if (property == "allowsnull")
      sqlite3_result_int(c, column.nullable);
    else if (property == "iscomputed")
      sqlite3_result_int(c, !column.computedText.empty());
    else if (property == "isrowguidcol")
      sqlite3_result_int(c, column.rowGuid);
    else if (property == "columnid")
      sqlite3_result_int(c, n + 1);
    else if (property == "precision" && facts.precision)
      sqlite3_result_int(c, *facts.precision);
    else if (property == "scale" && facts.scale)
      sqlite3_result_int(c, *facts.scale);
  });
}

void columnLength(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    sqlite3_result_null(c);
    const auto* t = self(c).tableOfText(argument(v[0]));
    const int n = t ? t->find(argument(v[1])) : -1;
    if (n >= 0) sqlite3_result_int(c, typeFacts(t->columns[static_cast<std::size_t>(n)].type).length);
  });
}

void columnName(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    sqlite3_result_null(c);
    const auto* t = self(c).tableOfId(sqlite3_value_int64(v[0]));
    const std::int64_t n = sqlite3_value_int64(v[1]);
    if (t && n >= 1 && n <= static_cast<std::int64_t>(t->columns.size()))
      text(c, t->columns[static_cast<std::size_t>(n - 1)].name);
  });
}

// A variable as it stands now, for a selection that assigns variables row by row.
void variableNow(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    const auto& value = self(c).frame->at(argument(v[0])).value;
    if (const auto* n = std::get_if<std::int64_t>(&value))
      sqlite3_result_int64(c, *n);
    else if (const auto* d = std::get_if<double>(&value))
      sqlite3_result_double(c, *d);
    else if (const auto* s = std::get_if<std::string>(&value))
      text(c, *s);
    else if (const auto* b = std::get_if<tsql::Blob>(&value))
      sqlite3_result_blob64(c, b->data(), b->size(), SQLITE_TRANSIENT);
    else
      sqlite3_result_null(c);
  });
}

void databaseName(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    sqlite3_result_null(c);
    const auto names = self(c).server->databases();
    const std::int64_t n = sqlite3_value_int64(v[0]);
    if (n >= 1 && n <= static_cast<std::int64_t>(names.size())) text(c, names[static_cast<std::size_t>(n - 1)]);
  });
}

void databaseId(sqlite3_context* c, int n, sqlite3_value** v) {
  guarded(c, [&] {
    auto& s = self(c);
    const std::string name = n ? argument(v[0]) : s.current;
    const auto names = s.server->databases();
    for (std::size_t i = 0; i < names.size(); ++i)
      if (tsql::sameName(names[i], name)) return sqlite3_result_int(c, static_cast<int>(i) + 1);
    sqlite3_result_null(c);
  });
}

void objectName(sqlite3_context* c, int, sqlite3_value** v) {
  guarded(c, [&] {
    sqlite3_result_null(c);
    const std::int64_t id = sqlite3_value_int64(v[0]);
    const DatabaseCatalog* catalog = self(c).catalogOf(self(c).current);
    if (!catalog) return;
    for (const auto& [name, t] : catalog->tables)
      if (t->id == id) return text(c, t->name);
    for (const auto& [name, p] : catalog->procedures)
      if (p.id == id) return text(c, p.name);
  });
}

}  // namespace

void Session::Impl::registerSessionFunctions() {
  const auto add = [&](const char* name, int arguments, void (*f)(sqlite3_context*, int, sqlite3_value**)) {
    sqlite3_create_function_v2(db.get(), name, arguments, SQLITE_UTF8, this, f, nullptr, nullptr, nullptr);
  };
  add("ts_object_id", 1, objectIdOf);
  add("ts_object_id", 2, objectIdOf);
  add("ts_objectproperty", 2, objectProperty);
  add("ts_session", 1, session);
  add("ts_identity", 1, identity);
  add("ts_ident_current", 1, identCurrent);
  add("ts_ident_seed", 1, identityClause<&tsql::ast::IdentityClause::seed>);
  add("ts_ident_incr", 1, identityClause<&tsql::ast::IdentityClause::increment>);
  add("ts_columnproperty", 3, columnProperty);
  add("ts_col_length", 2, columnLength);
  add("ts_col_name", 2, columnName);
  add("ts_variable", 1, variableNow);
  add("ts_db_name", 1, databaseName);
  add("ts_db_id", 0, databaseId);
  add("ts_db_id", 1, databaseId);
  add("ts_object_name", 1, objectName);
}

}  // namespace embedded
