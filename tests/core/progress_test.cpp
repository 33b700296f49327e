#include "driver/progress.h"

#include <gtest/gtest.h>

#include "core/fakes.h"
#include "core/run_state.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"

namespace {

using gljz::frmJZSN;
using gljz::frmNBalance;
using gljz::run;
using gljz::Step;

class Progress : public testing::Test {
protected:
  Progress() {
    world.connectRun();
    run.m_bManual = true;
  }
  fakes::World world;
};

TEST_F(Progress, AFreshFormHasItsTextsAndItsTimer) {
  EXPECT_EQ(frmJZSN().Caption(), "结转上年余额");
  EXPECT_EQ(frmJZSN().Label1(0).Caption, "结转上年之前的检查...");
  EXPECT_EQ(frmJZSN().Label1(7).Caption, "结转其它表...");
  EXPECT_EQ(frmJZSN().Label2(0), "");
  EXPECT_EQ(frmJZSN().Label3(), "正在结转......");
  EXPECT_EQ(frmJZSN().Command1().Caption, "结转");
  EXPECT_EQ(frmJZSN().Command2().Caption, "退出");
  EXPECT_TRUE(frmJZSN().Timer1_Enabled());
  EXPECT_EQ(world.logOf({"localize"}), fakes::Log{"localize: frmJZSN Orvo.GL.TsGLJZ."});
}

TEST_F(Progress, AdvancingMarksOneLineAndReddensTheNext) {
  gljz::startStep(Step::accountTotals);
  EXPECT_EQ(frmJZSN().Label1(1).ForeColor, platform::rgb(255, 0, 0));
  const int before = world.forms.changes;
  gljz::advanceFrom(Step::accountTotals);
  EXPECT_EQ(frmJZSN().Label1(1).ForeColor, platform::rgb(0, 0, 0));
  EXPECT_EQ(frmJZSN().Label2(1), "Y");
  EXPECT_EQ(frmJZSN().Label1(2).ForeColor, platform::rgb(255, 0, 0));
  EXPECT_EQ(frmJZSN().Label2(2), "");
  EXPECT_EQ(world.forms.changes - before, 3) << "each change of a control is announced";
}

TEST_F(Progress, CaptionTakesTheTextOfItsKey) {
  gljz::showProgress("Orvo.GL.TqGLJZ.00099", {"1001"});
  EXPECT_EQ(frmJZSN().Label3(), "Orvo.GL.TqGLJZ.00099(1001)");
}

TEST_F(Progress, AnUnattendedRunDoesNotCreateTheForm) {
  run.m_bManual = false;
  gljz::startStep(Step::checks);
  gljz::advanceFrom(Step::checks);
  gljz::finishStep(Step::otherTables);
  gljz::showHourglass();
  gljz::showProgress("key");
  EXPECT_FALSE(frmJZSN.isLoaded());
  EXPECT_EQ(world.forms.changes, 0);
}

TEST_F(Progress, UnloadingGivesFreshCaptions) {
  gljz::advanceFrom(Step::checks);
  gljz::showHourglass();
  EXPECT_EQ(frmJZSN().MousePointer(), 11);
  frmJZSN.unload();
  EXPECT_FALSE(frmJZSN.isLoaded());
  EXPECT_EQ(frmJZSN().Label2(0), "");
  EXPECT_EQ(frmJZSN().Label1(1).ForeColor, platform::rgb(0, 0, 0));
  EXPECT_EQ(frmJZSN().MousePointer(), 0);
}

TEST_F(Progress, TheTimerRunsTheCarryForwardOnceAndUnloadsTheForm) {
  world.forms.duringRun = [] { EXPECT_TRUE(frmJZSN.isLoaded()); };
  frmJZSN().ShowModal();
  EXPECT_FALSE(frmJZSN.isLoaded());
  EXPECT_TRUE(run.m_bSuccess);
}

TEST_F(Progress, AFailureLeavesTheFormOpenWithItsTimerOff) {
  world.server.failures = {"gl_mend"};
  EXPECT_THROW(frmJZSN().ShowModal(), platform::RunTimeError);
  EXPECT_TRUE(frmJZSN.isLoaded());
  EXPECT_FALSE(frmJZSN().Timer1_Enabled());
}

TEST_F(Progress, TheButtonsDoNothing) {
  frmJZSN();
  const int before = world.forms.changes;
  const fakes::Log log = world.server.log;
  frmJZSN().Command1_Click();
  frmJZSN().Command2_Click();
  EXPECT_EQ(world.forms.changes, before);
  EXPECT_EQ(world.server.log, log);
  EXPECT_TRUE(frmJZSN.isLoaded());
}

using Rows = std::vector<std::vector<std::string>>;

TEST_F(Progress, GridOfFourColumns) {
  gljz::SetupImbalanceGrid(4);
  EXPECT_EQ(frmNBalance().Grid1.rows,
            (Rows{{"Orvo.GL.TqGLJZ.00095", "Orvo.GL.TqGLJZ.00096", "Orvo.GL.TqGLJZ.00097", "Orvo.GL.TqGLJZ.00098"}}));
  EXPECT_EQ(frmNBalance().Grid1.columnWidths, (std::vector<int>{800, 800, 800, 2200}));
}

TEST_F(Progress, GridsOfSixAndSevenColumns) {
  gljz::SetupImbalanceGrid(6);
  EXPECT_EQ(frmNBalance().Grid1.rows, (Rows{{"Orvo.GL.TqGLJZ.00062", "Orvo.GL.TqGLJZ.00063", "Orvo.GL.TqGLJZ.00075",
                                             "Orvo.GL.TqGLJZ.00066", "Orvo.GL.TqGLJZ.00067", "Orvo.GL.TqGLJZ.00068"}}));
  EXPECT_EQ(frmNBalance().Grid1.columnWidths, (std::vector<int>{800, 800, 800, 600, 1200, 1200}));
  gljz::SetupImbalanceGrid(7);
  EXPECT_EQ(frmNBalance().Grid1.rows,
            (Rows{{"Orvo.GL.TqGLJZ.00062", "Orvo.GL.TqGLJZ.00063", "Orvo.GL.TqGLJZ.00064", "Orvo.GL.TqGLJZ.00065",
                   "Orvo.GL.TqGLJZ.00066", "Orvo.GL.TqGLJZ.00067", "Orvo.GL.TqGLJZ.00068"}}));
  EXPECT_EQ(frmNBalance().Grid1.columnWidths, (std::vector<int>{800, 800, 800, 800, 600, 1200, 1200}));
}

TEST_F(Progress, AnyOtherKindLeavesTheGrid) {
  gljz::SetupImbalanceGrid(4);
  gljz::AddImbalanceRow("a\tb\t\td");
  const Rows before = frmNBalance().Grid1.rows;
  gljz::SetupImbalanceGrid(5);
  EXPECT_EQ(frmNBalance().Grid1.rows, before);
  EXPECT_EQ(before.back(), (std::vector<std::string>{"a", "b", "", "d"}));
}

TEST_F(Progress, SettingTheGridUpAgainClearsIt) {
  gljz::SetupImbalanceGrid(4);
  gljz::AddImbalanceRow(gljz::reportRow({"a", "b"}));
  EXPECT_EQ(frmNBalance().Grid1.rows.size(), 2U);
  gljz::SetupImbalanceGrid(6);
  EXPECT_EQ(frmNBalance().Grid1.rows.size(), 1U);
  EXPECT_TRUE(world.logOf({"show"}).empty()) << "filling the grid does not show it";
}

TEST_F(Progress, ButtonsOfTheGridDialogDecideAndHide) {
  EXPECT_FALSE(frmNBalance().continueChosen);
  EXPECT_EQ(frmNBalance().Grid1.shadeColour, platform::rgb(247, 237, 236));
  frmNBalance().Command1_Click();
  EXPECT_TRUE(frmNBalance().continueChosen);
  EXPECT_FALSE(frmNBalance().visible());
  frmNBalance().Command2_Click();
  EXPECT_FALSE(frmNBalance().continueChosen);
  EXPECT_TRUE(frmNBalance.isLoaded());
}

}  // namespace
