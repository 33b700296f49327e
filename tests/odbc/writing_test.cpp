#include "odbc_fixture.h"

using platform::DateTime;
using platform::Money;
using platform::RunTimeError;
using platform::Value;

namespace {

class OdbcWriting : public OdbcTest {
protected:
  void SetUp() override {
    run("drop table if exists ledger; create table ledger(i_id serial, ccode varchar(40) not null, iyear int default "
        "2006, "
        "me numeric(19,4) default 0, ne_s float8, bend boolean default true, dbegin timestamp, ctext text, raw bytea, "
        "primary key(i_id))");
  }
  Rows ledger() { return open("select * from ledger where iyear=2006 order by i_id"); }
};

}  // namespace

TEST_F(OdbcWriting, a_new_row_takes_what_is_set_and_the_tables_defaults) {
  const auto rows = ledger();
  rows->AddNew();
  rows->SetField("cCode", "100201");
  EXPECT_EQ(rows->Field("ccode"), Value("100201"));
  EXPECT_TRUE(rows->Field("me").isNull());
  rows->Update();
  const auto written = ledger();
  EXPECT_EQ(written->Field("ccode"), Value("100201"));
  EXPECT_EQ(written->Field("iyear"), Value(2006));
  EXPECT_EQ(written->Field("me"), Value(Money()));
  EXPECT_EQ(written->Field("bend"), Value(true));
  EXPECT_TRUE(written->Field("ne_s").isNull());
}

TEST_F(OdbcWriting, every_kind_of_value_is_written_as_it_is) {
  const Money amount = Money::parse("-922337203685477.5808");
  const std::string text = "第一行\r\n\xF0\x9F\x93\x92 'it''s' ? {x}", longText = std::string(20000, 'z') + "末";
  const platform::Bytes bytes{0, 1, 255, 0};
  const auto rows = ledger();
  const auto add = [&](const char* code, const Value& me, const Value& quantity, const Value& flag, const Value& date,
                       const Value& words, const Value& raw) {
    rows->AddNew();
    rows->SetField("ccode", code);
    rows->SetField("me", me), rows->SetField("ne_s", quantity), rows->SetField("bend", flag);
    rows->SetField("dbegin", date), rows->SetField("ctext", words), rows->SetField("raw", raw);
    rows->Update();
  };
  const DateTime date = DateTime::fromDate(2005, 1, 31, 12, 0, 59);
  add("1", amount, 0.1, false, date, text, bytes);
  add("2", Value(), Value(), Value(), Value(), Value(), Value());
  add("3", 12, 3, true, DateTime::fromDate(1753, 1, 1), longText, platform::Bytes(9000, 7));
  auto written = ledger();
  EXPECT_EQ(written->Field("me"), Value(amount));
  EXPECT_EQ(written->Field("ne_s"), Value(0.1));
  EXPECT_EQ(written->Field("bend"), Value(false));
  EXPECT_EQ(written->Field("dbegin"), Value(date));
  EXPECT_EQ(written->Field("ctext"), Value(text));
  EXPECT_EQ(written->Field("raw"), Value(bytes));
  written->MoveNext();
  for (const char* name : {"me", "ne_s", "bend", "dbegin", "ctext", "raw"})
    EXPECT_TRUE(written->Field(name).isNull()) << name;
  written->MoveNext();
  EXPECT_EQ(written->Field("me"), Value(Money::parse("12")));
  EXPECT_EQ(written->Field("ne_s"), Value(3.0));
  EXPECT_EQ(written->Field("ctext"), Value(longText));
  EXPECT_EQ(written->Field("raw"), Value(platform::Bytes(9000, 7)));
}

TEST_F(OdbcWriting, the_current_row_is_edited_where_it_stands) {
  run("insert into ledger(ccode, me) values('1', 1), ('2', 2), ('3', 3)");
  const auto rows = ledger();
  rows->MoveNext();
  rows->SetField("me", Money::parse("20.5"));
  EXPECT_EQ(rows->Field("me"), Value(Money::parse("20.5")));
  rows->Update();
  EXPECT_EQ(rows->Field("me"), Value(Money::parse("20.5"))) << "the row in memory follows";
  EXPECT_EQ(value("select string_agg(ccode || '=' || trim_scale(me), ' ' order by i_id) from ledger"),
            Value("1=1 2=20.5 3=3"));
}

