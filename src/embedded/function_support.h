#pragma once
// How a C++ function becomes an SQL function: arguments and results in the running form, failures into the
// FunctionContext. No exception leaves into SQLite.

#include <sqlite3.h>

#include <cmath>
#include <new>
#include <string>
#include <string_view>

#include "embedded/functions.h"
#include "tsql/decimal.h"

namespace embedded {

// One call of a function, or one step of an aggregate.
class Call {
public:
  Call(sqlite3_context* context, int count, sqlite3_value** values)
      : context_(context), count_(count), values_(values) {}

  FunctionContext& context() const { return *static_cast<FunctionContext*>(sqlite3_user_data(context_)); }
  sqlite3_context* handle() const { return context_; }
  int count() const { return count_; }
  sqlite3_value* value(int i) const { return values_[i]; }

  bool isNull(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_NULL; }
  bool anyNull() const {
    for (int i = 0; i < count_; ++i)
      if (isNull(i)) return true;
    return false;
  }
  std::int64_t integer(int i) const { return sqlite3_value_int64(values_[i]); }
  // An integer within int's range; beyond it the nearest bound. For lengths, positions and scales.
  int smallInteger(int i) const {
    const std::int64_t n = integer(i);
    return n > INT32_MAX ? INT32_MAX : n < INT32_MIN ? INT32_MIN : static_cast<int>(n);
  }
  double real(int i) const { return sqlite3_value_double(values_[i]); }
  // Valid until the call ends.
  std::string_view text(int i) const {
    const auto* chars = reinterpret_cast<const char*>(sqlite3_value_text(values_[i]));
    return {chars ? chars : "", static_cast<std::size_t>(sqlite3_value_bytes(values_[i]))};
  }
  tsql::Int128 decimal(int i) const;
  tsql::Datum datum(int i) const;
  tsql::SqlType type(int i) const { return tsql::SqlType::unpack(integer(i)); }

  void resultNull() { sqlite3_result_null(context_); }
  void result(std::int64_t value) { sqlite3_result_int64(context_, value); }
  void result(double value);  // 8115 when it is not finite
  void result(std::string_view text) {
    sqlite3_result_text64(context_, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  void resultBytes(const tsql::Blob& bytes) {
    sqlite3_result_blob64(context_, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
  }
  void resultDecimal(tsql::Int128 units);
  void resultDatum(const tsql::Datum& value);

  // Runs a body; whatever it throws becomes the failure of the SQL statement.
  template <class Body>
  void guarded(Body body) noexcept {
    try {
      body(*this);
    } catch (const tsql::SqlError& e) {
      context().fail(e);
      sqlite3_result_error(context_, e.what(), -1);
    } catch (const std::bad_alloc&) {
      sqlite3_result_error_nomem(context_);
    } catch (const std::exception& e) {
      context().fail(tsql::SqlError(50000, e.what()));
      sqlite3_result_error(context_, e.what(), -1);
    }
  }

private:
  sqlite3_context* context_;
  int count_;
  sqlite3_value** values_;
};

using FunctionBody = void (*)(Call&);

// What SQLite calls. Null in any argument is Null out, and the body is not run.
template <FunctionBody body>
void runNullToNull(sqlite3_context* context, int count, sqlite3_value** values) {
  Call call(context, count, values);
  if (call.anyNull()) return call.resultNull();
  call.guarded(body);
}
// For bodies that look at Null themselves.
template <FunctionBody body>
void runAlways(sqlite3_context* context, int count, sqlite3_value** values) {
  Call(context, count, values).guarded(body);
}

struct FunctionEntry {
  const char* name;
  int arguments;  // -1 is any number
  void (*run)(sqlite3_context*, int, sqlite3_value**);
  bool deterministic = true;
};
struct AggregateEntry {
  const char* name;
  int arguments;
  void (*step)(sqlite3_context*, int, sqlite3_value**);
  void (*final)(sqlite3_context*);
};

// Throw std::runtime_error when SQLite refuses.
void registerEntry(sqlite3* db, FunctionContext& context, const FunctionEntry& entry);
void registerEntry(sqlite3* db, FunctionContext& context, const AggregateEntry& entry);
template <class Entry, std::size_t n>
void registerAll(sqlite3* db, FunctionContext& context, const Entry (&entries)[n]) {
  for (const auto& entry : entries) registerEntry(db, context, entry);
}

// 8115 of an expression of the type.
[[noreturn]] void throwOverflow(const std::string& typeName);
[[noreturn]] void throwDivideByZero();  // 8134
// The value, or 8115 when the int kind cannot hold it.
std::int64_t checkRange(tsql::Int128 value, tsql::TypeKind kind);
std::int64_t checkMoney(tsql::Int128 units);

// Each unit's part of registerFunctions.
void registerIntegerFunctions(sqlite3* db, FunctionContext& context);
void registerMoneyFunctions(sqlite3* db, FunctionContext& context);
void registerDecimalFunctions(sqlite3* db, FunctionContext& context);
void registerNumberFunctions(sqlite3* db, FunctionContext& context);
void registerConversionFunctions(sqlite3* db, FunctionContext& context);
void registerTextFunctions(sqlite3* db, FunctionContext& context);
void registerTextSearchFunctions(sqlite3* db, FunctionContext& context);
void registerCharacterFunctions(sqlite3* db, FunctionContext& context);
void registerLikeFunctions(sqlite3* db, FunctionContext& context);
void registerDateFunctions(sqlite3* db, FunctionContext& context);
void registerSpecialFunctions(sqlite3* db, FunctionContext& context);
void registerCollation(sqlite3* db);

}  // namespace embedded
