#include "odbc_fixture.h"

using platform::DateTime;
using platform::Money;
using platform::RunTimeError;
using platform::Value;

class OdbcTypes : public OdbcTest {};

TEST_F(OdbcTypes, every_kind_of_column_arrives_as_its_kind_of_value) {
  const auto rows = open(
      "select true as flag, cast(7 as smallint) as small, 70000 as whole, 9007199254740993::bigint as big, "
      "cast(12.5 as numeric(19,4)) as amount, 0.1::float8 as quantity, timestamp '2005-12-31 23:59:58.003' as moment, "
      "date '2005-12-31' as day, 'text'::varchar(20) as words, "
      "'6f9619ff-8b86-d011-b42d-00c04fc964ff'::uuid as id, '\\x00ff10'::bytea as raw");
  EXPECT_EQ(rows->Field("flag"), Value(true));
  EXPECT_EQ(rows->Field("small"), Value(7));
  EXPECT_EQ(rows->Field("whole"), Value(70000));
  EXPECT_EQ(rows->Field("big"), Value(std::int64_t{9007199254740993}));
  EXPECT_EQ(rows->Field("amount"), Value(Money::parse("12.5")));
  EXPECT_EQ(rows->Field("quantity"), Value(0.1));
  EXPECT_EQ(rows->Field("moment"),
            Value(DateTime::fromTicks(DateTime::fromDate(2005, 12, 31, 23, 59, 58).ticks() + 1)));
  EXPECT_EQ(rows->Field("day"), Value(DateTime::fromDate(2005, 12, 31)));
  EXPECT_EQ(rows->Field("words"), Value("text"));
  EXPECT_EQ(rows->Field("id"), Value("6F9619FF-8B86-D011-B42D-00C04FC964FF"));
  EXPECT_EQ(rows->Field("raw"), Value(platform::Bytes{0x00, 0xFF, 0x10}));
}

TEST_F(OdbcTypes, null_is_null_whatever_the_column) {
  const auto rows = open(
      "select null::boolean, null::int, null::numeric(19,4), null::float8, null::timestamp, null::varchar(9), "
      "null::uuid, null::bytea, null::text");
  ASSERT_EQ(rows->FieldCount(), 9u);
  for (std::size_t i = 0; i < rows->FieldCount(); ++i) EXPECT_TRUE(rows->Field(i).isNull()) << i;
}

// Each of these loses a digit in a double.
TEST_F(OdbcTypes, amounts_keep_every_digit) {
  for (const char* amount : {"922337203685477.5807", "-922337203685477.5808", "123456789012345.6789", "0.0001", "-0.5",
                             "100000000000000.01", "0"})
    EXPECT_EQ(value(std::string("select cast(") + amount + " as numeric(19,4))"), Value(Money::parse(amount)));
}

TEST_F(OdbcTypes, a_decimal_that_is_no_amount_keeps_its_digits) {
  EXPECT_EQ(value("select cast(0.123456 as numeric(10,6))"), Value(0.123456));
  EXPECT_EQ(value("select cast(12345678901234567890.123456 as numeric(28,6))"), Value("12345678901234567890.123456"));
  EXPECT_EQ(value("select cast(99999999999999999999 as numeric(20,0))"), Value("99999999999999999999"));
}

TEST_F(OdbcTypes, texts_of_every_plane_survive_both_ways) {
  const std::string text = "借方 \xF0\xA0\xAE\xB7\xF0\x9F\x93\x92 é ' \" \\ ?";
  run("drop table if exists texts; create table texts(t varchar(60))");
  std::string doubled = text;
  doubled.insert(doubled.find('\''), "'");
  run("insert into texts values(N'" + doubled + "')");
  EXPECT_EQ(value("select t from texts"), Value(text));
  EXPECT_EQ(value("select octet_length(t) from texts"), Value(static_cast<std::int64_t>(text.size())));
  const auto rows = open("select t as \"凭证\" from texts");
  EXPECT_EQ(rows->FieldName(0), "凭证");
}

// A column of characters may hold twice as many units.
TEST_F(OdbcTypes, a_full_column_of_supplementary_characters_is_not_cut_off) {
  std::string text;
  for (int i = 0; i < 20; ++i) text += "\xF0\xA0\xAE\xB7";
  run("drop table if exists full_texts; create table full_texts(t varchar(20))");
  run("insert into full_texts values('" + text + "')");
  EXPECT_EQ(value("select t from full_texts"), Value(text));
}

TEST_F(OdbcTypes, a_statement_that_is_no_utf8_is_refused_before_it_is_sent) {
  EXPECT_EQ(failureOf([&] { run("select '\xFF'"); }).number(), RunTimeError::invalidCall);
}

TEST_F(OdbcTypes, long_values_come_whole_between_short_ones) {
  const std::string thousand(1000, 'x');
  run("drop table if exists long_values; create table long_values(id int, t text, n int, raw bytea, last varchar(9))");
  run("insert into long_values values(1, repeat('账', 40000), 5, decode(repeat('00ff', 30000), 'hex'), 'end');"
      "insert into long_values values(2, '', 6, '', 'b'); insert into long_values values(3, null, 7, null, null)");
  const auto rows = open("select * from long_values order by id");
  ASSERT_EQ(rows->Field("t").asText().size(), 3u * 40000);
  EXPECT_EQ(rows->Field("t").asText().substr(3u * 39998), "账账");
  ASSERT_EQ(rows->Field("raw").asBytes().size(), 60000u);
  EXPECT_EQ(rows->Field("raw").asBytes()[59999], 0xFF);
  EXPECT_EQ(rows->Field("n"), Value(5));
  EXPECT_EQ(rows->Field("last"), Value("end"));
  rows->MoveNext();
  EXPECT_EQ(rows->Field("t"), Value(""));
  EXPECT_EQ(rows->Field("raw"), Value(platform::Bytes{}));
  rows->MoveNext();
  EXPECT_TRUE(rows->Field("t").isNull());
  EXPECT_TRUE(rows->Field("raw").isNull());
  EXPECT_TRUE(rows->Field("last").isNull());
}

TEST_F(OdbcTypes, a_value_longer_than_the_driver_declared_is_a_failure_and_no_shorter_value) {
  const auto short_ = connect("TextAsLongVarchar=0;MaxVarcharSize=10");
  const RunTimeError e = failureOf([&] { short_->OpenRecordset("select repeat('x', 500)::text as words", 2); });
  EXPECT_NE(e.description().find("'words'"), std::string::npos) << e.description();
}

TEST_F(OdbcTypes, dates_before_the_ledgers_calendar_are_refused) {
  EXPECT_EQ(failureOf([&] { open("select timestamp '1600-01-01'"); }).number(), RunTimeError::invalidCall);
}
