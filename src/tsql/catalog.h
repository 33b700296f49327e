#pragma once
// Catalog: what the binder may ask about databases, tables and procedures.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/ast.h"
#include "tsql/types.h"

namespace tsql {

struct ColumnDef {
  std::string name;
  SqlType type;
  bool nullable = true;
  std::optional<ast::IdentityClause> identity;
  std::string defaultText;      // source text of the default expression, empty when there is none
  std::string defaultName;      // its constraint's name
  bool defaultInTable = false;  // the default is a constant that the storage itself fills in
  std::string computedText;     // source text of a computed column, else empty
  bool rowGuid = false;
};

struct KeyPart {
  int column = 0;  // position in TableDef::columns
  bool descending = false;
};

struct KeyDef {
  std::string name;
  bool unique = false, primary = false, constraint = false;  // constraint: declared in the table, else an index
  std::vector<KeyPart> parts;
  std::string storageName;  // of the SQLite index; empty when the row number itself is the key
};

struct CheckDef {
  std::string name, text;
};

struct TableDef {
  std::int64_t id = 0;
  std::string database;  // as spelled at creation; "tempdb" for # tables
  std::string name;
  std::string storage;              // quoted SQLite name with its schema: "\"d1\".\"code\""
  std::string schemaName;           // SQLite schema, unquoted: "d1", "temp"
  std::string storageName;          // SQLite table name, unquoted
  std::string rowNumber = "rowid";  // a name under which SQLite's row number can be reached
  bool temporary = false, system = false;
  std::vector<ColumnDef> columns;
  std::vector<KeyDef> keys;
  std::vector<CheckDef> checks;

  int find(std::string_view columnName) const;  // -1 when missing; without regard to case
  int identityColumn() const;                   // -1 when there is none
};

// Names compare without regard to case (ASCII) everywhere.
class Catalog {
public:
  virtual ~Catalog() = default;
  // The table that a name of one to three parts means in the current database. Null when there is none (the binder says
  // 208). The pointer stays good until the end of the statement.
  virtual const TableDef* table(const ast::Name& name) = 0;
  // Type of a variable in force ("@x"), nullopt for an unknown one (137).
  virtual std::optional<SqlType> variable(std::string_view name) = 0;
  virtual std::string currentDatabase() const = 0;
};

bool sameName(std::string_view a, std::string_view b);  // ASCII letters without regard to case

}  // namespace tsql
