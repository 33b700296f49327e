#include "tsql/types.h"

#include <algorithm>
#include <array>

#include "tsql/ascii.h"
#include "tsql/sql_error.h"

namespace tsql {
namespace {

constexpr int maximumPrecision = 38;
constexpr int defaultPrecision = 18;

// What may stand in brackets behind a type's name.
enum class Size : std::uint8_t { none, bytes, characters, precision, mantissa };

struct TypeSpelling {
  std::string_view name;
  TypeKind kind;
  Size size;
  bool mayBeMax;
};

// The first spelling of a kind is the one that SqlType::name gives.
constexpr std::array spellings{
    TypeSpelling{"bit", TypeKind::bit, Size::none, false},
    TypeSpelling{"tinyint", TypeKind::tinyint, Size::none, false},
    TypeSpelling{"smallint", TypeKind::smallint, Size::none, false},
    TypeSpelling{"int", TypeKind::integer, Size::none, false},
    TypeSpelling{"integer", TypeKind::integer, Size::none, false},
    TypeSpelling{"bigint", TypeKind::bigint, Size::none, false},
    TypeSpelling{"smallmoney", TypeKind::smallmoney, Size::none, false},
    TypeSpelling{"money", TypeKind::money, Size::none, false},
    TypeSpelling{"decimal", TypeKind::decimal, Size::precision, false},
    TypeSpelling{"numeric", TypeKind::decimal, Size::precision, false},
    TypeSpelling{"dec", TypeKind::decimal, Size::precision, false},
    TypeSpelling{"real", TypeKind::real, Size::none, false},
    TypeSpelling{"float", TypeKind::float_, Size::mantissa, false},
    TypeSpelling{"smalldatetime", TypeKind::smalldatetime, Size::none, false},
    TypeSpelling{"datetime", TypeKind::datetime, Size::none, false},
    TypeSpelling{"uniqueidentifier", TypeKind::uniqueidentifier, Size::none, false},
    TypeSpelling{"char", TypeKind::char_, Size::bytes, false},
    TypeSpelling{"varchar", TypeKind::varchar, Size::bytes, true},
    TypeSpelling{"nchar", TypeKind::nchar, Size::characters, false},
    TypeSpelling{"nvarchar", TypeKind::nvarchar, Size::characters, true},
    TypeSpelling{"text", TypeKind::text, Size::none, false},
    TypeSpelling{"ntext", TypeKind::ntext, Size::none, false},
    TypeSpelling{"binary", TypeKind::binary, Size::bytes, false},
    TypeSpelling{"varbinary", TypeKind::varbinary, Size::bytes, true},
    TypeSpelling{"image", TypeKind::image, Size::none, false},
};

const TypeSpelling* spellingOf(TypeKind kind) {
  const auto* found =
      std::find_if(spellings.begin(), spellings.end(), [kind](const TypeSpelling& s) { return s.kind == kind; });
  return found == spellings.end() ? nullptr : found;
}

SqlType sizedType(const TypeSpelling& spelling, int length) {
  const int maximum = spelling.size == Size::bytes ? 8000 : 4000;
  if (length < 1)
    throw SqlError(1001, "Length or precision specification " + std::to_string(length) + " is invalid.", {}, 15);
  if (length > maximum)
    throw SqlError(131,
                   "The size (" + std::to_string(length) + ") given to the type '" + std::string(spelling.name) +
                       "' exceeds the maximum allowed for any data type (" + std::to_string(maximum) + ").",
                   {}, 15);
  return typeOf(spelling.kind, length);
}

SqlType preciseType(int precision, int scale) {
  if (precision < 1 || precision > maximumPrecision)
    throw SqlError(1001, "Length or precision specification " + std::to_string(precision) + " is invalid.", {}, 15);
  if (scale < 0 || scale > precision)
    throw SqlError(192, "The scale must be less than or equal to the precision.", {}, 15);
  return decimalType(precision, scale);
}

// float(1) .. float(24) is real, float(25) .. float(53) is float.
SqlType floatingType(int mantissaBits) {
  if (mantissaBits < 1 || mantissaBits > 53)
    throw SqlError(1001, "Length or precision specification " + std::to_string(mantissaBits) + " is invalid.", {}, 15);
  return typeOf(mantissaBits <= 24 ? TypeKind::real : TypeKind::float_);
}

}  // namespace

std::int64_t SqlType::pack() const {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(kind) |
                                   static_cast<std::uint64_t>(static_cast<std::uint8_t>(precision)) << 8 |
                                   static_cast<std::uint64_t>(static_cast<std::uint8_t>(scale)) << 16 |
                                   static_cast<std::uint64_t>(static_cast<std::uint32_t>(length)) << 24);
}

