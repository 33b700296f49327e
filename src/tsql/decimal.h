#pragma once
// Exact decimals of up to 38 digits.
//
// A decimal(p,s) is a count of units of 10^-s: 1.50 as decimal(5,2) is 150. The scale is not part of the value; it
// stands in the type and every function here gets it. Rounding is half away from zero. A result of more than 38 digits
// throws SqlError 8115; nothing wraps.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tsql/datum.h"

namespace tsql {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

inline constexpr int maxDecimalDigits = 38;

[[noreturn]] void throwDecimalOverflow();  // 8115, of an expression of type numeric

// 10^exponent, exponent 0 to 38.
Int128 powerOfTen(int exponent);

// The running form: a 64-bit integer where it fits, otherwise 16 bytes, big-endian two's complement.
// decimalFromDatum throws SqlError 8114 for any other kind of value.
Int128 decimalFromDatum(const Datum& value);
Datum decimalToDatum(Int128 units);
Int128 decimalFromBytes(const std::uint8_t* bytes);  // 16 of them
Blob decimalToBytes(Int128 units);
// 16 bytes whose byte order is the order of the values (of one scale).
Blob decimalSortKey(Int128 units);

// units, or 8115 when it has more digits than precision.
Int128 checkPrecision(Int128 units, int precision);

// The same value in units of 10^-to, rounded when digits are lost. 8115 beyond 38 digits.
Int128 rescale(Int128 units, int from, int to);
// The same, digits that are lost are cut.
Int128 rescaleCut(Int128 units, int from, int to);

// With a scale's digits behind the point, always: 150 of scale 2 is "1.50", -5 of scale 1 is "-0.5".
std::string decimalText(Int128 units, int scale);
// The nearest double.
double decimalToDouble(Int128 units, int scale);

// A decimal literal: digits with at most one point, without sign, exponent and blanks.
struct DecimalLiteral {
  Int128 units = 0;
  int precision = 1;  // digits before the point (leading zeros left out) and behind it
  int scale = 0;
};
// nullopt for any other text and for more than 38 digits.
std::optional<DecimalLiteral> parseDecimalLiteral(std::string_view text);

// Arithmetic on operands of scales sa and sb with a result of scale sr. Intermediate results are exact (256 bits).
Int128 addDecimal(Int128 a, int sa, Int128 b, int sb, int sr);       // rounded
Int128 subtractDecimal(Int128 a, int sa, Int128 b, int sb, int sr);  // rounded
Int128 multiplyDecimal(Int128 a, int sa, Int128 b, int sb, int sr);  // rounded
Int128 divideDecimal(Int128 a, int sa, Int128 b, int sb, int sr);    // cut; 8134 when b is 0
Int128 moduloDecimal(Int128 a, int sa, Int128 b, int sb, int sr);    // sign of a; 8134 when b is 0
int compareDecimal(Int128 a, int sa, Int128 b, int sb);              // -1, 0, 1

}  // namespace tsql
