#include "embedded/catalog_store.h"

#include <algorithm>

#include "tsql/emitter.h"

namespace embedded {

using tsql::ColumnDef;
using tsql::KeyDef;
using tsql::quoteName;
using tsql::SqlType;
using tsql::TableDef;
using tsql::TypeKind;
using tsql::typeOf;

namespace {

// Numbers of objects begin here, as a server's own tables have the small ones.
constexpr std::int64_t firstObjectId = 1000000;

std::string in(const std::string& schema, const char* table) {
  return quoteName(schema) + "." + table;
}

tsql::Datum text(const std::string& s) {
  return s;
}
tsql::Datum number(std::int64_t n) {
  return n;
}

void write(sqlite3* db, const std::string& sql, const std::vector<tsql::Datum>& values) {
  PreparedStatement s(db, sql);
  for (std::size_t i = 0; i < values.size(); ++i) s.bind(static_cast<int>(i) + 1, values[i]);
  s.step();
}

std::string partsText(const std::vector<tsql::KeyPart>& parts) {
  std::string s;
  for (const auto& p : parts) s += (s.empty() ? "" : ",") + std::to_string(p.column) + (p.descending ? "d" : "");
  return s;
}

std::vector<tsql::KeyPart> partsOf(const std::string& s) {
  std::vector<tsql::KeyPart> parts;
  for (std::size_t i = 0; i < s.size();) {
    tsql::KeyPart p;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9') p.column = p.column * 10 + (s[i++] - '0');
    if (i < s.size() && s[i] == 'd') {
      p.descending = true;
      ++i;
    }
    if (i < s.size()) ++i;  // the comma
    parts.push_back(p);
  }
  return parts;
}

std::string freeRowName(const TableDef& t) {
  for (const char* name : {"rowid", "_rowid_", "oid"})
    if (t.find(name) < 0) return name;
  return "rowid";
}

ColumnDef column(const char* name, SqlType type, bool nullable = true) {
  ColumnDef c;
  c.name = name;
  c.type = type;
  c.nullable = nullable;
  return c;
}

void addSystemTable(DatabaseCatalog& c, const char* name, const char* storage, std::int64_t id,
                    std::vector<ColumnDef> columns) {
  auto t = std::make_unique<TableDef>();
  t->id = id;
  t->database = c.name;
  t->name = name;
  t->schemaName = c.schemaName;
  t->storageName = storage;
  t->storage = in(c.schemaName, storage);
  t->system = true;
  t->columns = std::move(columns);
  c.tables.emplace(name, std::move(t));
}

void addSystemTables(DatabaseCatalog& c) {
  const auto name = typeOf(TypeKind::nvarchar, 128), integer = typeOf(TypeKind::integer),
             smallint = typeOf(TypeKind::smallint);
  addSystemTable(
      c, "sysobjects", "_ts_objects", 1,
      {column("name", name, false), column("id", integer, false), column("xtype", typeOf(TypeKind::char_, 2), false),
       column("uid", smallint), column("parent_obj", integer, false),
       column("crdate", typeOf(TypeKind::datetime), false), column("type", typeOf(TypeKind::char_, 2))});
  addSystemTable(c, "syscolumns", "_ts_columns", 3,
                 {column("name", name), column("id", integer, false), column("xtype", typeOf(TypeKind::tinyint), false),
                  column("length", smallint, false), column("colid", smallint), column("prec", smallint),
                  column("scale", integer), column("isnullable", integer)});
}

void readColumns(sqlite3* db, DatabaseCatalog& c, const std::unordered_map<std::int64_t, TableDef*>& byId) {
  PreparedStatement s(
      db,
      "SELECT id,name,packed,isnullable,seed,increment,default_text,default_name,default_stored,computed_text,"
      "rowguid FROM " +
          in(c.schemaName, "_ts_columns") + " ORDER BY id,colid");
  while (s.step()) {
    const auto it = byId.find(s.integer(0));
    if (it == byId.end()) continue;
    ColumnDef d;
    d.name = s.text(1);
    d.type = SqlType::unpack(s.integer(2));
    d.nullable = s.integer(3) != 0;
    if (sqlite3_column_type(s.get(), 4) != SQLITE_NULL)
      d.identity = tsql::ast::IdentityClause{s.integer(4), s.integer(5)};
    d.defaultText = s.text(6);
    d.defaultName = s.text(7);
    d.defaultInTable = s.integer(8) != 0;
    d.computedText = s.text(9);
    d.rowGuid = s.integer(10) != 0;
    it->second->columns.push_back(std::move(d));
  }
}

void readKeys(sqlite3* db, DatabaseCatalog& c, const std::unordered_map<std::int64_t, TableDef*>& byId) {
  PreparedStatement s(db, "SELECT table_id,name,is_unique,is_primary,is_constraint,parts,storage FROM " +
                              in(c.schemaName, "_ts_keys") + " ORDER BY rowid");
  while (s.step()) {
    const auto it = byId.find(s.integer(0));
    if (it == byId.end()) continue;
    it->second->keys.push_back(
        {s.text(1), s.integer(2) != 0, s.integer(3) != 0, s.integer(4) != 0, partsOf(s.text(5)), s.text(6)});
  }
}

void readChecks(sqlite3* db, DatabaseCatalog& c, const std::unordered_map<std::int64_t, TableDef*>& byId) {
  PreparedStatement s(db, "SELECT table_id,name,text FROM " + in(c.schemaName, "_ts_checks") + " ORDER BY rowid");
  while (s.step())
    if (const auto it = byId.find(s.integer(0)); it != byId.end()) it->second->checks.push_back({s.text(1), s.text(2)});
}

std::int64_t nextId(sqlite3* db, const std::string& schema) {
  PreparedStatement s(
      db, "SELECT max(coalesce(max(id),0)," + std::to_string(firstObjectId) + ")+1 FROM " + in(schema, "_ts_objects"));
  s.step();
  return s.integer(0);
}

}  // namespace

bool LessNoCase::operator()(std::string_view a, std::string_view b) const {
  auto lower = [](char ch) { return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch + 32) : ch; };
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) {
    return static_cast<unsigned char>(lower(x)) < static_cast<unsigned char>(lower(y));
  });
}

