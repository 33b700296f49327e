// Runs that stop at a check, through COM: what the entries answer, and what becomes of the closing year's connection.

#include <gmock/gmock.h>

#include "entry_calls.h"
#include "relay.h"

namespace com::test {
namespace {

using platform::Value;

constexpr const char* closing = "TqData_001_2005";
constexpr const char* opening = "TqData_001_2006";

class TransferStopsTest : public testing::Test {
protected:
  Answer carry(const std::string& parameters = {}) {
    EXPECT_EQ(gljz->putref_ZwPubCls(services.get()), S_OK);
    return transfer(gljz.get(), server.login(), parameters);
  }
  void postAVoucher(int period) const {
    server.execute(opening,
                   "insert into gl_accvouch(iyear, iperiod, csign, ino_id, inid, dbill_date, ibook, ccode, md) "
                   "values(2006, " +
                       std::to_string(period) + ", N'记', 1, 1, '2006-01-10', 1, '1001', 10)");
  }
  // Every balance of the new year as one text.
  std::string balances() const {
    std::string text;
    for (const char* table : {"gl_accsum", "gl_accass", "gl_accMultiass"})
      text += server.cell(opening, "select count(*) from " + std::string(table)).displayText() + "/" +
              server.cell(opening, "select sum(mb) from " + std::string(table)).displayText() + " ";
    return text;
  }
  Value marks() const { return server.cell("TqSystem", "select count(*) from UA_Mark"); }

  // The run's services are those of the newest instance: none.
  void letTheServicesGo() {
    services = nullptr;
    gljz = newGljz();
  }
  // A database can be dropped unless somebody has it open.
  bool closingYearIsOpen() const {
    try {
      server.execute(opening, std::string("drop database ") + closing);
      return false;
    } catch (const platform::RunTimeError& e) {
      EXPECT_THAT(e.description(), testing::HasSubstr("is currently in use"));
      return true;
    }
  }

  const ReferenceServer server;
  Pointer<IDispatch> services = server.services();
  Pointer<_clsGLJZ> gljz = newGljz();
};

// --- stops without a word

TEST_F(TransferStopsTest, APostedVoucherOfTheNewYearStopsSilentlyAndCountsAsSuccess) {
  postAVoucher(1);
  const std::string before = balances();
  const Answer answer = carry();
  EXPECT_THAT(answer, says(true, message("Orvo.GL.TqGLJZ.00310")));
  EXPECT_THAT(transferMsg(gljz.get()), says(false, ""));
  EXPECT_EQ(balances(), before) << "nothing has moved";
  EXPECT_EQ(server.cell(opening, "select count(*) from gl_yearstate where iyear=2006 and iIsUnload=1"), Value(0));
  EXPECT_EQ(marks(), Value(1)) << "a success is marked";
}

TEST_F(TransferStopsTest, APostedVoucherOfTheOpeningPeriodStopsNothing) {
  postAVoucher(0);
  const std::string before = balances();
  const Answer answer = carry();
  EXPECT_TRUE(answer.returned);
  EXPECT_TRUE(transferMsg(gljz.get()).returned);
  EXPECT_NE(balances(), before);
}

TEST_F(TransferStopsTest, AnEmptyReferenceTableThatAccountsNeedStopsSilently) {
  server.execute(opening, "delete from Customer");
  const std::string before = balances();
  const Answer answer = carry("<Account><Parameter ID='GL*CusIsNull' Check='False'/></Account>");
  EXPECT_TRUE(answer.returned);
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00310"));
  EXPECT_THAT(transferMsg(gljz.get()), says(false, ""));
  EXPECT_EQ(balances(), before);
}

TEST_F(TransferStopsTest, ButNotWhenTheParametersLetItPass) {
  server.execute(opening, "delete from Customer");
  const std::string before = balances();
  EXPECT_TRUE(carry("<Account><Parameter ID='GL*CusIsNull' Check='True'/></Account>").returned);
  EXPECT_TRUE(transferMsg(gljz.get()).returned);
  EXPECT_NE(balances(), before);
}

// --- stops that say why

TEST_F(TransferStopsTest, AClosingYearThatIsNotClosedIsReported) {
  server.execute(closing, "update gl_mend set bflag=0 where iyear=2005 and iperiod=12");
  const std::string before = balances();
  const Answer answer = carry();
  EXPECT_THAT(answer, says(false, message("Orvo.GL.TqGLJZ.00032")));
  EXPECT_THAT(transferMsg(gljz.get()), says(false, message("Orvo.GL.TqGLJZ.00032")));
  EXPECT_EQ(balances(), before);
  EXPECT_EQ(marks(), Value(0));
}

TEST_F(TransferStopsTest, ANewYearWithoutVoucherCategoriesIsReported) {
  server.execute(opening, "delete from dsign");
  const Answer answer = carry();
  EXPECT_THAT(answer, says(false, message("Orvo.GL.TqGLJZ.00036")));
  EXPECT_THAT(transferMsg(gljz.get()), says(false, message("Orvo.GL.TqGLJZ.00036")));
  EXPECT_EQ(server.cell(opening, "select count(*) from gl_yearstate where iyear=2006 and iIsUnload=1"), Value(0));
}

// --- the closing year's connection

TEST_F(TransferStopsTest, AStopClosesTheClosingYearsConnection) {
  server.execute(closing, "update gl_mend set bflag=0 where iyear=2005 and iperiod=12");
  ASSERT_FALSE(carry().returned);
  EXPECT_FALSE(closingYearIsOpen());
  const Answer told = transferMsg(gljz.get());
  EXPECT_EQ(told.code, S_OK);
  EXPECT_FALSE(told.returned);
  EXPECT_EQ(told.message, message("Orvo.GL.TqGLJZ.00032")) << "the message has nothing to do with it";
}

TEST_F(TransferStopsTest, ASilentStopClosesItToo) {
  postAVoucher(12);
  ASSERT_TRUE(carry().returned);
  EXPECT_FALSE(closingYearIsOpen());
}

// The statements of a whole run name the closing year's database on the services' connection too: it goes first.
TEST_F(TransferStopsTest, ARunThatReachesItsEndClosesItToo) {
  ASSERT_TRUE(carry().returned);
  ASSERT_TRUE(transferMsg(gljz.get()).returned);
  letTheServicesGo();
  EXPECT_FALSE(closingYearIsOpen());
}

TEST_F(TransferStopsTest, AnEntryThatEndsBeforeTheChecksLeavesItOpen) {
  ASSERT_FALSE(carry("<Account").returned);
  letTheServicesGo();
  EXPECT_TRUE(closingYearIsOpen());
}

// The one stop that goes past the way out.
TEST_F(TransferStopsTest, TheFirstYearOfAnAccountStopsSilentlyAndLeavesItOpen) {
  const Pointer<Relay> firstYear = adopt(new Relay(services));
  firstYear->answer(L"AccountYearInfo", Variant(Value(2006)));
  services = dispatchOf(firstYear);
  const std::string before = balances();
  const Answer answer = carry();
  EXPECT_TRUE(answer.returned);
  EXPECT_EQ(answer.message, message("Orvo.GL.TqGLJZ.00310"));
  EXPECT_FALSE(transferMsg(gljz.get()).returned);
  EXPECT_EQ(balances(), before);
  EXPECT_EQ(firstYear->heard("ServiceMsgBox"), 0) << "no message box of a run ever shows";
  EXPECT_TRUE(closingYearIsOpen());
}

}  // namespace
}  // namespace com::test
