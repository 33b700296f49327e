#include "variant.h"

#include <gtest/gtest.h>

#include <limits>

namespace com {
namespace {

using platform::DateTime;
using platform::Money;
using platform::RunTimeError;
using platform::Value;

Value throughVariant(const Value& value) {
  const Variant variant(value);
  return valueOf(variant.get());
}

int failureOf(const VARIANT& v) {
  try {
    valueOf(&v);
  } catch (const RunTimeError& e) {
    return e.number();
  }
  return 0;
}

TEST(VariantTest, KeepsTextsOfAllPlanes) {
  const std::string text = "结转 科目\xF0\xA0\x80\x80 𝄞 e\xCC\x81";
  EXPECT_EQ(throughVariant(Value(text)), Value(text));
  EXPECT_EQ(Variant(Value("\xF0\x9D\x84\x9E")).get()->bstrVal[0], 0xD834) << "a pair outside";
  EXPECT_EQ(throughVariant(Value(std::string("a\0b", 3))), Value(std::string("a\0b", 3)));
  EXPECT_EQ(throughVariant(Value("")), Value(""));
}

TEST(VariantTest, AmountsAreCurrencyToTheLastUnit) {
  for (const std::int64_t units : {std::int64_t{1}, std::int64_t{-1}, std::numeric_limits<std::int64_t>::max(),
                                   std::numeric_limits<std::int64_t>::min(), std::int64_t{92233720368547}}) {
    const Value amount(Money::fromUnits(units));
    EXPECT_EQ(Variant(amount).get()->vt, VT_CY);
    EXPECT_EQ(throughVariant(amount), amount);
  }
}

TEST(VariantTest, NumbersAndFlagsAndNothing) {
  EXPECT_EQ(throughVariant(Value(true)), Value(true));
  EXPECT_EQ(Variant(Value(true)).get()->boolVal, -1);
  EXPECT_EQ(throughVariant(Value(-7)), Value(-7));
  EXPECT_EQ(throughVariant(Value(0.1)), Value(0.1));
  EXPECT_EQ(throughVariant(Value()), Value());
  EXPECT_EQ(Variant(Value()).get()->vt, VT_NULL);
  EXPECT_EQ(throughVariant(Value(std::int64_t{1} << 40)).asInteger(), std::int64_t{1} << 40);
  const std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(throughVariant(Value(most)), Value(most));
  EXPECT_EQ(throughVariant(Value(platform::Bytes{0, 255, 7})), Value(platform::Bytes{0, 255, 7}));
  EXPECT_EQ(throughVariant(Value(platform::Bytes{})), Value(platform::Bytes{}));
}

TEST(VariantTest, DatesOnBothSidesOfTheEpoch) {
  for (const DateTime date : {DateTime::fromDate(2006, 1, 15), DateTime::fromDate(2005, 12, 31, 23, 59, 59),
                              DateTime::fromDate(1899, 12, 29, 6), DateTime::fromDate(1753, 1, 1),
                              DateTime::fromDate(9999, 12, 31, 12), DateTime::fromDate(1899, 12, 30)})
    EXPECT_EQ(throughVariant(Value(date)), Value(date)) << date.text();
  EXPECT_EQ(oleDate(DateTime::fromDate(1899, 12, 29, 6)), -1.25);
  EXPECT_THROW(dateFromOle(3e6), RunTimeError);
}

TEST(VariantTest, DecimalsStayExactWhereTheyCan) {
  VARIANT v{};
  const auto decimal = [&](const wchar_t* text) {
    DECIMAL d{};
    EXPECT_EQ(VarDecFromStr(const_cast<wchar_t*>(text), MAKELCID(LANG_ENGLISH, SORT_DEFAULT), 0, &d), S_OK);
    v.decVal = d;
    v.vt = VT_DECIMAL;
    return valueOf(&v);
  };
  EXPECT_EQ(decimal(L"12.3400"), Value(Money::parse("12.34")));
  EXPECT_EQ(decimal(L"-0.0001"), Value(Money::parse("-0.0001")));
  EXPECT_EQ(decimal(L"17"), Value(17));
  EXPECT_EQ(decimal(L"17.000"), Value(17));
  EXPECT_EQ(decimal(L"0.33333"), Value(0.33333)) << "more than an amount holds";
}

TEST(VariantTest, LooksBehindReferences) {
  Variant inner{Value("text")};
  VARIANT byVariable{};
  byVariable.vt = VT_BYREF | VT_VARIANT;
  byVariable.pvarVal = inner.get();
  EXPECT_EQ(valueOf(&byVariable), Value("text"));
  VARIANT typed{};
  typed.vt = VT_BYREF | VT_BSTR;
  typed.pbstrVal = &inner.get()->bstrVal;
  EXPECT_EQ(valueOf(&typed), Value("text"));
  CY amount{};
  amount.int64 = 12345;
  VARIANT currency{};
  currency.vt = VT_BYREF | VT_CY;
  currency.pcyVal = &amount;
  EXPECT_EQ(valueOf(&currency), Value(Money::fromUnits(12345)));
}

TEST(VariantTest, LeftOutArgumentsAreNull) {
  const Variant missing = Variant::missing();
  EXPECT_TRUE(isMissing(missing.get()));
  EXPECT_EQ(valueOf(missing.get()), Value());
  EXPECT_TRUE(isMissing(nullptr));
  EXPECT_FALSE(isMissing(Variant(Value()).get()));
}

TEST(VariantTest, WhatIsNoValueIsAMismatch) {
  VARIANT v{};
  v.vt = VT_ERROR;
  v.scode = E_FAIL;
  EXPECT_EQ(failureOf(v), RunTimeError::typeMismatch);
  const Variant nothing(static_cast<IDispatch*>(nullptr));
  EXPECT_EQ(failureOf(*nothing.get()), RunTimeError::objectNotSet);
}

}  // namespace
}  // namespace com
