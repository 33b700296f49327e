// Server cursors: the rows are those of the moment when the cursor was opened, whatever happens between two fetches.

#include "embedded/recordset.h"
#include "platform/run_time_error.h"
#include "server_test_support.h"

namespace embedded::test {
namespace {

using Rows = std::vector<std::string>;

class StreamTest : public ServerTest {
protected:
  StreamTest() {
    session->setFetchBlock(2);
    run(*session, "create table t (id int not null, k int null)");
    for (int i = 1; i <= 5; ++i) run(*session, "insert into t values(" + std::to_string(i) + ",0)");
  }

  std::unique_ptr<platform::Recordset> open(const std::string& query = "select id,k from t") {
    return openRecordset(session, query, platform::CursorLocation::server);
  }
  // A transaction that has written, so that a cursor reads through the session's own connection.
  void beginWriting() { run(*session, "begin transaction update t set k=1 where id=1"); }

  static std::string row(const platform::Recordset& r) {
    std::string text;
    for (std::size_t i = 0; i < r.FieldCount(); ++i)
      text += (i ? "|" : "") + (r.Field(i).isNull() ? std::string("Null") : r.Field(i).displayText());
    return text;
  }
  static Rows rest(platform::Recordset& r) {
    Rows all;
    for (; !r.Eof(); r.MoveNext()) all.push_back(row(r));
    return all;
  }
  // The first n rows, so that the cursor stands behind them.
  static Rows first(platform::Recordset& r, int n) {
    Rows all;
    for (; n > 0; --n, r.MoveNext()) all.push_back(row(r));
    return all;
  }
  static int failureOfWalking(platform::Recordset& r) {
    try {
      rest(r);
    } catch (const platform::RunTimeError& e) {
      return e.server() ? e.server()->number : -1;
    }
    return 0;
  }

