#include "odbc/row_block.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "odbc/text.h"

namespace odbc {
namespace {

using platform::Bytes;
using platform::DateTime;
using platform::Money;
using platform::RunTimeError;
using platform::Value;

constexpr std::size_t mostRows = 1000, longestDecimal = 64;
constexpr SQLULEN longestPlainText = 64;  // of types that the driver turns into text: times, zones

struct Shape {
  SQLSMALLINT cType;
  std::size_t width;
};

Shape shapeOf(const Column& column) {
  switch (column.kind) {
    case CellKind::boolean:
      return {SQL_C_BIT, 1};
    case CellKind::integer:
      return {SQL_C_SBIGINT, sizeof(SQLBIGINT)};
    case CellKind::real:
      return {SQL_C_DOUBLE, sizeof(SQLDOUBLE)};
    case CellKind::decimal:
      return {SQL_C_CHAR, longestDecimal};
    case CellKind::dateTime:
      return {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)};
    case CellKind::guid:
      return {SQL_C_GUID, sizeof(SQLGUID)};
    case CellKind::bytes:
      return {SQL_C_BINARY, static_cast<std::size_t>(column.size)};
    case CellKind::text:
      break;
  }
  // A declared length counts units on some servers and characters on others; a character has two units at the most.
  const auto characters = static_cast<std::size_t>(std::max(column.size, longestPlainText / 2));
  return {SQL_C_WCHAR, (2 * characters + 1) * sizeof(SQLWCHAR)};
}

// The common amount, "-12.5000": up to eighteen digits, at most four of them behind the point, nothing to round.
std::optional<Money> plainAmount(std::string_view text) {
  constexpr int mostDigits = 18, moneyDecimals = 4;
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  std::int64_t units = 0;
  int digits = 0, decimals = -1;
  for (const char c : text) {
    if (c == '.' && decimals < 0) {
      decimals = 0;
      continue;
    }
    if (c < '0' || c > '9' || ++digits > mostDigits || decimals == moneyDecimals) return std::nullopt;
    units = units * 10 + (c - '0');
    if (decimals >= 0) ++decimals;
  }
  for (int i = std::max(decimals, 0); i < moneyDecimals; ++i) {
    if (++digits > mostDigits) return std::nullopt;
    units *= 10;
  }
  return Money::fromUnits(negative ? -units : units);
}

// An amount where that is exact; else a double for few digits and the digits themselves for many.
Value decimalValue(std::string_view text) {
  constexpr std::size_t decimalsOfMoney = 4, digitsOfDouble = 16;
  if (const auto amount = plainAmount(text)) return Value(*amount);
  std::string_view digits = text;
  if (digits.find('.') != std::string_view::npos) {
    digits = digits.substr(0, digits.find_last_not_of('0') + 1);
    if (digits.ends_with('.')) digits.remove_suffix(1);
  }
  if (digits.empty() || digits == "-") return Value(Money());
  const std::size_t point = digits.find('.');
  const std::size_t decimals = point == std::string_view::npos ? 0 : digits.size() - point - 1;
  if (decimals <= decimalsOfMoney) try {
      return Value(Money::parse(digits));
    } catch (const RunTimeError&) {
      return Value(std::string(digits));  // out of range, or no number at all
    }
  if (digits.size() <= digitsOfDouble) return Value(std::strtod(std::string(digits).c_str(), nullptr));
  return Value(std::string(digits));
}

Value timestampValue(const SQL_TIMESTAMP_STRUCT& t) {
  constexpr std::int64_t nanoseconds = 1'000'000'000;
  const DateTime second = DateTime::fromDate(t.year, t.month, t.day, t.hour, t.minute, t.second);
  const std::int64_t part =
      (static_cast<std::int64_t>(t.fraction) * DateTime::ticksPerSecond + nanoseconds / 2) / nanoseconds;
  return Value(DateTime::fromTicks(second.ticks() + part));
}

Value guidValue(const SQLGUID& g) {
  std::array<char, 37> text{};
  std::snprintf(text.data(), text.size(), "%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X",
                static_cast<unsigned long>(g.Data1), g.Data2, g.Data3, g.Data4[0], g.Data4[1], g.Data4[2], g.Data4[3],
                g.Data4[4], g.Data4[5], g.Data4[6], g.Data4[7]);
  return Value(std::string(text.data()));
}

template <class T>
T read(const unsigned char* data) {
  T value;
  std::memcpy(&value, data, sizeof value);
  return value;
}

// Adds a value whose bytes are all there.
void add(std::vector<Value>& cells, CellKind kind, const unsigned char* data, std::size_t size) {
  switch (kind) {
    case CellKind::boolean:
      cells.emplace_back(*data != 0);
      return;
    case CellKind::integer:
      cells.emplace_back(static_cast<std::int64_t>(read<SQLBIGINT>(data)));
      return;
    case CellKind::real:
      cells.emplace_back(read<SQLDOUBLE>(data));
      return;
    case CellKind::decimal:
      cells.push_back(decimalValue({reinterpret_cast<const char*>(data), size}));
      return;
    case CellKind::dateTime:
      cells.push_back(timestampValue(read<SQL_TIMESTAMP_STRUCT>(data)));
      return;
    case CellKind::guid:
      cells.push_back(guidValue(read<SQLGUID>(data)));
      return;
    case CellKind::bytes:
      cells.emplace_back(Bytes(data, data + size));
      return;
    case CellKind::text:
      break;
  }
  std::string text;
  appendUtf8(text, {reinterpret_cast<const char16_t*>(data), size / sizeof(char16_t)});
  cells.emplace_back(std::move(text));
}

// Bytes behind the value that the driver closes a text with.
std::size_t terminator(SQLSMALLINT cType) {
  return cType == SQL_C_WCHAR ? sizeof(SQLWCHAR) : cType == SQL_C_CHAR ? 1 : 0;
}

}  // namespace

