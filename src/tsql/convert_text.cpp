#include "tsql/convert_text.h"

#include "tsql/chinese_page.h"
#include "tsql/conversion.h"
#include "tsql/date_text.h"
#include "tsql/utf8.h"

namespace tsql {
namespace {

bool isFixed(TypeKind k) {
  return k == TypeKind::char_ || k == TypeKind::nchar;
}

// Bytes of UTF-8 that a limit of the type leaves, and how much of the limit they use.
struct Extent {
  std::size_t bytes = 0, used = 0;
};

Extent extentOf(std::string_view text, std::size_t limit, bool unicode) {
  Extent extent;
  while (extent.bytes < text.size()) {
    std::size_t next = extent.bytes;
    const char32_t c = nextCodePoint(text, next);
    const std::size_t width = unicode ? 1 : static_cast<std::size_t>(pageWidth(c));
    if (extent.used + width > limit) break;
    extent = {next, extent.used + width};
  }
  return extent;
}

}  // namespace

bool fitsAsIs(std::string_view text, const SqlType& type) {
  if (isFixed(type.kind)) return false;
  const bool unlimited = isLob(type.kind) || type.length <= 0;
  // No character takes more units than bytes of UTF-8.
  if (!unlimited && text.size() > static_cast<std::size_t>(type.length)) return false;
  return isUnicode(type.kind) || isAscii(text);
}

std::string fitText(std::string text, const SqlType& type, ConvertMode mode) {
  if (fitsAsIs(text, type)) return text;
  const bool unicode = isUnicode(type.kind);
  if (!unicode && !isAscii(text)) text = throughPage(text);
  if (isLob(type.kind) || type.length <= 0) return text;
  const auto limit = static_cast<std::size_t>(type.length);
  const Extent extent = extentOf(text, limit, unicode);
  if (extent.bytes < text.size()) {
    if (mode == ConvertMode::store && text.find_first_not_of(' ', extent.bytes) != std::string::npos)
      throw SqlError(8152, "String or binary data would be truncated.");
    text.resize(extent.bytes);
  }
  if (isFixed(type.kind)) text.append(limit - extent.used, ' ');
  return text;
}

namespace conversion {
namespace {

std::string dateTextOrThrow(const Source& from) {
  if (from.style == 130 || from.style == 131)
    throwUnsupported("convert style " + std::to_string(from.style), SourcePos{});
  if (auto text = dateText(from.integer(), from.style)) return *text;
  throw SqlError(281, std::to_string(from.style) + " is not a valid style number when converting from " +
                          from.type.baseName() + " to a character string.");
}

std::string floatTextOf(const Source& from) {
  switch (from.style) {
    case 1:
      return scientificText(from.real(), 7);
    case 2:
      return scientificText(from.real(), 15);
    case 3:
      return scientificText(from.real(), 16);
    default:
      return floatText(from.real());
  }
}

// A number whose text is longer than the type. int and its smaller kinds become an asterisk in the types of the code
// page; everything else fails.
[[noreturn]] void throwNumberTooLong(const Source& from, const std::string& target) {
  if (isMoney(from.kind()))
    throw SqlError(234, "There is insufficient result space to convert a money value to " + target + ".");
  if (isApproximate(from.kind())) throwFloatOverflow(from.real(), target);
  if (from.kind() == TypeKind::decimal) throwOverflow("numeric", target);
  throwOverflow(target);
}

Datum numberToText(const Source& from, const SqlType& to, std::string text) {
  const bool unlimited = isLob(to.kind) || to.length <= 0;
  if (!unlimited && text.size() > static_cast<std::size_t>(to.length)) {
    const bool asterisk = isExactInteger(from.kind()) && from.kind() != TypeKind::bigint && !isUnicode(to.kind);
    if (!asterisk) throwNumberTooLong(from, to.baseName());
    text = "*";
  }
  return fitText(std::move(text), to, ConvertMode::cast);
}

}  // namespace

Datum toText(const Source& from, const SqlType& to) {
  const TypeKind kind = from.kind();
  if (isText(kind)) return fitText(from.text(), to, from.mode);
  if (isExactInteger(kind)) return numberToText(from, to, std::to_string(from.integer()));
  if (isMoney(kind)) return numberToText(from, to, moneyText(from.integer(), from.style));
  if (kind == TypeKind::decimal) return numberToText(from, to, decimalText(from.units(), from.type.scale));
  if (isApproximate(kind)) return numberToText(from, to, floatTextOf(from));
  if (isDate(kind)) return fitText(dateTextOrThrow(from), to, from.mode);
  if (kind == TypeKind::uniqueidentifier) {
    if (to.length > 0 && to.length < 36)
      throw SqlError(8170, "Insufficient result space to convert uniqueidentifier value to char.");
    return fitText(from.text(), to, from.mode);
  }
  return fitText(textOfBytes(from.bytes(), isUnicode(to.kind)), to, from.mode);
}

}  // namespace conversion
}  // namespace tsql
