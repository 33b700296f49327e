// To numbers: bit and the int kinds, money, decimal, float.

#include <algorithm>
#include <limits>

#include "tsql/ascii.h"
#include "tsql/calendar.h"
#include "tsql/conversion.h"

namespace tsql::conversion {
namespace {

std::string nameOf(TypeKind k) {
  return typeOf(k).baseName();
}

struct Range {
  std::int64_t low, high;
};

Range rangeOf(TypeKind k) {
  switch (k) {
    case TypeKind::tinyint:
      return {0, 255};
    case TypeKind::smallint:
      return {-32768, 32767};
    case TypeKind::integer:
      return {INT32_MIN, INT32_MAX};
    case TypeKind::smallmoney:
      return {INT32_MIN, INT32_MAX};  // units of 1/10000
    default:
      return {INT64_MIN, INT64_MAX};
  }
}

int bytesOf(TypeKind k) {
  switch (k) {
    case TypeKind::bit:
    case TypeKind::tinyint:
      return 1;
    case TypeKind::smallint:
      return 2;
    case TypeKind::integer:
      return 4;
    default:
      return 8;
  }
}

// The value as the kind. From an int kind 220 names the value where the target is one of the small kinds.
Datum ranged(Int128 value, TypeKind to, bool fromExact) {
  if (to == TypeKind::bit) return std::int64_t{value != 0};
  const auto [low, high] = rangeOf(to);
  if (value >= low && value <= high) return static_cast<std::int64_t>(value);
  if (fromExact && (to == TypeKind::tinyint || to == TypeKind::smallint))
    throw SqlError(220, "Arithmetic overflow error for data type " + nameOf(to) +
                            ", value = " + std::to_string(static_cast<std::int64_t>(value)) + ".");
  throwOverflow(nameOf(to));
}

[[noreturn]] void throwTextToInteger(const Source& from, TypeKind to) {
  throw SqlError(245, "Conversion failed when converting the " + from.textName() + " value '" + from.text() +
                          "' to data type " + nameOf(to) + ".");
}

[[noreturn]] void throwTextBeyondInteger(const Source& from, TypeKind to) {
  const std::string begin = "The conversion of the " + from.textName() + " value '" + from.text() + "' overflowed an ";
  switch (to) {
    case TypeKind::tinyint:
      throw SqlError(244, begin + "INT1 column. Use a larger integer column.");
    case TypeKind::smallint:
      throw SqlError(244, begin + "INT2 column. Use a larger integer column.");
    case TypeKind::integer:
      throw SqlError(248, begin + "int column.");
    default:
      throwOverflow(nameOf(to));
  }
}

Datum textToBit(const Source& from) {
  std::string_view text = from.text();
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  if (isSpelled(text, "true")) return std::int64_t{1};
  if (isSpelled(text, "false")) return std::int64_t{0};
  const auto number = readInteger(text);
  if (number.status == ReadStatus::syntax) throwTextToInteger(from, TypeKind::bit);
  return std::int64_t{number.status == ReadStatus::overflow || number.value != 0};
}

Datum textToInteger(const Source& from, TypeKind to) {
  if (to == TypeKind::bit) return textToBit(from);
  const auto number = readInteger(from.text());
  if (number.status == ReadStatus::syntax) throwTextToInteger(from, to);
  const auto [low, high] = rangeOf(to);
  if (number.status == ReadStatus::overflow || number.value < low || number.value > high)
    throwTextBeyondInteger(from, to);
  return number.value;
}

// A float cut to an integer; compared as floats, since the cast itself is undefined out of range.
Datum floatToInteger(double value, TypeKind to) {
  if (to == TypeKind::bit) return std::int64_t{value != 0};
  const auto [low, high] = rangeOf(to);
  const double cut = std::trunc(value);
  // 2^63 itself is no int64, but the nearest double to the greatest one.
  if (!(cut >= static_cast<double>(low)) ||
      (to == TypeKind::bigint ? cut >= 9223372036854775808.0 : cut > static_cast<double>(high)))
    throwFloatOverflow(value, nameOf(to));
  return static_cast<std::int64_t>(cut);
}

// value * 10^scale, rounded half away from zero. Beyond the 17 digits that a float has there are zeros. nullopt beyond
// 38 digits.
std::optional<Int128> floatUnits(double value, int scale) {
  const double scaled = value * std::pow(10.0, scale);
  // The product is rounded once where 10^scale is exact, and an amount rarely has more than 15 digits.
  if (std::fabs(scaled) < 9007199254740992.0 && scale <= 22)
    return static_cast<Int128>(static_cast<std::int64_t>(std::round(scaled)));
  if (!(std::fabs(scaled) < 1e39)) return std::nullopt;
  std::string text = scientificText(value, 16);  // d.dddddddddddddddde+ddd
  const auto e = text.find('e');
  const int exponent = std::stoi(text.substr(e + 1));
  text.resize(e);
  Int128 digits = 0;
  for (const char c : text)
    if (c >= '0' && c <= '9') digits = digits * 10 + (c - '0');
  const int shift = exponent - 16 + scale;
  if (shift > maxDecimalDigits - 17) return std::nullopt;
  if (shift >= 0) {
    digits *= powerOfTen(shift);
  } else {
    digits = rescale(digits, -shift, 0);
  }
  return value < 0 ? -digits : digits;
}

}  // namespace

Datum toExactInteger(const Source& from, TypeKind to) {
  const TypeKind kind = from.kind();
  if (isText(kind)) return textToInteger(from, to);
  if (isExactInteger(kind)) return ranged(from.integer(), to, true);
  if (isApproximate(kind)) return floatToInteger(from.real(), to);
  if (isDate(kind)) {
    // Whole days, from noon on the next one; only a bit sees the time of day.
    const std::int64_t ticks = from.integer();
    return ranged(to == TypeKind::bit ? ticks : dayOf(ticks + ticksPerDay / 2), to, true);
  }
  if (isBinary(kind)) {
    return ranged(integerOfBytes(from.bytes(), bytesOf(to)), to, true);
  }
  // bit looks at the whole value; otherwise money is rounded and a decimal is cut.
  if (to == TypeKind::bit) return std::int64_t{from.units() != 0};
  if (isMoney(kind)) return ranged(rescale(from.units(), 4, 0), to, false);
  return ranged(rescaleCut(from.units(), from.type.scale, 0), to, false);
}

Datum toMoney(const Source& from, TypeKind to) {
  const TypeKind kind = from.kind();
  if (isText(kind)) {
    const auto number = readMoney(from.text());
    if (number.status == ReadStatus::overflow) throwOverflow(nameOf(to));
    if (number.status == ReadStatus::syntax) {
      if (to == TypeKind::smallmoney)
        throw SqlError(293, "Cannot convert char value to smallmoney. The char value has incorrect syntax.");
      throw SqlError(235, "Cannot convert a char value to money. The char value has incorrect syntax.");
    }
    return ranged(number.value, to, false);
  }
  if (isApproximate(kind)) {
    const auto units = floatUnits(from.real(), 4);
    if (!units) throwOverflow(nameOf(to));
    return ranged(*units, to, false);
  }
  if (isDate(kind)) {
    // Cut one digit further than it is rounded to.
    const Int128 scaled = divideDecimal(from.integer(), 0, ticksPerDay, 0, 5);
    return ranged(rescale(scaled, 5, 4), to, false);
  }
  if (isBinary(kind)) return ranged(integerOfBytes(from.bytes(), to == TypeKind::money ? 8 : 4), to, false);
  const Int128 units = from.units();
  const Int128 limit = powerOfTen(maxDecimalDigits - 5);
  if (from.scale() < 4 && (units >= limit || units <= -limit)) throwOverflow(nameOf(to));
  return ranged(rescale(units, from.scale(), 4), to, false);
}

Datum toDecimal(const Source& from, const SqlType& to) {
  const TypeKind kind = from.kind();
  const Int128 limit = powerOfTen(std::clamp(to.precision, 1, maxDecimalDigits));
  // Every way to a decimal ends here; the message names the source.
  const auto checked = [&](Int128 units) -> Datum {
    if (units >= limit || units <= -limit)
      throwOverflow(isText(kind) ? from.textName() : from.type.baseName(), "numeric");
    return decimalToDatum(units);
  };
  if (isText(kind)) {
    const auto number = readDecimal(from.text(), to.scale);
    if (number.status == ReadStatus::syntax)
      throw SqlError(8114, "Error converting data type " + from.textName() + " to numeric.");
    return checked(number.status == ReadStatus::overflow ? limit : number.value);
  }
  if (isApproximate(kind)) return checked(floatUnits(from.real(), to.scale).value_or(limit));
  if (isDate(kind)) return checked(rescale(divideDecimal(from.integer(), 0, ticksPerDay, 0, 30), 30, to.scale));
  if (isBinary(kind)) {
    int scale = 0;
    const Int128 units = decimalOfBytes(from.bytes(), scale);
    return checked(rescale(units, scale, to.scale));
  }
  const int scale = from.scale();
  const Int128 units = from.units();
  if (to.scale > scale) {
    // Checked before it is scaled up, so that the failure is this conversion's own.
    const Int128 room = to.precision - (to.scale - scale) > 0 ? powerOfTen(to.precision - (to.scale - scale)) : 1;
    if (units >= room || units <= -room) return checked(limit);
  }
  return checked(rescale(units, scale, to.scale));
}

Datum toApproximate(const Source& from, TypeKind to) {
  const TypeKind kind = from.kind();
  double value = 0;
  if (isText(kind)) {
    const auto number = readFloat(from.text());
    if (number.status == ReadStatus::syntax)
      throw SqlError(8114, "Error converting data type " + from.textName() + " to " + nameOf(to) + ".");
    if (number.status == ReadStatus::overflow) throwOverflow(nameOf(to));
    value = number.value;
  } else if (isApproximate(kind)) {
    value = from.real();
  } else if (isDate(kind)) {
    value = static_cast<double>(from.integer()) / static_cast<double>(ticksPerDay);
  } else {
    value = decimalToDouble(from.units(), from.scale());
  }
  if (!std::isfinite(value)) throwOverflow(nameOf(to));
  if (to != TypeKind::real) return value;
  if (std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max())) throwFloatOverflow(value, "real");
  return static_cast<double>(static_cast<float>(value));
}

}  // namespace tsql::conversion
