#pragma once
// The table behind a selection: where AddNew and Update write.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace odbc {

struct Selection {
  std::string table;               // as the statement spells it: "[db]..[t]"
  std::vector<std::string> parts;  // of its name, without brackets or quotes: {"db", "", "t"}
  bool allColumns = false;         // the list has a *: columns are known by their names
  // Otherwise for each field the column that it shows, empty for an expression.
  std::vector<std::string> columns;
};

// Of "select [top n] ... from t [where ...] [order by ...]" as the only statement of a batch. Nullopt for everything
// else (joins, groups, several statements): rows of such a result belong to no single table.
std::optional<Selection> selectionOf(std::string_view batch);

}  // namespace odbc
