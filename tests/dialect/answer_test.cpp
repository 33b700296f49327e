// How answers are written and compared.

#include "dialect/answer.h"

#include <gtest/gtest.h>

namespace dialect {
namespace {

using platform::DateTime;
using platform::Money;
using platform::Value;

TEST(CellText, isPlain) {
  EXPECT_EQ(cellText({}), "NULL");
  EXPECT_EQ(cellText(""), "(empty)");
  EXPECT_EQ(cellText(" a "), " a ");
  EXPECT_EQ(cellText(true), "1");
  EXPECT_EQ(cellText(false), "0");
  EXPECT_EQ(cellText(-12), "-12");
  EXPECT_EQ(cellText(Money::fromUnits(-5000)), "-0.5");
  EXPECT_EQ(cellText(platform::Bytes{0x0A, 0xFF}), "0x0AFF");
}

TEST(CellText, ofRealNumbersHasNoExponent) {
  EXPECT_EQ(cellText(0.0), "0");
  EXPECT_EQ(cellText(-0.0), "0");
  EXPECT_EQ(cellText(0.1), "0.1");
  EXPECT_EQ(cellText(-2.5), "-2.5");
  EXPECT_EQ(cellText(100.0), "100");
  EXPECT_EQ(cellText(1.5e20), "150000000000000000000");
  EXPECT_EQ(cellText(1e-7), "0.0000001");
  EXPECT_EQ(cellText(-1.25e-3), "-0.00125");
  EXPECT_EQ(cellText(1.0 / 3), "0.3333333333333333");
}

TEST(CellText, ofADateHasATimeOnlyWhenThereIsOne) {
  EXPECT_EQ(cellText(DateTime::fromDate(2006, 1, 2)), "2006-01-02");
  EXPECT_EQ(cellText(DateTime::fromDate(2006, 1, 2, 3, 4, 5)), "2006-01-02 03:04:05");
  EXPECT_EQ(cellText(DateTime::fromDate(1753, 12, 31, 0, 0, 1)), "1753-12-31 00:00:01");
  EXPECT_EQ(cellText(DateTime::fromTicks(DateTime::fromDate(2006, 1, 2).ticks() + 1)), "2006-01-02 00:00:00.003");
}

TEST(PlainNumber, hasNoTrailingZeros) {
  EXPECT_EQ(plainNumber("12.500"), "12.5");
  EXPECT_EQ(plainNumber("12.000"), "12");
  EXPECT_EQ(plainNumber("1200"), "1200");
  EXPECT_EQ(plainNumber("-0.00"), "0");
}

TEST(SameCell, forgivesTheLastPlaceOfLongNumbersOnly) {
  EXPECT_TRUE(sameCell("0.3333333333333333", "0.33333333333333331"));
  EXPECT_TRUE(sameCell("123456789012.3", "123456789012.30001"));
  EXPECT_FALSE(sameCell("0.333333333", "0.333333334"));
  EXPECT_FALSE(sameCell("123456789012", "123456789013"));
  EXPECT_FALSE(sameCell("1.10", "1.1"));
  EXPECT_FALSE(sameCell("abcdefghijklmnop", "abcdefghijklmnoq"));
  EXPECT_FALSE(sameCell("NULL", "0"));
}

TEST(SameRows, compareCellByCell) {
  EXPECT_TRUE(sameRows({"1\tx", "2\ty"}, {"1\tx", "2\ty"}));
  EXPECT_FALSE(sameRows({"1\tx"}, {"1\tx", "2\ty"}));
  EXPECT_FALSE(sameRows({"1\tx"}, {"1"}));
  EXPECT_FALSE(sameRows({"1\tx", "2\ty"}, {"2\ty", "1\tx"}));
  EXPECT_TRUE(sameRows({}, {}));
}

TEST(ExpectedFailure, isANumberOfTheListOrAWordOfTheMessage) {
  const Failure failure{2627, "Violation of PRIMARY KEY constraint."};
  EXPECT_TRUE(isExpected("2627", failure));
  EXPECT_TRUE(isExpected("2601|2627", failure));
  EXPECT_TRUE(isExpected("primary", failure));
  EXPECT_TRUE(isExpected("208|violation", failure));
  EXPECT_TRUE(isExpected("any", failure));
  EXPECT_FALSE(isExpected("262", failure));
  EXPECT_FALSE(isExpected("foreign", failure));
  // A number stands for the failure's number, not for digits somewhere in its text.
  EXPECT_FALSE(isExpected("245", {8114, "row 245"}));
}

}  // namespace
}  // namespace dialect