RowBlock::RowBlock(Statement& statement, const std::vector<Column>& columns, std::size_t bytes)
    : statement_(statement), columns_(columns) {
  const auto firstLong = std::find_if(columns.begin(), columns.end(), [](const Column& c) { return c.isLong; });
  std::size_t rowBytes = 1;
  for (auto c = columns.begin(); c != firstLong; ++c) rowBytes += shapeOf(*c).width + sizeof(SQLLEN);
  const bool inPieces = firstLong != columns.end();
  if (const auto preset = static_cast<std::size_t>(statement.attributeValue(SQL_ATTR_ROW_ARRAY_SIZE)); preset > 1)
    capacity_ = preset;  // of a server cursor
  else if (!inPieces)
    capacity_ = std::clamp<std::size_t>(bytes / rowBytes, 1, mostRows);
  if (inPieces) capacity_ = 1;

  states_.assign(capacity_, SQL_ROW_SUCCESS);
  statement_.setAttribute(SQL_ATTR_ROW_ARRAY_SIZE, capacity_, "fetching rows in blocks");
  SQLSetStmtAttrW(statement_.handle(), SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, SQL_IS_POINTER);
  SQLSetStmtAttrW(statement_.handle(), SQL_ATTR_ROW_STATUS_PTR, states_.data(), SQL_IS_POINTER);
  bound_.reserve(columns.size());
  for (auto c = columns.begin(); c != firstLong; ++c) bind(static_cast<SQLUSMALLINT>(c - columns.begin() + 1), *c);
}

// The driver must not write into arrays that are gone.
RowBlock::~RowBlock() {
  if (!statement_.handle()) return;
  SQLFreeStmt(statement_.handle(), SQL_UNBIND);
  SQLSetStmtAttrW(statement_.handle(), SQL_ATTR_ROWS_FETCHED_PTR, nullptr, SQL_IS_POINTER);
  SQLSetStmtAttrW(statement_.handle(), SQL_ATTR_ROW_STATUS_PTR, nullptr, SQL_IS_POINTER);
}

