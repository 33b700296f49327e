// Databases, tables and other objects as a session finds them.

#include <algorithm>

#include "embedded/session_impl.h"

namespace embedded {

using tsql::quoteName;
using tsql::TableDef;

namespace {

constexpr const char* tempdb = "tempdb";
constexpr const char* temporarySchema = "temp";

bool isTemporaryName(std::string_view n) {
  return !n.empty() && n[0] == '#';
}

std::string schemaNameOf(const std::string& database) {
  const std::string l = lowerName(database);
  return l == "main" || l == "temp" ? "db_" + database : database;
}

constexpr std::string_view ownSystemTables[] = {"sysobjects", "syscolumns", "sysdatabases"};

// The server's other system tables, which this one has not.
constexpr std::string_view otherSystemTables[] = {
    "sysaltfiles",     "syscacheobjects", "syscharsets",    "syscomments",   "sysconfigures", "sysconstraints",
    "syscurconfigs",   "sysdepends",      "sysdevices",     "sysfilegroups", "sysfiles",      "sysforeignkeys",
    "sysindexes",      "sysindexkeys",    "syslanguages",   "syslockinfo",   "syslogins",     "sysmembers",
    "sysmessages",     "sysperfinfo",     "syspermissions", "sysprocesses",  "sysprotects",   "sysreferences",
    "sysremotelogins", "sysservers",      "systypes",       "sysusers"};

template <std::size_t n>
bool isOneOf(const std::string_view (&names)[n], std::string_view name) {
  return std::any_of(std::begin(names), std::end(names), [&](auto x) { return tsql::sameName(x, name); });
}

// A view or table of the server's catalog that is there on the real server.
void refuseCatalogView(const tsql::ast::Name& name) {
  const std::size_t n = name.parts.size();
  const std::string owner = n >= 2 ? name.parts[n - 2] : "";
  if (tsql::sameName(owner, "information_schema") || tsql::sameName(owner, "sys"))
    throwUnsupported("the catalog view " + owner + "." + name.last(), name.pos);
  if (isOneOf(otherSystemTables, name.last())) throwUnsupported("the system table " + name.last(), name.pos);
}

// "db.dbo.t", "[dbo].[t]", "db..t": the parts of an object's name in a text.
std::vector<std::string> splitName(std::string_view s) {
  std::vector<std::string> parts(1);
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '[') {
      for (++i; i < s.size() && !(s[i] == ']' && (i + 1 >= s.size() || s[i + 1] != ']')); ++i) {
        if (s[i] == ']') ++i;
        parts.back() += s[i];
      }
    } else if (s[i] == '.') {
      parts.emplace_back();
    } else {
      parts.back() += s[i];
    }
  }
  for (auto& p : parts) {
    while (!p.empty() && p.back() == ' ') p.pop_back();
    while (!p.empty() && p.front() == ' ') p.erase(0, 1);
  }
  return parts;
}

}  // namespace

void Session::Impl::open() {
  sqlite3* handle = nullptr;
  sqlite3_open_v2(":memory:", &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
  db.reset(handle);
  sqlite3_extended_result_codes(handle, 1);
  sqlite3_busy_timeout(handle, server->impl().timeout);
  useTextCollationSafely(handle);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, static_cast<int*>(nullptr));
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, static_cast<int*>(nullptr));
  sqlite3_set_authorizer(
      handle,
      [](void* session, int, const char*, const char*, const char*, const char*) {
        auto& self = *static_cast<Impl*>(session);
        self.preparedAnew = self.preparedAnew || self.changing;
        return self.changing ? SQLITE_DENY : SQLITE_OK;
      },
      this);
  context.now = server->impl().clock;
  registerFunctions(handle, context);
  registerSessionFunctions();
}

