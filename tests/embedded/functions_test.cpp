#include "functions_test_support.h"

namespace embedded {
namespace {

using K = tsql::TypeKind;

class Functions : public FunctionsTest {
protected:
  Functions() {
    run("create table money(a integer, b integer);"
        "insert into money values(1001000,1000),(-1,2000),(null,3000)");
  }
  // A date's text in the running form, and back.
  static std::string ticks(const std::string& text) {
    return "ts_conv('" + text + "'," + pack(tsql::typeOf(K::varchar, 30)) + "," + pack(K::datetime) + ")";
  }
  std::string date(const std::string& expression) {
    return value("ts_conv(" + expression + "," + pack(K::datetime) + "," + pack(tsql::typeOf(K::varchar, 30)) +
                 ",121)");
  }
  const std::string i = kind(K::integer);
};

TEST_F(Functions, IntegerArithmetic) {
  EXPECT_EQ(value("ts_iadd(2,3," + i + ")"), "5");
  EXPECT_EQ(value("ts_isub(2,3," + i + ")"), "-1");
  EXPECT_EQ(value("ts_imul(-2,-3," + i + ")"), "6");
  EXPECT_EQ(value("ts_idiv(-7,2," + i + ")"), "-3");
  EXPECT_EQ(value("ts_idiv(7,-2," + i + ")"), "-3");
  EXPECT_EQ(value("ts_imod(-7,3," + i + ")"), "-1");
  EXPECT_EQ(value("ts_imod(7,-3," + i + ")"), "1");
  EXPECT_EQ(value("ts_ineg(5," + i + ")"), "-5");
  EXPECT_EQ(value("ts_iadd(null,3," + i + ")"), "NULL");
}

TEST_F(Functions, IntegerFailures) {
  EXPECT_EQ(value("ts_idiv(1,0," + i + ")"), "!8134");
  EXPECT_EQ(message(), "Divide by zero error encountered.");
  EXPECT_EQ(value("ts_imod(1,0," + i + ")"), "!8134");
  EXPECT_EQ(value("ts_iadd(2147483647,1," + i + ")"), "!8115");
  EXPECT_EQ(message(), "Arithmetic overflow error converting expression to data type int.");
  EXPECT_EQ(value("ts_iadd(2147483647,1," + kind(K::bigint) + ")"), "2147483648");
  EXPECT_EQ(value("ts_imul(9223372036854775807,2," + kind(K::bigint) + ")"), "!8115");
  EXPECT_EQ(value("ts_idiv(-9223372036854775807-1,-1," + kind(K::bigint) + ")"), "!8115");
  EXPECT_EQ(value("ts_imod(-9223372036854775807-1,-1," + kind(K::bigint) + ")"), "0");
  EXPECT_EQ(value("ts_isub(1,2," + kind(K::tinyint) + ")"), "!8115");
  EXPECT_EQ(value("ts_ineg(-9223372036854775807-1," + kind(K::bigint) + ")"), "!8115");
  EXPECT_EQ(value("ts_irange(32768," + kind(K::smallint) + ")"), "!8115");
  EXPECT_EQ(value("ts_irange(32767," + kind(K::smallint) + ")"), "32767");
}

TEST_F(Functions, MoneyArithmetic) {
  EXPECT_EQ(rows("select ts_madd(a,b) from money"), (std::vector<std::string>{"1002000", "1999", "NULL"}));
  EXPECT_EQ(rows("select ts_msub(a,b) from money"), (std::vector<std::string>{"1000000", "-2001", "NULL"}));
  EXPECT_EQ(value("ts_mmul(100,100)"), "1");
  EXPECT_EQ(value("ts_mmul(15000,15000)"), "22500");
  EXPECT_EQ(value("ts_mmul(50,100)"), "1");
  EXPECT_EQ(value("ts_mmul(-50,100)"), "-1");
  EXPECT_EQ(value("ts_mmul(49,100)"), "0");
  EXPECT_EQ(value("ts_mdiv(100000,40000)"), "25000");
  EXPECT_EQ(value("ts_mdiv(20000,30000)"), "6666");
  EXPECT_EQ(value("ts_mdiv(-20000,30000)"), "-6666");
  EXPECT_EQ(value("ts_mneg(1)"), "-1");
}

TEST_F(Functions, MoneyFailures) {
  EXPECT_EQ(value("ts_mdiv(1,0)"), "!8134");
  EXPECT_EQ(value("ts_madd(9223372036854775807,1)"), "!8115");
  EXPECT_EQ(message(), "Arithmetic overflow error converting expression to data type money.");
  EXPECT_EQ(value("ts_mmul(9223372036854775807,20000)"), "!8115");
  EXPECT_EQ(value("ts_mdiv(9223372036854775807,5000)"), "!8115");
  EXPECT_EQ(value("ts_mneg(-9223372036854775807-1)"), "!8115");
}

TEST_F(Functions, DecimalArithmetic) {
  EXPECT_EQ(value("ts_dadd(1000,4,2,1,4)"), "3000");
  EXPECT_EQ(value("ts_dsub(1000,4,2,1,4)"), "-1000");
  EXPECT_EQ(value("ts_dmul(1001000,4,1005,3,7)"), "1006005000");
  EXPECT_EQ(value("ts_ddiv(2,0,3,0,6)"), "666666");
  EXPECT_EQ(value("ts_ddiv(2,0,0,0,6)"), "!8134");
  EXPECT_EQ(value("ts_dmod(75,1,2,0,1)"), "15");
  EXPECT_EQ(value("ts_dneg(75)"), "-75");
  EXPECT_EQ(value("ts_dcmp(30,2,3,1)"), "0");
  EXPECT_EQ(value("ts_dcmp(29,2,3,1)"), "-1");
}

TEST_F(Functions, DecimalsBeyond64BitsAreBytes) {
  const std::string big = "ts_dmul(9223372036854775807,0,1000000000000000000,0,0)";
  EXPECT_EQ(value(big), "blob");
  EXPECT_EQ(value("ts_ddiv(" + big + ",0,1000000000000000000,0,0)"), "9223372036854775807");
  EXPECT_EQ(value("ts_dmul(" + big + ",0,1000000000000000000,0,0)"), "!8115");
  EXPECT_EQ(message(), "Arithmetic overflow error converting expression to data type numeric.");
  EXPECT_EQ(value("ts_dneg(" + big + ") = ts_dneg(" + big + ")"), "1");
  EXPECT_EQ(value("ts_dkey(" + big + ") > ts_dkey(5)"), "1");
  EXPECT_EQ(value("ts_dkey(ts_dneg(" + big + ")) < ts_dkey(-5)"), "1");
  EXPECT_EQ(value("ts_dkey(-5) < ts_dkey(0)"), "1");
}

TEST_F(Functions, DecimalSum) {
  run("create table d(v); insert into d values(9223372036854775807),(9223372036854775807),(null)");
  EXPECT_EQ(rows("select ts_ddiv(ts_dsum(v),0,2,0,0) from d"), std::vector<std::string>{"9223372036854775807"});
  EXPECT_EQ(rows("select ts_dsum(v) from d where v is null"), std::vector<std::string>{"NULL"});
  EXPECT_EQ(rows("select ts_dsum(v) from d where 1=0"), std::vector<std::string>{"NULL"});
  run("create table huge(v); insert into huge values(ts_dmul(9223372036854775807,0,9000000000000000000,0,0)),"
      "(ts_dmul(9223372036854775807,0,9000000000000000000,0,0))");
  EXPECT_EQ(rows("select ts_dsum(v) from huge"), std::vector<std::string>{"!8115"});
}

TEST_F(Functions, FloatArithmetic) {
  EXPECT_EQ(value("ts_fdiv(7.0,2)"), "3.5");
  EXPECT_EQ(value("ts_fdiv(7.0,0)"), "!8134");
  EXPECT_EQ(value("ts_fdiv(1e308,1e-10)"), "!8115");
  EXPECT_EQ(value("ts_fmod(7.5,2)"), "1.5");
  EXPECT_EQ(value("ts_power(2,10)"), "1024.0");
  EXPECT_EQ(value("ts_power(-8,0.5)"), "!3623");
  EXPECT_EQ(value("ts_sqrt(2.25)"), "1.5");
  EXPECT_EQ(value("ts_sqrt(-1)"), "!3623");
}

TEST_F(Functions, Round) {
  const std::string m = pack(K::money), f = pack(K::float_), n = pack(K::integer);
  EXPECT_EQ(value("ts_round(23450,2," + m + ")"), "23500");
  EXPECT_EQ(value("ts_round(23440,2," + m + ")"), "23400");
  EXPECT_EQ(value("ts_round(-23450,2," + m + ")"), "-23500");
  EXPECT_EQ(value("ts_round(12345000,0," + m + ")"), "12350000");
  EXPECT_EQ(value("ts_round(23490,2," + m + ",1)"), "23400");
  EXPECT_EQ(value("ts_round(23490,6," + m + ")"), "23490");
  EXPECT_EQ(value("ts_round(1250,-2," + n + ")"), "1300");
  EXPECT_EQ(value("ts_round(1250,-40," + n + ")"), "0");
  EXPECT_EQ(value("ts_round(2147483647,-1," + n + ")"), "!8115");
  EXPECT_EQ(value("ts_round(12345,1," + pack(tsql::decimalType(10, 3)) + ")"), "12300");
  EXPECT_EQ(value("ts_round(74858,-3," + pack(tsql::decimalType(5, 2)) + ")"), "!8115");
  EXPECT_EQ(value("ts_round(2.567,2," + f + ")"), "2.57");
  EXPECT_EQ(value("ts_round(2.5,0," + f + ")"), "3.0");
  EXPECT_EQ(value("ts_round(-2.5,0," + f + ")"), "-3.0");
  EXPECT_EQ(value("ts_round(1234.567,-2," + f + ")"), "1200.0");
  EXPECT_EQ(value("ts_round(2.9,0," + f + ",1)"), "2.0");
  EXPECT_EQ(value("ts_round(1e300,200," + f + ")"), "1.0e+300");
  EXPECT_EQ(value("ts_round(null,2," + m + ")"), "NULL");
}

TEST_F(Functions, AbsFloorCeilingSign) {
  const std::string m = pack(K::money), f = pack(K::float_), n = pack(K::integer);
  EXPECT_EQ(value("ts_abs(-7," + n + ")"), "7");
  EXPECT_EQ(value("ts_abs(-2147483648," + n + ")"), "!8115");
  EXPECT_EQ(value("ts_abs(-1001000," + m + ")"), "1001000");
  EXPECT_EQ(value("ts_abs(-2.5," + f + ")"), "2.5");
  EXPECT_EQ(value("ts_floor(-15000," + m + ")"), "-20000");
  EXPECT_EQ(value("ts_ceiling(-15000," + m + ")"), "-10000");
  EXPECT_EQ(value("ts_ceiling(15001," + m + ")"), "20000");
  EXPECT_EQ(value("ts_floor(155," + pack(tsql::decimalType(5, 2)) + ")"), "100");
  EXPECT_EQ(value("ts_floor(-1.5," + f + ")"), "-2.0");
  EXPECT_EQ(value("ts_ceiling(3," + n + ")"), "3");
  EXPECT_EQ(value("ts_sign(-15000," + m + ")"), "-10000");
  EXPECT_EQ(value("ts_sign(-5," + n + ")"), "-1");
  EXPECT_EQ(value("ts_sign(0.0," + f + ")"), "0.0");
}

TEST_F(Functions, Conversion) {
  const std::string nv4 = pack(tsql::typeOf(K::nvarchar, 4)), nv = pack(tsql::typeOf(K::nvarchar, 40));
  EXPECT_EQ(value("ts_conv('12'," + nv + "," + i + ")"), "12");
  EXPECT_EQ(value("ts_conv('x'," + nv + "," + pack(K::integer) + ")"), "!245");
  EXPECT_EQ(message(), "Conversion failed when converting the nvarchar value 'x' to data type int.");
  EXPECT_EQ(value("ts_conv('借方金额表'," + nv + "," + nv4 + ")"), "借方金额");
  EXPECT_EQ(value("ts_store('借方金额'," + nv + "," + nv4 + ")"), "借方金额");
  EXPECT_EQ(value("ts_store('借方金额表'," + nv + "," + nv4 + ")"), "!8152");
  EXPECT_EQ(value("ts_conv(null," + nv + "," + pack(K::integer) + ")"), "NULL");
  EXPECT_EQ(value("ts_conv(12345678," + pack(K::money) + "," + nv + ",2)"), "1234.5678");
}

TEST_F(Functions, LengthAndParts) {
  EXPECT_EQ(value("ts_len('abc   ')"), "3");
  EXPECT_EQ(value("ts_len('   abc')"), "6");
  EXPECT_EQ(value("ts_len('借贷 ')"), "2");
  EXPECT_EQ(value("ts_left('借方金额',2)"), "借方");
  EXPECT_EQ(value("ts_left('abc',10)"), "abc");
  EXPECT_EQ(value("ts_left('abc',0)"), "");
  EXPECT_EQ(value("ts_left('abc',-1)"), "!537");
  EXPECT_EQ(value("ts_right('借方金额',2)"), "金额");
  EXPECT_EQ(value("ts_right('abc',10)"), "abc");
  EXPECT_EQ(value("ts_right('abc',-1)"), "!536");
  EXPECT_EQ(value("ts_substring('abcdef',2,3)"), "bcd");
  EXPECT_EQ(value("ts_substring('abcdef',5,10)"), "ef");
  EXPECT_EQ(value("ts_substring('abcdef',9,2)"), "");
  EXPECT_EQ(value("ts_substring('abcdef',0,3)"), "ab");
  EXPECT_EQ(value("ts_substring('abcdef',-1,4)"), "ab");
  EXPECT_EQ(value("ts_substring('abcdef',-5,2)"), "");
  EXPECT_EQ(value("ts_substring('abcdef',2,-1)"), "!537");
  EXPECT_EQ(value("ts_substring('借方金额',3,2)"), "金额");
  EXPECT_EQ(value("ts_substring('abc',2,2147483647)"), "bc");
}

TEST_F(Functions, TrimCaseAndRepetition) {
  EXPECT_EQ(value("'['||ts_ltrim(' ab ')||']'"), "[ab ]");
  EXPECT_EQ(value("'['||ts_rtrim(' ab ')||']'"), "[ ab]");
  EXPECT_EQ(value("ts_upper('aBc1借é')"), "ABC1借É");
  EXPECT_EQ(value("ts_lower('ABC借É')"), "abc借é");
  EXPECT_EQ(value("ts_replicate('ab',3)"), "ababab");
  EXPECT_EQ(value("ts_replicate('ab',-1)"), "NULL");
  EXPECT_EQ(value("length(ts_replicate('abc',1000000000))"), "8000");
  EXPECT_EQ(value("ts_space(3)||'|'"), "   |");
  EXPECT_EQ(value("ts_reverse('ab借')"), "借ba");
  EXPECT_EQ(value("ts_stuff('abcdef',2,3,'X')"), "aXef");
  EXPECT_EQ(value("ts_stuff('abcdef',2,3,null)"), "aef");
  EXPECT_EQ(value("ts_stuff('abcdef',0,3,'X')"), "NULL");
  EXPECT_EQ(value("ts_stuff('abcdef',7,1,'X')"), "NULL");
  EXPECT_EQ(value("ts_stuff('abcdef',6,9,'X')"), "abcdeX");
  EXPECT_EQ(value("ts_quotename('a]b')"), "[a]]b]");
}

TEST_F(Functions, Search) {
  EXPECT_EQ(value("ts_charindex('b','abcb')"), "2");
  EXPECT_EQ(value("ts_charindex('B','abcb')"), "2");
  EXPECT_EQ(value("ts_charindex('z','abc')"), "0");
  EXPECT_EQ(value("ts_charindex('金','借方金额')"), "3");
  EXPECT_EQ(value("ts_charindex('b','abcb',3)"), "4");
  EXPECT_EQ(value("ts_charindex('a','abc',-5)"), "1");
  EXPECT_EQ(value("ts_charindex('a','abc',9)"), "0");
  EXPECT_EQ(value("ts_charindex('','abc')"), "0");
  EXPECT_EQ(value("ts_replace('a-b-c','-','')"), "abc");
  EXPECT_EQ(value("ts_replace('aXbx','x','.')"), "a.b.");
  EXPECT_EQ(value("ts_replace('借方','方','')"), "借");
  EXPECT_EQ(value("ts_replace('abc','','z')"), "abc");
  EXPECT_EQ(value("ts_replace('aaa','aa','b')"), "ba");
}

TEST_F(Functions, Characters) {
  EXPECT_EQ(value("ts_char(65)"), "A");
  EXPECT_EQ(value("ts_char(256)"), "NULL");
  EXPECT_EQ(value("ts_ascii('A')"), "65");
  EXPECT_EQ(value("ts_ascii('借')"), "189");
  EXPECT_EQ(value("ts_ascii('')"), "NULL");
  EXPECT_EQ(value("ts_nchar(20511)"), "借");
  EXPECT_EQ(value("ts_nchar(55296)"), "NULL");
  EXPECT_EQ(value("ts_unicode('借')"), "20511");
}

TEST_F(Functions, NumbersAsText) {
  EXPECT_EQ(value("ts_str(123.45,6,1)"), " 123.5");
  EXPECT_EQ(value("ts_str(123.45,2,2)"), "**");
  EXPECT_EQ(value("ts_str(123.456,5,3)"), "123.5");
  EXPECT_EQ(value("ts_str(7)"), "         7");
  EXPECT_EQ(value("ts_str(-7.5,4,1)"), "-7.5");
  EXPECT_EQ(value("ts_isnumeric('1e5')"), "1");
  EXPECT_EQ(value("ts_isnumeric('1,000.5')"), "1");
  EXPECT_EQ(value("ts_isnumeric('abc')"), "0");
  EXPECT_EQ(value("ts_isnumeric('')"), "0");
  EXPECT_EQ(value("ts_isnumeric(null)"), "0");
  EXPECT_EQ(value("ts_isnumeric(5)"), "1");
}

TEST_F(Functions, DataLength) {
  EXPECT_EQ(value("ts_datalength('借a '," + pack(tsql::typeOf(K::varchar, 9)) + ")"), "4");
  EXPECT_EQ(value("ts_datalength('借a '," + pack(tsql::typeOf(K::nvarchar, 9)) + ")"), "6");
  EXPECT_EQ(value("ts_datalength(1," + pack(K::integer) + ")"), "4");
  EXPECT_EQ(value("ts_datalength(1," + pack(K::money) + ")"), "8");
  EXPECT_EQ(value("ts_datalength(x'0102'," + pack(K::image) + ")"), "2");
}

TEST_F(Functions, DatePartsAndNames) {
  const std::string d = ticks("2006-01-05 13:14:15.677");
  const char* parts[] = {"2006", "1", "1", "5", "5", "1", "5", "13", "14", "15", "677"};
  for (int code = 1; code <= 11; ++code)
    EXPECT_EQ(value("ts_datepart(" + std::to_string(code) + "," + d + ")"), parts[code - 1]) << code;
  EXPECT_EQ(value("ts_datepart(6," + ticks("2006-12-31") + ")"), "53");
  EXPECT_EQ(value("ts_datepart(6," + ticks("2006-01-08") + ")"), "2");
  EXPECT_EQ(value("ts_datepart(7," + ticks("1753-01-01") + ")"), "2");
  EXPECT_EQ(value("ts_datepart(8," + ticks("1899-12-31 23:00") + ")"), "23");
  EXPECT_EQ(value("ts_datename(3," + d + ")"), "January");
  EXPECT_EQ(value("ts_datename(7," + d + ")"), "Thursday");
  EXPECT_EQ(value("ts_datename(1," + d + ")"), "2006");
}

TEST_F(Functions, DateAdd) {
  const auto add = [&](int code, const std::string& n, const std::string& text) {
    return date("ts_dateadd(" + std::to_string(code) + "," + n + "," + ticks(text) + ")").substr(0, 19);
  };
  EXPECT_EQ(add(5, "1", "2004-02-29"), "2004-03-01 00:00:00");
  EXPECT_EQ(add(5, "-1", "2004-02-29"), "2004-02-28 00:00:00");
  EXPECT_EQ(add(3, "1", "2004-02-29"), "2004-03-29 00:00:00");
  EXPECT_EQ(add(1, "1", "2004-02-29"), "2005-02-28 00:00:00");
  EXPECT_EQ(add(3, "1", "2006-01-31"), "2006-02-28 00:00:00");
  EXPECT_EQ(add(3, "-1", "2006-03-31"), "2006-02-28 00:00:00");
  EXPECT_EQ(add(2, "-1", "2006-03-31 10:00"), "2005-12-31 10:00:00");
  EXPECT_EQ(add(8, "25", "2006-01-01"), "2006-01-02 01:00:00");
  EXPECT_EQ(add(6, "1", "2006-12-28"), "2007-01-04 00:00:00");
  EXPECT_EQ(add(9, "-1", "2006-01-01"), "2005-12-31 23:59:00");
  EXPECT_EQ(add(5, "1.9", "2006-01-01"), "2006-01-02 00:00:00");
  EXPECT_EQ(date("ts_dateadd(11,5," + ticks("2006-01-01") + ")"), "2006-01-01 00:00:00.007");
  EXPECT_EQ(value("ts_dateadd(1,8000," + ticks("2006-01-01") + ")"), "!517");
  EXPECT_EQ(message(), "Adding a value to a 'datetime' column caused an overflow.");
  EXPECT_EQ(value("ts_dateadd(5,-1," + ticks("1753-01-01") + ")"), "!517");
  EXPECT_EQ(value("ts_dateadd(5,9999999999," + ticks("1753-01-01") + ")"), "!8115");
}

TEST_F(Functions, DateDiffCountsBorders) {
  const auto diff = [&](int code, const std::string& a, const std::string& b) {
    return value("ts_datediff(" + std::to_string(code) + "," + ticks(a) + "," + ticks(b) + ")");
  };
  EXPECT_EQ(diff(5, "2005-12-31", "2006-01-01"), "1");
  EXPECT_EQ(diff(3, "2005-12-31", "2006-01-01"), "1");
  EXPECT_EQ(diff(1, "2005-12-31", "2006-01-01"), "1");
  EXPECT_EQ(diff(2, "2005-12-31", "2006-01-01"), "1");
  EXPECT_EQ(diff(5, "2006-01-05", "2005-12-31"), "-5");
  EXPECT_EQ(diff(5, "2005-12-31 23:59:59", "2006-01-01"), "1");
  EXPECT_EQ(diff(8, "2006-01-01 10:59", "2006-01-01 11:01"), "1");
  EXPECT_EQ(diff(9, "2006-01-01 10:00:59", "2006-01-01 10:01:00"), "1");
  EXPECT_EQ(diff(6, "2006-01-07", "2006-01-08"), "1");
  EXPECT_EQ(diff(6, "2006-01-08", "2006-01-14"), "0");
  EXPECT_EQ(diff(8, "1899-12-31 23:59", "1900-01-01"), "1");
  EXPECT_EQ(diff(11, "2006-01-01", "2006-01-01 00:00:00.007"), "7");
  EXPECT_EQ(diff(10, "1753-01-01", "9999-01-01"), "!535");
}

TEST_F(Functions, DateAndNumber) {
  EXPECT_EQ(date("ts_datetime_add(" + ticks("2006-01-05") + ",1)"), "2006-01-06 00:00:00.000");
  EXPECT_EQ(date("ts_datetime_add(" + ticks("2006-01-05") + ",-0.5)"), "2006-01-04 12:00:00.000");
  EXPECT_EQ(value("ts_datetime_add(" + ticks("2006-01-05") + ",1e9)"), "!517");
  EXPECT_EQ(date("ts_getdate()"), "2006-01-05 00:00:00.000");
}

TEST_F(Functions, Identifiers) {
  const std::string a = value("ts_newid()"), b = value("ts_newid()");
  EXPECT_EQ(a.size(), 36u);
  EXPECT_EQ(a[14], '4');
  EXPECT_NE(a, b);
  EXPECT_EQ(rows("select count(distinct ts_newid()) from money"), std::vector<std::string>{"3"});
}

TEST_F(Functions, SingleRow) {
  EXPECT_EQ(rows("select ts_single(b) from money where b=2000"), std::vector<std::string>{"2000"});
  EXPECT_EQ(rows("select ts_single(b) from money where b=0"), std::vector<std::string>{"NULL"});
  EXPECT_EQ(rows("select ts_single(a) from money where a is null"), std::vector<std::string>{"NULL"});
  EXPECT_EQ(rows("select ts_single(b) from money"), std::vector<std::string>{"!512"});
}

TEST_F(Functions, RaiseFailsOnlyWhereItIsReached) {
  EXPECT_EQ(value("ts_raise(50001,'so it is')"), "!50001");
  EXPECT_EQ(message(), "so it is");
  EXPECT_EQ(value("case when 1=1 then 5 else ts_raise(50001,'no') end"), "5");
  EXPECT_EQ(value("case when 1=1 then 5 else ts_idiv(1,0," + i + ") end"), "5");
}

}  // namespace
}  // namespace embedded