void RowBlock::bind(SQLUSMALLINT number, const Column& column) {
  const Shape shape = shapeOf(column);
  Bound b;
  b.cType = shape.cType;
  b.width = shape.width;
  b.data = std::make_unique_for_overwrite<unsigned char[]>(capacity_ * shape.width);
  b.sizes = std::make_unique_for_overwrite<SQLLEN[]>(capacity_);
  statement_.check(
      SQLBindCol(statement_.handle(), number, b.cType, b.data.get(), static_cast<SQLLEN>(b.width), b.sizes.get()));
  bound_.push_back(std::move(b));
}

std::size_t RowBlock::fetch() {
  statement_.link().needOpen();
  fetched_ = 0;
  const SQLRETURN result = SQLFetch(statement_.handle());
  if (result == SQL_NO_DATA) return 0;
  statement_.check(result);
  if (result == SQL_SUCCESS_WITH_INFO) checkRows();
  if (bound_.size() < columns_.size()) {
    unbound_.clear();
    for (std::size_t i = bound_.size(); i < columns_.size(); ++i)
      addPieces(static_cast<SQLUSMALLINT>(i + 1), columns_[i]);
    return 1;
  }
  return static_cast<std::size_t>(fetched_);
}

// A row that failed (an expression of it divides by zero, say) does not fail the block that it stands in.
void RowBlock::checkRows() {
  for (std::size_t i = 0; i < std::min<std::size_t>(fetched_, states_.size()); ++i)
    if (states_[i] == SQL_ROW_ERROR) statement_.raise();
}

void RowBlock::read(std::size_t row, std::vector<Value>& cells) {
  for (std::size_t i = 0; i < bound_.size(); ++i) addCell(cells, columns_[i], bound_[i], row);
  for (Value& v : unbound_) cells.push_back(std::move(v));
}

void RowBlock::addCell(std::vector<Value>& cells, const Column& column, const Bound& b, std::size_t row) {
  const SQLLEN size = b.sizes[row];
  if (size == SQL_NULL_DATA) {
    cells.emplace_back();
    return;
  }
  if (size < 0 || static_cast<std::size_t>(size) + terminator(b.cType) > b.width)
    throw RunTimeError(RunTimeError::overflow, "The value of column '" + column.name +
                                                   "' is longer than the driver declared (" +
                                                   std::to_string(column.size) + "): it would be cut off");
  add(cells, column.kind, b.data.get() + row * b.width, static_cast<std::size_t>(size));
}

void RowBlock::addPieces(SQLUSMALLINT number, const Column& column) {
  constexpr std::size_t pieceBytes = 16 * 1024;
  const Shape shape =
      column.isLong ? Shape{column.kind == CellKind::bytes ? SQLSMALLINT{SQL_C_BINARY} : SQLSMALLINT{SQL_C_WCHAR}, 0}
                    : shapeOf(column);
  const std::size_t closing = terminator(shape.cType);
  std::vector<unsigned char> whole;
  std::vector<unsigned char> piece(column.isLong ? pieceBytes : shape.width);
  for (;;) {
    SQLLEN left = 0;  // bytes that were still to come before this piece
    const SQLRETURN result =
        SQLGetData(statement_.handle(), number, shape.cType, piece.data(), static_cast<SQLLEN>(piece.size()), &left);
    if (result == SQL_NO_DATA) break;
    statement_.check(result);
    if (left == SQL_NULL_DATA) {
      unbound_.emplace_back();
      return;
    }
    const bool more = left == SQL_NO_TOTAL || static_cast<std::size_t>(left) + closing > piece.size();
    const std::size_t got = more ? piece.size() - closing : static_cast<std::size_t>(left);
    whole.insert(whole.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(got));
    if (!more || (!column.isLong && column.kind != CellKind::text && column.kind != CellKind::bytes)) break;
  }
  const bool asText = column.isLong && column.kind != CellKind::bytes;
  add(unbound_, asText ? CellKind::text : column.kind, whole.data(), whole.size());
}

}  // namespace odbc
