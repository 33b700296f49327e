#pragma once
// Catalog store: what a database knows about its own tables, kept in tables of the same file, so that it commits and
// rolls back with them. `sysobjects` and `syscolumns` read these tables.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "embedded/sqlite.h"
#include "tsql/catalog.h"

namespace embedded {

struct ProcedureDef {
  std::int64_t id = 0;
  std::string name, text;
};

struct LessNoCase {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const;
};

// One database as it stood when it was read.
struct DatabaseCatalog {
  std::string name;        // as spelled
  std::string schemaName;  // SQLite's name of the attached file
  std::map<std::string, std::unique_ptr<tsql::TableDef>, LessNoCase> tables;
  std::map<std::string, ProcedureDef, LessNoCase> procedures;
  std::map<std::string, std::string, LessNoCase> otherObjects;  // name -> type, e.g. a view "V"
};

std::string lowerName(std::string_view name);

// What syscolumns says about a type. nullopt where the server says Null.
struct TypeFacts {
  int number = 0;  // xtype
  int length = 0;  // bytes of a value; -1 for (max)
  std::optional<int> precision, scale;
};
TypeFacts typeFacts(const tsql::SqlType& type);

// Makes the store's tables in a new, empty database.
void createCatalog(sqlite3* db, const std::string& schemaName);
std::shared_ptr<const DatabaseCatalog> loadCatalog(sqlite3* db, const std::string& name, const std::string& schemaName,
                                                   bool temporary);

// Writers; each throws SqliteFailure. They give the new object's id.
std::int64_t storeTable(sqlite3* db, const std::string& schemaName, const tsql::TableDef& table);
void storeColumn(sqlite3* db, const std::string& schemaName, std::int64_t table, int position,
                 const tsql::ColumnDef& column);
void storeKey(sqlite3* db, const std::string& schemaName, std::int64_t table, const tsql::KeyDef& key);
void storeCheck(sqlite3* db, const std::string& schemaName, std::int64_t table, const tsql::CheckDef& check);
std::int64_t storeProcedure(sqlite3* db, const std::string& schemaName, const std::string& name,
                            const std::string& text);
void dropObject(sqlite3* db, const std::string& schemaName, std::int64_t id);
void dropKey(sqlite3* db, const std::string& schemaName, std::int64_t table, const std::string& name);
// All columns of a table anew (after one was dropped or changed).
void replaceColumns(sqlite3* db, const std::string& schemaName, const tsql::TableDef& table);

}  // namespace embedded