// Sets a file that was just attached up, and makes tempdb's catalog when nobody has yet. A file that is no database of
// this server is a failure.
void Session::Impl::prepareAttached(const std::string& name, const std::string& schemaName) {
  const std::string q = quoteName(schemaName);
  const bool alone = sqlite3_get_autocommit(db.get()) != 0;
  run(db.get(), "PRAGMA " + q + ".journal_mode=WAL");
  // Inside a transaction the level cannot be changed; the stricter default then stays.
  if (alone) run(db.get(), "PRAGMA " + q + ".synchronous=NORMAL");
  run(db.get(), "PRAGMA " + q + ".cache_size=-65536");
  const auto known = [&] {
    PreparedStatement s(db.get(), "SELECT 1 FROM " + q + ".sqlite_schema WHERE name='_ts_objects'");
    return s.step();
  };
  if (known()) return;
  if (!tsql::sameName(name, tempdb))
    throw SqliteFailure{SQLITE_NOTADB, "'" + server->impl().fileOf(name) + "' is no database of this server"};
  if (alone) run(db.get(), "BEGIN IMMEDIATE");
  if (!known()) createCatalog(db.get(), schemaName);
  if (alone) run(db.get(), "COMMIT");
}

Session::Impl::Attached* Session::Impl::attach(std::string_view database) {
  if (const auto it = attached.find(database); it != attached.end()) {
    it->second.used = ++useCounter;
    return &it->second;
  }
  auto spelled = server->impl().find(database);
  if (!spelled && tsql::sameName(database, tempdb)) spelled = tempdb;
  if (!spelled) return nullptr;
  if (static_cast<int>(attached.size()) >= sqlite3_limit(db.get(), SQLITE_LIMIT_ATTACHED, -1)) detachIdle();
  Attached a;
  a.name = *spelled;
  a.schemaName = schemaNameOf(*spelled);
  a.since = server->impl().drops.load();
  check([&] {
    PreparedStatement s(db.get(), "ATTACH ? AS ?");
    const tsql::Datum path = server->impl().fileOf(*spelled), schema = a.schemaName;
    s.bind(1, path);
    s.bind(2, schema);
    s.step();
    s = {};
    try {
      prepareAttached(a.name, a.schemaName);
    } catch (...) {
      // Half-attached it would be in the way of the next try.
      const bool alone = sqlite3_get_autocommit(db.get()) != 0;
      if (!alone && !begun) sqlite3_exec(db.get(), "ROLLBACK", nullptr, nullptr, nullptr);
      sqlite3_exec(db.get(), ("DETACH " + quoteName(a.schemaName)).c_str(), nullptr, nullptr, nullptr);
      throw;
    }
  });
  a.used = ++useCounter;
  return &(attached[*spelled] = std::move(a));
}

// SQLite attaches a limited number of files: the one that was used longest ago makes room.
void Session::Impl::detachIdle() {
  if (begun) return;
  Attached* oldest = nullptr;
  for (auto& [name, a] : attached)
    if (!tsql::sameName(name, current) && (!oldest || a.used < oldest->used)) oldest = &a;
  if (!oldest) return;
  detach(std::string(oldest->name));
}

void Session::Impl::detach(const std::string& name) {
  const auto it = attached.find(name);
  forgetPlans();
  check([&] { run(db.get(), "DETACH " + quoteName(it->second.schemaName)); });
  for (auto& ref : identityRefs)
    if (ref.schemaName == it->second.schemaName) {  // nobody finds it any more, and nothing is stored there
      ref.key.clear();
      ref.pending = false;
    }
  attached.erase(it);
  ++catalogEpoch;
}

// Files of databases that another session has dropped since, whether or not there is a new one of the name.
void Session::Impl::leaveDropped() {
  if (dropsSeen == server->impl().drops.load() || begun) return;
  std::vector<std::string> gone;
  {
    const std::lock_guard lock(server->impl().mutex);
    dropsSeen = server->impl().drops.load();
    for (const auto& [name, a] : attached) {
      const auto it = server->impl().dropped.find(lowerName(name));
      if (it != server->impl().dropped.end() && it->second > a.since) gone.push_back(name);
    }
  }
  if (gone.empty()) return;
  idleReader.reset();
  for (const auto& name : gone) detach(name);
}

