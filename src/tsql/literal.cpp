#include "tsql/literal.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace tsql {
namespace {

__extension__ typedef unsigned __int128 Unsigned128;

constexpr int maximumPrecision = 38;  // 10^38 - 1 fits 127 bits
constexpr std::size_t maximumBytes = 8000, maximumCharacters = 4000;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// A scaled number in the form of SqlType's decimal: an integer where 64 bits hold it, else 16 bytes, highest first.
Datum scaledDatum(Unsigned128 number) {
  if (number <= static_cast<Unsigned128>(std::numeric_limits<std::int64_t>::max()))
    return static_cast<std::int64_t>(number);
  Blob bytes(16);
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte, number >>= 8)
    *byte = static_cast<std::uint8_t>(number & 0xff);
  return bytes;
}

int hexDigit(char c) {
  if (isDigit(c)) return c - '0';
  return (c | 0x20) - 'a' + 10;
}

}  // namespace

LiteralValue integerLiteral(std::string_view digits, SourcePos pos) {
  if (digits.size() < 10) {  // cannot leave the range of int
    std::int64_t number = 0;
    for (char c : digits) number = number * 10 + (c - '0');
    return {typeOf(TypeKind::integer), number};
  }
  LiteralValue wide = decimalLiteral(digits, pos);
  const auto* number = std::get_if<std::int64_t>(&wide.value);
  if (number && *number <= std::numeric_limits<std::int32_t>::max()) wide.type = typeOf(TypeKind::integer);
  return wide;
}

LiteralValue decimalLiteral(std::string_view digits, SourcePos pos) {
  Unsigned128 number = 0;
  int precision = 0, scale = 0;
  bool behindPoint = false;
  for (char c : digits) {
    if (c == '.') {
      behindPoint = true;
      continue;
    }
    scale += behindPoint;
    if (precision || c != '0' || behindPoint) ++precision;  // zeros before the number do not count, decimals do
    if (precision > maximumPrecision)
      throw SqlError(1007,
                     "The number '" + std::string(digits) +
                         "' is out of the range for numeric representation (maximum precision 38).",
                     pos, 15);
    number = number * 10 + static_cast<unsigned>(c - '0');
  }
  return {decimalType(std::max(precision, 1), scale), scaledDatum(number)};
}

LiteralValue realLiteral(std::string_view spelled, SourcePos pos) {
  const std::size_t exponent = spelled.find_first_of("eE");
  std::string_view number = spelled;
  if (!isDigit(spelled.back())) number = spelled.substr(0, exponent);  // 2e is 2e0
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    if (spelled[std::min(exponent + 1, spelled.size() - 1)] != '-')
      throw SqlError(168,
                     "The floating point value '" + std::string(spelled) +
                         "' is out of the range of computer representation (8 bytes).",
                     pos, 15);
    value = 0;  // too small to tell from zero
  }
  return {typeOf(TypeKind::float_), value};
}

LiteralValue moneyLiteral(std::string_view spelled, SourcePos pos) {
  constexpr auto maximum = static_cast<Unsigned128>(std::numeric_limits<std::int64_t>::max());
  Unsigned128 units = 0;  // 1/10000
  int decimals = -1;      // -1 before the point
  bool roundUp = false;
  for (char c : spelled.substr(1)) {
    if (c == '.') {
      decimals = 0;
    } else if (decimals >= 4) {
      if (decimals++ == 4) roundUp = c >= '5';
    } else {
      units = units * 10 + static_cast<unsigned>(c - '0');
      if (decimals >= 0) ++decimals;
    }
    if (units > maximum) break;
  }
  if (units <= maximum)
    for (int d = std::max(decimals, 0); d < 4; ++d) units *= 10;
  units += roundUp;
  if (units > maximum) throw SqlError(8115, "Arithmetic overflow error converting expression to data type money.", pos);
  return {typeOf(TypeKind::money), static_cast<std::int64_t>(units)};
}

LiteralValue hexLiteral(std::string_view spelled) {
  const std::string_view digits = spelled.substr(2);
  Blob bytes;
  bytes.reserve((digits.size() + 1) / 2);
  std::size_t i = 0;
  if (digits.size() % 2) bytes.push_back(static_cast<std::uint8_t>(hexDigit(digits[i++])));
  for (; i < digits.size(); i += 2)
    bytes.push_back(static_cast<std::uint8_t>(hexDigit(digits[i]) << 4 | hexDigit(digits[i + 1])));
  const int length =
      bytes.size() > maximumBytes ? SqlType::maxLength : static_cast<int>(std::max<std::size_t>(bytes.size(), 1));
  return {typeOf(TypeKind::varbinary, length), std::move(bytes)};
}

LiteralValue textLiteral(const std::string& content, bool unicode) {
  std::size_t continuation = 0, lead = 0, wide = 0;  // bytes 10xxxxxx, 11xxxxxx, 11110xxx
  for (const char c : content) {
    const auto byte = static_cast<unsigned char>(c);
    continuation += (byte & 0xc0) == 0x80;
    lead += byte >= 0xc0;
    wide += byte >= 0xf0;
  }
  const std::size_t characters = content.size() - continuation;
  // nvarchar counts units of UTF-16; varchar counts bytes of the Chinese code page, two for all that is not ASCII.
  const std::size_t length = characters + (unicode ? wide : lead);
  const bool isMax = length > (unicode ? maximumCharacters : maximumBytes);
  return {typeOf(unicode ? TypeKind::nvarchar : TypeKind::varchar,
                 isMax ? SqlType::maxLength : static_cast<int>(std::max<std::size_t>(length, 1))),
          content};
}

}  // namespace tsql
