#include "core/exec_jz.h"

#include <gtest/gtest.h>

#include "core/fakes.h"
#include "core/run_state.h"
#include "dialogs/frm_jzsn.h"

namespace {

using fakes::Log;
using gljz::ExecJZ;
using gljz::run;
using platform::RunTimeError;

class Frame : public testing::Test {
protected:
  Frame() { world.connectRun(); }

  // What the frame itself does on the new year's connection and on the way out, in order.
  Log frame() const {
    return world.logOf({"BeginTrans", "CommitTrans", "RollbackTrans", "AccInformation set", "GF_ImportSet",
                        "gl_yearstate set", "GL_P_AllItemName", "NE_UpdateItemView_Proc", "debug:"});
  }
  bool lastYearWasClosed() const { return run.m_conn == nullptr && world.lastYear->State() == 0; }

  const Log complete = {"new: BeginTrans",
                        "new: update gl_yearstate set iIsUnload=1 where iyear=2006",
                        "new: exec GL_P_AllItemName",
                        "new: exec NE_UpdateItemView_Proc",
                        "new: CommitTrans",
                        "debug: ExecJZ m_strMsg:"};
  fakes::World world;
};

TEST_F(Frame, RunsItsStepsInOrderAndClosesTheLastYear) {
  ExecJZ();
  EXPECT_EQ(frame(), complete);
  EXPECT_TRUE(run.m_bSuccess);
  EXPECT_EQ(run.m_strMsg, "");
  EXPECT_TRUE(lastYearWasClosed());
}

TEST_F(Frame, StagesRunInsideTheTransaction) {
  ExecJZ();
  const Log order = world.logOf({"BeginTrans", "delete from gl_accsum", "CommitTrans"});
  EXPECT_EQ(order, (Log{"new: BeginTrans", "new: delete from gl_accsum where iyear=2006", "new: CommitTrans"}));
}

TEST_F(Frame, SubsystemGFRunsItsTwoStatementsFirst) {
  world.login->gf = true;
  ExecJZ();
  const Log log = frame();
  ASSERT_GE(log.size(), 4U);
  EXPECT_EQ(log[1], "new: update AccInformation set cValue='False' where cSysID='GF' and cName='bDeleteYe'");
  EXPECT_EQ(log[2], "new: update  GF_ImportSet set dSuccessEndDate=null");
  EXPECT_EQ(log[3], complete[1]);
}

TEST_F(Frame, OneSharedDatabaseStaysOpen) {
  run.m_strCurDB = "TQDATA_001_2005";
  run.m_conn = world.newYear;
  ExecJZ();
  EXPECT_EQ(run.m_conn, world.newYear);
  EXPECT_EQ(world.newYear->State(), 1);
  EXPECT_TRUE(run.m_bSuccess);
}

// --- The failure handler: the first failure is swallowed, execution goes on behind the failed step.

struct Break {
  const char* step;
  const char* failing;
};

class OneFailure : public Frame, public testing::WithParamInterface<Break> {};

TEST_P(OneFailure, IsSwallowedAndEveryLaterStepRuns) {
  world.login->gf = true;
  world.server.failures = {GetParam().failing};
  EXPECT_NO_THROW(ExecJZ());
  EXPECT_EQ(frame(),
            (Log{complete[0], "new: update AccInformation set cValue='False' where cSysID='GF' and cName='bDeleteYe'",
                 "new: update  GF_ImportSet set dSuccessEndDate=null", complete[1], complete[2], complete[3],
                 complete[4], complete[5]}));
  EXPECT_TRUE(run.m_bSuccess) << "a failed step does not change the result";
  EXPECT_EQ(run.m_strMsg, "") << "nor is it reported";
  EXPECT_TRUE(world.logOf({"box:"}).empty());
  EXPECT_EQ(run.m_conn, nullptr);
}

INSTANTIATE_TEST_SUITE_P(EachStep, OneFailure,
                         testing::Values(Break{"Begin", "BeginTrans"}, Break{"Stages", "delete from gl_accsum"},
                                         Break{"GfSetting", "AccInformation set"}, Break{"GfImport", "GF_ImportSet"},
                                         Break{"Unload", "gl_yearstate set"}, Break{"ItemNames", "GL_P_AllItemName"},
                                         Break{"ItemView", "NE_UpdateItemView_Proc"}, Break{"Commit", "CommitTrans"},
                                         Break{"Debug", "debug: ExecJZ"}, Break{"Close", "last: ConnectionClose"}),
                         [](const auto& each) { return std::string(each.param.step); });

TEST_F(Frame, AFailedStageEndsTheStageSequence) {
  world.server.failures = {"delete from gl_accsum"};
  ExecJZ();
  EXPECT_TRUE(world.logOf({"object_id('tempdb..#T')"}).empty()) << "nothing behind the failure ran";
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--现金流量项目对应关系");
}

TEST_F(Frame, NothingIsEverRolledBack) {
  for (const char* failing : {"delete from gl_accsum", "GL_P_AllItemName", "CommitTrans"}) {
    world.connectRun();
    world.server.failures = {failing};
    ExecJZ();
  }
  EXPECT_TRUE(world.logOf({"RollbackTrans"}).empty());
}

TEST_F(Frame, TheSecondFailureIsUncaughtAndLeavesTheTransactionOpen) {
  world.server.failures = {"delete from gl_accsum", "GL_P_AllItemName"};
  EXPECT_THROW(ExecJZ(), RunTimeError);
  EXPECT_EQ(frame(), (Log{complete[0], complete[1], complete[2]}));
  EXPECT_FALSE(run.m_bSuccess);
  EXPECT_EQ(run.m_conn, world.lastYear) << "the way out is not taken";
}

TEST_F(Frame, AFailedCommitBehindAFailedStageIsUncaught) {
  world.server.failures = {"delete from gl_accsum", "CommitTrans"};
  EXPECT_THROW(ExecJZ(), RunTimeError);
  EXPECT_FALSE(run.m_bSuccess);
}

TEST_F(Frame, AFailureOnTheWayOutOfAStopIsUncaught) {
  world.server.answer("select bflag from gl_mend", {});
  world.server.failures = {"last: ConnectionClose"};
  EXPECT_THROW(ExecJZ(), RunTimeError);
}

TEST_F(Frame, AStopTakesTheWayOut) {
  world.server.answer("select bflag from gl_mend", {});
  ExecJZ();
  EXPECT_TRUE(frame().empty());
  EXPECT_FALSE(run.m_bSuccess);
  EXPECT_EQ(run.m_strMsg, "Orvo.GL.TqGLJZ.00032");
  EXPECT_TRUE(lastYearWasClosed());
}

TEST_F(Frame, AFailureOfTheChecksGoesToTheCaller) {
  world.server.failures = {"gl_mend"};
  EXPECT_THROW(ExecJZ(), RunTimeError);
  EXPECT_TRUE(frame().empty());
  EXPECT_EQ(run.m_conn, world.lastYear);
}

TEST_F(Frame, TheFirstYearLeavesAtOncePastTheWayOut) {
  run.m_bManual = true;
  world.services->accountYear = 2006;
  ExecJZ();
  EXPECT_FALSE(run.m_bSuccess);
  EXPECT_EQ(run.m_strMsg, "");
  EXPECT_EQ(run.m_conn, world.lastYear);
  EXPECT_EQ(world.lastYear->State(), 1);
}

TEST_F(Frame, AnUnattendedRunDoesNotCompareTheFirstYear) {
  world.services->accountYear = 2006;
  ExecJZ();
  EXPECT_TRUE(run.m_bSuccess);
}

TEST_F(Frame, AStopAtTheChecksLeavesTheFirstLineUnmarked) {
  run.m_bManual = true;
  world.server.answer("select bflag from gl_mend", {});
  ExecJZ();
  EXPECT_EQ(gljz::frmJZSN().Label2(0), "");
  EXPECT_EQ(gljz::frmJZSN().Label1(0).ForeColor, gljz::red);
}

TEST_F(Frame, ProgressFollowsTheStages) {
  run.m_bManual = true;
  ExecJZ();
  auto& form = gljz::frmJZSN();
  for (std::size_t step : {0U, 1U, 2U, 3U}) {
    EXPECT_EQ(form.Label2(step), "Y") << step;
    EXPECT_EQ(form.Label1(step).ForeColor, gljz::black) << step;
  }
  EXPECT_EQ(form.MousePointer(), 11);
}

}  // namespace