std::string lowerName(std::string_view name) {
  std::string s(name);
  for (auto& ch : s)
    if (ch >= 'A' && ch <= 'Z') ch = static_cast<char>(ch + 32);
  return s;
}

TypeFacts typeFacts(const SqlType& t) {
  switch (t.kind) {
    case TypeKind::bit:
      return {104, 1, 1, 0};
    case TypeKind::tinyint:
      return {48, 1, 3, 0};
    case TypeKind::smallint:
      return {52, 2, 5, 0};
    case TypeKind::integer:
      return {56, 4, 10, 0};
    case TypeKind::bigint:
      return {127, 8, 19, 0};
    case TypeKind::smallmoney:
      return {122, 4, 10, 4};
    case TypeKind::money:
      return {60, 8, 19, 4};
    case TypeKind::decimal:
      return {106, t.precision <= 9 ? 5 : t.precision <= 19 ? 9 : t.precision <= 28 ? 13 : 17, t.precision, t.scale};
    case TypeKind::real:
      return {59, 4, 24, {}};
    case TypeKind::float_:
      return {62, 8, 53, {}};
    case TypeKind::smalldatetime:
      return {58, 4, 16, 0};
    case TypeKind::datetime:
      return {61, 8, 23, 3};
    case TypeKind::uniqueidentifier:
      return {36, 16, {}, {}};
    case TypeKind::char_:
      return {175, t.length, t.length, {}};
    case TypeKind::varchar:
      return {167, t.length, t.length, {}};
    case TypeKind::nchar:
      return {239, t.length * 2, t.length, {}};
    case TypeKind::nvarchar:
      return {231, t.length == SqlType::maxLength ? -1 : t.length * 2, t.length, {}};
    case TypeKind::text:
      return {35, 16, {}, {}};
    case TypeKind::ntext:
      return {99, 16, {}, {}};
    case TypeKind::binary:
      return {173, t.length, t.length, {}};
    case TypeKind::varbinary:
      return {165, t.length, t.length, {}};
    case TypeKind::image:
      return {34, 16, {}, {}};
    case TypeKind::null:
      break;
  }
  return {};
}