SqlType SqlType::unpack(std::int64_t packed) {
  const auto bits = static_cast<std::uint64_t>(packed);
  return {static_cast<TypeKind>(bits & 0xff), static_cast<int>(static_cast<std::uint32_t>(bits >> 24 & 0xffffffff)),
          static_cast<int>(bits >> 8 & 0xff), static_cast<int>(bits >> 16 & 0xff)};
}

std::string SqlType::name() const {
  const TypeSpelling* spelling = spellingOf(kind);
  if (!spelling) return "null";
  std::string result(spelling->name);
  switch (spelling->size) {
    case Size::bytes:
    case Size::characters:
      return result + (length == maxLength ? "(max)" : "(" + std::to_string(length) + ")");
    case Size::precision:
      return result + "(" + std::to_string(precision) + "," + std::to_string(scale) + ")";
    case Size::none:
    case Size::mantissa:
      break;
  }
  return result;
}

std::string SqlType::baseName() const {
  if (kind == TypeKind::decimal) return "numeric";
  const TypeSpelling* spelling = spellingOf(kind);
  return spelling ? std::string(spelling->name) : "NULL";
}

bool isText(TypeKind k) {
  return k >= TypeKind::char_ && k <= TypeKind::ntext;
}
bool isUnicode(TypeKind k) {
  return k == TypeKind::nchar || k == TypeKind::nvarchar || k == TypeKind::ntext;
}
bool isLob(TypeKind k) {
  return k == TypeKind::text || k == TypeKind::ntext || k == TypeKind::image;
}
bool isExactInteger(TypeKind k) {
  return k >= TypeKind::bit && k <= TypeKind::bigint;
}
bool isMoney(TypeKind k) {
  return k == TypeKind::money || k == TypeKind::smallmoney;
}
bool isApproximate(TypeKind k) {
  return k == TypeKind::real || k == TypeKind::float_;
}
bool isNumeric(TypeKind k) {
  return k >= TypeKind::bit && k <= TypeKind::float_;
}
bool isDate(TypeKind k) {
  return k == TypeKind::datetime || k == TypeKind::smalldatetime;
}
bool isBinary(TypeKind k) {
  return k >= TypeKind::binary && k <= TypeKind::image;
}

int precedence(TypeKind k) {
  // Lowest first.
  constexpr std::array order{
      TypeKind::null,       TypeKind::binary,        TypeKind::varbinary, TypeKind::char_,
      TypeKind::varchar,    TypeKind::nchar,         TypeKind::nvarchar,  TypeKind::uniqueidentifier,
      TypeKind::image,      TypeKind::text,          TypeKind::ntext,     TypeKind::bit,
      TypeKind::tinyint,    TypeKind::smallint,      TypeKind::integer,   TypeKind::bigint,
      TypeKind::smallmoney, TypeKind::money,         TypeKind::decimal,   TypeKind::real,
      TypeKind::float_,     TypeKind::smalldatetime, TypeKind::datetime,
  };
  return static_cast<int>(std::find(order.begin(), order.end(), k) - order.begin());
}

std::optional<SqlType> typeByName(std::string_view name, std::optional<int> first, std::optional<int> second, bool max,
                                  int defaultLength) {
  if (isSpelled(name, "sysname")) {
    if (first || max) throw SqlError(2716, "Cannot specify a column width on data type sysname.");
    return typeOf(TypeKind::nvarchar, 128);
  }
  const auto* spelling = std::find_if(spellings.begin(), spellings.end(),
                                      [name](const TypeSpelling& s) { return isSpelled(name, s.name); });
  if (spelling == spellings.end()) return std::nullopt;
  if (max) {
    if (!spelling->mayBeMax) throwSyntax("max", {});
    return typeOf(spelling->kind, SqlType::maxLength);
  }
  const bool takesOne = spelling->size != Size::none;
  const bool takesTwo = spelling->size == Size::precision;
  if ((first && !takesOne) || (second && !takesTwo))
    throw SqlError(2716, "Cannot specify a column width on data type " + std::string(spelling->name) + ".");
  switch (spelling->size) {
    case Size::bytes:
    case Size::characters:
      return sizedType(*spelling, first.value_or(defaultLength));
    case Size::precision:
      return preciseType(first.value_or(defaultPrecision), second.value_or(0));
    case Size::mantissa:
      return floatingType(first.value_or(53));
    case Size::none:
      break;
  }
  return typeOf(spelling->kind);
}

}  // namespace tsql
