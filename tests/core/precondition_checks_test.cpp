#include "driver/precondition_checks.h"

#include <gtest/gtest.h>

#include "core/fakes.h"
#include "core/run_state.h"

namespace {

using fakes::oneCell;
using gljz::CheckOutcome;
using gljz::CheckPreconditions;
using gljz::run;
using platform::RunTimeError;
using platform::Value;

class Preconditions : public testing::Test {
protected:
  Preconditions() { world.connectRun(); }

  void expectStop(const std::string& message) {
    EXPECT_EQ(CheckPreconditions(), CheckOutcome::stop);
    EXPECT_EQ(run.m_strMsg, message);
    EXPECT_FALSE(run.m_bSuccess);
  }
  void expectGoOn() {
    EXPECT_EQ(CheckPreconditions(), CheckOutcome::goOn);
    EXPECT_EQ(run.m_strMsg, "");
  }
  int failure() {
    try {
      (void)CheckPreconditions();
    } catch (const RunTimeError& e) {
      return e.number();
    }
    return 0;
  }
  void setting(const std::string& name, const char* value) {
    world.server.answer("cname = N'" + name + "'", {{"cvalue", "cdefault"}, {{value, {}}}});
  }

  fakes::World world;
};

TEST_F(Preconditions, PassingSetsWhatTheRunNeedsAndWritesNothing) {
  run.m_bCancelable = true;
  expectGoOn();
  EXPECT_EQ(run.m_strInitYear, "2005");
  EXPECT_FALSE(run.m_bCancelable);
  EXPECT_EQ(run.m_strFuncName, "TqGLJZ.mdlZDJZ.ExecJZ");
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--条件判断-判断是否有往来账并确定往来结转方式 ");
  EXPECT_EQ(run.m_strLastSql, "select  top 1 * from gl_accvouch where not cperson_id is null");
  EXPECT_TRUE(world.logOf({"update", "delete", "insert", "BeginTrans"}).empty());
}

TEST_F(Preconditions, TheStatementsRunInTheirOrderOnTheirConnections) {
  expectGoOn();
  const fakes::Log log = world.logOf({"last: ", "new: "});
  const std::vector<std::string> heads = {"last: select cvalue,cdefault from accinformation",
                                          "last: select cvalue,cdefault from accinformation",
                                          "last:  select * from sysobjects",
                                          "last: select bflag from gl_mend",
                                          "last:  select cvalue from AccInformation",
                                          "new: select top 1 * from code",
                                          "new: select top 1 * from dsign ",
                                          "new: select * from code where be=1",
                                          "new: select * from code where bdept=1",
                                          "new: select * from code where bcus=1",
                                          "new: select * from code where bsup=1",
                                          "new: select * from code where bperson=1",
                                          "new: select * from code where bitem=1",
                                          "new: select top 1 * from gl_accvouch where ibook=1",
                                          "last: select  top 1 * from gl_accvouch where not cperson_id"};
  ASSERT_EQ(log.size(), heads.size());
  for (std::size_t i = 0; i < heads.size(); ++i) EXPECT_TRUE(log[i].starts_with(heads[i])) << log[i];
}

TEST_F(Preconditions, AStructureThatIsTooOldStops) {
  world.server.answer("object_id(N'gl_yearstate')", {});
  expectStop(" 上年数据未升级,或者表结构不对！");
}

TEST_F(Preconditions, AMissingYearStateTableFailsBeforeItIsLookedFor) {
  world.server.failures = {"from gl_yearstate"};
  EXPECT_NE(failure(), 0);
  EXPECT_TRUE(world.logOf({"sysobjects"}).empty());
}

TEST_F(Preconditions, AnOpenPeriod12Stops) {
  world.server.answer("select bflag from gl_mend", oneCell(false));
  expectStop("Orvo.GL.TqGLJZ.00032");
}

TEST_F(Preconditions, AMissingPeriod12CountsAsOpen) {
  world.server.answer("select bflag from gl_mend", {});
  expectStop("Orvo.GL.TqGLJZ.00032");
}

TEST_F(Preconditions, NullMarksAreFailures) {
  world.server.answer("select bflag from gl_mend", oneCell({}));
  EXPECT_EQ(failure(), 94);
  world.server.answer("select bflag from gl_mend", oneCell(true));
  world.server.answer("cName='bAdjust'", oneCell({}));
  EXPECT_EQ(failure(), 94);
  world.server.answer("cName='bAdjust'", oneCell("perhaps"));
  EXPECT_EQ(failure(), 13);
  world.server.answer("cName='bAdjust'", oneCell("True"));
  world.server.answer("select bflag_GLGZ", oneCell({}));
  EXPECT_EQ(failure(), 94);
}

TEST_F(Preconditions, TheSecondClosingCountsOnlyWithAdjustmentPeriods) {
  world.server.answer("select bflag_GLGZ", oneCell(false));
  expectGoOn();
  world.server.answer("cName='bAdjust'", oneCell("True"));
  expectStop(" 上年年底未关账 不能执行上年结转 ");
  run.m_strMsg.clear();
  world.server.answer("select bflag_GLGZ", oneCell(true));
  expectGoOn();
}

TEST_F(Preconditions, AdjustmentPeriodsWithoutASecondClosingRowPass) {
  world.server.answer("cName='bAdjust'", oneCell("True"));
  world.server.answer("select bflag_GLGZ", {});
  expectGoOn();
}

TEST_F(Preconditions, ANewYearWithoutAChartStops) {
  world.server.answer("select top 1 * from code", {});
  expectStop("Orvo.GL.TqGLJZ.00034");
}

TEST_F(Preconditions, MissingVoucherCategoriesAreNamedByTheNumberOfDatabases) {
  world.server.answer("select top 1 * from dsign", {});
  expectStop("Orvo.GL.TqGLJZ.00036");
  run.m_strCurDB = "tqdata_001_2005";
  expectStop("未设置凭证类别,不能执行上年结转");
}

struct Reference {
  const char* name;
  const char* accounts;
  bool gljz::RunState::*mayBeEmpty;
};

class ReferenceTables : public Preconditions, public testing::WithParamInterface<Reference> {};

TEST_P(ReferenceTables, AnEmptyOneStopsSilentlyUnlessItsFlagIsSet) {
  world.server.answer(GetParam().accounts, oneCell("1001"));
  for (const bool manual : {false, true}) {
    run.m_bManual = manual;
    run.*GetParam().mayBeEmpty = false;
    expectStop("");
    run.*GetParam().mayBeEmpty = true;
    expectGoOn();
  }
  EXPECT_TRUE(world.logOf({"box:"}).empty());
}

TEST_P(ReferenceTables, AFilledOnePasses) {
  world.server.answer(GetParam().accounts, oneCell("1001"));
  for (const char* table : {"settlestyle", "Department", "Customer", "Vendor", "Person"}) {
    world.server.answer(std::string("select top 1 * from ") + table, oneCell("1"));
  }
  expectGoOn();
}

INSTANTIATE_TEST_SUITE_P(Each, ReferenceTables,
                         testing::Values(Reference{"SettleStyle", "be=1", &gljz::RunState::BalTypeIsNull},
                                         Reference{"Department", "bdept=1", &gljz::RunState::DeptIsNull},
                                         Reference{"Customer", "bcus=1", &gljz::RunState::CusIsNull},
                                         Reference{"Supplier", "bsup=1", &gljz::RunState::SupIsNull},
                                         Reference{"Person", "where bperson=1", &gljz::RunState::PersonIsNull}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(Preconditions, DepartmentAccountsOfEveryYearCount) {
  expectGoOn();
  EXPECT_EQ(world.logOf({"bdept"}).front(), "new: select * from code where bdept=1 or bperson=1 AND iyear=2006");
}

TEST_F(Preconditions, MissingItemClassesNeverStop) {
  world.server.answer("bitem=1", oneCell("1001"));
  for (const bool manual : {false, true}) {
    for (const bool flag : {false, true}) {
      run.m_bManual = manual;
      run.ItemIsNull = flag;
      expectGoOn();
    }
  }
}

TEST_F(Preconditions, APostedVoucherInAWorkingPeriodStopsSilently) {
  world.server.answer("from gl_accvouch where ibook=1", oneCell(1));
  expectStop("");
  EXPECT_EQ(world.server.log.back(),
            "new: select top 1 * from gl_accvouch where ibook=1 and iperiod<13 and iperiod>0 and iyear=2006");
}

TEST_F(Preconditions, TheModeOfPersonsNeedsVouchers) {
  run.m_iPersonMode = 2;
  expectGoOn();
  EXPECT_EQ(run.m_iPersonMode, 0);
  run.m_iPersonMode = 2;
  world.server.answer("not cperson_id is null", oneCell(1));
  expectGoOn();
  EXPECT_EQ(run.m_iPersonMode, 2);
  EXPECT_EQ(world.logOf({"cperson_id"}).back(),
            "last: select  top 1 * from gl_accvouch where not cperson_id is null   and iyear >=2005 and  iyear<=2005"
            "   ");
}

TEST_F(Preconditions, TheModeOfCustomersNeedsUseDisplayAndVouchers) {
  const auto modeWith = [&](bool used, const char* display, bool vouchers) {
    world.services->options.bCusAccount = used;
    setting("bCusDisplay", display);
    world.server.answer("not ccus_id is null", vouchers ? oneCell(1) : fakes::Table{});
    run.m_iCusMode = 3;
    expectGoOn();
    return run.m_iCusMode;
  };
  EXPECT_EQ(modeWith(true, "True", true), 3);
  EXPECT_TRUE(run.m_bCusPresent);
  EXPECT_EQ(modeWith(true, "True", false), 0);
  EXPECT_TRUE(run.m_bCusPresent);
  EXPECT_EQ(modeWith(false, "True", true), 0);
  EXPECT_FALSE(run.m_bCusPresent);
  EXPECT_EQ(modeWith(true, "true", true), 0) << "the setting is compared exactly";
  EXPECT_FALSE(run.m_bCusPresent);
}

TEST_F(Preconditions, TheModeOfSuppliersGoesByItsOwnSettings) {
  world.services->options.bSupAccount = true;
  setting("bSupDisplay", "True");
  world.server.answer("not csup_id is null", oneCell(1));
  run.m_iSupMode = 2;
  run.m_iCusMode = 2;
  expectGoOn();
  EXPECT_EQ(run.m_iSupMode, 2);
  EXPECT_TRUE(run.m_bSupPresent);
  EXPECT_EQ(run.m_iCusMode, 0);
  EXPECT_FALSE(run.m_bCusPresent);
}

}  // namespace