const DatabaseCatalog* Session::Impl::catalogOf(std::string_view database) {
  Attached* a = attach(database);
  if (!a) return nullptr;
  if (!a->catalog)
    check([&] {
      PreparedStatement v(db.get(), "PRAGMA " + quoteName(a->schemaName) + ".schema_version");
      v.step();
      a->schemaVersion = v.integer(0);
      v = {};
      a->catalog = loadCatalog(db.get(), a->name, a->schemaName, false);
      ++catalogEpoch;
    });
  return a->catalog.get();
}

std::shared_ptr<const DatabaseCatalog> Session::Impl::sharedCatalog(const TableDef& t) {
  if (t.temporary) return temporary;
  if (t.schemaName == "main") return nullptr;  // sysdatabases
  return attached.at(t.database).catalog;
}

// Definitions that other sessions have changed since are read anew.
void Session::Impl::refreshCatalogs() {
  if (!catalogsStale) return;
  catalogsStale = false;
  for (auto& entry : attached) {
    Attached& a = entry.second;
    if (!a.catalog) continue;
    check([&] {
      PreparedStatement v(db.get(), "PRAGMA " + quoteName(a.schemaName) + ".schema_version");
      v.step();
      if (v.integer(0) == a.schemaVersion) return;
      a.catalog.reset();
      ++catalogEpoch;
    });
  }
}

std::vector<std::shared_ptr<const DatabaseCatalog>> Session::Impl::currentCatalogs() const {
  std::vector<std::shared_ptr<const DatabaseCatalog>> all;
  for (const auto& [name, a] : attached) all.push_back(a.catalog);
  all.push_back(temporary);
  return all;
}

void Session::Impl::reloadCatalog(const std::string& schemaName) {
  if (begun) changedSchemas.insert(schemaName);
  if (definedInside) definedInside->insert(schemaName);
  if (schemaName == temporarySchema) {
    check([&] {
      temporary = loadCatalog(db.get(), tempdb, temporarySchema, true);
      ++catalogEpoch;
    });
    return;
  }
  for (auto& [name, a] : attached)
    if (a.schemaName == schemaName) a.catalog.reset();
  ++catalogEpoch;
}

void Session::Impl::needTemporary() {
  if (temporary) return;
  if (begun) changedSchemas.insert(temporarySchema);  // the store itself goes with a rollback
  check([&] {
    createCatalog(db.get(), temporarySchema);
    temporary = loadCatalog(db.get(), tempdb, temporarySchema, true);
    ++catalogEpoch;
  });
}

Session::Impl::ObjectPlace Session::Impl::place(const tsql::ast::Name& name) {
  ObjectPlace p;
  p.object = name.last();
  const std::size_t n = name.parts.size();
  if (n > 3) return p;
  std::string owner = n >= 2 ? name.parts[n - 2] : "";
  const std::string database = n == 3 ? name.parts[0] : "";
  if (isTemporaryName(p.object)) {
    if (p.object.rfind("##", 0) == 0) throwUnsupported("a global temporary table", name.pos);
    p.temporary = true;
    p.database = tempdb;
    p.schemaName = temporarySchema;
    p.known = true;
    return p;
  }
  const bool ofSystem = tsql::sameName(owner, "sys") && isOneOf(ownSystemTables, p.object);
  if (!owner.empty() && !tsql::sameName(owner, "dbo") && !ofSystem) return p;
  p.database = database.empty() ? current : database;
  if (p.database.empty()) return p;
  if (const Attached* a = attach(p.database)) {
    p.database = a->name;
    p.schemaName = a->schemaName;
    p.known = true;
  }
  return p;
}

// 2702, 2760: an object cannot be made there.
void Session::Impl::noSuchPlace(const tsql::ast::Name& name) {
  const std::size_t n = name.parts.size();
  if (n == 3 && !name.parts[0].empty() && !attach(name.parts[0]))
    throw tsql::SqlError(2702, "Database '" + name.parts[0] + "' does not exist.", name.pos);
  throw tsql::SqlError(2760,
                       "The specified schema name \"" + (n >= 2 ? name.parts[n - 2] : std::string("dbo")) +
                           "\" either does not exist or you do not have permission to use it.",
                       name.pos);
}

