#pragma once
// SqlError: a failure with the server's number and wording.

#include <stdexcept>
#include <string>

namespace tsql {

// A place in a batch: byte offset from 0, line and column (characters) from 1.
struct SourcePos {
  std::size_t offset = 0;
  int line = 1;
  int column = 1;
};

class SqlError : public std::runtime_error {
public:
  SqlError(int errorNumber, const std::string& message, SourcePos place = {}, int level = 16)
      : std::runtime_error(message), number(errorNumber), severity(level), pos(place) {}
  int number;
  int severity;
  SourcePos pos;
};

// A construct that the dialect has and this server does not: number 40000, text "... is not supported (line l, column
// c)".
[[noreturn]] void throwUnsupported(const std::string& construct, SourcePos pos);
// 102: Incorrect syntax near 'word'.
[[noreturn]] void throwSyntax(const std::string& word, SourcePos pos);

}  // namespace tsql
