#include "embedded/functions.h"

#include <stdexcept>

#include "embedded/function_support.h"

namespace embedded {

tsql::Int128 Call::decimal(int i) const {
  if (sqlite3_value_type(values_[i]) != SQLITE_BLOB) return integer(i);
  if (sqlite3_value_bytes(values_[i]) != 16) tsql::throwDecimalOverflow();
  return tsql::decimalFromBytes(static_cast<const std::uint8_t*>(sqlite3_value_blob(values_[i])));
}

tsql::Datum Call::datum(int i) const {
  switch (sqlite3_value_type(values_[i])) {
    case SQLITE_INTEGER:
      return integer(i);
    case SQLITE_FLOAT:
      return real(i);
    case SQLITE_TEXT:
      return std::string(text(i));
    case SQLITE_BLOB: {
      const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_value_blob(values_[i]));
      return tsql::Blob(bytes, bytes + sqlite3_value_bytes(values_[i]));
    }
    default:
      return {};
  }
}

void Call::result(double value) {
  if (!std::isfinite(value)) throwOverflow("float");
  sqlite3_result_double(context_, value);
}

void Call::resultDecimal(tsql::Int128 units) {
  if (units >= INT64_MIN && units <= INT64_MAX) return result(static_cast<std::int64_t>(units));
  resultBytes(tsql::decimalToBytes(units));
}

void Call::resultDatum(const tsql::Datum& value) {
  if (auto* i = std::get_if<std::int64_t>(&value)) return result(*i);
  if (auto* d = std::get_if<double>(&value)) return result(*d);
  if (auto* s = std::get_if<std::string>(&value)) return result(std::string_view(*s));
  if (auto* b = std::get_if<tsql::Blob>(&value)) return resultBytes(*b);
  resultNull();
}

void throwOverflow(const std::string& typeName) {
  throw tsql::SqlError(8115, "Arithmetic overflow error converting expression to data type " + typeName + ".");
}

void throwDivideByZero() {
  throw tsql::SqlError(8134, "Divide by zero error encountered.");
}

std::int64_t checkRange(tsql::Int128 value, tsql::TypeKind kind) {
  using tsql::TypeKind;
  std::int64_t low = INT64_MIN, high = INT64_MAX;
  switch (kind) {
    case TypeKind::bit:
      low = 0, high = 1;
      break;
    case TypeKind::tinyint:
      low = 0, high = 255;
      break;
    case TypeKind::smallint:
      low = INT16_MIN, high = INT16_MAX;
      break;
    case TypeKind::integer:
      low = INT32_MIN, high = INT32_MAX;
      break;
    default:
      break;
  }
  if (value < low || value > high) throwOverflow(tsql::typeOf(kind).baseName());
  return static_cast<std::int64_t>(value);
}

std::int64_t checkMoney(tsql::Int128 units) {
  if (units < INT64_MIN || units > INT64_MAX) throwOverflow("money");
  return static_cast<std::int64_t>(units);
}

namespace {

void check(int code, const char* name) {
  if (code != SQLITE_OK) throw std::runtime_error(std::string("cannot register ") + name);
}

}  // namespace

void registerEntry(sqlite3* db, FunctionContext& context, const FunctionEntry& entry) {
  const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (entry.deterministic ? SQLITE_DETERMINISTIC : 0);
  check(sqlite3_create_function_v2(db, entry.name, entry.arguments, flags, &context, entry.run, nullptr, nullptr,
                                   nullptr),
        entry.name);
}

void registerEntry(sqlite3* db, FunctionContext& context, const AggregateEntry& entry) {
  const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | SQLITE_DETERMINISTIC;
  check(sqlite3_create_function_v2(db, entry.name, entry.arguments, flags, &context, nullptr, entry.step, entry.final,
                                   nullptr),
        entry.name);
}

void registerFunctions(sqlite3* db, FunctionContext& context) {
  registerCollation(db);
  registerIntegerFunctions(db, context);
  registerMoneyFunctions(db, context);
  registerDecimalFunctions(db, context);
  registerNumberFunctions(db, context);
  registerConversionFunctions(db, context);
  registerTextFunctions(db, context);
  registerTextSearchFunctions(db, context);
  registerCharacterFunctions(db, context);
  registerLikeFunctions(db, context);
  registerDateFunctions(db, context);
  registerSpecialFunctions(db, context);
}

}  // namespace embedded
