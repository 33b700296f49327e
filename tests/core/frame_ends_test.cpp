// The frame behind the ledger stages: clearing of profit-and-loss accounts, and a verification that fails.

#include <gtest/gtest.h>

#include "core/exec_jz.h"
#include "core/fakes.h"
#include "core/run_state.h"
#include "dialogs/frm_sy_km_sel.h"

namespace {

using fakes::Log;
using gljz::ExecJZ;
using gljz::frmSyKmSel;
using gljz::run;
using platform::RunTimeError;

constexpr const char* verification = "CREATE TABLE tempdb..jztmp";

class FrameEnds : public testing::Test {
protected:
  FrameEnds() {
    world.connectRun();
    world.login->gf = true;
  }

  fakes::World world;
};

TEST_F(FrameEnds, ChosenAccountsAreClearedBehindTheCashFlowItemsAndBeforeSubsystemGF) {
  frmSyKmSel().CtlSelList1.addRight("5101 主营业务收入");
  run.bClear = true;
  std::string named;
  world.server.watch = [&named](const std::string& entry) {
    if (entry.find("..GL_QcUserDef Where ccode") != std::string::npos) named = run.m_strFuncDesc;
  };
  ExecJZ();
  const Log order = world.logOf({"BeginTrans", "GL_CashItemDataSource", "Like '5101%'", "AccInformation set"});
  ASSERT_EQ(order.size(), 8U);
  EXPECT_EQ(order[0], "new: BeginTrans");
  EXPECT_EQ(order[1], "new: delete from TqData_001_2006..GL_CashItemDataSource where iyear=2006");
  EXPECT_EQ(order[2], "new: Delete From  TqData_001_2006..GL_accsum Where ccode Like '5101%' and iyear=2006");
  EXPECT_EQ(order[7], "new: update AccInformation set cValue='False' where cSysID='GF' and cName='bDeleteYe'");
  EXPECT_EQ(named, "结转函数--现金流量项目对应关系") << "clearing has no name of its own";
  EXPECT_TRUE(frmSyKmSel().CtlSelList1.right().empty()) << "the choice goes with its dialog";
}

TEST_F(FrameEnds, WithoutTheFlagTheChosenAccountsStay) {
  frmSyKmSel().CtlSelList1.addRight("5101 主营业务收入");
  ExecJZ();
  EXPECT_TRUE(world.logOf({"Like '5101%'"}).empty());
  EXPECT_EQ(frmSyKmSel().CtlSelList1.right().size(), 1U) << "and so does the choice";
}

TEST_F(FrameEnds, TheVerificationRunsBehindTheCommit) {
  ExecJZ();
  const Log order = world.logOf({"CommitTrans", "debug: ExecJZ", verification, "last: ConnectionClose"});
  ASSERT_EQ(order.size(), 4U);
  EXPECT_EQ(order[0], "new: CommitTrans");
  EXPECT_EQ(order[1], "debug: ExecJZ m_strMsg:");
  EXPECT_NE(order[2].find(verification), std::string::npos);
  EXPECT_EQ(order[3], "last: ConnectionClose");
}

TEST_F(FrameEnds, AVerificationThatFailsFirstIsSwallowedAndTheWayOutFollows) {
  world.server.failures = {verification};
  EXPECT_NO_THROW(ExecJZ());
  EXPECT_EQ(world.logOf({"CommitTrans", "RollbackTrans", "last: ConnectionClose"}),
            (Log{"new: CommitTrans", "last: ConnectionClose"}));
  EXPECT_TRUE(run.m_bSuccess);
  EXPECT_EQ(run.m_conn, nullptr);
  EXPECT_EQ(run.m_strMsg, "");
}

TEST_F(FrameEnds, AVerificationThatFailsBehindAFailedStageIsUncaughtInASuccessfulRun) {
  world.server.failures = {"new: delete from gl_accsum", verification};
  EXPECT_THROW(ExecJZ(), RunTimeError);
  EXPECT_TRUE(run.m_bSuccess);
  EXPECT_EQ(world.logOf({"CommitTrans", "RollbackTrans", "last: ConnectionClose"}), Log{"new: CommitTrans"});
  EXPECT_EQ(run.m_conn, world.lastYear) << "the way out is not taken";
}

}  // namespace
