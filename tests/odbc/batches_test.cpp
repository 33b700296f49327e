#include "odbc_fixture.h"
#include "platform/result_sink.h"

using platform::RunTimeError;
using platform::Value;

namespace {

class OdbcBatches : public OdbcTest {
protected:
  void SetUp() override { run("drop table if exists t; create table t(a int primary key)"); }
};

// What a batch answers, as one text.
class Transcript final : public platform::ResultSink {
public:
  void columns(const std::vector<platform::ResultColumn>& columns) override {
    for (const auto& c : columns) text += c.name + (c.numeric ? "# " : " ");
    text += ": ";
  }
  void row(const std::vector<Value>& row) override {
    for (const Value& v : row) text += v.displayText() + " ";
    text += "| ";
  }
  void endRows(std::int64_t count) override { text += "(" + std::to_string(count) + ") "; }
  void affected(std::int64_t count) override { text += "changed " + std::to_string(count) + " "; }
  void failure(const platform::ServerFailure& f) override {
    text += "failed " + f.message.substr(0, f.message.find(';')) + " ";
  }
  void message(const std::string& m) override { text += "says " + m.substr(0, m.find('\n')) + " "; }
  std::string text;
};

}  // namespace

TEST_F(OdbcBatches, the_rows_of_the_last_data_statement_count) {
  EXPECT_EQ(connection_->ExecuteSql("insert into t values(1); insert into t values(2),(3)"), 2);
  EXPECT_EQ(connection_->ExecuteSql("update t set a=a where a>1"), 2);
  EXPECT_EQ(connection_->ExecuteSql("update t set a=a where a>9"), 0);
}

TEST_F(OdbcBatches, every_statement_runs_whatever_the_ones_before_it_answer) {
  run("select 1; insert into t values(1); select 2 where false; insert into t values(2); select 3");
  EXPECT_EQ(value("select count(*) from t"), Value(2));
}

TEST_F(OdbcBatches, the_first_result_set_of_a_batch_is_opened) {
  EXPECT_EQ(value("insert into t values(1); select a + 41 from t; select 99"), Value(42));
}

TEST_F(OdbcBatches, a_failure_in_the_middle_is_a_failure_and_tells_the_batch) {
  const std::string batch = "insert into t values(1); insert into t values(1); insert into t values(3)";
  const RunTimeError e = failureOf([&] { run(batch); });
  EXPECT_EQ(e.number(), RunTimeError::serverError);
  ASSERT_TRUE(e.server());
  EXPECT_NE(e.description().find("duplicate key"), std::string::npos) << e.description();
  EXPECT_EQ(e.description().find("[unixODBC]"), std::string::npos) << e.description();
  EXPECT_EQ(e.server()->statement, batch);
  EXPECT_NE(e.server()->number, 0);
}

TEST_F(OdbcBatches, an_empty_batch_does_nothing) {
  EXPECT_EQ(connection_->ExecuteSql(""), -1);
  EXPECT_EQ(failureOf([&] { open(""); }).number(), RunTimeError::objectClosed);
}

TEST_F(OdbcBatches, a_connection_works_on_behind_a_failure) {
  failureOf([&] { run("insert into nowhere values(1)"); });
  failureOf([&] { open("select * from nowhere"); });
  run("insert into t values(5)");
  EXPECT_EQ(value("select a from t"), Value(5));
}

TEST_F(OdbcBatches, a_session_gives_all_that_a_batch_answers_in_its_order) {
  odbc::Session session(postgres().connectionText(), {});
  Transcript answer;
  session.execute("insert into t values(1); select a, 'x' as word from t; select 2 as b where false", answer);
  EXPECT_EQ(answer.text, "changed 1 a# word : 1 x | (1) b# : (0) ");
  Transcript failed;
  session.execute("select 1 as a; select * from nowhere", failed);
  EXPECT_NE(failed.text.find("relation \"nowhere\" does not exist"), std::string::npos) << failed.text;
  Transcript said;
  session.execute("do $$ begin raise warning 'take care'; end $$", said);
  EXPECT_NE(said.text.find("take care"), std::string::npos) << said.text;
}

TEST_F(OdbcBatches, a_session_fills_parameters_in_their_order) {
  run("drop table if exists p; create table p(i int, m numeric(19,4), f float8, b boolean, d timestamp, t "
      "varchar(40))");
  odbc::Session session(postgres().connectionText(), {});
  Transcript answer;
  const auto moment = platform::DateTime::fromDate(2005, 12, 31, 8, 30, 1);
  const std::string insert = "insert into p values(?, ?, ?, ?, ?, ?)";
  session.execute(insert, answer,
                  {1, platform::Money::parse("922337203685477.5807"), 0.25, true, moment, "账' \xF0\x9F\x93\x92"});
  session.execute(insert, answer, {2, Value(), Value(), Value(), Value(), Value()});
  session.execute(insert, answer,
                  {3, platform::Money::parse("-1"), 1.5, false, moment, "a much longer text than before"});
  EXPECT_EQ(answer.text, "changed 1 changed 1 changed 1 ");
  auto rows = open("select * from p order by i");
  EXPECT_EQ(rows->Field("m"), Value(platform::Money::parse("922337203685477.5807")));
  EXPECT_EQ(rows->Field("f"), Value(0.25));
  EXPECT_EQ(rows->Field("b"), Value(true));
  EXPECT_EQ(rows->Field("d"), Value(moment));
  EXPECT_EQ(rows->Field("t"), Value("账' \xF0\x9F\x93\x92"));
  rows->MoveNext();
  for (const char* name : {"m", "f", "b", "d", "t"}) EXPECT_TRUE(rows->Field(name).isNull()) << name;
  rows->MoveNext();
  EXPECT_EQ(rows->Field("t"), Value("a much longer text than before"));
  Transcript found;
  session.execute("select i from p where t = ?", found, {"a much longer text than before"});
  EXPECT_EQ(found.text, "i# : 3 | (1) ");
}

TEST_F(OdbcBatches, a_command_takes_its_arguments_and_its_time_limit) {
  run("drop table if exists code; create table code(iyear int, ccode varchar(60), dbegin timestamp)");
  run("insert into code values(2005, '1002', '2005-03-01'); insert into code values(2006, '1002', null)");
  const auto rows = connection_->RawConnection().OpenCommand("select * from code where iyear=? and ccode=? ",
                                                             {{"2005", 8}, {"1002", 60}}, 600);
  EXPECT_EQ(rows->Field("dbegin"), Value(platform::DateTime::fromDate(2005, 3, 1)));
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
  const auto start = std::chrono::steady_clock::now();
  const RunTimeError e = failureOf([&] {
    connection_->RawConnection().OpenCommand("select pg_sleep(20) where '1'=?", {{"1", 8}}, 1);
  });
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_FALSE(e.description().empty());
  EXPECT_EQ(value("select 1"), Value(1)) << "the connection is still good";
}
