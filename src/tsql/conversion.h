#pragma once
// Inside of convert(): one function per family of target types. Values are never Null here, and the pair of types is an
// allowed one.

#include <cmath>
#include <string>
#include <string_view>

#include "tsql/datum.h"
#include "tsql/decimal.h"
#include "tsql/number_text.h"
#include "tsql/sql_error.h"

namespace tsql::conversion {

struct Source {
  const Datum& value;
  const SqlType& type;
  int style;
  ConvertMode mode;

  TypeKind kind() const { return type.kind; }
  std::int64_t integer() const;     // int kinds, bit, money units, ticks
  double real() const;              // real, float
  const std::string& text() const;  // text kinds, uniqueidentifier
  const Blob& bytes() const;        // binary kinds
  // The exact value of an int kind, money or decimal, in units of 10^-scale().
  Int128 units() const;
  int scale() const;
  // How messages call a text: "varchar" or "nvarchar".
  std::string textName() const;
};

Datum toExactInteger(const Source& from, TypeKind to);  // bit too
Datum toMoney(const Source& from, TypeKind to);
Datum toDecimal(const Source& from, const SqlType& to);
Datum toApproximate(const Source& from, TypeKind to);
Datum toDate(const Source& from, TypeKind to);
Datum toIdentifier(const Source& from);
Datum toText(const Source& from, const SqlType& to);
Datum toBinary(const Source& from, const SqlType& to);

// What is in the bytes of a binary value that becomes one of these.
std::int64_t integerOfBytes(const Blob& bytes, int width);
Int128 decimalOfBytes(const Blob& bytes, int& scale);
std::string identifierOfBytes(const Blob& bytes);
std::string textOfBytes(const Blob& bytes, bool unicode);

[[noreturn]] void throwOverflow(const std::string& typeName);                     // 8115, of an expression
[[noreturn]] void throwOverflow(const std::string& from, const std::string& to);  // 8115, of one type to another
[[noreturn]] void throwFloatOverflow(double value, const std::string& typeName);  // 232

}  // namespace tsql::conversion
