// Identifiers, single values of subqueries, failures raised by emitted statements.

#include <array>

#include "embedded/function_support.h"

namespace embedded {
namespace {

// A random identifier (version 4) of 36 characters.
void newIdentifier(Call& c) {
  std::array<unsigned char, 16> bytes{};
  sqlite3_randomness(static_cast<int>(bytes.size()), bytes.data());
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  for (const unsigned char byte : bytes) {
    if (text.size() == 8 || text.size() == 13 || text.size() == 18 || text.size() == 23) text += '-';
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  c.result(text);
}

// An identity number that a statement gives itself.
void number(Call& c) {
  if (sqlite3_value_type(c.value(0)) == SQLITE_NULL)
    throw tsql::SqlError(339, "DEFAULT or NULL are not allowed as explicit identity values.");
  sqlite3_result_value(c.handle(), c.value(0));
}

void raise(Call& c) {
  throw tsql::SqlError(c.smallInteger(0), std::string(c.text(1)));
}

// The value of a subquery that may have one row only. A row whose value is Null counts as a row.
struct Single {
  sqlite3_value* value;
  bool any;
};

void singleStep(Call& c) {
  auto* single = static_cast<Single*>(sqlite3_aggregate_context(c.handle(), sizeof(Single)));
  if (!single) throw std::bad_alloc();
  if (single->any)
    throw tsql::SqlError(512,
                         "Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, "
                         "<, <= , >, >= or when the subquery is used as an expression.");
  single->any = true;
  single->value = sqlite3_value_dup(c.value(0));
  if (!single->value) throw std::bad_alloc();
}

// Runs after a failed step too, which is where the copy is released then.
void singleFinal(sqlite3_context* context) {
  auto* single = static_cast<Single*>(sqlite3_aggregate_context(context, 0));
  if (!single || !single->value) return sqlite3_result_null(context);
  sqlite3_result_value(context, single->value);
  sqlite3_value_free(single->value);
  single->value = nullptr;
}

}  // namespace

void registerSpecialFunctions(sqlite3* db, FunctionContext& context) {
  // Raising is not called deterministic, so that SQLite never evaluates it ahead of the branch it stands in.
  static constexpr FunctionEntry entries[] = {{"ts_newid", 0, runAlways<newIdentifier>, false},
                                              {"ts_number", 1, runAlways<number>, false},
                                              {"ts_raise", 2, runNullToNull<raise>, false}};
  registerAll(db, context, entries);
  static constexpr AggregateEntry aggregates[] = {{"ts_single", 1, runAlways<singleStep>, singleFinal}};
  registerAll(db, context, aggregates);
}

}  // namespace embedded
