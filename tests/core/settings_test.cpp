// Settings that the checks read: what is asked for when one falls back to its default or contradicts the options, and
// what a failure would name.

#include <gtest/gtest.h>

#include <algorithm>

#include "core/fakes.h"
#include "core/mdu_jz.h"
#include "driver/precondition_checks.h"

namespace {

using gljz::CheckPreconditions;
using gljz::run;
using platform::RunTimeError;
using platform::Value;

class Settings : public testing::Test {
protected:
  Settings() { world.connectRun(); }

  std::string setting(Value cvalue, Value cdefault) {
    world.server.answer("from accinformation", {{"cvalue", "cdefault"}, {{std::move(cvalue), std::move(cdefault)}}});
    return gljz::GetAccinfo(gljz::lastConn(), "GL", "bCusDisplay");
  }
  std::ptrdiff_t timesAsked(const std::string& key) const {
    const auto& asked = world.services->asked;
    return std::count(asked.begin(), asked.end(), key);
  }
  // The checks with what the setting and the options say of customers and suppliers.
  void check(const char* cusDisplay, bool bCusAccount, const char* supDisplay, bool bSupAccount) {
    world.server.answer("cname = N'bCusDisplay'", {{"cvalue", "cdefault"}, {{cusDisplay, {}}}});
    world.server.answer("cname = N'bSupDisplay'", {{"cvalue", "cdefault"}, {{supDisplay, {}}}});
    world.services->options.bCusAccount = bCusAccount;
    world.services->options.bSupAccount = bSupAccount;
    world.services->asked.clear();
    world.server.log.clear();
    ASSERT_EQ(CheckPreconditions(), gljz::CheckOutcome::goOn);
  }

  fakes::World world;
};

TEST_F(Settings, AFallBackToTheDefaultNamesTheSettingAndTheDefault) {
  run.m_bManual = run.m_bCancelable = true;
  EXPECT_EQ(setting({}, "True"), "True");
  ASSERT_EQ(world.services->boxes.size(), 1U);
  EXPECT_EQ(world.services->boxes[0].prompt, "Orvo.GL.TqGLJZ.00300(True)");
  EXPECT_EQ(world.services->boxes[0].title, "Orvo.GL.TqGLJZ.00297(GL,bCusDisplay)");
  EXPECT_EQ(world.services->boxes[0].style, 16);
}

TEST_F(Settings, ASettingWithoutValueAndDefaultSaysSo) {
  run.m_bManual = run.m_bCancelable = true;
  EXPECT_EQ(setting({}, {}), "");
  ASSERT_EQ(world.services->boxes.size(), 1U);
  EXPECT_EQ(world.services->boxes[0].prompt, "Orvo.GL.TqGLJZ.00296");
  EXPECT_EQ(world.services->boxes[0].title, "Orvo.GL.TqGLJZ.00297(GL,bCusDisplay)");
  EXPECT_EQ(world.services->boxes[0].style, 16);
}

TEST_F(Settings, AMissingSettingIsNamedWithoutAResource) {
  run.m_bManual = run.m_bCancelable = true;
  EXPECT_EQ(gljz::GetAccinfo(gljz::lastConn(), "GL", "bCusDisplay"), "");
  ASSERT_EQ(world.services->boxes.size(), 1U);
  EXPECT_EQ(world.services->boxes[0].prompt, "GL--bCusDisplay");
  EXPECT_EQ(world.services->boxes[0].title, "GetAccinfo Error!");
  EXPECT_EQ(world.services->boxes[0].style, 16);
  EXPECT_TRUE(world.services->asked.empty());
}

TEST_F(Settings, AValueIsReturnedWithoutAWord) {
  run.m_bManual = run.m_bCancelable = true;
  EXPECT_EQ(setting("", "True"), "");
  EXPECT_TRUE(world.services->boxes.empty());
  EXPECT_TRUE(world.services->asked.empty());
}

TEST_F(Settings, TheTextsAreAskedForThoughNoBoxComesUp) {
  (void)setting({}, "False");
  (void)setting({}, {});
  EXPECT_EQ(timesAsked("Orvo.GL.TqGLJZ.00300(False)"), 1);
  EXPECT_EQ(timesAsked("Orvo.GL.TqGLJZ.00296"), 1);
  EXPECT_EQ(timesAsked("Orvo.GL.TqGLJZ.00297(GL,bCusDisplay)"), 2);
  EXPECT_TRUE(world.services->boxes.empty());
}

// --- Current accounts

TEST_F(Settings, AFailureAtThePersonsNamesTheOpeningBalances) {
  world.server.failures = {"top 1 * from gl_accvouch where not cperson_id is null"};
  EXPECT_THROW((void)CheckPreconditions(), RunTimeError);
  EXPECT_EQ(run.m_strLastSql,
            "select  top 1 * from gl_accsum(\\gl_accass\\gl_accvouch) where iperiod=1 and (mb<>0 or mb_f<>0 or "
            "nb_s<>0)");
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--条件判断-判断是否有往来账并确定往来结转方式 ");
  EXPECT_FALSE(run.m_bSuccess);
}

TEST_F(Settings, AFailureAtTheCustomersNamesThePersons) {
  world.server.failures = {"where not ccus_id is null"};
  EXPECT_THROW(check("True", true, "True", true), RunTimeError);
  EXPECT_EQ(run.m_strLastSql, "select  top 1 * from gl_accvouch where not cperson_id is null");
}

TEST_F(Settings, CustomersAndSuppliersAreLookedForInTheYearsOfTheLedger) {
  world.server.answer("from gl_yearstate where iinitflag", {{"iyear"}, {{2003}}});
  check("True", true, "True", true);
  EXPECT_EQ(world.logOf({"ccus_id", "csup_id"}),
            (fakes::Log{"last: select  top 1 * from gl_accvouch where not ccus_id is null   and iyear >=2003 and  "
                        "iyear<=2005   ",
                        "last: select  top 1 * from gl_accvouch where not csup_id is null   and iyear >=2003 and  "
                        "iyear<=2005   "}));
}

TEST_F(Settings, UnusedCurrentAccountsAreNotLookedFor) {
  check("False", true, "True", false);
  EXPECT_TRUE(world.logOf({"ccus_id", "csup_id"}).empty());
}

TEST_F(Settings, ADifferenceBetweenSettingAndOptionAsksForItsText) {
  for (const bool shown : {false, true}) {
    for (const bool used : {false, true}) {
      const std::ptrdiff_t expected = shown != used ? 1 : 0;
      check(shown ? "True" : "False", used, "False", false);
      EXPECT_EQ(timesAsked("Orvo.GL.TqGLJZ.00058"), expected) << shown << used;
      EXPECT_EQ(timesAsked("Orvo.GL.TqGLJZ.00060"), 0);
      check("False", false, shown ? "True" : "False", used);
      EXPECT_EQ(timesAsked("Orvo.GL.TqGLJZ.00060"), expected) << shown << used;
      EXPECT_EQ(timesAsked("Orvo.GL.TqGLJZ.00058"), 0);
    }
  }
  EXPECT_TRUE(world.services->boxes.empty());
  EXPECT_EQ(run.m_strMsg, "");
}

}  // namespace
