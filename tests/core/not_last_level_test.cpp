// Account totals whose account of the new year is not last-level: left out, and reported in one case only.

#include <gtest/gtest.h>

#include "balances/account_totals.h"
#include "core/fakes.h"
#include "core/run_state.h"
#include "dialogs/frm_nbalance.h"

namespace {

using fakes::Log;
using gljz::frmNBalance;
using gljz::run;

class NotLastLevel : public testing::Test {
protected:
  NotLastLevel() {
    world.connectRun();
    run.m_bManual = true;
    world.services->chart["1131"] = {};  // a parent: bEnd is False
    world.server.answer("select code.ccode,code.ccode_name,gl_accsum.",
                        {{"ccode", "ccode_name", "cendd_c", "cendd_c_engl", "cexch_name", "me", "me_f", "ne_s"},
                         {{"1131", "应收账款", "借", "Dr", "", 100, 0, 0}}});
  }

  // The report's rows below its header. No row is added to the new year: the target of these tests takes none.
  std::vector<std::vector<std::string>> report() {
    EXPECT_NO_THROW(gljz::JzAccSum());
    auto rows = frmNBalance().Grid1.rows;
    if (!rows.empty()) rows.erase(rows.begin());
    return rows;
  }
  using Rows = std::vector<std::vector<std::string>>;
  using Reads = std::vector<std::pair<std::string, std::vector<int>>>;

  fakes::World world;
};

TEST_F(NotLastLevel, AnAccountThatBecomesLastLevelMeanwhileIsReported) {
  world.services->becomesLastLevel = "1131";
  EXPECT_EQ(report(), (Rows{{"Orvo.GL.TqGLJZ.00017", "1131", "应收账款", "Orvo.GL.TqGLJZ.00106"}}));
  EXPECT_EQ(world.services->codeReads, (Reads{{"1131", {}}, {"1131", {29}}})) << "the second read asks for bEnd alone";
}

TEST_F(NotLastLevel, TheReportNamesTheAccountOfTheClosingYear) {
  world.services->moved["1131"] = "1122";
  world.services->chart["1122"] = {};
  world.services->becomesLastLevel = "1122";
  EXPECT_EQ(report(), (Rows{{"Orvo.GL.TqGLJZ.00017", "1131", "应收账款", "Orvo.GL.TqGLJZ.00106"}}));
}

TEST_F(NotLastLevel, AParentPassesWithoutAWord) {
  EXPECT_EQ(report(), Rows{});
  EXPECT_EQ(world.services->codeReads, (Reads{{"1131", {}}, {"1131", {29}}}));
}

TEST_F(NotLastLevel, AMissingAccountIsReportedForItsOwnReason) {
  world.services->chart.clear();
  EXPECT_EQ(report(), (Rows{{"Orvo.GL.TqGLJZ.00017", "1131", "应收账款", "Orvo.GL.TqGLJZ.00109"}}));
  EXPECT_TRUE(world.services->codeReads.empty());
}

TEST_F(NotLastLevel, AnUnattendedRunReportsNothing) {
  run.m_bManual = false;
  world.services->becomesLastLevel = "1131";
  gljz::JzAccSum();
  EXPECT_EQ(world.services->codeReads, (Reads{{"1131", {}}, {"1131", {29}}})) << "it asks all the same";
  world.services->chart.clear();
  gljz::JzAccSum();
  EXPECT_TRUE(world.logOf({"localize: frmNBalance"}).empty()) << "the report is not even created";
}

TEST_F(NotLastLevel, TheParentsAreRebuiltThoughNoRowWasCarried) {
  (void)report();
  EXPECT_EQ(world.logOf({"delete from gl_accsum where", "into #T from code"}).size(), 2U);
}

}  // namespace