void createCatalog(sqlite3* db, const std::string& schemaName) {
  const bool own = sqlite3_get_autocommit(db) != 0;
  if (own) run(db, "BEGIN");
  run(db, "CREATE TABLE " + in(schemaName, "_ts_objects") +
              "(name TEXT COLLATE TQ,id INTEGER PRIMARY KEY,xtype TEXT COLLATE TQ,uid INTEGER,parent_obj "
              "INTEGER,crdate INTEGER,"
              "type TEXT COLLATE TQ,text TEXT);"
              "CREATE TABLE " +
              in(schemaName, "_ts_columns") +
              "(id INTEGER,colid INTEGER,name TEXT COLLATE TQ,xtype INTEGER,length INTEGER,prec INTEGER,scale "
              "INTEGER,isnullable "
              "INTEGER,packed INTEGER,seed INTEGER,increment INTEGER,default_text TEXT,default_name "
              "TEXT,default_stored INTEGER,"
              "computed_text TEXT,rowguid INTEGER);"
              "CREATE INDEX " +
              in(schemaName, "_ts_columns_id") +
              " ON _ts_columns(id,colid);"
              "CREATE TABLE " +
              in(schemaName, "_ts_keys") +
              "(table_id INTEGER,name TEXT COLLATE TQ,is_unique INTEGER,is_primary INTEGER,is_constraint INTEGER,parts "
              "TEXT,"
              "storage TEXT);"
              "CREATE TABLE " +
              in(schemaName, "_ts_checks") +
              "(table_id INTEGER,name TEXT COLLATE TQ,text TEXT);"
              "CREATE TABLE " +
              in(schemaName, "_ts_identity") + "(table_id INTEGER PRIMARY KEY,last INTEGER)");
  if (own) run(db, "COMMIT");
}

std::shared_ptr<const DatabaseCatalog> loadCatalog(sqlite3* db, const std::string& name, const std::string& schemaName,
                                                   bool temporary) {
  auto c = std::make_shared<DatabaseCatalog>();
  c->name = name;
  c->schemaName = schemaName;
  std::unordered_map<std::int64_t, TableDef*> byId;
  {
    PreparedStatement s(db, "SELECT id,name,rtrim(xtype),text FROM " + in(schemaName, "_ts_objects") + " ORDER BY id");
    while (s.step()) {
      const std::string type = s.text(2);
      if (type == "P") {
        c->procedures[s.text(1)] = {s.integer(0), s.text(1), s.text(3)};
      } else if (type == "U") {
        auto t = std::make_unique<TableDef>();
        t->id = s.integer(0);
        t->name = s.text(1);
        t->database = name;
        t->schemaName = schemaName;
        t->storageName = s.text(3).empty() ? t->name : s.text(3);
        t->storage = quoteName(schemaName) + "." + quoteName(t->storageName);
        t->temporary = temporary;
        // A later table hides an earlier one of its name: a procedure's # table its caller's.
        auto& known = c->tables[t->name];
        if (known) byId.erase(known->id);
        known = std::move(t);
        byId[known->id] = known.get();
      } else {
        c->otherObjects[s.text(1)] = type;
      }
    }
  }
  readColumns(db, *c, byId);
  readKeys(db, *c, byId);
  readChecks(db, *c, byId);
  for (auto& [id, t] : byId) t->rowNumber = freeRowName(*t);
  if (!temporary) addSystemTables(*c);
  return c;
}

