#pragma once
// The columns of a result set: how they are called, what the server has in them, how they are fetched.

#include <string>
#include <string_view>
#include <vector>

#include "odbc/statement.h"

namespace odbc {

// What a cell becomes.
enum class CellKind { boolean, integer, decimal, real, dateTime, text, guid, bytes };

struct Column {
  std::string name;
  SQLSMALLINT sqlType = 0;
  SQLULEN size = 0;  // characters, bytes or digits, as the driver declares it
  SQLSMALLINT scale = 0;
  bool identity = false;
  CellKind kind = CellKind::text;
  bool isLong = false;  // without a useful limit of size: fetched in pieces
};

// Of the result that the statement stands on.
std::vector<Column> describeColumns(Statement& statement);

bool isNumeric(CellKind kind);

// Columns by name, without regard to ASCII case; of equal names the first. -1 when there is none.
class ColumnIndex {
public:
  explicit ColumnIndex(const std::vector<Column>& columns);
  int find(std::string_view name) const;

private:
  std::vector<std::pair<std::string, int>> byName_;  // lower case, sorted
};

}  // namespace odbc