  std::shared_ptr<Session> session = std::make_shared<Session>(server, "d1");
  const Rows written{"1|1", "2|0", "3|0", "4|0", "5|0"};
};

TEST_F(StreamTest, ReadsAllRowsInATransactionThatHasWritten) {
  beginWriting();
  EXPECT_EQ(rest(*open()), written);
  EXPECT_EQ(rest(*open("select id from t where id<0")), Rows{});
  EXPECT_EQ(rest(*open("select id from t where id<3")), (Rows{"1", "2"}));  // a block and no more
  run(*session, "commit transaction");
}

// What happens between two fetches, behind each row.
struct Between {
  const char* name;
  const char* batch;
};

class BetweenFetches : public StreamTest, public ::testing::WithParamInterface<Between> {};

TEST_P(BetweenFetches, NothingShowsInTheRows) {
  for (const bool inTransaction : {false, true})
    for (int at = 0; at <= 5; ++at) {
      if (inTransaction) beginWriting();
      auto r = open();
      Rows got = first(*r, at);
      ask(*session, GetParam().batch);
      for (const auto& line : rest(*r)) got.push_back(line);
      Rows expected = written;
      if (!inTransaction) expected[0] = "1|0";
      EXPECT_EQ(got, expected) << GetParam().batch << " behind row " << at << (inTransaction ? " inside" : " outside");
      r->Close();
      if (session->inTransaction()) run(*session, "rollback transaction");
      run(*session,
          "if object_id('gone') is not null drop table gone if object_id('t') is not null drop table t create table t "
          "(id int not null, k int null)");
      for (int i = 1; i <= 5; ++i) run(*session, "insert into t values(" + std::to_string(i) + ",0)");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Stream, BetweenFetches,
    ::testing::Values(
        Between{"insert", "insert into t values(6,6)"}, Between{"update", "update t set k=9,id=id+10"},
        Between{"delete", "delete t where id>2"}, Between{"truncate", "truncate table t"},
        Between{"commit", "if @@trancount>0 commit transaction"},
        Between{"commitAndWrite", "if @@trancount>0 commit transaction update t set k=8"},
        Between{"rollback", "if @@trancount>0 rollback transaction"},
        Between{"rollbackAndWrite", "if @@trancount>0 rollback transaction delete t"},
        Between{"savepoint", "if @@trancount>0 begin save transaction s update t set k=7 rollback transaction s end"},
        Between{"savepointAndWrite",
                "if @@trancount>0 begin save transaction s delete t rollback transaction s update t set k=3 end"},
        Between{"failedStatement", "insert into t values(null,1)"},
        Between{"failedDefinition", "update t set k=2 alter table t add constraint ck check(id>3)"},
        Between{"failedKeys",
                "create table gone (a int not null primary key) insert into gone values(1) insert into gone values(2) "
                "update gone set a=5"},
        Between{"failureThatEndsTheTransaction", "insert into t values('x',1)"},
        Between{"createTable", "create table gone (a int) insert into gone values(1)"},
        Between{"alterTable", "alter table t add x int null update t set k=5"},
        Between{"makeAnew", "alter table t alter column k bigint null"},
        Between{"createIndex", "create index ix on t(k) update t set k=4"}, Between{"dropTable", "drop table t"},
        Between{"temporary", "create table #s (a int) insert into #s select id from t drop table #s"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(StreamTest, TwoCursorsAtOnceAreWalkedInTurn) {
  for (const bool inTransaction : {false, true}) {
    if (inTransaction) beginWriting();
    auto a = open("select id from t order by id"), b = open("select id from t order by id desc");
    Rows got;
    for (; !a->Eof(); a->MoveNext(), b->MoveNext()) {
      got.push_back(row(*a) + row(*b));
      if (got.size() == 2) run(*session, "update t set id=id where id=3");
    }
    EXPECT_TRUE(b->Eof());
    EXPECT_EQ(got, (Rows{"15", "24", "33", "42", "51"}));
    // closed in either order, and opened again
    a->Close();
    EXPECT_EQ(rest(*open("select id from t where id>3")), (Rows{"4", "5"}));
    b->Close();
    EXPECT_EQ(rest(*open("select id from t where id>4")), (Rows{"5"}));
    if (inTransaction) run(*session, "commit transaction");
  }
}

TEST_F(StreamTest, ACursorThatIsClosedBehindItsFirstRowIsInNobodysWay) {
  for (const bool inTransaction : {false, true}) {
    if (inTransaction) beginWriting();
    for (int i = 0; i < 3; ++i) {
      auto r = open();
      EXPECT_EQ(row(*r), inTransaction ? "1|1" : "1|0");
      r->Close();
      run(*session, "insert into t values(9,9) delete t where id=9");
    }
    if (inTransaction) run(*session, "rollback transaction");
    run(*session, "create table other (a int) drop table other");
  }
}

TEST_F(StreamTest, MoveFirstReadsAnewInATransaction) {
  beginWriting();
  auto r = open();
  first(*r, 3);
  run(*session, "update t set k=2 where id=1");
  r->MoveFirst();
  EXPECT_EQ(row(*r), "1|2");
  EXPECT_EQ(rest(*r).size(), 5u);
}

TEST_F(StreamTest, RowsOfACursorAreWrittenThroughInATransaction) {
  beginWriting();
  auto r = open();
  for (; !r->Eof(); r->MoveNext()) {
    r->SetField("k", 100 + r->Field("id").asInteger());
    r->Update();
  }
  EXPECT_EQ(rows(*session, "select k from t"), (Rows{"101", "102", "103", "104", "105"}));
  run(*session, "rollback transaction");
  EXPECT_EQ(rows(*session, "select k from t"), (Rows{"0", "0", "0", "0", "0"}));
}

// An order that comes out otherwise each time must not lose rows or bring them twice.
TEST_F(StreamTest, AnOrderByChanceStillGivesEachRowOnce) {
  beginWriting();
  for (int round = 0; round < 20; ++round) {
    Rows got = rest(*open("select id from t order by newid()"));
    std::sort(got.begin(), got.end());
    ASSERT_EQ(got, (Rows{"1", "2", "3", "4", "5"}));
  }
}

// The failure of a row that nobody has asked for yet is the cursor's, not that of a statement that writes.
TEST_F(StreamTest, AFailureFurtherDownIsTheCursors) {
  run(*session, "create table c (id int not null, c nvarchar(3) null)");
  for (const char* v : {"1", "2", "3", "x", "5"}) run(*session, std::string("insert into c values(1,N'") + v + "')");
  beginWriting();
  auto r = open("select cast(c as int) as n from c");
  EXPECT_EQ(row(*r), "1");
  run(*session, "update t set k=5 where id=2");
  EXPECT_EQ(failureOfWalking(*r), 245);
  r->Close();
  r = open("select cast(c as int) as n from c");
  EXPECT_EQ(row(*r), "1");
  run(*session, "rollback transaction");
  EXPECT_EQ(failureOfWalking(*r), 245);
  r->Close();
  EXPECT_EQ(rows(*session, "select k from t where id<3"), (Rows{"0", "0"}));
}

// A cursor that is left open keeps the session neither from seeing what others commit nor from writing after them.
TEST_F(StreamTest, ACursorThatOutlivesItsTransactionPinsNothing) {
  Session other(server, "d1");
  beginWriting();
  auto r = open();
  first(*r, 1);
  run(*session, "update t set k=1 where id=2 commit transaction");
  EXPECT_EQ(first(*r, 2), (Rows{"2|0", "3|0"}));
  run(other, "insert into t values(6,6)");
  EXPECT_EQ(rows(*session, "select count(*) from t"), (Rows{"6"}));
  run(*session, "insert into t values(7,7)");
  EXPECT_EQ(rest(*r), (Rows{"4|0", "5|0"}));
}

TEST_F(StreamTest, WhatAnotherSessionDefinesIsSeenByTheNextCursor) {
  Session other(server, "d1");
  EXPECT_EQ(rest(*open("select * from t")).size(), 5u);
  run(other, "alter table t add x int not null default 7");
  EXPECT_EQ(first(*open("select * from t"), 1), (Rows{"1|0|7"}));
  run(other, "drop table t create table t (a nvarchar(3) null) insert into t values(N'new')");
  EXPECT_EQ(rest(*open("select * from t")), (Rows{"new"}));
  run(other, "create index ix on t(a)");
  EXPECT_EQ(rest(*open("select * from t")), (Rows{"new"}));
}

}  // namespace
}  // namespace embedded::test
