#include "platform/money.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/run_time_error.h"

namespace {

using platform::Money;
using platform::RunTimeError;

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

template <class F>
int failureOf(F f) {
  try {
    f();
  } catch (const RunTimeError& e) {
    return e.number();
  }
  return 0;
}

TEST(Money, TextHasNoTrailingZerosAndNoGrouping) {
  EXPECT_EQ(Money::fromUnits(0).text(), "0");
  EXPECT_EQ(Money::fromUnits(120000).text(), "12");
  EXPECT_EQ(Money::fromUnits(-5000).text(), "-0.5");
  EXPECT_EQ(Money::fromUnits(1000001).text(), "100.0001");
  EXPECT_EQ(Money::fromUnits(12345678900000).text(), "1234567890");
}

TEST(Money, TextReachesBothEndsOfTheRange) {
  EXPECT_EQ(Money::fromUnits(smallest).text(), "-922337203685477.5808");
  EXPECT_EQ(Money::fromUnits(largest).text(), "922337203685477.5807");
  EXPECT_EQ(Money::parse("-922337203685477.5808").units(), smallest);
  EXPECT_EQ(Money::parse("922337203685477.5807").units(), largest);
}

TEST(Money, ParseReadsSignsBlanksAndOnePoint) {
  EXPECT_EQ(Money::parse("12.5").units(), 125000);
  EXPECT_EQ(Money::parse("  -12.5 ").units(), -125000);
  EXPECT_EQ(Money::parse("+.0001").units(), 1);
  EXPECT_EQ(Money::parse("7.").units(), 70000);
}

TEST(Money, ParseRoundsFurtherDecimalsHalfAwayFromZero) {
  EXPECT_EQ(Money::parse("0.00005").units(), 1);
  EXPECT_EQ(Money::parse("-0.00005").units(), -1);
  EXPECT_EQ(Money::parse("0.00004999").units(), 0);
}

TEST(Money, ParseRefusesWhatIsNoAmount) {
  for (const char* text : {"", " ", ".", "-", "1,000", "1.2.3", "1e3", "12x", "1.00005x", "--1"}) {
    EXPECT_EQ(failureOf([&] { Money::parse(text); }), RunTimeError::typeMismatch) << text;
  }
}

TEST(Money, LeavingTheRangeIsAnOverflowNeverAWrap) {
  const Money top = Money::fromUnits(largest), bottom = Money::fromUnits(smallest), one = Money::fromUnits(1);
  EXPECT_EQ(failureOf([&] { top + one; }), RunTimeError::overflow);
  EXPECT_EQ(failureOf([&] { bottom - one; }), RunTimeError::overflow);
  EXPECT_EQ(failureOf([&] { -bottom; }), RunTimeError::overflow);
  EXPECT_EQ(failureOf([&] { bottom.abs(); }), RunTimeError::overflow);
  EXPECT_EQ(failureOf([&] { Money::parse("922337203685477.5808"); }), RunTimeError::overflow);
  EXPECT_EQ(failureOf([&] { Money::parse("922337203685477.58075"); }), RunTimeError::overflow);
  EXPECT_EQ(failureOf([&] { Money::fromInteger(922337203685478); }), RunTimeError::overflow);
  EXPECT_EQ(failureOf([&] { Money::fromDouble(1e15); }), RunTimeError::overflow);
  EXPECT_EQ(failureOf([&] { Money::fromDouble(std::nan("")); }), RunTimeError::overflow);
  EXPECT_EQ((bottom + top).units(), -1);
  EXPECT_EQ((Money{} - top).units(), -largest);
}

TEST(Money, DoublesRoundAsTheyRead) {
  EXPECT_EQ(Money::fromDouble(1.00005).units(), 10001);
  EXPECT_EQ(Money::fromDouble(-1.00005).units(), -10001);
  EXPECT_EQ(Money::fromDouble(0.1).units(), 1000);
  EXPECT_EQ(Money::fromDouble(1e-300).units(), 0);
  EXPECT_DOUBLE_EQ(Money::parse("123.4567").toDouble(), 123.4567);
}

}  // namespace
