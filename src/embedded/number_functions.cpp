// Floats, and functions of a number of any type. Where an argument t follows it is the packed type of the number; the
// result has the same type and scale.

#include "embedded/function_support.h"

namespace embedded {
namespace {

using tsql::Int128;
using tsql::SqlType;
using tsql::TypeKind;

[[noreturn]] void throwInvalidFloat() {
  throw tsql::SqlError(3623, "An invalid floating point operation occurred.");
}

int scaleOf(const SqlType& t) {
  return isMoney(t.kind) ? 4 : t.kind == TypeKind::decimal ? t.scale : 0;
}

// The exact result of type t; 8115 when the type cannot hold it.
void resultExact(Call& c, Int128 units, const SqlType& t) {
  if (t.kind == TypeKind::decimal)
    return c.resultDecimal(tsql::checkPrecision(units, t.precision > 0 ? t.precision : 38));
  if (t.kind == TypeKind::smallmoney && (units < INT32_MIN || units > INT32_MAX)) throwOverflow("smallmoney");
  if (isMoney(t.kind)) return c.result(checkMoney(units));
  c.result(checkRange(units, t.kind));
}

// Call::result says 8115 where the result is beyond a float.
void floatAdd(Call& c) {
  c.result(c.real(0) + c.real(1));
}
void floatSubtract(Call& c) {
  c.result(c.real(0) - c.real(1));
}
void floatMultiply(Call& c) {
  c.result(c.real(0) * c.real(1));
}
void floatCheck(Call& c) {
  c.result(c.real(0));
}
void floatDivide(Call& c) {
  if (c.real(1) == 0) throwDivideByZero();
  c.result(c.real(0) / c.real(1));
}
void floatModulo(Call& c) {
  if (c.real(1) == 0) throwDivideByZero();
  c.result(std::fmod(c.real(0), c.real(1)));
}

Int128 roundUnits(Int128 units, int scale, int digits, bool cut) {
  if (digits >= scale) return units;
  const std::int64_t drop = static_cast<std::int64_t>(scale) - digits;
  if (drop > tsql::maxDecimalDigits) return 0;
  const int dropped = static_cast<int>(drop);
  const Int128 kept = cut ? tsql::rescaleCut(units, dropped, 0) : tsql::rescale(units, dropped, 0);
  return tsql::rescale(kept, 0, dropped);
}

double roundFloat(double value, int digits, bool cut) {
  // Beyond these a double has no such digits, or none but them.
  if (digits > 300) return value;
  if (digits < -308) return 0;
  const double factor = std::pow(10.0, std::abs(digits));
  const double scaled = digits >= 0 ? value * factor : value / factor;
  if (!std::isfinite(scaled)) return value;
  const double whole = cut ? std::trunc(scaled) : std::round(scaled);
  return digits >= 0 ? whole / factor : whole * factor;
}

void round(Call& c) {
  const SqlType t = c.type(2);
  const bool cut = c.count() > 3 && c.integer(3) != 0;
  if (isApproximate(t.kind)) return c.result(roundFloat(c.real(0), c.smallInteger(1), cut));
  resultExact(c, roundUnits(c.decimal(0), scaleOf(t), c.smallInteger(1), cut), t);
}

void absolute(Call& c) {
  const SqlType t = c.type(1);
  if (isApproximate(t.kind)) return c.result(std::fabs(c.real(0)));
  const Int128 units = c.decimal(0);
  resultExact(c, units < 0 ? -units : units, t);
}

// Down to a whole number, or up to one.
template <bool up>
void toWhole(Call& c) {
  const SqlType t = c.type(1);
  if (isApproximate(t.kind)) return c.result(up ? std::ceil(c.real(0)) : std::floor(c.real(0)));
  const Int128 units = c.decimal(0), one = tsql::powerOfTen(scaleOf(t));
  const Int128 rest = units % one;
  Int128 whole = units - rest;
  if (up && rest > 0) whole += one;
  if (!up && rest < 0) whole -= one;
  resultExact(c, whole, t);
}

void sign(Call& c) {
  const SqlType t = c.type(1);
  if (isApproximate(t.kind)) return c.result(c.real(0) > 0 ? 1.0 : c.real(0) < 0 ? -1.0 : 0.0);
  const Int128 units = c.decimal(0), one = tsql::powerOfTen(scaleOf(t));
  resultExact(c, units > 0 ? one : units < 0 ? -one : 0, t);
}

void power(Call& c) {
  const double base = c.real(0), exponent = c.real(1);
  if ((base < 0 && exponent != std::trunc(exponent)) || (base == 0 && exponent < 0)) throwInvalidFloat();
  c.result(std::pow(base, exponent));
}

void squareRoot(Call& c) {
  if (c.real(0) < 0) throwInvalidFloat();
  c.result(std::sqrt(c.real(0)));
}

void square(Call& c) {
  c.result(c.real(0) * c.real(0));
}
void exponential(Call& c) {
  c.result(std::exp(c.real(0)));
}
template <double (*logarithm)(double)>
void logarithmOf(Call& c) {
  if (c.real(0) <= 0) throwInvalidFloat();
  c.result(logarithm(c.real(0)));
}
double naturalLogarithm(double x) {
  return std::log(x);
}
double decimalLogarithm(double x) {
  return std::log10(x);
}
void pi(Call& c) {
  c.result(3.14159265358979323846);
}

// The number of rows for top n.
void topRows(Call& c) {
  if (c.isNull(0))
    throw tsql::SqlError(1060, "The number of rows provided for a TOP clause row count parameter must be an integer.",
                         {}, 15);
  if (c.integer(0) < 0) throw tsql::SqlError(127, "A TOP N value may not be negative.", {}, 15);
  c.result(c.integer(0));
}

// So many of n rows are top p percent.
void percentOfRows(Call& c) {
  const double percent = c.real(0);
  if (c.isNull(0) || !(percent >= 0 && percent <= 100))
    throw tsql::SqlError(1031, "Percent values must be between 0 and 100.", {}, 15);
  c.result(static_cast<std::int64_t>(std::ceil(static_cast<double>(c.integer(1)) * percent / 100 - 1e-9)));
}

}  // namespace

void registerNumberFunctions(sqlite3* db, FunctionContext& context) {
  static constexpr FunctionEntry entries[] = {{"ts_fdiv", 2, runNullToNull<floatDivide>},
                                              {"ts_fmod", 2, runNullToNull<floatModulo>},
                                              {"ts_round", 3, runNullToNull<round>},
                                              {"ts_round", 4, runNullToNull<round>},
                                              {"ts_abs", 2, runNullToNull<absolute>},
                                              {"ts_floor", 2, runNullToNull<toWhole<false>>},
                                              {"ts_ceiling", 2, runNullToNull<toWhole<true>>},
                                              {"ts_sign", 2, runNullToNull<sign>},
                                              {"ts_power", 2, runNullToNull<power>},
                                              {"ts_sqrt", 1, runNullToNull<squareRoot>},
                                              {"ts_fadd", 2, runNullToNull<floatAdd>},
                                              {"ts_fsub", 2, runNullToNull<floatSubtract>},
                                              {"ts_fmul", 2, runNullToNull<floatMultiply>},
                                              {"ts_fcheck", 1, runNullToNull<floatCheck>},
                                              {"ts_square", 1, runNullToNull<square>},
                                              {"ts_exp", 1, runNullToNull<exponential>},
                                              {"ts_log", 1, runNullToNull<logarithmOf<naturalLogarithm>>},
                                              {"ts_log10", 1, runNullToNull<logarithmOf<decimalLogarithm>>},
                                              {"ts_pi", 0, runNullToNull<pi>},
                                              {"ts_top", 1, runAlways<topRows>},
                                              {"ts_percent", 2, runAlways<percentOfRows>}};
  registerAll(db, context, entries);
}

}  // namespace embedded
