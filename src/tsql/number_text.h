#pragma once
// Numbers as text: what the server reads as a number, and how it writes one.

#include <cstdint>
#include <string>
#include <string_view>

#include "tsql/decimal.h"

namespace tsql {

enum class ReadStatus {
  ok,
  syntax,    // not a number of this kind
  overflow,  // a number, beyond the range
};

template <class T>
struct ReadNumber {
  ReadStatus status = ReadStatus::syntax;
  T value{};
};

// Blanks at both ends are ignored everywhere; a text of blanks is 0, except as a decimal, where it is no number.
//
// Sign and digits. A sign alone is 0.
ReadNumber<std::int64_t> readInteger(std::string_view text);
// Sign, digits with a point; no exponent. More digits than scale are rounded half away from zero.
ReadNumber<Int128> readDecimal(std::string_view text, int scale);
// Units of 1/10000. Sign and currency sign in either order, commas anywhere before the point; each part may be missing.
ReadNumber<std::int64_t> readMoney(std::string_view text);
// With an exponent after e or d. Too small a number is 0.
ReadNumber<double> readFloat(std::string_view text);

// Six significant digits: "0.1", "1e+010", "1.23457e-005". The exponent has at least three digits.
std::string floatText(double value);
// One digit before the point and the given number behind it, always with an exponent: "1.2345679e+000".
std::string scientificText(double value, int decimals);
// Style 0 has two decimals, 1 two decimals and commas between thousands, 2 and 126 four decimals.
std::string moneyText(std::int64_t units, int style);

}  // namespace tsql
