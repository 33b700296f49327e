#include "tsql/conversion.h"
#include "tsql/convert_text.h"

namespace tsql {
namespace conversion {

std::int64_t Source::integer() const {
  if (auto* i = std::get_if<std::int64_t>(&value)) return *i;
  if (auto* d = std::get_if<double>(&value)) return static_cast<std::int64_t>(*d);
  throw SqlError(8114, "Error converting data type varchar to " + type.baseName() + ".");
}

double Source::real() const {
  if (auto* d = std::get_if<double>(&value)) return *d;
  return static_cast<double>(integer());
}

const std::string& Source::text() const {
  if (auto* s = std::get_if<std::string>(&value)) return *s;
  throw SqlError(8114, "Error converting data type numeric to " + type.baseName() + ".");
}

const Blob& Source::bytes() const {
  if (auto* b = std::get_if<Blob>(&value)) return *b;
  throw SqlError(8114, "Error converting data type varchar to " + type.baseName() + ".");
}

Int128 Source::units() const {
  return kind() == TypeKind::decimal ? decimalFromDatum(value) : integer();
}

int Source::scale() const {
  return isMoney(kind()) ? 4 : kind() == TypeKind::decimal ? type.scale : 0;
}

std::string Source::textName() const {
  return isUnicode(kind()) ? "nvarchar" : "varchar";
}

void throwOverflow(const std::string& typeName) {
  throw SqlError(8115, "Arithmetic overflow error converting expression to data type " + typeName + ".");
}

void throwOverflow(const std::string& from, const std::string& to) {
  throw SqlError(8115, "Arithmetic overflow error converting " + from + " to data type " + to + ".");
}

void throwFloatOverflow(double value, const std::string& typeName) {
  std::string text = std::to_string(value);
  throw SqlError(232, "Arithmetic overflow error for type " + typeName + ", value = " + text + ".");
}

}  // namespace conversion

namespace {

enum class Family { exact, money, decimal, approximate, date, identifier, text, binary };

Family familyOf(TypeKind k) {
  if (isExactInteger(k)) return Family::exact;
  if (isMoney(k)) return Family::money;
  if (k == TypeKind::decimal) return Family::decimal;
  if (isApproximate(k)) return Family::approximate;
  if (isDate(k)) return Family::date;
  if (k == TypeKind::uniqueidentifier) return Family::identifier;
  return isText(k) ? Family::text : Family::binary;
}

// Pairs that even cast refuses.
bool allowed(TypeKind from, TypeKind to) {
  const Family source = familyOf(from), target = familyOf(to);
  const bool toText = target == Family::text, toBinary = target == Family::binary;
  if (from == TypeKind::image) return toBinary;
  if (from == TypeKind::text || from == TypeKind::ntext) return toText;
  switch (source) {
    case Family::text:
      // image takes the bytes of the code page only.
      return to != TypeKind::image || !isUnicode(from);
    case Family::identifier:
      return target == Family::identifier || ((toText || toBinary) && !isLob(to));
    case Family::binary:
      return target != Family::approximate && to != TypeKind::text && to != TypeKind::ntext;
    default:
      return target != Family::identifier && !isLob(to);
  }
}

}  // namespace

Datum convert(const Datum& value, const SqlType& from, const SqlType& to, int style, ConvertMode mode) {
  if (isNull(value) || from.kind == TypeKind::null || to.kind == TypeKind::null) return value;
  if (!allowed(from.kind, to.kind))
    throw SqlError(
        529, "Explicit conversion from data type " + from.baseName() + " to " + to.baseName() + " is not allowed.");
  const conversion::Source source{value, from, style, mode};
  switch (familyOf(to.kind)) {
    case Family::exact:
      return conversion::toExactInteger(source, to.kind);
    case Family::money:
      return conversion::toMoney(source, to.kind);
    case Family::decimal:
      return conversion::toDecimal(source, to);
    case Family::approximate:
      return conversion::toApproximate(source, to.kind);
    case Family::date:
      return conversion::toDate(source, to.kind);
    case Family::identifier:
      return conversion::toIdentifier(source);
    case Family::text:
      return conversion::toText(source, to);
    case Family::binary:
      return conversion::toBinary(source, to);
  }
  return value;
}

}  // namespace tsql
