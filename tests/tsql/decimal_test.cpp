#include "tsql/decimal.h"

#include <gtest/gtest.h>

#include <random>

#include "tsql/sql_error.h"
#include "tsql/wide_integer.h"

namespace tsql {
namespace {

Int128 number(const std::string& digits) {
  Int128 value = 0;
  for (const char c : digits)
    if (c != '-') value = value * 10 + (c - '0');
  return digits[0] == '-' ? -value : value;
}

std::string text(Int128 value) {
  return decimalText(value, 0);
}

template <class F>
int failureOf(F f) {
  try {
    f();
  } catch (const SqlError& e) {
    return e.number;
  }
  return 0;
}

const std::string nines(38, '9');

TEST(Decimal, RunningFormIsAnIntegerWhereItFits) {
  EXPECT_EQ(decimalToDatum(-7), Datum(std::int64_t{-7}));
  EXPECT_EQ(decimalToDatum(INT64_MIN), Datum(INT64_MIN));
  EXPECT_TRUE(std::holds_alternative<Blob>(decimalToDatum(Int128{INT64_MAX} + 1)));
  for (const auto& digits : {nines, "-" + nines, std::string("9223372036854775808"), std::string("0")})
    EXPECT_EQ(text(decimalFromDatum(decimalToDatum(number(digits)))), digits);
}

TEST(Decimal, BytesAreBigEndianTwosComplement) {
  const Blob minusTwo = decimalToBytes(-2);
  EXPECT_EQ(minusTwo.size(), 16u);
  EXPECT_EQ(minusTwo.front(), 0xFF);
  EXPECT_EQ(minusTwo.back(), 0xFE);
}

TEST(Decimal, SortKeysOrderLikeValues) {
  const Int128 values[] = {-number(nines), -5, -1, 0, 1, 5, number("9223372036854775808"), number(nines)};
  for (const Int128 a : values)
    for (const Int128 b : values) EXPECT_EQ(decimalSortKey(a) < decimalSortKey(b), a < b);
}

TEST(Decimal, TextHasAllDigitsOfTheScale) {
  EXPECT_EQ(decimalText(150, 2), "1.50");
  EXPECT_EQ(decimalText(-5, 1), "-0.5");
  EXPECT_EQ(decimalText(-5, 3), "-0.005");
  EXPECT_EQ(decimalText(0, 2), "0.00");
  EXPECT_EQ(decimalText(12, 0), "12");
  EXPECT_EQ(decimalText(number(nines), 38), "0." + nines);
}

TEST(Decimal, RescaleRoundsHalfAwayFromZero) {
  EXPECT_EQ(rescale(123455, 5, 4), 12346);
  EXPECT_EQ(rescale(123454, 5, 4), 12345);
  EXPECT_EQ(rescale(-123455, 5, 4), -12346);
  EXPECT_EQ(rescale(5, 1, 0), 1);
  EXPECT_EQ(rescale(49, 2, 0), 0);
  EXPECT_EQ(rescale(7, 0, 3), 7000);
  EXPECT_EQ(text(rescale(number(nines), 38, 0)), "1");
  EXPECT_EQ(rescaleCut(-299, 2, 0), -2);
}

TEST(Decimal, MoreThan38DigitsFail) {
  EXPECT_EQ(failureOf([] { rescale(number(nines), 0, 1); }), 8115);
  EXPECT_EQ(failureOf([] { addDecimal(number(nines), 0, 1, 0, 0); }), 8115);
  EXPECT_EQ(failureOf([] { addDecimal(number(nines), 0, number(nines), 0, 0); }), 8115);
  EXPECT_EQ(failureOf([] { multiplyDecimal(number(nines), 0, 10, 0, 0); }), 8115);
  EXPECT_EQ(failureOf([] { divideDecimal(number(nines), 0, 1, 1, 0); }), 8115);
  EXPECT_EQ(failureOf([] { checkPrecision(1000, 3); }), 8115);
  EXPECT_EQ(checkPrecision(999, 3), 999);
}

TEST(Decimal, AddsAcrossScales) {
  EXPECT_EQ(addDecimal(1, 1, 2, 2, 2), 12);
  EXPECT_EQ(addDecimal(-1, 1, 2, 2, 2), -8);
  EXPECT_EQ(addDecimal(1, 1, -200, 2, 2), -190);
  EXPECT_EQ(addDecimal(15, 1, 0, 0, 0), 2);
  EXPECT_EQ(text(addDecimal(number(nines), 0, -number(nines), 0, 0)), "0");
}

TEST(Decimal, MultipliesExactly) {
  EXPECT_EQ(multiplyDecimal(1001000, 4, 1005, 3, 7), 1006005000);
  EXPECT_EQ(multiplyDecimal(15, 1, -15, 1, 1), -23);
  // 38 digits by 38 digits, brought back to 38
  EXPECT_EQ(text(multiplyDecimal(number(nines), 38, number(nines), 38, 38)), "99999999999999999999999999999999999998");
}

TEST(Decimal, DivisionCuts) {
  EXPECT_EQ(divideDecimal(2, 0, 3, 0, 4), 6666);
  EXPECT_EQ(divideDecimal(-2, 0, 3, 0, 4), -6666);
  EXPECT_EQ(divideDecimal(100, 2, 3, 1, 6), 3333333);
  EXPECT_EQ(text(divideDecimal(number(nines), 0, 3, 0, 0)), std::string(38, '3'));
  EXPECT_EQ(text(divideDecimal(number(nines), 10, number(nines), 10, 6)), "1000000");
  EXPECT_EQ(divideDecimal(12345, 4, 1, 0, 2), 123);
  EXPECT_EQ(failureOf([] { divideDecimal(1, 0, 0, 0, 0); }), 8134);
}

TEST(Decimal, ModuloHasTheSignOfTheDividend) {
  EXPECT_EQ(moduloDecimal(75, 1, 2, 0, 1), 15);
  EXPECT_EQ(moduloDecimal(-75, 1, 2, 0, 1), -15);
  EXPECT_EQ(failureOf([] { moduloDecimal(1, 0, 0, 0, 0); }), 8134);
}

TEST(Decimal, ComparesAcrossScales) {
  EXPECT_EQ(compareDecimal(30, 2, 3, 1), 0);
  EXPECT_EQ(compareDecimal(31, 2, 3, 1), 1);
  EXPECT_EQ(compareDecimal(-31, 2, -3, 1), -1);
  EXPECT_EQ(compareDecimal(-1, 0, 1, 38), -1);
  EXPECT_EQ(compareDecimal(number(nines), 0, number(nines), 38), 1);
}

TEST(Decimal, Literals) {
  const auto half = parseDecimalLiteral("0.50");
  ASSERT_TRUE(half);
  EXPECT_EQ(half->units, 50);
  EXPECT_EQ(half->precision, 2);
  EXPECT_EQ(half->scale, 2);
  EXPECT_EQ(parseDecimalLiteral("007.5")->precision, 2);
  EXPECT_EQ(parseDecimalLiteral("12.")->scale, 0);
  EXPECT_EQ(parseDecimalLiteral("0")->precision, 1);
  EXPECT_FALSE(parseDecimalLiteral("."));
  EXPECT_FALSE(parseDecimalLiteral("1e5"));
  EXPECT_FALSE(parseDecimalLiteral("-1"));
  EXPECT_TRUE(parseDecimalLiteral(nines));
  EXPECT_FALSE(parseDecimalLiteral(nines + "9"));
}

TEST(Decimal, ToDoubleIsTheNearest) {
  EXPECT_EQ(decimalToDouble(1, 1), 0.1);
  EXPECT_EQ(decimalToDouble(-25, 1), -2.5);
  EXPECT_EQ(decimalToDouble(number("9223372036854775807"), 4), 922337203685477.5807);
  EXPECT_EQ(decimalToDouble(number(nines), 0), 1e38);
}

TEST(WideInteger, QuotientAndRemainderRebuildTheDividend) {
  std::mt19937_64 random(7);
  for (int round = 0; round < 500; ++round) {
    const auto draw = [&] { return static_cast<UInt128>(random()) << 64 | random(); };
    const UInt128 a = draw() >> (random() % 100), b = (draw() >> (random() % 127)) | 1, c = draw() % b;
    Wide product = Wide::product(a, b), quotient, rest;
    product.add(Wide(c));
    Wide::divide(product, Wide(b), quotient, rest);
    EXPECT_EQ(quotient.compare(Wide(a)), 0);
    EXPECT_EQ(rest.compare(Wide(c)), 0);
  }
}

}  // namespace
}  // namespace tsql
