// An account with both years in one database, through COM: one connection for both ends, and it stays the host's.

#include <gmock/gmock.h>

#include "entry_calls.h"
#include "relay.h"
#include "shared_account.h"

namespace com::test {
namespace {

using platform::Value;

class SharedDatabaseTest : public testing::Test {
protected:
  void SetUp() override {
    putBothYearsIntoOneDatabase(server);
    const Pointer<IDispatch> own = server.services();
    connection = adopt(new Relay(objectOf(Automation(own).call(L"NewYearConn").get())));
    services = adopt(new Relay(own));
    services->answer(L"NewYearConn", Variant(dispatchOf(connection).get()));
    login = adopt(new Relay(server.login()));
    ASSERT_EQ(gljz->putref_ZwPubCls(services.get()), S_OK);
  }
  Value connectionState() const {
    const Automation raw(objectOf(Automation(dispatchOf(connection)).call(L"RawConnection").get()));
    return raw.get(L"State");
  }
  Value count(const std::string& what) const { return server.cell(sharedDatabase, "select count(*) from " + what); }

  const ReferenceServer server;
  Pointer<Relay> services, connection, login;
  const Pointer<_clsGLJZ> gljz = newGljz();
};

TEST_F(SharedDatabaseTest, TheAccountIsCarriedOverTheServicesConnectionAlone) {
  const Value closingRows = count("gl_accsum where iyear=2005");
  ASSERT_EQ(count("gl_accsum where iyear=2006"), Value(0));
  const Answer answer = transfer(gljz.get(), dispatchOf(login));
  ASSERT_EQ(answer.code, S_OK) << lastError().description;
  EXPECT_TRUE(answer.returned);
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00310"));
  EXPECT_THAT(transferMsg(gljz.get()), says(true, ""));

  EXPECT_EQ(openingCash(server), platform::Money::parse("23070"));
  EXPECT_GT(count("gl_accass where iyear=2006").asInteger(), 0);
  EXPECT_GT(count("gl_accMultiass where iyear=2006").asInteger(), 0);
  EXPECT_EQ(count("gl_accsum where iyear=2005"), closingRows) << "no row of another year is touched";
  EXPECT_EQ(count("gl_yearstate where iyear=2006 and iIsUnload=1"), Value(1));

  EXPECT_EQ(login->heard("LoginOpenAccount"), 0) << "nothing is opened for the closing year";
  EXPECT_EQ(connection->heard("OpenRecordset select bflag from gl_mend where iperiod=12 and iyear=2005"), 1)
      << "the closing year is read over the connection of the new one";
  EXPECT_EQ(connection->heard("BeginTrans"), 1);
  EXPECT_EQ(connection->heard("CommitTrans"), 1);
}

TEST_F(SharedDatabaseTest, TheConnectionStaysOpenBehindTheRun) {
  ASSERT_TRUE(transfer(gljz.get(), dispatchOf(login)).returned);
  ASSERT_TRUE(transferMsg(gljz.get()).returned);
  EXPECT_EQ(connection->heard("ConnectionClose"), 0) << "it belongs to the services";
  EXPECT_EQ(connectionState(), Value(1));
  Automation(dispatchOf(connection)).call(L"ExecuteSql", {Argument(Value("update gl_yearstate set iIsUnload=7"))});
  EXPECT_EQ(count("gl_yearstate where iIsUnload=7"), Value(2)) << "and answers, outside any transaction";
}

TEST_F(SharedDatabaseTest, AStopLeavesItOpenToo) {
  server.execute(sharedDatabase, "update gl_mend set bflag=0 where iyear=2005 and iperiod=12");
  const Answer answer = transfer(gljz.get(), dispatchOf(login));
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00032"));
  EXPECT_EQ(connection->heard("ConnectionClose"), 0);
  EXPECT_EQ(connectionState(), Value(1));
}

TEST_F(SharedDatabaseTest, VoucherCategoriesThatAreMissingHaveOtherWords) {
  server.execute(sharedDatabase, "delete from dsign");
  const Answer answer = transfer(gljz.get(), dispatchOf(login));
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, "未设置凭证类别,不能执行上年结转");
  EXPECT_EQ(transferMsg(gljz.get()).message, answer.message);
}

TEST_F(SharedDatabaseTest, NamesThatDifferInCaseAloneAreOneDatabase) {
  server.execute("TqSystem",
                 "update UA_AccountDatabase set iEndYear=2005 where cAcc_Id='001' "
                 "insert into UA_AccountDatabase(cAcc_Id, iBeginYear, iEndYear, cDatabase) "
                 "values('001', 2006, 2006, 'TQDATA_001_2005')");
  ASSERT_TRUE(transfer(gljz.get(), dispatchOf(login)).returned);
  EXPECT_TRUE(transferMsg(gljz.get()).returned);
  EXPECT_EQ(login->heard("LoginOpenAccount"), 0);
  EXPECT_EQ(connectionState(), Value(1));
}

}  // namespace
}  // namespace com::test
