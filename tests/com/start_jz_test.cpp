// StartJz runs on what an earlier entry left in the process. The fresh process stands in the driver's tests.

#include <gmock/gmock.h>

#include "entry_calls.h"
#include "relay.h"
#include "shared_account.h"

namespace com::test {
namespace {

using platform::Value;
using testing::StartsWith;

class StartJzTest : public testing::Test {
protected:
  void prepare(const Pointer<IDispatch>& services, const Pointer<IDispatch>& login) {
    ASSERT_EQ(gljz->putref_ZwPubCls(services.get()), S_OK);
    ASSERT_EQ(gljz->putref_m_loginCls(login.get()), S_OK);
  }
  Value marks() const {
    return server.cell("TqSystem", "select count(*) from UA_Mark where cSysID='GL' and iYear=2005");
  }

  const ReferenceServer server;
  Pointer<_clsGLJZ> gljz = newGljz();
};

TEST_F(StartJzTest, WithoutServicesOrLoginItReturnsFalseAndShowsNothing) {
  const Pointer<Relay> services = adopt(new Relay(server.services()));
  ASSERT_EQ(gljz->putref_ZwPubCls(services.get()), S_OK);
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);  // the services are the run's from here on
  const int windows = services->heard("ServiceLocalize");
  ASSERT_GT(windows, 0);

  Answer answer = startJz(gljz.get());
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_FALSE(answer.returned);
  EXPECT_GT(services->heard("ResText Orvo.GL.TqGLJZ.00003"), 0) << "it has no login";
  ASSERT_EQ(gljz->putref_ZwPubCls(nullptr), S_OK);
  answer = startJz(gljz.get());
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_FALSE(answer.returned);
  EXPECT_GT(services->heard("ResText Orvo.GL.TqGLJZ.00001"), 0) << "it has no services";

  EXPECT_EQ(services->heard("ServiceMsgBox"), 0);
  EXPECT_EQ(services->heard("ServiceLocalize"), windows) << "no form either";
  const Answer told = transferMsg(gljz.get());
  EXPECT_FALSE(told.returned) << "that much it says";
  EXPECT_EQ(told.message, "");
  EXPECT_EQ(marks(), Value(1)) << "the mark of the transfer alone";
}

TEST_F(StartJzTest, BehindARunBetweenTwoDatabasesThereIsNoConnection) {
  prepare(server.services(), server.login());
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);
  ASSERT_TRUE(transferMsg(gljz.get()).returned);
  const Answer answer = startJz(gljz.get());
  EXPECT_EQ(answer.code, objectNotSet);
  const ComError error = lastError();
  EXPECT_EQ(error.source, "TqGLJZ");
  EXPECT_EQ(error.description, "Object not set: connection of the closing year");
  EXPECT_FALSE(answer.returned);
  EXPECT_FALSE(transferMsg(gljz.get()).returned);
  EXPECT_EQ(marks(), Value(1));
}

TEST_F(StartJzTest, BehindAStopBetweenTwoDatabasesThereIsNone) {
  server.execute("TqData_001_2005", "update gl_mend set bflag=0 where iyear=2005 and iperiod=12");
  prepare(server.services(), server.login());
  ASSERT_FALSE(transfer(gljz.get(), server.login()).returned);
  EXPECT_EQ(startJz(gljz.get()).code, objectNotSet);
}

TEST_F(StartJzTest, BehindAFailureTheNextTransferRuns) {
  prepare(server.services(), server.login());
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);
  ASSERT_EQ(startJz(gljz.get()).code, objectNotSet);
  EXPECT_TRUE(transfer(gljz.get(), server.login()).returned);
  EXPECT_TRUE(transferMsg(gljz.get()).returned);
}

TEST_F(StartJzTest, WithinOneDatabaseItRunsAgainAndMarks) {
  putBothYearsIntoOneDatabase(server);
  prepare(server.services(), server.login());
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);
  ASSERT_TRUE(transferMsg(gljz.get()).returned);
  server.execute(sharedDatabase, "delete from gl_accsum where iyear=2006 update gl_yearstate set iIsUnload=0");
  const Answer answer = startJz(gljz.get());
  EXPECT_EQ(answer.code, S_OK) << lastError().description;
  EXPECT_TRUE(answer.returned);
  EXPECT_THAT(transferMsg(gljz.get()), says(true, ""));
  EXPECT_EQ(openingCash(server), platform::Money::parse("23070"));
  EXPECT_EQ(server.cell(sharedDatabase, "select iIsUnload from gl_yearstate where iyear=2006"), Value(1));
  EXPECT_EQ(marks(), Value(2)) << "one of each entry";
}

TEST_F(StartJzTest, AStopBecomesAFailureTextThatNamesTheStep) {
  putBothYearsIntoOneDatabase(server);
  prepare(server.services(), server.login());
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);
  server.execute(sharedDatabase, "update gl_mend set bflag=0 where iyear=2005 and iperiod=12");
  const Answer answer = startJz(gljz.get());
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_FALSE(answer.returned);
  const Answer told = transferMsg(gljz.get());
  EXPECT_FALSE(told.returned);
  EXPECT_THAT(told.message, StartsWith(message("Orvo.GL.TqGLJZ.00032") +
                                       "  失败所在函数：TqGLJZ.mdlZDJZ.ExecJZ  该函数的功能 :结转函数--条件判断   "
                                       "最后执行的 sql 语句："));
  EXPECT_EQ(marks(), Value(1));
}

TEST_F(StartJzTest, ASilentStopIsAFailureTextWithoutAHead) {
  putBothYearsIntoOneDatabase(server);
  prepare(server.services(), server.login());
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);
  server.execute(sharedDatabase,
                 "insert into gl_accvouch(iyear, iperiod, csign, ino_id, inid, dbill_date, ibook, ccode, md) "
                 "values(2006, 1, N'记', 1, 1, '2006-01-10', 1, '1001', 10)");
  EXPECT_FALSE(startJz(gljz.get()).returned);
  EXPECT_THAT(transferMsg(gljz.get()).message, StartsWith("  失败所在函数：TqGLJZ.mdlZDJZ.ExecJZ"));
}

}  // namespace
}  // namespace com::test
