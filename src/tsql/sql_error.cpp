#include "tsql/sql_error.h"

namespace tsql {

void throwUnsupported(const std::string& construct, SourcePos pos) {
  throw SqlError(40000,
                 construct + " is not supported (line " + std::to_string(pos.line) + ", column " +
                     std::to_string(pos.column) + ")",
                 pos);
}

void throwSyntax(const std::string& word, SourcePos pos) {
  throw SqlError(102, "Incorrect syntax near '" + word + "'.", pos, 15);
}

}  // namespace tsql
