// To and from bytes, and uniqueidentifier.
//
// Integers, amounts and dates stand big-endian; a number that is longer than the target loses its first bytes, a
// shorter one gets zeros in front. Texts and identifiers lose their last bytes and get zeros behind.

#include <algorithm>
#include <bit>

#include "tsql/calendar.h"
#include "tsql/chinese_page.h"
#include "tsql/conversion.h"
#include "tsql/utf8.h"

namespace tsql::conversion {
namespace {

Blob bigEndian(std::uint64_t value, int width) {
  Blob bytes;
  for (int i = width - 1; i >= 0; --i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
  return bytes;
}

int widthOf(TypeKind k) {
  switch (k) {
    case TypeKind::bit:
    case TypeKind::tinyint:
      return 1;
    case TypeKind::smallint:
      return 2;
    case TypeKind::integer:
    case TypeKind::smallmoney:
    case TypeKind::real:
    case TypeKind::smalldatetime:
      return 4;
    default:
      return 8;
  }
}

// Precision, scale, 0, 1 for a value not below 0, then the magnitude, little-endian in 4, 8, 12 or 16 bytes.
Blob decimalBytes(Int128 units, const SqlType& type) {
  const int precision = std::max(type.precision, 1);
  const int width = precision <= 9 ? 4 : precision <= 19 ? 8 : precision <= 28 ? 12 : 16;
  Blob bytes{static_cast<std::uint8_t>(precision), static_cast<std::uint8_t>(type.scale), 0,
             static_cast<std::uint8_t>(units < 0 ? 0 : 1)};
  auto rest = units < 0 ? -static_cast<UInt128>(units) : static_cast<UInt128>(units);
  for (int i = 0; i < width; ++i, rest >>= 8) bytes.push_back(static_cast<std::uint8_t>(rest));
  return bytes;
}

Blob utf16Bytes(std::string_view text) {
  Blob bytes;
  const auto put = [&](char32_t unit) {
    bytes.push_back(static_cast<std::uint8_t>(unit));
    bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
  };
  for (std::size_t at = 0; at < text.size();) {
    char32_t c = nextCodePoint(text, at);
    if (c >= 0x10000) {
      c -= 0x10000;
      put(0xD800 | c >> 10);
      put(0xDC00 | (c & 0x3FF));
    } else {
      put(c);
    }
  }
  return bytes;
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The first three groups of an identifier's text stand with their last byte first.
constexpr std::size_t identifierOrder[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};

bool isDash(std::size_t at) {
  return at == 8 || at == 13 || at == 18 || at == 23;
}

Blob bytesOfIdentifier(std::string_view text) {
  Blob plain;
  for (std::size_t at = 0; at + 1 < text.size(); at += 2) {
    if (isDash(at)) ++at;
    plain.push_back(static_cast<std::uint8_t>(hexDigit(text[at]) << 4 | hexDigit(text[at + 1])));
  }
  Blob bytes(16);
  for (std::size_t i = 0; i < 16; ++i) bytes[i] = plain.at(identifierOrder[i]);
  return bytes;
}

std::string readIdentifier(std::string_view text) {
  const bool braces = !text.empty() && text[0] == '{';
  if (braces) text.remove_prefix(1);
  bool valid = text.size() >= 36 && (!braces || (text.size() > 36 && text[36] == '}'));
  std::string result;
  for (std::size_t at = 0; valid && at < 36; ++at) {
    const char c = text[at];
    valid = isDash(at) ? c == '-' : hexDigit(c) >= 0;
    result += c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  if (!valid) throw SqlError(8169, "Conversion failed when converting from a character string to uniqueidentifier.");
  return result;  // what stands behind the 36 characters is ignored
}

Blob bytesOf(const Source& from) {
  const TypeKind kind = from.kind();
  if (isBinary(kind)) return from.bytes();
  if (isText(kind)) {
    if (isUnicode(kind)) return utf16Bytes(from.text());
    const std::string bytes = toPage(from.text());
    return Blob(bytes.begin(), bytes.end());
  }
  if (kind == TypeKind::uniqueidentifier) return bytesOfIdentifier(from.text());
  if (kind == TypeKind::decimal) return decimalBytes(from.units(), from.type);
  if (kind == TypeKind::real) return bigEndian(std::bit_cast<std::uint32_t>(static_cast<float>(from.real())), 4);
  if (kind == TypeKind::float_) return bigEndian(std::bit_cast<std::uint64_t>(from.real()), 8);
  const std::int64_t value = from.integer();
  if (isDate(kind)) {
    const auto day = static_cast<std::uint64_t>(dayOf(value));
    const auto rest = static_cast<std::uint64_t>(value - dayOf(value) * ticksPerDay);
    if (kind == TypeKind::datetime) return bigEndian(day << 32 | rest, 8);
    return bigEndian(day << 16 | rest / ticksPerMinute, 4);
  }
  return bigEndian(static_cast<std::uint64_t>(value), widthOf(kind));
}

}  // namespace

std::int64_t integerOfBytes(const Blob& bytes, int width) {
  const std::size_t count = std::min(bytes.size(), static_cast<std::size_t>(width));
  std::uint64_t value = 0;
  for (std::size_t i = bytes.size() - count; i < bytes.size(); ++i) value = value << 8 | bytes[i];
  // A value of full width carries its sign; tinyint and bit have none.
  if (count == static_cast<std::size_t>(width) && width == 2) return static_cast<std::int16_t>(value);
  if (count == static_cast<std::size_t>(width) && width == 4) return static_cast<std::int32_t>(value);
  return static_cast<std::int64_t>(value);
}

Int128 decimalOfBytes(const Blob& bytes, int& scale) {
  if (bytes.size() < 5 || bytes.size() > 20 || bytes[0] > maxDecimalDigits || bytes[1] > bytes[0])
    throw SqlError(8114, "Error converting data type varbinary to numeric.");
  scale = bytes[1];
  UInt128 value = 0;
  for (std::size_t i = bytes.size(); i-- > 4;) value = value << 8 | bytes[i];
  if (value >= static_cast<UInt128>(powerOfTen(maxDecimalDigits))) throwDecimalOverflow();
  return bytes[3] != 0 ? static_cast<Int128>(value) : -static_cast<Int128>(value);
}

std::string identifierOfBytes(const Blob& bytes) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  for (std::size_t i = 0; i < 16; ++i) {
    // The order of an identifier's bytes is its own inverse.
    const std::size_t at = identifierOrder[i];
    const std::uint8_t byte = at < bytes.size() ? bytes[at] : 0;
    if (isDash(text.size())) text += '-';
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text;
}

std::string textOfBytes(const Blob& bytes, bool unicode) {
  if (!unicode) return fromPage(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
  std::string text;
  char32_t high = 0;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    const char32_t unit = bytes[i] | (i + 1 < bytes.size() ? bytes[i + 1] : 0u) << 8;
    if (unit >= 0xD800 && unit < 0xDC00) {
      high = unit;
    } else if (unit >= 0xDC00 && unit < 0xE000) {
      appendCodePoint(text, high ? 0x10000 + ((high & 0x3FF) << 10) + (unit & 0x3FF) : 0xFFFD);
      high = 0;
    } else {
      appendCodePoint(text, unit);
      high = 0;
    }
  }
  return text;
}

Datum toIdentifier(const Source& from) {
  if (isText(from.kind())) return readIdentifier(from.text());
  if (isBinary(from.kind())) return identifierOfBytes(from.bytes());
  return from.text();
}

Datum toBinary(const Source& from, const SqlType& to) {
  Blob bytes = bytesOf(from);
  const bool numeric = isNumeric(from.kind()) || isDate(from.kind());
  if (isLob(to.kind) || to.length <= 0) return bytes;
  const auto limit = static_cast<std::size_t>(to.length);
  if (bytes.size() > limit) {
    if (from.kind() == TypeKind::uniqueidentifier)
      throw SqlError(8170, "Insufficient result space to convert uniqueidentifier value to char.");
    if (from.mode == ConvertMode::store && !numeric) throw SqlError(8152, "String or binary data would be truncated.");
    if (numeric && from.kind() != TypeKind::decimal && !isApproximate(from.kind())) {
      bytes.erase(bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(limit));
    } else {
      bytes.resize(limit);
    }
  }
  if (to.kind == TypeKind::binary && bytes.size() < limit)
    bytes.insert(numeric ? bytes.begin() : bytes.end(), limit - bytes.size(), 0);
  return bytes;
}

}  // namespace tsql::conversion
