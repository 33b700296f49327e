// Arithmetic of the int kinds. The last argument names the kind of the result (see tsql::TypeKind).

#include "embedded/function_support.h"

namespace embedded {
namespace {

using tsql::Int128;

tsql::TypeKind kindOf(const Call& call, int i) {
  return static_cast<tsql::TypeKind>(call.integer(i));
}

void add(Call& c) {
  c.result(checkRange(Int128{c.integer(0)} + c.integer(1), kindOf(c, 2)));
}
void subtract(Call& c) {
  c.result(checkRange(Int128{c.integer(0)} - c.integer(1), kindOf(c, 2)));
}
void multiply(Call& c) {
  c.result(checkRange(Int128{c.integer(0)} * c.integer(1), kindOf(c, 2)));
}
void divide(Call& c) {
  if (c.integer(1) == 0) throwDivideByZero();
  c.result(checkRange(Int128{c.integer(0)} / c.integer(1), kindOf(c, 2)));
}
void modulo(Call& c) {
  if (c.integer(1) == 0) throwDivideByZero();
  c.result(checkRange(Int128{c.integer(0)} % c.integer(1), kindOf(c, 2)));
}
void negate(Call& c) {
  c.result(checkRange(-Int128{c.integer(0)}, kindOf(c, 1)));
}
void range(Call& c) {
  c.result(checkRange(c.integer(0), kindOf(c, 1)));
}

}  // namespace

void registerIntegerFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {
      {"ts_iadd", 3, runNullToNull<add>},      {"ts_isub", 3, runNullToNull<subtract>},
      {"ts_imul", 3, runNullToNull<multiply>}, {"ts_idiv", 3, runNullToNull<divide>},
      {"ts_imod", 3, runNullToNull<modulo>},   {"ts_ineg", 2, runNullToNull<negate>},
      {"ts_irange", 2, runNullToNull<range>}};
  registerAll(db, context, entries);
}

}  // namespace embedded
