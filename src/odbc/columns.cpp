#include "odbc/columns.h"

#include <algorithm>

#include "odbc/text.h"
#include "platform/value.h"

namespace odbc {
namespace {

// Longer ones are not kept ready for every row of a block.
constexpr SQLULEN longestBound = 8000;

// Types that drivers for servers of this dialect have beside the standard ones.
constexpr SQLSMALLINT variantType = -150, xmlType = -152, timeType = -154, zonedTimestampType = -155;

CellKind kindOf(SQLSMALLINT sqlType) {
  switch (sqlType) {
    case SQL_BIT:
      return CellKind::boolean;
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return CellKind::integer;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return CellKind::decimal;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return CellKind::real;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      return CellKind::dateTime;
    case SQL_GUID:
      return CellKind::guid;
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY:
      return CellKind::bytes;
    default:
      return CellKind::text;
  }
}

bool isLongType(const Column& c) {
  switch (c.sqlType) {
    case SQL_LONGVARCHAR:
    case SQL_WLONGVARCHAR:
    case SQL_LONGVARBINARY:
    case variantType:
    case xmlType:
      return true;
    case timeType:
    case zonedTimestampType:
      return false;
    default:
      return (c.kind == CellKind::text || c.kind == CellKind::bytes) && (c.size == 0 || c.size > longestBound);
  }
}

}  // namespace

std::vector<Column> describeColumns(Statement& statement) {
  std::vector<Column> columns;
  std::u16string name(256, u'\0');
  for (SQLUSMALLINT i = 1; i <= static_cast<SQLUSMALLINT>(statement.columnCount()); ++i) {
    Column c;
    SQLSMALLINT length = 0, nullable = 0;
    statement.check(SQLDescribeColW(statement.handle(), i, wide(name.data()), static_cast<SQLSMALLINT>(name.size()),
                                    &length, &c.sqlType, &c.size, &c.scale, &nullable));
    c.name =
        toUtf8({name.data(), std::min(name.size() - 1, static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)))});
    c.kind = kindOf(c.sqlType);
    c.isLong = isLongType(c);
    SQLLEN identity = SQL_FALSE;
    SQLColAttributeW(statement.handle(), i, SQL_DESC_AUTO_UNIQUE_VALUE, nullptr, 0, nullptr, &identity);
    c.identity = identity == SQL_TRUE;
    columns.push_back(std::move(c));
  }
  return columns;
}

bool isNumeric(CellKind kind) {
  return kind == CellKind::boolean || kind == CellKind::integer || kind == CellKind::decimal || kind == CellKind::real;
}

ColumnIndex::ColumnIndex(const std::vector<Column>& columns) {
  for (std::size_t i = 0; i < columns.size(); ++i)
    byName_.emplace_back(platform::toLowerAscii(columns[i].name), static_cast<int>(i));
  std::stable_sort(byName_.begin(), byName_.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
}

int ColumnIndex::find(std::string_view name) const {
  // Compared letter by letter, without a lower-case copy of the name: this is called for every cell that is read.
  const auto lowered = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  const auto compare = [&](const std::string& known) {
    const std::size_t shared = std::min(known.size(), name.size());
    for (std::size_t i = 0; i < shared; ++i)
      if (const char c = lowered(name[i]); known[i] != c)
        return static_cast<unsigned char>(known[i]) < static_cast<unsigned char>(c) ? -1 : 1;
    return known.size() < name.size() ? -1 : known.size() > name.size() ? 1 : 0;
  };
  const auto found =
      std::partition_point(byName_.begin(), byName_.end(), [&](const auto& entry) { return compare(entry.first) < 0; });
  return found != byName_.end() && compare(found->first) == 0 ? found->second : -1;
}

}  // namespace odbc
