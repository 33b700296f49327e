#include "tsql/decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "tsql/sql_error.h"
#include "tsql/wide_integer.h"

namespace tsql {
namespace {

UInt128 magnitude(Int128 value) {
  return value < 0 ? -static_cast<UInt128>(value) : static_cast<UInt128>(value);
}

Int128 withSign(UInt128 value, bool negative) {
  if (value >= static_cast<UInt128>(powerOfTen(maxDecimalDigits))) throwDecimalOverflow();
  return negative ? -static_cast<Int128>(value) : static_cast<Int128>(value);
}

Int128 withSign(const Wide& value, bool negative) {
  if (!value.fits128()) throwDecimalOverflow();
  return withSign(value.low128(), negative);
}

// value * 10^exponent; 8115 beyond 256 bits, which is far beyond 38 digits.
void scaleUp(Wide& value, int exponent) {
  for (; exponent > 0; exponent -= 18)
    if (!value.multiplyLimb(static_cast<std::uint64_t>(powerOfTen(std::min(exponent, 18))))) throwDecimalOverflow();
}

void scaleDownCut(Wide& value, int exponent) {
  for (; exponent > 0; exponent -= 18) value.divideLimb(static_cast<std::uint64_t>(powerOfTen(std::min(exponent, 18))));
}

// Half away from zero needs no more than the first digit that is dropped.
void scaleDownRounded(Wide& value, int exponent) {
  if (exponent <= 0) return;
  scaleDownCut(value, exponent - 1);
  if (value.divideLimb(10) >= 5) value.add(Wide(1));
}

Int128 bring(Wide value, bool negative, int from, int to) {
  if (to >= from) {
    if (value.isZero()) return 0;
    scaleUp(value, to - from);
  } else {
    scaleDownRounded(value, from - to);
  }
  return withSign(value, negative);
}

[[noreturn]] void throwDivideByZero() {
  throw SqlError(8134, "Divide by zero error encountered.");
}

bool isSmall(Int128 value) {
  return value >= INT64_MIN && value <= INT64_MAX;
}

}  // namespace

void throwDecimalOverflow() {
  throw SqlError(8115, "Arithmetic overflow error converting expression to data type numeric.");
}

Int128 powerOfTen(int exponent) {
  static const auto powers = [] {
    std::array<Int128, maxDecimalDigits + 1> all{};
    all[0] = 1;
    for (std::size_t i = 1; i < all.size(); ++i) all[i] = all[i - 1] * 10;
    return all;
  }();
  return powers.at(static_cast<std::size_t>(exponent));
}

Int128 decimalFromBytes(const std::uint8_t* bytes) {
  UInt128 value = 0;
  for (int i = 0; i < 16; ++i) value = value << 8 | bytes[i];
  return static_cast<Int128>(value);
}

Blob decimalToBytes(Int128 units) {
  Blob bytes(16);
  auto value = static_cast<UInt128>(units);
  for (std::size_t i = 16; i-- > 0; value >>= 8) bytes[i] = static_cast<std::uint8_t>(value);
  return bytes;
}

Blob decimalSortKey(Int128 units) {
  Blob bytes = decimalToBytes(units);
  bytes[0] ^= 0x80;  // negative values before positive ones
  return bytes;
}

Int128 decimalFromDatum(const Datum& value) {
  if (auto* small = std::get_if<std::int64_t>(&value)) return *small;
  if (auto* wide = std::get_if<Blob>(&value); wide && wide->size() == 16) return decimalFromBytes(wide->data());
  throw SqlError(8114, "Error converting data type varbinary to numeric.");
}

Datum decimalToDatum(Int128 units) {
  if (isSmall(units)) return static_cast<std::int64_t>(units);
  return decimalToBytes(units);
}

Int128 checkPrecision(Int128 units, int precision) {
  const Int128 limit = powerOfTen(std::clamp(precision, 1, maxDecimalDigits));
  if (units >= limit || units <= -limit) throwDecimalOverflow();
  return units;
}

Int128 rescale(Int128 units, int from, int to) {
  if (from == to) return units;
  if (isSmall(units) && to > from && to - from <= 18) return units * powerOfTen(to - from);
  return bring(Wide(magnitude(units)), units < 0, from, to);
}

Int128 rescaleCut(Int128 units, int from, int to) {
  if (to >= from) return rescale(units, from, to);
  Wide value(magnitude(units));
  scaleDownCut(value, from - to);
  return withSign(value, units < 0);
}

std::string decimalText(Int128 units, int scale) {
  std::string digits;  // last digit first
  for (UInt128 rest = magnitude(units); rest != 0; rest /= 10)
    digits += static_cast<char>('0' + static_cast<int>(rest % 10));
  const auto decimals = static_cast<std::size_t>(std::max(scale, 0));
  if (digits.size() <= decimals) digits.append(decimals + 1 - digits.size(), '0');
  if (decimals > 0) digits.insert(decimals, 1, '.');
  if (units < 0) digits += '-';
  std::reverse(digits.begin(), digits.end());
  return digits;
}

double decimalToDouble(Int128 units, int scale) {
  constexpr Int128 exact = Int128{1} << 53;
  // Both operands are exact doubles, so the quotient is rounded once.
  if (units <= exact && units >= -exact && scale <= 22)
    return static_cast<double>(units) / static_cast<double>(powerOfTen(scale));
  const std::string text = decimalText(units, scale);
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

std::optional<DecimalLiteral> parseDecimalLiteral(std::string_view text) {
  DecimalLiteral literal{0, 0, 0};
  bool point = false, digits = false;
  for (const char c : text) {
    if (c == '.' && !point) {
      point = true;
      continue;
    }
    if (c < '0' || c > '9') return std::nullopt;
    digits = true;
    if (point) ++literal.scale;
    if (point || literal.units != 0 || c != '0') ++literal.precision;
    if (literal.precision > maxDecimalDigits) return std::nullopt;
    literal.units = literal.units * 10 + (c - '0');
  }
  if (!digits) return std::nullopt;
  literal.precision = std::max(literal.precision, 1);
  return literal;
}

Int128 addDecimal(Int128 a, int sa, Int128 b, int sb, int sr) {
  if (sa == sb && sa == sr) {
    Int128 sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) throwDecimalOverflow();
    return checkPrecision(sum, maxDecimalDigits);
  }
  const int common = std::max(sa, sb);
  Wide left(magnitude(a)), right(magnitude(b));
  scaleUp(left, common - sa);
  scaleUp(right, common - sb);
  bool negative = a < 0;
  if ((a < 0) == (b < 0)) {
    left.add(right);
  } else if (left.compare(right) >= 0) {
    left.subtract(right);
  } else {
    right.subtract(left);
    left = right;
    negative = b < 0;
  }
  return bring(left, negative, common, sr);
}

Int128 subtractDecimal(Int128 a, int sa, Int128 b, int sb, int sr) {
  return addDecimal(a, sa, -b, sb, sr);
}

Int128 multiplyDecimal(Int128 a, int sa, Int128 b, int sb, int sr) {
  const bool negative = (a < 0) != (b < 0);
  if (isSmall(a) && isSmall(b)) return rescale(checkPrecision(a * b, maxDecimalDigits), sa + sb, sr);
  return bring(Wide::product(magnitude(a), magnitude(b)), negative, sa + sb, sr);
}

Int128 divideDecimal(Int128 a, int sa, Int128 b, int sb, int sr) {
  if (b == 0) throwDivideByZero();
  const bool negative = (a < 0) != (b < 0);
  // a / 10^sa : b / 10^sb in units of 10^-sr is a * 10^shift / b.
  const int shift = sr - sa + sb;
  if (shift >= 0 && shift <= 18 && isSmall(a))
    return withSign(magnitude(a * powerOfTen(shift)) / magnitude(b), negative);
  Wide dividend(magnitude(a)), divisor(magnitude(b)), quotient, rest;
  if (dividend.isZero()) return 0;
  if (shift >= 0) {
    scaleUp(dividend, shift);
  } else {
    scaleUp(divisor, -shift);
  }
  Wide::divide(dividend, divisor, quotient, rest);
  return withSign(quotient, negative);
}

Int128 moduloDecimal(Int128 a, int sa, Int128 b, int sb, int sr) {
  if (b == 0) throwDivideByZero();
  const int common = std::max(sa, sb);
  Wide dividend(magnitude(a)), divisor(magnitude(b)), quotient, rest;
  scaleUp(dividend, common - sa);
  scaleUp(divisor, common - sb);
  Wide::divide(dividend, divisor, quotient, rest);
  return bring(rest, a < 0, common, sr);
}

int compareDecimal(Int128 a, int sa, Int128 b, int sb) {
  if (sa == sb || (a < 0) != (b < 0) || a == 0 || b == 0) return a < b ? -1 : a > b ? 1 : 0;
  const int common = std::max(sa, sb);
  Wide left(magnitude(a)), right(magnitude(b));
  scaleUp(left, common - sa);
  scaleUp(right, common - sb);
  return a < 0 ? right.compare(left) : left.compare(right);
}

}  // namespace tsql
