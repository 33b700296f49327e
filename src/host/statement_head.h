#pragma once
// What a statement does, read off its first words.

#include <string_view>

namespace host {

struct StatementHead {
  enum class Kind { other, select, insert, update, erase };
  Kind kind = Kind::other;
  std::string_view table;  // last part of the table's name, without brackets; of a selection the first table
  bool temporary = false;  // # tables and everything in tempdb
};

// Looks at the head of the text only (of a selection, as far as its first "from"). No allocation; the table's name is
// a part of the text.
StatementHead statementHead(std::string_view text);

}  // namespace host
