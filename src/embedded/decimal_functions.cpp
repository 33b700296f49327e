// Arithmetic of decimals. Each operand is followed by its scale, the last argument is the scale of the result.

#include "embedded/function_support.h"

namespace embedded {
namespace {

using tsql::Int128;

template <Int128 (*operation)(Int128, int, Int128, int, int)>
void combine(Call& c) {
  c.resultDecimal(operation(c.decimal(0), c.smallInteger(1), c.decimal(2), c.smallInteger(3), c.smallInteger(4)));
}

void negate(Call& c) {
  c.resultDecimal(-c.decimal(0));
}
void compare(Call& c) {
  c.result(std::int64_t{tsql::compareDecimal(c.decimal(0), c.smallInteger(1), c.decimal(2), c.smallInteger(3))});
}
void sortKey(Call& c) {
  c.resultBytes(tsql::decimalSortKey(c.decimal(0)));
}

// SQLite aligns an aggregate's memory to 8 bytes, a 128-bit integer wants 16: it is kept in halves.
struct Sum {
  std::uint64_t low;
  std::int64_t high;
  bool any;

  Int128 value() const { return static_cast<Int128>(high) << 64 | low; }
  void set(Int128 value) {
    low = static_cast<std::uint64_t>(value);
    high = static_cast<std::int64_t>(value >> 64);
  }
};

void sumStep(Call& c) {
  if (c.isNull(0)) return;
  auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(c.handle(), sizeof(Sum)));
  if (!sum) throw std::bad_alloc();
  sum->any = true;
  sum->set(tsql::addDecimal(sum->value(), 0, c.decimal(0), 0, 0));
}

void sumFinal(sqlite3_context* context) {
  Call(context, 0, nullptr).guarded([](Call& c) {
    const auto* sum = static_cast<const Sum*>(sqlite3_aggregate_context(c.handle(), 0));
    if (sum && sum->any) {
      c.resultDecimal(sum->value());
    } else {
      c.resultNull();
    }
  });
}

}  // namespace

void registerDecimalFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {{"ts_dadd", 5, runNullToNull<combine<tsql::addDecimal>>},
                                              {"ts_dsub", 5, runNullToNull<combine<tsql::subtractDecimal>>},
                                              {"ts_dmul", 5, runNullToNull<combine<tsql::multiplyDecimal>>},
                                              {"ts_ddiv", 5, runNullToNull<combine<tsql::divideDecimal>>},
                                              {"ts_dmod", 5, runNullToNull<combine<tsql::moduloDecimal>>},
                                              {"ts_dneg", 1, runNullToNull<negate>},
                                              {"ts_dcmp", 4, runNullToNull<compare>},
                                              {"ts_dkey", 1, runNullToNull<sortKey>}};
  registerAll(db, context, entries);
  static constexpr AggregateEntry aggregates[] = {{"ts_dsum", 1, runAlways<sumStep>, sumFinal}};
  registerAll(db, context, aggregates);
}

}  // namespace embedded
