#include "odbc/parameters.h"

#include <algorithm>
#include <limits>

#include "odbc/text.h"

namespace odbc {
namespace {

using platform::Value;

// Of the server's nvarchar and varbinary; longer values go as text and image.
constexpr SQLULEN longestNvarchar = 4000, longestVarbinary = 8000;
constexpr SQLULEN moneyDigits = 19, bigintDigits = 19, intDigits = 10, doubleDigits = 53;
constexpr SQLSMALLINT moneyScale = 4;
constexpr SQLULEN timestampCharacters = 23;  // "yyyy-mm-dd hh:mm:ss.fff"
constexpr SQLSMALLINT timestampDecimals = 3;
constexpr SQLUINTEGER nanosecondsPerMillisecond = 1'000'000;

SQL_TIMESTAMP_STRUCT timestampOf(platform::DateTime time) {
  const auto parts = time.parts();
  SQL_TIMESTAMP_STRUCT t{};
  t.year = static_cast<SQLSMALLINT>(parts.year);
  t.month = static_cast<SQLUSMALLINT>(parts.month);
  t.day = static_cast<SQLUSMALLINT>(parts.day);
  t.hour = static_cast<SQLUSMALLINT>(parts.hour);
  t.minute = static_cast<SQLUSMALLINT>(parts.minute);
  t.second = static_cast<SQLUSMALLINT>(parts.second);
  t.fraction = static_cast<SQLUINTEGER>(parts.millisecond) * nanosecondsPerMillisecond;
  return t;
}

bool isText(SQLSMALLINT sqlType) {
  switch (sqlType) {
    case SQL_CHAR:
    case SQL_VARCHAR:
    case SQL_LONGVARCHAR:
    case SQL_WCHAR:
    case SQL_WVARCHAR:
    case SQL_WLONGVARCHAR:
      return true;
    default:
      return false;
  }
}

}  // namespace

Parameters::~Parameters() {
  if (statement_.handle()) SQLFreeStmt(statement_.handle(), SQL_RESET_PARAMS);
}

Parameters::Parameter& Parameters::at(std::size_t n) {
  while (parameters_.size() <= n) parameters_.push_back(std::make_unique<Parameter>());
  return *parameters_[n];
}

void Parameters::set(std::size_t n, const Value& value, const Column* target) {
  Parameter& p = at(n);
  const SQLSMALLINT cType = p.cType, sqlType = p.sqlType, scale = p.scale;
  const SQLULEN size = p.size;
  const SQLPOINTER data = p.data;
  const SQLLEN bytes = p.bytes;
  fill(p, value, target);
  // What the driver knows of the place stays valid for the next value, as a rule.
  if (cType == p.cType && sqlType == p.sqlType && scale == p.scale && size == p.size && data == p.data &&
      bytes >= p.bytes && cType != 0)
    return;
  statement_.check(SQLBindParameter(statement_.handle(), static_cast<SQLUSMALLINT>(n + 1), SQL_PARAM_INPUT, p.cType,
                                    p.sqlType, p.size, p.scale, p.data, p.bytes, &p.indicator));
}

void Parameters::setText(std::size_t n, const std::string& text, int size) {
  Parameter& p = at(n);
  fillText(p, text, SQL_WVARCHAR, static_cast<SQLULEN>(std::max(size, 1)));
  statement_.check(SQLBindParameter(statement_.handle(), static_cast<SQLUSMALLINT>(n + 1), SQL_PARAM_INPUT, p.cType,
                                    p.sqlType, p.size, p.scale, p.data, p.bytes, &p.indicator));
}

void Parameters::fillText(Parameter& p, const std::string& text, SQLSMALLINT sqlType, SQLULEN size) {
  p.text = toUtf16(text);
  p.cType = SQL_C_WCHAR;
  p.sqlType = sqlType;
  p.size = size;
  p.scale = 0;
  p.data = p.text.data();
  p.bytes = static_cast<SQLLEN>(p.text.size() * sizeof(char16_t));
  p.indicator = p.bytes;
}

void Parameters::fill(Parameter& p, const Value& value, const Column* target) {
  const auto put = [&p](SQLSMALLINT cType, SQLSMALLINT sqlType, SQLULEN size, SQLSMALLINT scale, void* data,
                        std::size_t bytes) {
    p.cType = cType;
    p.sqlType = sqlType;
    p.size = size;
    p.scale = scale;
    p.data = data;
    p.bytes = p.indicator = static_cast<SQLLEN>(bytes);
  };
  const auto putFlag = [&](bool on) {
    p.flag = on ? 1 : 0;
    put(SQL_C_BIT, SQL_BIT, 1, 0, &p.flag, sizeof p.flag);
  };
  const SQLSMALLINT type = target ? target->sqlType : SQLSMALLINT{0};

  switch (value.kind()) {
    case Value::Kind::null:
      // Not every type takes the Null of every other one: image takes none of a text.
      if (p.cType == 0) {
        p.digits.assign(1, '\0');
        put(SQL_C_CHAR, type != 0 ? type : SQLSMALLINT{SQL_VARCHAR}, target ? std::max<SQLULEN>(target->size, 1) : 1,
            target ? target->scale : SQLSMALLINT{0}, p.digits.data(), 1);
      }
      p.indicator = SQL_NULL_DATA;
      return;
    case Value::Kind::boolean:
      if (type == 0 || type == SQL_BIT) return putFlag(value.asBool());
      p.integer = value.asBool() ? 1 : 0;
      return put(SQL_C_SLONG, SQL_INTEGER, intDigits, 0, &p.integer, sizeof p.integer);
    case Value::Kind::integer: {
      const std::int64_t n = value.asInteger();
      if (type == SQL_BIT) return putFlag(n != 0);
      if (isText(type)) return fillText(p, value.asText(), SQL_WVARCHAR, longestNvarchar);
      if (n >= std::numeric_limits<SQLINTEGER>::min() && n <= std::numeric_limits<SQLINTEGER>::max()) {
        p.integer = static_cast<SQLINTEGER>(n);
        return put(SQL_C_SLONG, SQL_INTEGER, intDigits, 0, &p.integer, sizeof p.integer);
      }
      p.bigInteger = n;
      return put(SQL_C_SBIGINT, SQL_BIGINT, bigintDigits, 0, &p.bigInteger, sizeof p.bigInteger);
    }
    case Value::Kind::money:
      if (isText(type)) return fillText(p, value.asText(), SQL_WVARCHAR, longestNvarchar);
      p.digits = value.asMoney().text();
      return put(SQL_C_CHAR, SQL_DECIMAL, moneyDigits, moneyScale, p.digits.data(), p.digits.size());
    case Value::Kind::real:
      if (isText(type)) return fillText(p, value.asText(), SQL_WVARCHAR, longestNvarchar);
      p.real = value.asDouble();
      return put(SQL_C_DOUBLE, SQL_DOUBLE, doubleDigits, 0, &p.real, sizeof p.real);
    case Value::Kind::dateTime:
      if (isText(type)) return fillText(p, value.asText(), SQL_WVARCHAR, longestNvarchar);
      p.time = timestampOf(value.asDateTime());
      return put(SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, timestampCharacters, timestampDecimals, &p.time,
                 sizeof p.time);
    case Value::Kind::bytes:
      p.binary = value.asBytes();
      if (p.binary.size() > longestVarbinary || type == SQL_LONGVARBINARY)
        put(SQL_C_BINARY, SQL_LONGVARBINARY, std::max<SQLULEN>(p.binary.size(), 1), 0, p.binary.data(),
            p.binary.size());
      else
        put(SQL_C_BINARY, SQL_VARBINARY, longestVarbinary, 0, p.binary.data(), p.binary.size());
      return;
    case Value::Kind::text:
      break;
  }
  // The declared size is the type's largest: whether a text fits its column is for the server to say.
  const std::string& text = value.textOrEmpty();
  fillText(p, text, SQL_WVARCHAR, longestNvarchar);
  if (p.text.size() > longestNvarchar || type == SQL_WLONGVARCHAR || type == SQL_LONGVARCHAR) {
    p.sqlType = SQL_WLONGVARCHAR;
    p.size = std::max<SQLULEN>(p.text.size(), 1);
  }
}

}  // namespace odbc
