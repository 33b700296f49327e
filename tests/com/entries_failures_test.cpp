// Failures of the server in the middle of a run, through COM: the first one behind the checks is swallowed, every other
// one is the caller's.

#include <gmock/gmock.h>

#include "entry_calls.h"

namespace com::test {
namespace {

using platform::Value;
using testing::HasSubstr;

constexpr const char* opening = "TqData_001_2006";

class EntriesFailuresTest : public testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(gljz->putref_ZwPubCls(services.get()), S_OK); }

  // The stage of the multi-auxiliary totals writes more than one row: it fails at the second one.
  void letAStageFail() const {
    server.execute(opening,
                   "delete from gl_accMultiass create unique index ux_one_row_a_year on gl_accMultiass(iyear)");
  }
  void letTheFrameFail() const { server.execute(opening, "drop procedure GL_P_AllItemName"); }

  int count(const std::string& what) const {
    return static_cast<int>(server.cell(opening, "select count(*) from " + what).asInteger());
  }
  int balances() const { return count("gl_accsum where iyear=2006"); }

  const ReferenceServer server;
  const Pointer<IDispatch> services = server.services();
  const Pointer<_clsGLJZ> gljz = newGljz();
};

TEST_F(EntriesFailuresTest, AStageThatFailsIsASuccessAndWhatStoodBeforeItIsCommitted) {
  letAStageFail();
  const int before = balances();
  const Answer answer = transfer(gljz.get(), server.login());
  EXPECT_THAT(answer, says(true, message("Orvo.GL.TqGLJZ.00310")));
  EXPECT_THAT(transferMsg(gljz.get()), says(true, ""));

  EXPECT_GT(balances(), before) << "the stage before it";
  EXPECT_GT(count("gl_accass where iyear=2006"), 0);
  EXPECT_LE(count("gl_accMultiass"), 1);
  EXPECT_EQ(count("rp_cheque"), 0) << "the stages behind it have not run";
  EXPECT_EQ(count("GL_QcUserDef"), 0);
  EXPECT_GT(count("GL_CashItemDataSource where iyear=2006"), 0) << "the frame goes on behind the stages";
  EXPECT_EQ(count("gl_yearstate where iyear=2006 and iIsUnload=1"), 1);
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark"), Value(1));
}

TEST_F(EntriesFailuresTest, WithoutAFailureTheStagesBehindItWrite) {  // what the test before this one stands on
  ASSERT_TRUE(transfer(gljz.get(), server.login()).returned);
  EXPECT_GT(count("gl_accMultiass"), 1);
  EXPECT_GT(count("rp_cheque"), 0);
  EXPECT_GT(count("GL_QcUserDef"), 0);
}

TEST_F(EntriesFailuresTest, AFailureOfTheFrameAloneIsSwallowedToo) {
  letTheFrameFail();
  const int before = balances();
  const Answer answer = transfer(gljz.get(), server.login());
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_TRUE(answer.returned);
  EXPECT_TRUE(transferMsg(gljz.get()).returned);
  EXPECT_GT(balances(), before);
}

TEST_F(EntriesFailuresTest, ASecondFailureIsTheCallersAndLeavesTheTransactionOpen) {
  letAStageFail();
  letTheFrameFail();
  const int before = balances();
  const Answer answer = transfer(gljz.get(), server.login());
  EXPECT_EQ(answer.code, serverSaid);
  const ComError error = lastError();
  EXPECT_EQ(error.source, "TqGLJZ");
  EXPECT_THAT(error.description, HasSubstr("GL_P_AllItemName"));
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, "");
  EXPECT_FALSE(transferMsg(gljz.get()).returned);
  EXPECT_EQ(server.cell("TqSystem", "select count(*) from UA_Mark"), Value(0));

  const Automation connection(objectOf(Automation(services).call(L"NewYearConn").get()));
  const auto seenFromWithin = [&] {
    return static_cast<int>(cellOf(connection, "select count(*) from gl_accsum where iyear=2006").asInteger());
  };
  EXPECT_EQ(balances(), before) << "another connection sees nothing";
  EXPECT_GT(seenFromWithin(), before);
  connection.call(L"RollbackTrans");
  EXPECT_EQ(seenFromWithin(), before) << "it was the run's transaction";
}

TEST_F(EntriesFailuresTest, AHostThatUndoesTheTransactionMayRunAgain) {
  letAStageFail();
  letTheFrameFail();
  ASSERT_EQ(transfer(gljz.get(), server.login()).code, serverSaid);
  Automation(objectOf(Automation(services).call(L"NewYearConn").get())).call(L"RollbackTrans");
  server.execute(opening, "drop index gl_accMultiass.ux_one_row_a_year");  // the procedure is still missing
  const Answer again = transfer(gljz.get(), server.login());
  EXPECT_EQ(again.code, S_OK) << lastError().description;
  EXPECT_TRUE(again.returned);
  EXPECT_TRUE(transferMsg(gljz.get()).returned);
  EXPECT_GT(count("GL_QcUserDef"), 0);
}

// --- what a failing call leaves in its texts

TEST_F(EntriesFailuresTest, AFailureOfTheChecksIsTheCallersAndTheTextsComeBackAllTheSame) {
  server.execute("TqData_001_2005", "update gl_mend set bflag=null where iyear=2005 and iperiod=12");
  const Answer answer = transfer(gljz.get(), server.login());
  EXPECT_EQ(answer.code, invalidUseOfNull);
  EXPECT_EQ(lastError().source, "TqGLJZ");
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, "");
  EXPECT_THAT(answer.parameters, HasSubstr("<Account")) << "what the dialog had answered before";
  EXPECT_THAT(transferMsg(gljz.get()), says(false, ""));
}

TEST_F(EntriesFailuresTest, AConnectionThatCannotBeOpenedIsAComErrorWithTheServersText) {
  const Answer answer = transGL(gljz.get(), server.login(), {"TqData_001_1999", opening});
  EXPECT_EQ(answer.code, serverSaid);
  const ComError error = lastError();
  EXPECT_EQ(error.source, "TqGLJZ");
  EXPECT_THAT(error.description, HasSubstr("TqData_001_1999"));
  EXPECT_FALSE(answer.returned);
  EXPECT_EQ(answer.message, "") << "emptied as the entry begins";
}

}  // namespace
}  // namespace com::test
