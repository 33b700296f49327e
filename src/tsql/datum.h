#pragma once
// Datum: a value in the form in which statements run (see SqlType), and the conversions between types.

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "tsql/types.h"

namespace tsql {

using Blob = std::vector<std::uint8_t>;
using Datum = std::variant<std::monostate, std::int64_t, double, std::string, Blob>;  // monostate is Null

inline bool isNull(const Datum& d) {
  return d.index() == 0;
}

enum class ConvertMode {
  cast,   // cast, convert, implicit conversion: a text too long is cut
  store,  // assignment to a column: a text too long is 8152
};

// The value as another type. style: convert's third argument, 0 when absent. Null stays Null.
// Throws SqlError as the server does: 245 text to int kinds and bit, 8114 text to decimal and float, 235 text to money,
// 241 text to datetime, 242 out of range, 8115 overflow, 220 overflow of tinyint and smallint, 8152 text too long.
Datum convert(const Datum& value, const SqlType& from, const SqlType& to, int style = 0,
              ConvertMode mode = ConvertMode::cast);

}  // namespace tsql
