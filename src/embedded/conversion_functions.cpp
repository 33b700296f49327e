// Conversions between types, and what a text looks like as a number.

#include "embedded/function_support.h"
#include "tsql/chinese_page.h"
#include "tsql/convert_text.h"
#include "tsql/number_text.h"
#include "tsql/utf8.h"

namespace embedded {
namespace {

using tsql::ReadStatus;
using tsql::SqlType;
using tsql::TypeKind;

// value, from, to [, style]. Most texts that are stored fit as they are; they pass without a copy.
template <tsql::ConvertMode mode>
void convert(Call& c) {
  const SqlType from = c.type(1), to = c.type(2);
  if (isText(from.kind) && isText(to.kind) && sqlite3_value_type(c.value(0)) == SQLITE_TEXT &&
      tsql::fitsAsIs(c.text(0), to))
    return sqlite3_result_value(c.handle(), c.value(0));
  c.resultDatum(tsql::convert(c.datum(0), from, to, c.count() > 3 ? c.smallInteger(3) : 0, mode));
}

std::size_t utf16Length(std::string_view text) {
  std::size_t units = 0;
  for (std::size_t at = 0; at < text.size();) units += tsql::nextCodePoint(text, at) >= 0x10000 ? 2 : 1;
  return units;
}

// Bytes that the value takes on the server.
std::int64_t dataLength(const Call& c, const SqlType& t) {
  switch (t.kind) {
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
    case TypeKind::uniqueidentifier:
      return 16;
    case TypeKind::decimal:
      return t.precision <= 9 ? 5 : t.precision <= 19 ? 9 : t.precision <= 28 ? 13 : 17;
    default:
      break;
  }
  if (isUnicode(t.kind)) return static_cast<std::int64_t>(2 * utf16Length(c.text(0)));
  if (isText(t.kind)) return static_cast<std::int64_t>(tsql::pageLength(c.text(0)));
  if (isBinary(t.kind)) return sqlite3_value_bytes(c.value(0));
  return 8;
}

void dataLength(Call& c) {
  c.result(dataLength(c, c.type(1)));
}

// 1 when the text reads as a float or an amount; the empty text and Null are no numbers.
void isNumeric(Call& c) {
  const int type = sqlite3_value_type(c.value(0));
  if (type == SQLITE_NULL) return c.result(std::int64_t{0});
  if (type == SQLITE_INTEGER || type == SQLITE_FLOAT) return c.result(std::int64_t{1});
  const std::string_view text = c.text(0);
  const bool blank = text.find_first_not_of(' ') == std::string_view::npos;
  const bool number =
      !blank && (tsql::readFloat(text).status == ReadStatus::ok || tsql::readMoney(text).status == ReadStatus::ok);
  c.result(std::int64_t{number});
}

// number [, length [, decimals]]: right-aligned in `length` (10) characters. Decimals give way when there is no room
// for them; when the whole part has no room the result is all asterisks.
void str(Call& c) {
  const int length = c.count() > 1 ? c.smallInteger(1) : 10;
  const int wanted = c.count() > 2 ? c.smallInteger(2) : 0;
  if (length <= 0 || length > 8000 || wanted < 0) return c.resultNull();
  if (std::fabs(c.real(0)) >= 1e38) return c.result(std::string(static_cast<std::size_t>(length), '*'));
  const auto textWith = [&](int decimals) {
    const tsql::Datum d = tsql::convert(c.real(0), tsql::typeOf(TypeKind::float_), tsql::decimalType(38, decimals));
    return tsql::decimalText(tsql::decimalFromDatum(d), decimals);
  };
  const auto size = static_cast<std::size_t>(length);
  std::string text = textWith(0);
  if (text.size() > size) return c.result(std::string(size, '*'));
  const int room = length - static_cast<int>(text.size()) - 1;  // behind the point
  const int digits = std::max(0, 37 - static_cast<int>(text.size()));
  const int decimals = std::min({wanted, room, digits, 16});
  if (decimals > 0) text = textWith(decimals);
  if (text.size() < size) text.insert(0, size - text.size(), ' ');
  c.result(text);
}

}  // namespace

void registerConversionFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {{"ts_conv", 3, runNullToNull<convert<tsql::ConvertMode::cast>>},
                                              {"ts_conv", 4, runNullToNull<convert<tsql::ConvertMode::cast>>},
                                              {"ts_store", 3, runNullToNull<convert<tsql::ConvertMode::store>>},
                                              {"ts_datalength", 2, runNullToNull<dataLength>},
                                              {"ts_isnumeric", 1, runAlways<isNumeric>},
                                              {"ts_str", 1, runNullToNull<str>},
                                              {"ts_str", 2, runNullToNull<str>},
                                              {"ts_str", 3, runNullToNull<str>}};
  registerAll(db, context, entries);
}

}  // namespace embedded
