#include "odbc_fixture.h"

using platform::RunTimeError;
using platform::Value;

class OdbcTransactions : public OdbcTest {
protected:
  void SetUp() override { run("drop table if exists t; create table t(a int)"); }
  std::shared_ptr<platform::Connection> other_ = connect();
  Value seenByOther() { return other_->OpenRecordset("select count(*) from t", 2)->Field(std::size_t{0}); }
};

TEST_F(OdbcTransactions, without_one_each_statement_stands_at_once) {
  run("insert into t values(1)");
  EXPECT_EQ(seenByOther(), Value(1));
}

TEST_F(OdbcTransactions, what_is_written_shows_to_others_with_the_commit) {
  connection_->BeginTrans();
  run("insert into t values(1)");
  EXPECT_EQ(seenByOther(), Value(0));
  connection_->CommitTrans();
  EXPECT_EQ(seenByOther(), Value(1));
  run("insert into t values(2)");
  EXPECT_EQ(seenByOther(), Value(2)) << "behind the commit statements stand at once again";
}

TEST_F(OdbcTransactions, a_rollback_undoes_all_of_it) {
  connection_->BeginTrans();
  run("insert into t values(1)");
  connection_->RollbackTrans();
  EXPECT_EQ(value("select count(*) from t"), Value(0));
}

// The closing year's connection writes outside the transaction of the new year's.
TEST_F(OdbcTransactions, only_the_connection_that_began_it_is_in_it) {
  connection_->BeginTrans();
  other_->ExecuteSql("insert into t values(1)");
  connection_->RollbackTrans();
  EXPECT_EQ(value("select count(*) from t"), Value(1));
}

TEST_F(OdbcTransactions, only_the_outermost_commit_counts) {
  connection_->BeginTrans();
  connection_->BeginTrans();
  run("insert into t values(1)");
  connection_->CommitTrans();
  EXPECT_EQ(seenByOther(), Value(0));
  connection_->CommitTrans();
  EXPECT_EQ(seenByOther(), Value(1));
}

TEST_F(OdbcTransactions, ending_none_is_the_servers_failure) {
  EXPECT_EQ(failureOf([&] { connection_->CommitTrans(); }).server()->number, 3902);
  EXPECT_EQ(failureOf([&] { connection_->RollbackTrans(); }).server()->number, 3903);
}

TEST_F(OdbcTransactions, closing_a_connection_undoes_what_is_open) {
  connection_->BeginTrans();
  run("insert into t values(1)");
  connection_->ConnectionClose();
  EXPECT_EQ(seenByOther(), Value(0));
  EXPECT_EQ(failureOf([&] { run("select 1"); }).number(), RunTimeError::connectionClosed);
  connection_->ConnectionOpen(postgres().connectionText());
  EXPECT_EQ(value("select count(*) from t"), Value(0));
}

// A connection in a transaction, two inserts into t with a failure between them. transactionCount: the question that is
// put behind the failure, answered as the server would.
static std::shared_ptr<platform::Connection> brokenTransaction(const std::string& transactionCount) {
  odbc::Settings settings;
  settings.transactionCount = transactionCount;
  const auto connection = odbc::makeConnection(settings);
  connection->ConnectionOpen(postgres().connectionText());
  connection->BeginTrans();
  connection->ExecuteSql("insert into t values(1)");
  failureOf([&] { connection->ExecuteSql("insert into nosuch values(1)"); });
  connection->ExecuteSql("insert into t values(2)");
  return connection;
}

// A server of the dialect undoes the transaction behind some failures, and with autocommit off the driver begins
// another one without a word.
TEST_F(OdbcTransactions, one_that_the_server_undid_cannot_be_committed) {
  const auto victim = brokenTransaction("select 0");
  const RunTimeError e = failureOf([&] { victim->CommitTrans(); });
  EXPECT_EQ(e.server()->number, 3902);
  EXPECT_NE(e.description().find("undid the transaction"), std::string::npos) << e.description();
  victim->RollbackTrans();
  EXPECT_EQ(value("select count(*) from t"), Value(0));
  victim->BeginTrans();
  victim->ExecuteSql("insert into t values(3)");
  victim->CommitTrans();
  EXPECT_EQ(value("select count(*) from t"), Value(1));
}

TEST_F(OdbcTransactions, a_failure_that_the_server_keeps_the_transaction_over_changes_nothing) {
  brokenTransaction("select 1")->CommitTrans();
  EXPECT_EQ(value("select count(*) from t"), Value(2));
}