const TableDef* Session::Impl::table(const tsql::ast::Name& name) {
  if (tsql::sameName(name.last(), "sysdatabases")) {
    // A list of the server's databases, made when it is asked for.
    check([&] {
      run(db.get(),
          "CREATE TABLE IF NOT EXISTS main._ts_databases(name TEXT COLLATE TQ,dbid INTEGER);DELETE FROM "
          "main._ts_databases");
      std::int64_t id = 0;
      auto names = server->databases();
      names.push_back(tempdb);
      for (const auto& n : names) {
        PreparedStatement s(db.get(), "INSERT INTO main._ts_databases VALUES(?,?)");
        const tsql::Datum text = n, number = ++id;
        s.bind(1, text);
        s.bind(2, number);
        s.step();
      }
    });
    static const TableDef databases = [] {
      TableDef t;
      t.id = 9;
      t.database = "master";
      t.name = "sysdatabases";
      t.storage = "main._ts_databases";
      t.schemaName = "main";
      t.storageName = "_ts_databases";
      t.system = true;
      tsql::ColumnDef n, d;
      n.name = "name";
      n.type = tsql::typeOf(tsql::TypeKind::nvarchar, 128);
      n.nullable = false;
      d.name = "dbid";
      d.type = tsql::typeOf(tsql::TypeKind::smallint);
      t.columns = {n, d};
      return t;
    }();
    return &databases;
  }
  const ObjectPlace p = place(name);
  const DatabaseCatalog* c = !p.known ? nullptr : p.temporary ? temporary.get() : catalogOf(p.database);
  if (c)
    if (const auto it = c->tables.find(p.object); it != c->tables.end()) return it->second.get();
  refuseCatalogView(name);
  return nullptr;
}

std::optional<tsql::SqlType> Session::Impl::variable(std::string_view name) {
  using tsql::TypeKind;
  const std::string l = lowerName(name);
  if (l == "@@identity") return tsql::decimalType(38, 0);
  for (const char* number : {"@@rowcount", "@@trancount", "@@error", "@@spid", "@@nestlevel", "@@datefirst"})
    if (l == number) return tsql::typeOf(TypeKind::integer);
  for (const char* text : {"@@version", "@@servername", "@@language"})
    if (l == text) return tsql::typeOf(TypeKind::nvarchar, 300);
  if (!frame) return std::nullopt;
  const auto it = frame->find(name);
  return it == frame->end() ? std::nullopt : std::optional(it->second.type);
}

const TableDef* Session::Impl::tableOfText(std::string_view text) {
  tsql::ast::Name name;
  name.parts = splitName(text);
  return table(name);
}

const TableDef* Session::Impl::tableOfId(std::int64_t id) {
  const DatabaseCatalog* catalog = catalogOf(current);
  if (!catalog) return nullptr;
  for (const auto& [name, t] : catalog->tables)
    if (t->id == id) return t.get();
  return nullptr;
}

std::optional<std::int64_t> Session::Impl::objectId(std::string_view text, std::string_view type) {
  tsql::ast::Name name;
  name.parts = splitName(text);
  const ObjectPlace p = place(name);
  if (!p.known) return std::nullopt;
  if (p.temporary && name.parts.size() != 3) return std::nullopt;  // # tables lie in tempdb
  std::string wanted(type);
  while (!wanted.empty() && wanted.back() == ' ') wanted.pop_back();
  auto fits = [&](const char* t) { return wanted.empty() || tsql::sameName(wanted, t); };
  const DatabaseCatalog* c = p.temporary ? temporary.get() : catalogOf(p.database);
  if (!c) return std::nullopt;
  if (const auto it = c->tables.find(p.object); it != c->tables.end())
    return fits(it->second->system ? "S" : "U") ? std::optional(it->second->id) : std::nullopt;
  if (const auto it = c->procedures.find(p.object); it != c->procedures.end())
    return fits("P") ? std::optional(it->second.id) : std::nullopt;
  return std::nullopt;
}

}  // namespace embedded
