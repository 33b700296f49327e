#pragma once
// What a statement does, read off its first words.

#include <string_view>

namespace host {

struct StatementHead {
  enum class Kind { other, select, insert, update, erase };
  Kind kind = Kind::other;
  // Last part of the table's name, without brackets. Of a selection the table whose data it fetches: the chart of
  // accounts is joined to nearly everything and is no table's data, so that it is the last table of the from clause
  // other than code, or the first when there is no other. Empty for a derived table.
  std::string_view table;
  bool temporary = false;  // # tables and everything in tempdb
  bool qualified = false;  // the name has a part for the database or the owner
  bool condensed = false;  // of a selection: its rows are not rows of a table (distinct, group by)
};

// Looks at the head of the text only, of a selection at its from clause too. No allocation; the table's name is a part
// of the text.
StatementHead statementHead(std::string_view text);

// Of a batch the head of the last line that is a statement which changes rows: the driver tells of its rows alone. Of
// any other text its own head.
StatementHead lastChangeHead(std::string_view text);

}  // namespace host
