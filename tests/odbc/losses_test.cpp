#include "odbc_fixture.h"

using platform::RunTimeError;
using platform::Value;

namespace {

class OdbcLosses : public OdbcTest {
protected:
  void SetUp() override { run("drop table if exists t; create table t(a int)"); }
  // The server ends the session of the connection, as it does when it is shut down.
  void kill(platform::Connection& victim) {
    const Value id = victim.OpenRecordset("select pg_backend_pid()", 2)->Field(std::size_t{0});
    run("select pg_terminate_backend(" + id.asText() + ", 5000)");
  }
  std::shared_ptr<platform::Connection> victim_ = connect();
};

}  // namespace

TEST_F(OdbcLosses, a_lost_connection_is_one_clear_failure_and_later_calls_are_refused) {
  kill(*victim_);
  const RunTimeError first = failureOf([&] { victim_->ExecuteSql("insert into t values(1)"); });
  EXPECT_NE(first.description().find("connection to the server is lost"), std::string::npos) << first.description();
  EXPECT_EQ(victim_->RawConnection().State(), platform::RawConnection::closed);
  for (int i = 0; i < 3; ++i) {
    const RunTimeError later = failureOf([&] { victim_->OpenRecordset("select 1", 2); });
    EXPECT_EQ(later.number(), RunTimeError::connectionClosed);
    EXPECT_NE(later.description().find("lost"), std::string::npos) << later.description();
  }
  victim_->ConnectionClose();
  victim_->ConnectionOpen(postgres().connectionText());
  EXPECT_EQ(victim_->ExecuteSql("insert into t values(1)"), 1) << "opened anew it works again";
}

TEST_F(OdbcLosses, the_transaction_goes_with_the_connection) {
  victim_->BeginTrans();
  victim_->ExecuteSql("insert into t values(1)");
  kill(*victim_);
  failureOf([&] { victim_->ExecuteSql("insert into t values(2)"); });
  EXPECT_EQ(failureOf([&] { victim_->CommitTrans(); }).number(), RunTimeError::connectionClosed);
  EXPECT_EQ(failureOf([&] { victim_->RollbackTrans(); }).number(), RunTimeError::connectionClosed);
  EXPECT_EQ(value("select count(*) from t"), Value(0));
}

TEST_F(OdbcLosses, a_commit_that_meets_the_loss_is_a_failure) {
  victim_->BeginTrans();
  victim_->ExecuteSql("insert into t values(1)");
  kill(*victim_);
  EXPECT_NE(failureOf([&] { victim_->CommitTrans(); }).description(), "");
  EXPECT_EQ(value("select count(*) from t"), Value(0));
}

TEST_F(OdbcLosses, a_server_cursor_that_meets_the_loss_fails_and_closes) {
  run("insert into t select generate_series(1, 3000)");
  const auto streaming = connect("UseDeclareFetch=1;Fetch=100");
  const auto rows = streaming->OpenRecordset("select * from t", 2, platform::CursorLocation::server);
  kill(*streaming);
  const RunTimeError e = failureOf([&] {
    for (; !rows->Eof(); rows->MoveNext()) {
    }
  });
  EXPECT_FALSE(e.description().empty());
  EXPECT_TRUE(rows->Eof()) << "what had been read is gone";
  EXPECT_EQ(failureOf([&] { rows->Field("a"); }).number(), RunTimeError::noCurrentRecord);
  EXPECT_NO_THROW(rows->Close());
}

TEST_F(OdbcLosses, a_client_cursor_keeps_its_rows) {
  run("insert into t values(1), (2)");
  const auto rows = victim_->OpenRecordset("select * from t order by a", 2);
  kill(*victim_);
  failureOf([&] { victim_->ExecuteSql("select 1"); });
  rows->MoveNext();
  EXPECT_EQ(rows->Field("a"), Value(2));
}