std::int64_t storeTable(sqlite3* db, const std::string& schemaName, const TableDef& table) {
  const auto id = table.id ? table.id : nextId(db, schemaName);  // a table that is made anew keeps its number
  write(db,
        "INSERT INTO " + in(schemaName, "_ts_objects") +
            "(name,id,xtype,uid,parent_obj,crdate,type,text) VALUES(?,?,'U',1,0,ts_getdate(),'U',?)",
        {text(table.name), number(id), table.storageName == table.name ? tsql::Datum{} : text(table.storageName)});
  for (std::size_t i = 0; i < table.columns.size(); ++i)
    storeColumn(db, schemaName, id, static_cast<int>(i), table.columns[i]);
  for (const auto& k : table.keys) storeKey(db, schemaName, id, k);
  for (const auto& k : table.checks) storeCheck(db, schemaName, id, k);
  return id;
}

void storeColumn(sqlite3* db, const std::string& schemaName, std::int64_t table, int position,
                 const ColumnDef& column) {
  const TypeFacts facts = typeFacts(column.type);
  const auto orNull = [](std::optional<int> n) { return n ? number(*n) : tsql::Datum{}; };
  std::vector<tsql::Datum> v = {number(table),
                                number(position + 1),
                                text(column.name),
                                number(facts.number),
                                number(facts.length),
                                orNull(facts.precision),
                                orNull(facts.scale),
                                number(column.nullable ? 1 : 0),
                                number(column.type.pack())};
  if (column.identity) {
    v.push_back(number(column.identity->seed));
    v.push_back(number(column.identity->increment));
  } else {
    v.insert(v.end(), 2, tsql::Datum{});
  }
  v.push_back(text(column.defaultText));
  v.push_back(text(column.defaultName));
  v.push_back(number(column.defaultInTable ? 1 : 0));
  v.push_back(text(column.computedText));
  v.push_back(number(column.rowGuid ? 1 : 0));
  write(db,
        "INSERT INTO " + in(schemaName, "_ts_columns") +
            "(id,colid,name,xtype,length,prec,scale,isnullable,packed,seed,increment,default_text,default_name,default_"
            "stored,"
            "computed_text,rowguid) VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
        v);
}

void storeKey(sqlite3* db, const std::string& schemaName, std::int64_t table, const KeyDef& key) {
  write(db, "INSERT INTO " + in(schemaName, "_ts_keys") + " VALUES(?,?,?,?,?,?,?)",
        {number(table), text(key.name), number(key.unique), number(key.primary), number(key.constraint),
         text(partsText(key.parts)), text(key.storageName)});
}

void storeCheck(sqlite3* db, const std::string& schemaName, std::int64_t table, const tsql::CheckDef& check) {
  write(db, "INSERT INTO " + in(schemaName, "_ts_checks") + " VALUES(?,?,?)",
        {number(table), text(check.name), text(check.text)});
}

std::int64_t storeProcedure(sqlite3* db, const std::string& schemaName, const std::string& name,
                            const std::string& body) {
  const auto id = nextId(db, schemaName);
  write(db,
        "INSERT INTO " + in(schemaName, "_ts_objects") +
            "(name,id,xtype,uid,parent_obj,crdate,type,text) VALUES(?,?,'P',1,0,ts_getdate(),'P',?)",
        {text(name), number(id), text(body)});
  return id;
}

void dropObject(sqlite3* db, const std::string& schemaName, std::int64_t id) {
  for (const char* table : {"_ts_objects WHERE id=?", "_ts_columns WHERE id=?", "_ts_keys WHERE table_id=?",
                            "_ts_checks WHERE table_id=?", "_ts_identity WHERE table_id=?"})
    write(db, "DELETE FROM " + in(schemaName, table), {number(id)});
}

void dropKey(sqlite3* db, const std::string& schemaName, std::int64_t table, const std::string& name) {
  write(db, "DELETE FROM " + in(schemaName, "_ts_keys") + " WHERE table_id=? AND name=?", {number(table), text(name)});
}

void replaceColumns(sqlite3* db, const std::string& schemaName, const TableDef& table) {
  write(db, "DELETE FROM " + in(schemaName, "_ts_columns") + " WHERE id=?", {number(table.id)});
  for (std::size_t i = 0; i < table.columns.size(); ++i)
    storeColumn(db, schemaName, table.id, static_cast<int>(i), table.columns[i]);
}

}  // namespace embedded
