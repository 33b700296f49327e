// Arithmetic of amounts, unit 1/10000. Intermediate results have 128 bits, so only the result can overflow.

#include "embedded/function_support.h"

namespace embedded {
namespace {

using tsql::Int128;

constexpr Int128 unitsPerOne = 10000;

void add(Call& c) {
  c.result(checkMoney(Int128{c.integer(0)} + c.integer(1)));
}
void subtract(Call& c) {
  c.result(checkMoney(Int128{c.integer(0)} - c.integer(1)));
}
void multiply(Call& c) {
  c.result(checkMoney(tsql::rescale(Int128{c.integer(0)} * c.integer(1), 8, 4)));
}
// The quotient is cut behind the fourth decimal, not rounded.
void divide(Call& c) {
  if (c.integer(1) == 0) throwDivideByZero();
  c.result(checkMoney(c.integer(0) * unitsPerOne / c.integer(1)));
}
void negate(Call& c) {
  c.result(checkMoney(-Int128{c.integer(0)}));
}

}  // namespace

void registerMoneyFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {{"ts_madd", 2, runNullToNull<add>},
                                              {"ts_msub", 2, runNullToNull<subtract>},
                                              {"ts_mmul", 2, runNullToNull<multiply>},
                                              {"ts_mdiv", 2, runNullToNull<divide>},
                                              {"ts_mneg", 1, runNullToNull<negate>}};
  registerAll(db, context, entries);
}

}  // namespace embedded
