#include <gtest/gtest.h>

#include "tsql/calendar.h"
#include "tsql/chinese_page.h"
#include "tsql/convert_text.h"
#include "tsql/datum.h"
#include "tsql/decimal.h"
#include "tsql/sql_error.h"

namespace tsql {
namespace {

using K = TypeKind;

const SqlType integer = typeOf(K::integer), money = typeOf(K::money), bit = typeOf(K::bit), real64 = typeOf(K::float_),
              datetime = typeOf(K::datetime);

SqlType varchar(int n) {
  return typeOf(K::varchar, n);
}
SqlType nvarchar(int n) {
  return typeOf(K::nvarchar, n);
}

Datum fromText(const std::string& text, const SqlType& to, int style = 0) {
  return convert(text, nvarchar(50), to, style);
}

std::int64_t number(const std::string& text, const SqlType& to) {
  return std::get<std::int64_t>(fromText(text, to));
}

template <class T>
std::string asText(T value, const SqlType& from, const SqlType& to = varchar(60), int style = 0,
                   ConvertMode mode = ConvertMode::cast) {
  return std::get<std::string>(convert(Datum(value), from, to, style, mode));
}

struct Failure {
  int number = 0;
  std::string message;
  bool operator==(const Failure&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Failure& f) {
  return out << f.number << ": " << f.message;
}

Failure failure(const Datum& value, const SqlType& from, const SqlType& to, ConvertMode mode = ConvertMode::cast,
                int style = 0) {
  try {
    convert(value, from, to, style, mode);
  } catch (const SqlError& e) {
    return {e.number, e.what()};
  }
  return {};
}

std::int64_t i64(std::int64_t v) {
  return v;
}

std::int64_t ticks(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int millisecond = 0) {
  return daysFromCivil({year, month, day}) * ticksPerDay + ticksOfTime({hour, minute, second, millisecond});
}

// What a date reads as, in a form that people read.
std::string date(const std::string& text, int style = 0) {
  const auto value = std::get<std::int64_t>(convert(text, varchar(60), datetime, style));
  const std::string all = asText(value, datetime, varchar(30), 121);
  const std::string time = all.substr(11);
  return time == "00:00:00.000" ? all.substr(0, 10) : time.ends_with(".000") ? all.substr(0, 19) : all;
}

int dateFailure(const std::string& text) {
  return failure(text, varchar(60), datetime).number;
}

TEST(Convert, NullStaysNull) {
  EXPECT_TRUE(isNull(convert(Datum(), nvarchar(3), integer)));
  EXPECT_TRUE(isNull(convert(Datum(), typeOf(K::null), datetime)));
}

TEST(Convert, TextToInteger) {
  EXPECT_EQ(number("12", integer), 12);
  EXPECT_EQ(number(" 80", typeOf(K::tinyint)), 80);
  EXPECT_EQ(number("080 ", typeOf(K::tinyint)), 80);
  EXPECT_EQ(number("-5", integer), -5);
  EXPECT_EQ(number("+5", integer), 5);
  EXPECT_EQ(number("", integer), 0);
  EXPECT_EQ(number("  ", integer), 0);
  EXPECT_EQ(number("-9223372036854775808", typeOf(K::bigint)), INT64_MIN);
}

TEST(Convert, TextThatIsNoIntegerNamesItself) {
  EXPECT_EQ(failure("x", nvarchar(9), integer),
            (Failure{245, "Conversion failed when converting the nvarchar value 'x' to data type int."}));
  EXPECT_EQ(failure("1.5", varchar(9), typeOf(K::tinyint)),
            (Failure{245, "Conversion failed when converting the varchar value '1.5' to data type tinyint."}));
  for (const char* text : {"12x", "1,000", "四", "1 2", "0x1", "1e3", "--1"})
    EXPECT_EQ(failure(text, varchar(9), integer).number, 245) << text;
}

TEST(Convert, TextBeyondAnIntegerKind) {
  EXPECT_EQ(failure("2147483648", varchar(20), integer),
            (Failure{248, "The conversion of the varchar value '2147483648' overflowed an int column."}));
  EXPECT_EQ(failure("256", varchar(20), typeOf(K::tinyint)).number, 244);
  EXPECT_EQ(failure("99999999999999999999", varchar(20), typeOf(K::bigint)).number, 8115);
}

TEST(Convert, NumbersBeyondAnIntegerKind) {
  EXPECT_EQ(failure(i64(256), integer, typeOf(K::tinyint)),
            (Failure{220, "Arithmetic overflow error for data type tinyint, value = 256."}));
  EXPECT_EQ(failure(i64(-1), integer, typeOf(K::tinyint)).number, 220);
  EXPECT_EQ(failure(i64(32768), integer, typeOf(K::smallint)).number, 220);
  EXPECT_EQ(failure(i64(2147483648), decimalType(10, 0), integer),
            (Failure{8115, "Arithmetic overflow error converting expression to data type int."}));
  EXPECT_EQ(failure(3e9, real64, integer),
            (Failure{232, "Arithmetic overflow error for type int, value = 3000000000.000000."}));
  EXPECT_EQ(failure(9223372036854775808.0, real64, typeOf(K::bigint)).number, 232);
}

TEST(Convert, FractionsAreCutExceptThoseOfAmounts) {
  EXPECT_EQ(convert(i64(29), decimalType(2, 1), integer), Datum(i64(2)));
  EXPECT_EQ(convert(i64(-29), decimalType(2, 1), integer), Datum(i64(-2)));
  EXPECT_EQ(convert(2.5, real64, integer), Datum(i64(2)));
  EXPECT_EQ(convert(i64(25000), money, integer), Datum(i64(3)));
  EXPECT_EQ(convert(i64(-24999), money, integer), Datum(i64(-2)));
}

TEST(Convert, BitIsOneForAllButZero) {
  EXPECT_EQ(convert(i64(5), integer, bit), Datum(i64(1)));
  EXPECT_EQ(convert(i64(-1), integer, bit), Datum(i64(1)));
  EXPECT_EQ(convert(0.1, real64, bit), Datum(i64(1)));
  EXPECT_EQ(convert(i64(1), money, bit), Datum(i64(1)));
  EXPECT_EQ(convert(i64(0), money, bit), Datum(i64(0)));
  EXPECT_EQ(number("True", bit), 1);
  EXPECT_EQ(number(" FALSE ", bit), 0);
  EXPECT_EQ(number("1", bit), 1);
  EXPECT_EQ(number("", bit), 0);
  EXPECT_EQ(failure("yes", varchar(9), bit),
            (Failure{245, "Conversion failed when converting the varchar value 'yes' to data type bit."}));
}

TEST(Convert, TextToMoney) {
  EXPECT_EQ(number("12.5", money), 125000);
  EXPECT_EQ(number("-3", money), -30000);
  EXPECT_EQ(number(" 7.25 ", money), 72500);
  EXPECT_EQ(number("", money), 0);
  EXPECT_EQ(number("1,234.5678", money), 12345678);
  EXPECT_EQ(number("-$1.00005", money), -10001);
  EXPECT_EQ(number("￥1", money), 10000);
  EXPECT_EQ(number("922337203685477.5807", money), INT64_MAX);
  EXPECT_EQ(number("-922337203685477.5808", money), INT64_MIN);
  for (const char* text : {"abc", "十", "1e3", "1.2.3", "1 2", "1-"})
    EXPECT_EQ(failure(text, varchar(9), money),
              (Failure{235, "Cannot convert a char value to money. The char value has incorrect syntax."}))
        << text;
  EXPECT_EQ(failure("x", varchar(9), typeOf(K::smallmoney)).number, 293);
  EXPECT_EQ(failure("922337203685477.5808", varchar(30), money).number, 8115);
}

TEST(Convert, NumbersToMoneyRoundHalfAway) {
  EXPECT_EQ(convert(i64(123456), decimalType(6, 5), money), Datum(i64(12346)));
  EXPECT_EQ(convert(i64(-123455), decimalType(6, 5), money), Datum(i64(-12346)));
  EXPECT_EQ(convert(i64(7), integer, money), Datum(i64(70000)));
  EXPECT_EQ(convert(0.1, real64, money), Datum(i64(1000)));
  EXPECT_EQ(convert(decimalToDatum(Int128{INT64_MAX}), decimalType(19, 4), money), Datum(INT64_MAX));
  EXPECT_EQ(failure(decimalToDatum(Int128{INT64_MAX} + 1), decimalType(19, 4), money),
            (Failure{8115, "Arithmetic overflow error converting expression to data type money."}));
  EXPECT_EQ(failure(1e15, real64, money).number, 8115);
  EXPECT_EQ(failure(i64(INT64_MAX), typeOf(K::bigint), money).number, 8115);
}

TEST(Convert, ToDecimal) {
  EXPECT_EQ(number("1.5", decimalType(5, 1)), 15);
  EXPECT_EQ(number(" -1.255 ", decimalType(5, 2)), -126);
  EXPECT_EQ(number(".5", decimalType(5, 1)), 5);
  EXPECT_EQ(convert(i64(1005), money, decimalType(5, 3)), Datum(i64(101)));
  EXPECT_EQ(convert(2.567, real64, decimalType(5, 2)), Datum(i64(257)));
  EXPECT_EQ(convert(1e20, real64, decimalType(38, 2)), decimalToDatum(powerOfTen(22)));
  EXPECT_EQ(convert(i64(3), integer, decimalType(3, 2)), Datum(i64(300)));
  EXPECT_EQ(failure("", varchar(9), decimalType(5, 1)),
            (Failure{8114, "Error converting data type varchar to numeric."}));
  EXPECT_EQ(failure("1e5", nvarchar(9), decimalType(5, 1)),
            (Failure{8114, "Error converting data type nvarchar to numeric."}));
  EXPECT_EQ(failure("100", varchar(9), decimalType(3, 1)),
            (Failure{8115, "Arithmetic overflow error converting varchar to data type numeric."}));
  EXPECT_EQ(failure(i64(10), integer, decimalType(3, 2)),
            (Failure{8115, "Arithmetic overflow error converting int to data type numeric."}));
  EXPECT_EQ(failure(i64(999), decimalType(3, 2), decimalType(2, 1)).number, 8115);
}

TEST(Convert, ToFloat) {
  EXPECT_EQ(fromText(" 2.5", real64), Datum(2.5));
  EXPECT_EQ(fromText("-1e-3", real64), Datum(-0.001));
  EXPECT_EQ(fromText("1D+2", real64), Datum(100.0));
  EXPECT_EQ(fromText("", real64), Datum(0.0));
  EXPECT_EQ(fromText("1e-400", real64), Datum(0.0));
  EXPECT_EQ(convert(i64(1), money, real64), Datum(0.0001));
  EXPECT_EQ(convert(0.1, real64, typeOf(K::real)), Datum(static_cast<double>(0.1f)));
  EXPECT_EQ(failure("abc", nvarchar(9), real64), (Failure{8114, "Error converting data type nvarchar to float."}));
  for (const char* text : {"1.2.3", "inf", "nan", "0x10", "1e", "e5", "1,5", "1e+-5", "."})
    EXPECT_EQ(failure(text, varchar(9), real64).number, 8114) << text;
  EXPECT_EQ(failure("1e400", varchar(9), real64).number, 8115);
}

TEST(Convert, NumbersToText) {
  EXPECT_EQ(asText(i64(-5), integer), "-5");
  EXPECT_EQ(asText(i64(1), bit), "1");
  EXPECT_EQ(asText(i64(150), decimalType(5, 2)), "1.50");
  EXPECT_EQ(asText(i64(12345678), integer, varchar(8)), "12345678");
}

TEST(Convert, AmountsToText) {
  EXPECT_EQ(asText(i64(12345678), money), "1234.57");
  EXPECT_EQ(asText(i64(-5000), money), "-0.50");
  EXPECT_EQ(asText(i64(12345678), money, varchar(20), 2), "1234.5678");
  EXPECT_EQ(asText(i64(-12345678900), money, varchar(20), 1), "-1,234,567.89");
  EXPECT_EQ(asText(i64(1230000), money, varchar(20), 1), "123.00");
  EXPECT_EQ(asText(i64(12340000), money, varchar(20), 1), "1,234.00");
  EXPECT_EQ(failure(i64(12345678), money, varchar(4)),
            (Failure{234, "There is insufficient result space to convert a money value to varchar."}));
}

TEST(Convert, FloatsToText) {
  EXPECT_EQ(asText(0.1, real64), "0.1");
  EXPECT_EQ(asText(1e10, real64), "1e+010");
  EXPECT_EQ(asText(123456789.0, real64), "1.23457e+008");
  EXPECT_EQ(asText(0.00001, real64), "1e-005");
  EXPECT_EQ(asText(-2.5, real64), "-2.5");
  EXPECT_EQ(asText(-0.0, real64), "0");
  EXPECT_EQ(asText(1e100, real64), "1e+100");
  EXPECT_EQ(asText(1.5, real64, varchar(30), 1), "1.5000000e+000");
  EXPECT_EQ(asText(1.5, real64, varchar(30), 2), "1.500000000000000e+000");
  EXPECT_EQ(failure(123456.0, real64, varchar(3)).number, 232);
}

TEST(Convert, IntegersTooLongForATextBecomeAnAsteriskOrFail) {
  EXPECT_EQ(asText(i64(123), integer, varchar(2)), "*");
  EXPECT_EQ(asText(i64(123), integer, typeOf(K::char_, 2)), "* ");
  EXPECT_EQ(failure(i64(123), integer, nvarchar(2)),
            (Failure{8115, "Arithmetic overflow error converting expression to data type nvarchar."}));
  EXPECT_EQ(failure(i64(123), typeOf(K::bigint), varchar(2)).number, 8115);
}

TEST(Convert, TextIsCutByCastAndRefusedByStore) {
  EXPECT_EQ(asText(std::string("abcdef"), varchar(9), varchar(3)), "abc");
  EXPECT_EQ(asText(std::string("借方金额"), nvarchar(9), nvarchar(2)), "借方");
  EXPECT_EQ(failure("abcdef", varchar(9), varchar(5), ConvertMode::store),
            (Failure{8152, "String or binary data would be truncated."}));
  EXPECT_EQ(asText(std::string("abc   "), varchar(9), varchar(4), 0, ConvertMode::store), "abc ");
}

TEST(Convert, VarcharCountsBytesOfTheChineseCodePage) {
  EXPECT_EQ(asText(std::string("借贷"), nvarchar(9), varchar(4)), "借贷");
  EXPECT_EQ(asText(std::string("借贷"), nvarchar(9), varchar(3)), "借");
  EXPECT_EQ(asText(std::string("a借贷"), nvarchar(9), varchar(4)), "a借");
  EXPECT_EQ(failure("借贷", nvarchar(9), varchar(3), ConvertMode::store).number, 8152);
  EXPECT_EQ(asText(std::string("a한😀b"), nvarchar(9), varchar(9)), "a??b");
  EXPECT_EQ(asText(std::string("€"), nvarchar(9), varchar(1)), "€");
  EXPECT_EQ(pageLength("借a"), 3u);
  EXPECT_EQ(toPage("借"), "\xBD\xE8");
  EXPECT_EQ(fromPage("\xBD\xE8x"), "借x");
}

TEST(Convert, FixedTextsArePadded) {
  EXPECT_EQ(asText(std::string("ab"), varchar(9), typeOf(K::char_, 4)), "ab  ");
  EXPECT_EQ(asText(std::string("借"), varchar(9), typeOf(K::char_, 4)), "借  ");
  EXPECT_EQ(asText(std::string("借"), varchar(9), typeOf(K::nchar, 4)), "借   ");
  EXPECT_EQ(asText(i64(7), integer, typeOf(K::char_, 3)), "7  ");
}

TEST(Convert, TextOfUnlimitedTypesIsWhole) {
  const std::string longText(10000, 'x');
  EXPECT_EQ(asText(longText, nvarchar(-1), typeOf(K::ntext), 0, ConvertMode::store), longText);
  EXPECT_EQ(asText(longText, typeOf(K::ntext), varchar(SqlType::maxLength)), longText);
}

TEST(Convert, FitsAsIsNeverClaimsTooMuch) {
  EXPECT_TRUE(fitsAsIs("abc", varchar(3)));
  EXPECT_FALSE(fitsAsIs("abcd", varchar(3)));
  EXPECT_FALSE(fitsAsIs("借", varchar(3)));
  EXPECT_TRUE(fitsAsIs("借", nvarchar(3)));
  EXPECT_FALSE(fitsAsIs("a", typeOf(K::char_, 1)));
}

TEST(ConvertDate, AcceptedTexts) {
  for (const char* text : {"2006-01-05", "20060105", "2006-1-5", "2006/01/05", "2006.01.05", "01/05/2006", "Jan 5 2006",
                           "5 January 2006", "January 5, 2006", "2006 Jan 5", "5-Jan-2006", "1-5-06", "060105",
                           " 2006-01-05 ", "jan 5 06", "2006-01-05T00:00:00", "5 Jan, 2006"})
    EXPECT_EQ(date(text), "2006-01-05") << text;
  EXPECT_EQ(date(""), "1900-01-01");
  EXPECT_EQ(date("   "), "1900-01-01");
  EXPECT_EQ(date("2006"), "2006-01-01");
  EXPECT_EQ(date("Jan 2006"), "2006-01-01");
  EXPECT_EQ(date("1/2/50"), "1950-01-02");
  EXPECT_EQ(date("1/2/49"), "2049-01-02");
}

TEST(ConvertDate, AcceptedTimes) {
  EXPECT_EQ(date("2006-01-05 08:09"), "2006-01-05 08:09:00");
  EXPECT_EQ(date("2006-01-05 8:09:10"), "2006-01-05 08:09:10");
  EXPECT_EQ(date("2006-01-05T08:09:10"), "2006-01-05 08:09:10");
  EXPECT_EQ(date("2006-01-05T08:09:10.5Z"), "2006-01-05 08:09:10.500");
  EXPECT_EQ(date("20060105 08:09:10"), "2006-01-05 08:09:10");
  EXPECT_EQ(date("20060105T08:09:10"), "2006-01-05 08:09:10");
  EXPECT_EQ(date("2006-01-05 1:02:03 PM"), "2006-01-05 13:02:03");
  EXPECT_EQ(date("2006-01-05 1PM"), "2006-01-05 13:00:00");
  EXPECT_EQ(date("Jan  5 2006 12:00AM"), "2006-01-05");
  EXPECT_EQ(date("Jan  5 2006 12:30PM"), "2006-01-05 12:30:00");
  EXPECT_EQ(date("13:14"), "1900-01-01 13:14:00");
  EXPECT_EQ(date("13:14 2006-01-05"), "2006-01-05 13:14:00");
  EXPECT_EQ(date("2006-01-05 08:09:10:5"), "2006-01-05 08:09:10.007");
  EXPECT_EQ(date("2006-01-05 08:09:10.5"), "2006-01-05 08:09:10.500");
}

TEST(ConvertDate, StyleGivesTheOrderOfThreeNumbers) {
  EXPECT_EQ(date("02/03/2006", 101), "2006-02-03");
  EXPECT_EQ(date("02/03/2006", 103), "2006-03-02");
  EXPECT_EQ(date("02.03.06", 4), "2006-03-02");
  EXPECT_EQ(date("06/02/03", 11), "2006-02-03");
  EXPECT_EQ(date("2006-02-03", 103), "2006-02-03");
}

TEST(ConvertDate, TextsThatAreNoDate) {
  for (const char* text :
       {"yesterday", "abc", "2006-01-0x", "今天", "2006-01-05 abc", "2006-01", "5", "12345", "1/2", "2006-01-05T08:09",
        "2006-01-05 8:9:", "2006-01-05 1.2.2006", "Jan 5", "-", "2006-01-05Z", "8:00 9:00", "Jan 5 2006,-"})
    EXPECT_EQ(dateFailure(text), 241) << text;
  EXPECT_EQ(failure("x", varchar(9), datetime),
            (Failure{241, "Conversion failed when converting date and/or time from character string."}));
  EXPECT_EQ(failure("x", varchar(9), typeOf(K::smalldatetime)).number, 295);
}

TEST(ConvertDate, DaysThatDoNotExist) {
  for (const char* text : {"2006-13-01", "2006-02-30", "1752-12-31", "2006-00-10", "2006-01-01 24:00",
                           "2006-01-01 10:60", "9999-12-31 23:59:59.999", "20060230"})
    EXPECT_EQ(dateFailure(text), 242) << text;
  EXPECT_EQ(failure("2006-02-30", varchar(30), datetime),
            (Failure{242,
                     "The conversion of a varchar data type to a datetime data type resulted in an out-of-range "
                     "value."}));
  EXPECT_EQ(date("1753-01-01"), "1753-01-01");
  EXPECT_EQ(date("9999-12-31 23:59:59.997"), "9999-12-31 23:59:59.997");
  EXPECT_EQ(date("2004-02-29"), "2004-02-29");
}

TEST(ConvertDate, MillisecondsFallOnStepsOfThreeHundredths) {
  EXPECT_EQ(date("2006-01-01 00:00:00.001"), "2006-01-01");
  EXPECT_EQ(date("2006-01-01 00:00:00.002"), "2006-01-01 00:00:00.003");
  EXPECT_EQ(date("2006-01-01 00:00:00.005"), "2006-01-01 00:00:00.007");
  EXPECT_EQ(date("2006-01-01 00:00:00.008"), "2006-01-01 00:00:00.007");
  EXPECT_EQ(date("2006-01-01 00:00:00.009"), "2006-01-01 00:00:00.010");
  EXPECT_EQ(date("2005-12-31 23:59:59.999"), "2006-01-01");
}

TEST(ConvertDate, NumbersAreDays) {
  EXPECT_EQ(convert(i64(0), integer, datetime), Datum(i64(0)));
  EXPECT_EQ(convert(i64(38720), integer, datetime), Datum(ticks(2006, 1, 5)));
  EXPECT_EQ(convert(i64(5), decimalType(1, 1), datetime), Datum(ticks(1900, 1, 1, 12)));
  EXPECT_EQ(convert(-0.25, real64, datetime), Datum(ticks(1899, 12, 31, 18)));
  EXPECT_EQ(convert(i64(15000), money, datetime), Datum(ticks(1900, 1, 2, 12)));
  EXPECT_EQ(failure(i64(-53691), integer, datetime),
            (Failure{8115, "Arithmetic overflow error converting expression to data type datetime."}));
  EXPECT_EQ(failure(2958464.0, real64, datetime).number, 8115);
}

TEST(ConvertDate, DaysAreNumbers) {
  EXPECT_EQ(convert(ticks(2006, 1, 5), datetime, integer), Datum(i64(38720)));
  EXPECT_EQ(convert(ticks(2006, 1, 5, 12), datetime, integer), Datum(i64(38721)));
  EXPECT_EQ(convert(ticks(1900, 1, 1, 6), datetime, real64), Datum(0.25));
  EXPECT_EQ(convert(ticks(1900, 1, 1, 8), datetime, money), Datum(i64(3333)));
  EXPECT_EQ(convert(ticks(1900, 1, 1, 16), datetime, decimalType(9, 3)), Datum(i64(667)));
}

TEST(ConvertDate, SmallDateTimeHoldsMinutes) {
  const SqlType small = typeOf(K::smalldatetime);
  EXPECT_EQ(convert(ticks(2006, 1, 5, 10, 0, 29, 997), datetime, small), Datum(ticks(2006, 1, 5, 10)));
  EXPECT_EQ(convert(ticks(2006, 1, 5, 10, 0, 30), datetime, small), Datum(ticks(2006, 1, 5, 10, 1)));
  EXPECT_EQ(fromText("2006-01-05 23:59:45", small), Datum(ticks(2006, 1, 6)));
  EXPECT_EQ(failure("1899-12-31", varchar(30), small).number, 242);
  EXPECT_EQ(failure(ticks(2079, 6, 7), datetime, small).number, 242);
  EXPECT_EQ(failure(i64(70000), integer, small).number, 8115);
}

TEST(ConvertDate, Styles) {
  const std::int64_t d = ticks(2006, 1, 5, 13, 14, 15, 677);
  const std::pair<int, const char*> expected[] = {{0, "Jan  5 2006  1:14PM"},
                                                  {1, "01/05/06"},
                                                  {2, "06.01.05"},
                                                  {3, "05/01/06"},
                                                  {4, "05.01.06"},
                                                  {5, "05-01-06"},
                                                  {6, "05 Jan 06"},
                                                  {7, "Jan 05, 06"},
                                                  {8, "13:14:15"},
                                                  {9, "Jan  5 2006  1:14:15:677PM"},
                                                  {10, "01-05-06"},
                                                  {11, "06/01/05"},
                                                  {12, "060105"},
                                                  {13, "05 Jan 2006 13:14:15:677"},
                                                  {14, "13:14:15:677"},
                                                  {20, "2006-01-05 13:14:15"},
                                                  {21, "2006-01-05 13:14:15.677"},
                                                  {22, "01/05/06  1:14:15 PM"},
                                                  {23, "2006-01-05"},
                                                  {24, "13:14:15"},
                                                  {25, "2006-01-05 13:14:15.677"},
                                                  {100, "Jan  5 2006  1:14PM"},
                                                  {101, "01/05/2006"},
                                                  {102, "2006.01.05"},
                                                  {103, "05/01/2006"},
                                                  {104, "05.01.2006"},
                                                  {105, "05-01-2006"},
                                                  {106, "05 Jan 2006"},
                                                  {107, "Jan 05, 2006"},
                                                  {108, "13:14:15"},
                                                  {109, "Jan  5 2006  1:14:15:677PM"},
                                                  {110, "01-05-2006"},
                                                  {111, "2006/01/05"},
                                                  {112, "20060105"},
                                                  {113, "05 Jan 2006 13:14:15:677"},
                                                  {114, "13:14:15:677"},
                                                  {120, "2006-01-05 13:14:15"},
                                                  {121, "2006-01-05 13:14:15.677"},
                                                  {126, "2006-01-05T13:14:15.677"},
                                                  {127, "2006-01-05T13:14:15.677Z"}};
  for (const auto& [style, text] : expected) EXPECT_EQ(asText(d, datetime, varchar(40), style), text) << style;
  EXPECT_EQ(asText(ticks(2006, 1, 5), datetime, nvarchar(30)), "Jan  5 2006 12:00AM");
  EXPECT_EQ(asText(ticks(2006, 1, 5), datetime, varchar(30), 126), "2006-01-05T00:00:00");
  EXPECT_EQ(asText(d, datetime, varchar(10), 120), "2006-01-05");
  EXPECT_EQ(failure(d, datetime, varchar(40), ConvertMode::cast, 130).number, 40000);
  EXPECT_EQ(failure(d, datetime, varchar(40), ConvertMode::cast, 15),
            (Failure{281, "15 is not a valid style number when converting from datetime to a character string."}));
}

TEST(ConvertDate, EveryDayGoesThroughTheCalendar) {
  CivilDate d{firstYear, 1, 1};
  for (std::int64_t day = firstDay; day <= lastDay; ++day) {
    const CivilDate c = civilFromDays(day);
    ASSERT_TRUE(c.year == d.year && c.month == d.month && c.day == d.day) << day;
    ASSERT_EQ(daysFromCivil(c), day);
    if (++d.day > daysInMonth(d.year, d.month)) {
      d.day = 1;
      if (++d.month > 12) d.month = 1, ++d.year;
    }
  }
  EXPECT_EQ(d.year, lastYear + 1);
}

TEST(Convert, IdentifierBothWays) {
  const SqlType identifier = typeOf(K::uniqueidentifier);
  const std::string text = "6F9619FF-8B86-D011-B42D-00C04FC964FF";
  EXPECT_EQ(fromText("6f9619ff-8b86-d011-b42d-00c04fc964ff", identifier), Datum(text));
  EXPECT_EQ(fromText("{6F9619FF-8B86-D011-B42D-00C04FC964FF}", identifier), Datum(text));
  EXPECT_EQ(asText(text, identifier, varchar(36)), text);
  const Datum bytes = convert(text, identifier, typeOf(K::varbinary, 16));
  EXPECT_EQ(std::get<Blob>(bytes)[0], 0xFF);
  EXPECT_EQ(std::get<Blob>(bytes)[3], 0x6F);
  EXPECT_EQ(convert(bytes, typeOf(K::varbinary, 16), identifier), Datum(text));
  EXPECT_EQ(failure("abc", varchar(40), identifier).number, 8169);
  EXPECT_EQ(failure(text, identifier, varchar(30)).number, 8170);
}

TEST(Convert, BinaryForms) {
  const SqlType bytes8 = typeOf(K::varbinary, 8), fixed4 = typeOf(K::binary, 4);
  EXPECT_EQ(convert(i64(258), integer, bytes8), Datum(Blob{0, 0, 1, 2}));
  EXPECT_EQ(convert(i64(258), typeOf(K::bigint), fixed4), Datum(Blob{0, 0, 1, 2}));
  EXPECT_EQ(convert(Blob{0xFF, 0xFF, 0xFF, 0xFE}, fixed4, integer), Datum(i64(-2)));
  EXPECT_EQ(convert(Blob{1, 2}, bytes8, integer), Datum(i64(258)));
  EXPECT_EQ(convert(std::string("借"), varchar(9), fixed4), Datum(Blob{0xBD, 0xE8, 0, 0}));
  EXPECT_EQ(convert(std::string("A"), nvarchar(9), bytes8), Datum(Blob{0x41, 0}));
  EXPECT_EQ(convert(Blob{0xBD, 0xE8}, bytes8, varchar(9)), Datum(std::string("借")));
  EXPECT_EQ(convert(Blob{0x1F, 0x50}, bytes8, nvarchar(9)), Datum(std::string("\u501F")));
  const Datum d = convert(i64(-15), decimalType(2, 1), typeOf(K::varbinary, 20));
  EXPECT_EQ(d, Datum(Blob{2, 1, 0, 0, 15, 0, 0, 0}));
  EXPECT_EQ(convert(d, typeOf(K::varbinary, 20), decimalType(4, 2)), Datum(i64(-150)));
  const std::int64_t t = ticks(2006, 1, 5, 13, 14);
  EXPECT_EQ(convert(convert(t, datetime, bytes8), bytes8, datetime), Datum(t));
  EXPECT_EQ(failure(Blob{1, 2, 3}, bytes8, typeOf(K::varbinary, 2), ConvertMode::store).number, 8152);
}

TEST(Convert, ForbiddenPairs) {
  EXPECT_EQ(failure(i64(1), integer, typeOf(K::uniqueidentifier)),
            (Failure{529, "Explicit conversion from data type int to uniqueidentifier is not allowed."}));
  EXPECT_EQ(failure("1", typeOf(K::ntext), integer).number, 529);
  EXPECT_EQ(failure(i64(1), datetime, typeOf(K::ntext)).number, 529);
  EXPECT_EQ(failure(Blob{1}, typeOf(K::varbinary, 4), real64).number, 529);
  EXPECT_EQ(failure(Blob{1}, typeOf(K::image), varchar(4)).number, 529);
  EXPECT_EQ(failure("6F9619FF-8B86-D011-B42D-00C04FC964FF", typeOf(K::uniqueidentifier), datetime).number, 529);
}

}  // namespace
}  // namespace tsql
