#include "platform/value.h"

#include <gtest/gtest.h>

#include "platform/surroundings.h"

namespace {

using platform::Bytes;
using platform::DateTime;
using platform::Money;
using platform::RunTimeError;
using platform::Value;

template <class F>
int failureOf(F f) {
  try {
    f();
  } catch (const RunTimeError& e) {
    return e.number();
  }
  return 0;
}

TEST(Value, ReadingNullIsInvalidUseOfNull) {
  const Value null;
  EXPECT_EQ(failureOf([&] { null.asText(); }), 94);
  EXPECT_EQ(failureOf([&] { null.asBool(); }), 94);
  EXPECT_EQ(failureOf([&] { null.asInteger(); }), 94);
  EXPECT_EQ(failureOf([&] { null.asMoney(); }), 94);
  EXPECT_EQ(failureOf([&] { null.asDouble(); }), 94);
  EXPECT_EQ(failureOf([&] { null.asDateTime(); }), 94);
  EXPECT_EQ(failureOf([&] { null.asBytes(); }), 94);
  EXPECT_EQ(null.displayText(), "");
}

TEST(Value, TextOfEachKind) {
  EXPECT_EQ(Value(true).asText(), "True");
  EXPECT_EQ(Value(false).asText(), "False");
  EXPECT_EQ(Value(-7).asText(), "-7");
  EXPECT_EQ(Value(Money::fromUnits(5000)).asText(), "0.5");
  EXPECT_EQ(Value(0.1).asText(), "0.1");
  EXPECT_EQ(Value(DateTime::fromDate(2006, 1, 1)).asText(), "2006-01-01");
  EXPECT_EQ(Value("借").asText(), "借");
  EXPECT_EQ(failureOf([] { Value(Bytes{1}).asText(); }), 13);
}

TEST(Value, BooleanOfNumbersAndTexts) {
  EXPECT_TRUE(Value(-1).asBool());
  EXPECT_FALSE(Value(0).asBool());
  EXPECT_TRUE(Value("TRUE").asBool());
  EXPECT_FALSE(Value("false").asBool());
  EXPECT_TRUE(Value(" 2 ").asBool());
  EXPECT_FALSE(Value("0.0").asBool());
  EXPECT_TRUE(Value(Money::fromUnits(1)).asBool());
  EXPECT_EQ(failureOf([] { Value("yes").asBool(); }), 13);
  EXPECT_EQ(failureOf([] { Value("").asBool(); }), 13);
}

TEST(Value, IntegerRoundsHalfToEven) {
  EXPECT_EQ(Value(0.5).asInteger(), 0);
  EXPECT_EQ(Value(1.5).asInteger(), 2);
  EXPECT_EQ(Value(-1.5).asInteger(), -2);
  EXPECT_EQ(Value(-2.5).asInteger(), -2);
  EXPECT_EQ(Value(Money::parse("2.5")).asInteger(), 2);
  EXPECT_EQ(Value(Money::parse("-3.5")).asInteger(), -4);
  EXPECT_EQ(Value("2005").asInteger(), 2005);
  EXPECT_EQ(Value("9007199254740993").asInteger(), 9007199254740993);  // one more than a double holds
  EXPECT_EQ(failureOf([] { Value(1e19).asInteger(); }), 6);
  EXPECT_EQ(failureOf([] { Value("").asInteger(); }), 13);
}

TEST(Value, ABooleanIsMinusOneWhereANumberIsWanted) {
  EXPECT_EQ(Value(true).asInteger(), -1);
  EXPECT_EQ(Value(false).asInteger(), 0);
}

TEST(Value, NumberTexts) {
  EXPECT_DOUBLE_EQ(Value("1e3").asDouble(), 1000);
  EXPECT_DOUBLE_EQ(Value("+.5").asDouble(), 0.5);
  for (const char* text : {"1x", "nan", "inf", "0x10", "+-1", "1 2"}) {
    EXPECT_EQ(failureOf([&] { Value(text).asDouble(); }), 13) << text;
  }
}

TEST(Value, AmountsKeepTheirDecimals) {
  EXPECT_EQ(Value("922337203685477.5807").asMoney().text(), "922337203685477.5807");
  EXPECT_EQ(Value(12).asMoney().text(), "12");
}

TEST(Value, DatesReadFromText) {
  EXPECT_EQ(Value("2006-01-31").asDateTime(), DateTime::fromDate(2006, 1, 31));
  EXPECT_EQ(failureOf([] { Value(1).asDateTime(); }), 13);
}

TEST(Value, EqualityNeedsTheSameKind) {
  EXPECT_EQ(Value(1), Value(1));
  EXPECT_NE(Value(1), Value(true));
  EXPECT_NE(Value(), Value(""));
}

TEST(NumberText, ShortestThatReadsBackWithoutExponentBelow1e15) {
  EXPECT_EQ(platform::numberText(0.1), "0.1");
  EXPECT_EQ(platform::numberText(3), "3");
  EXPECT_EQ(platform::numberText(-0.0), "0");
  EXPECT_EQ(platform::numberText(100000), "100000");
  EXPECT_EQ(platform::numberText(123456789012345.6), "123456789012345.6");
  EXPECT_EQ(platform::numberText(0.000001), "0.000001");
  EXPECT_EQ(platform::numberText(1e15), "1e+15");
}

TEST(Words, CaseAndBlanks) {
  EXPECT_TRUE(platform::equalsIgnoreCase("TqData_001", "TQDATA_001"));
  EXPECT_FALSE(platform::equalsIgnoreCase("a", "ab"));
  EXPECT_EQ(platform::toLowerAscii("AZ借"), "az借");
  EXPECT_EQ(platform::toUpperAscii("az借"), "AZ借");
  EXPECT_EQ(platform::trim("  a b "), "a b");
  EXPECT_EQ(platform::trim("   "), "");
}

TEST(Surroundings, UsingThemBeforeTheyAreSetIsAFailure) {
  platform::setSurroundings(nullptr);
  EXPECT_EQ(failureOf([] { platform::surroundings(); }), 91);
  platform::Surroundings mine;
  platform::setSurroundings(&mine);
  EXPECT_EQ(&platform::surroundings(), &mine);
  platform::setSurroundings(nullptr);
}

}  // namespace
