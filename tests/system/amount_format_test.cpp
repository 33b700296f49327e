#include "verify/amount_format.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace gljz {
namespace {

using platform::Money;
using platform::Value;

std::string amount(const char* text) {
  return formatAmount(Money::parse(text));
}

TEST(AmountFormatTest, APositiveAmountHasTwoDecimalsAndNoGrouping) {
  EXPECT_EQ(amount("1234567.5"), "1234567.50");
  EXPECT_EQ(amount("100"), "100.00");
}

TEST(AmountFormatTest, BelowOneThereIsNoZeroBeforeThePoint) {
  EXPECT_EQ(amount("0.5"), ".50");
  EXPECT_EQ(amount("0.07"), ".07");
}

TEST(AmountFormatTest, ANegativeAmountKeepsItsMinusSign) {
  EXPECT_EQ(amount("-1234.56"), "-1234.56");
  EXPECT_EQ(amount("-0.5"), "-.50");
}

TEST(AmountFormatTest, ZeroIsASingleBlank) {
  EXPECT_EQ(amount("0"), " ");
}

TEST(AmountFormatTest, AValueThatRoundsToZeroIsASingleBlank) {
  EXPECT_EQ(amount("0.0049"), " ");
  EXPECT_EQ(amount("-0.0049"), " ");
}

TEST(AmountFormatTest, RoundsHalfAwayFromZero) {
  EXPECT_EQ(amount("0.005"), ".01");
  EXPECT_EQ(amount("-0.005"), "-.01");
  EXPECT_EQ(amount("0.9949"), ".99");
  EXPECT_EQ(amount("0.995"), "1.00");
  EXPECT_EQ(amount("2.665"), "2.67");  // a double would give 2.66
}

TEST(AmountFormatTest, TheLargestAmountsAreExact) {
  EXPECT_EQ(formatAmount(Money::fromUnits(std::numeric_limits<std::int64_t>::max())), "922337203685477.58");
  EXPECT_EQ(formatAmount(Money::fromUnits(std::numeric_limits<std::int64_t>::min())), "-922337203685477.58");
}

TEST(AmountFormatTest, NullIsAnEmptyText) {
  EXPECT_EQ(formatAmount(Value()), "");
}

}  // namespace
}  // namespace gljz
