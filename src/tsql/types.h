#pragma once
// Types of the dialect: names, sizes, precedence, the packed form that run-time functions get.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tsql {

enum class TypeKind : std::uint8_t {
  null = 0,  // the type of the bare word NULL
  bit,
  tinyint,
  smallint,
  integer,
  bigint,
  smallmoney,
  money,
  decimal,  // numeric too
  real,
  float_,
  smalldatetime,
  datetime,
  uniqueidentifier,
  char_,
  varchar,
  nchar,
  nvarchar,
  text,
  ntext,
  binary,
  varbinary,
  image,
};

// How a value of each type is held while a statement runs (and in a database file):
//   bit, int kinds           integer
//   money, smallmoney        integer, unit 1/10000
//   decimal(p,s)             integer of unit 10^-s when it fits 64 bits, else a 16-byte blob (big-endian two's
//   complement) float, real              real datetime, smalldatetime  integer, unit 1/300 second since 1900-01-01 text
//   kinds               text, UTF-8; char and nchar are padded with blanks to their length uniqueidentifier text, 36
//   characters, upper case binary kinds             blob
struct SqlType {
  TypeKind kind = TypeKind::null;
  int length = 0;  // text: characters (n-types) or bytes of the Chinese code page (others); binary: bytes; -1 is max
  int precision = 0, scale = 0;  // decimal only

  bool operator==(const SqlType&) const = default;

  static constexpr int maxLength = -1;
  // One number for kind, length, precision, scale: what emitted function calls carry.
  std::int64_t pack() const;
  static SqlType unpack(std::int64_t packed);
  // The dialect's spelling: "nvarchar(40)", "decimal(10,2)", "money".
  std::string name() const;
  // Spelling without sizes, as messages quote it: "nvarchar", "numeric", "int".
  std::string baseName() const;
};

inline SqlType typeOf(TypeKind k, int length = 0) {
  return {k, length, 0, 0};
}
inline SqlType decimalType(int precision, int scale) {
  return {TypeKind::decimal, 0, precision, scale};
}

bool isText(TypeKind k);          // char_ .. ntext
bool isUnicode(TypeKind k);       // nchar, nvarchar, ntext
bool isLob(TypeKind k);           // text, ntext, image
bool isExactInteger(TypeKind k);  // bit .. bigint
bool isMoney(TypeKind k);
bool isApproximate(TypeKind k);  // real, float
bool isNumeric(TypeKind k);      // bit .. float_
bool isDate(TypeKind k);
bool isBinary(TypeKind k);

// The server's precedence: of two types in one expression the higher wins, the other is converted.
int precedence(TypeKind k);

// A type by its spelling ("int", "numeric", "nvarchar", "national character varying" is not known), with the sizes that
// stood in brackets. defaultLength is 1 in a column definition and 30 in cast. nullopt for an unknown name (the caller
// says 2715).
std::optional<SqlType> typeByName(std::string_view name, std::optional<int> first, std::optional<int> second, bool max,
                                  int defaultLength);

}  // namespace tsql