TEST_F(OdbcWriting, an_edit_that_is_left_without_update_is_forgotten) {
  run("insert into ledger(ccode, me) values('1', 1), ('2', 2)");
  const auto rows = ledger();
  rows->SetField("me", Money::parse("9"));
  rows->MoveNext();
  rows->MovePrevious();
  EXPECT_EQ(rows->Field("me"), Value(Money::parse("1")));
  rows->Update();
  EXPECT_EQ(value("select me from ledger where ccode='1'"), Value(Money::parse("1")));
}

TEST_F(OdbcWriting, a_row_is_found_again_by_all_columns_of_its_key) {
  run("drop table if exists totals; create table totals(iyear int, ccode varchar(40), me numeric(19,4), "
      "primary key(iyear, ccode)); insert into totals values(2005,'1',1),(2006,'1',2),(2006,'2',3)");
  const auto rows = open("select * from totals where iyear=2006 and ccode='1'");
  rows->SetField("me", Money::parse("50"));
  rows->SetField("ccode", "1x");
  rows->Update();
  EXPECT_EQ(value("select string_agg(iyear || ccode || '=' || trim_scale(me), ' ' order by iyear, ccode) from totals"),
            Value("20051=1 20061x=50 20062=3"));
}

TEST_F(OdbcWriting, a_row_that_is_gone_is_a_failure) {
  run("insert into ledger(ccode) values('1')");
  const auto rows = ledger();
  run("delete from ledger");
  rows->SetField("me", Money::parse("1"));
  const RunTimeError e = failureOf([&] { rows->Update(); });
  EXPECT_NE(e.description().find("no longer there"), std::string::npos) << e.description();
}

TEST_F(OdbcWriting, a_table_without_a_key_takes_new_rows_but_no_edits) {
  run("drop table if exists keyless; create table keyless(a int, b int); insert into keyless values(1, 1)");
  const auto rows = open("select * from keyless");
  rows->AddNew();
  rows->SetField("a", 2);
  rows->Update();
  EXPECT_EQ(value("select count(*) from keyless"), Value(2));
  rows->SetField("b", 5);
  const RunTimeError e = failureOf([&] { rows->Update(); });
  EXPECT_NE(e.description().find("neither the primary key nor an identity"), std::string::npos) << e.description();
}

TEST_F(OdbcWriting, rows_of_several_tables_and_expressions_are_not_written) {
  run("insert into ledger(ccode) values('1')");
  const auto joined = open("select a.* from ledger a inner join ledger b on a.i_id=b.i_id");
  EXPECT_EQ(failureOf([&] { joined->AddNew(); }).number(), RunTimeError::invalidCall);
  const auto renamed = open("select i_id, iyear as me from ledger");
  EXPECT_EQ(failureOf([&] { renamed->SetField("me", 1); }).number(), RunTimeError::invalidCall);
}

TEST_F(OdbcWriting, the_servers_refusal_of_a_row_is_a_failure_and_the_next_row_works) {
  const auto rows = ledger();
  rows->AddNew();
  rows->SetField("ccode", Value());
  EXPECT_NE(failureOf([&] { rows->Update(); }).description().find("ccode"), std::string::npos);
  rows->AddNew();
  rows->SetField("ccode", "2");
  rows->Update();
  EXPECT_EQ(value("select count(*) from ledger"), Value(1));
}

TEST_F(OdbcWriting, a_server_cursor_writes_too) {
  run("insert into ledger(ccode, me) values('1', 1), ('2', 2)");
  const auto rows =
      connection_->OpenRecordset("select * from ledger order by i_id", 2, platform::CursorLocation::server);
  rows->MoveNext();
  rows->SetField("me", Money::parse("7"));
  rows->Update();
  EXPECT_EQ(value("select me from ledger where ccode='2'"), Value(Money::parse("7")));
}

TEST_F(OdbcWriting, many_rows_are_written_one_by_one) {
  const auto rows = ledger();
  for (int n = 0; n < 500; ++n) {
    rows->AddNew();
    rows->SetField("ccode", std::string(static_cast<std::size_t>(1 + n % 40), 'k'));
    rows->SetField("me", n % 7 == 0 ? Value() : Value(Money::fromUnits(n)));
    if (n % 3 == 0) rows->SetField("ne_s", n / 2.0);
    rows->Update();
  }
  EXPECT_EQ(value("select count(*) from ledger"), Value(500));
  EXPECT_EQ(value("select sum(length(ccode)) from ledger"), Value(500 / 40 * 820 + 210));
  EXPECT_EQ(value("select count(*) from ledger where me is null"), Value(72));
}
