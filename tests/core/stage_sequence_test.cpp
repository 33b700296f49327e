// The ledger stages in their order: which of them run between two databases and in one, what the failure text would
// name while each runs, and what an operator sees of it.

#include <gtest/gtest.h>

#include "core/exec_jz.h"
#include "core/fakes.h"
#include "core/run_state.h"
#include "detail/jz_data.h"
#include "dialogs/frm_jzsn.h"

namespace {

using fakes::Log;
using gljz::frmJZSN;
using gljz::JzData;
using gljz::run;

// Where each stage can be known by: the statement that it sends first.
constexpr const char* models = "new: select modelId from GL_ModelMain";
constexpr const char* groups = "new: delete from GL_bmultiGroup";
constexpr const char* accountTotals = "select code.ccode,code.ccode_name,gl_accsum.";
constexpr const char* auxiliaryTotals = "select code.ccode,code.ccode_name,gl_accass.";
constexpr const char* multiAuxiliaryTotals = "select code.ccode,code.ccode_name,gl_accMultiass.";
constexpr const char* openItems =
    "select gl_accvouch.*,code.ccode_name from code inner join gl_accvouch on code.ccode = ";
constexpr const char* bankLedger = " insert into gl_accvouch(iperiod,iyear,inid,dbill_date,";
constexpr const char* bankStatements = "new: select * from rp_bankrecp";
constexpr const char* cheques = "new: select top 1 * from rp_cheque";
constexpr const char* settings = "new: select * from GL_bautotran";
constexpr const char* userDefined = "new: Delete From GL_qcuserdef";

class StageSequence : public testing::Test {
protected:
  StageSequence() {
    world.connectRun();
    run.m_strInitYear = "2005";
    run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = 2;
  }

  void shareOneDatabase(int startYear) {
    run.m_strCurDB = "TQDATA_001_2005";
    run.m_conn = world.newYear;
    world.services->startYear = startYear;
  }

  // What the failure text would name at each stage's first statement; each text once, in order.
  std::vector<std::string> stages() {
    std::vector<std::string> result;
    world.server.watch = [&result](const std::string& entry) {
      for (const char* stage : {models, groups, accountTotals, auxiliaryTotals, multiAuxiliaryTotals, openItems,
                                bankLedger, bankStatements, cheques, settings, userDefined}) {
        if (entry.find(stage) == std::string::npos) continue;
        const std::string seen = std::string(stage) + " <- " + run.m_strFuncDesc;
        if (result.empty() || result.back() != seen) result.push_back(seen);
      }
    };
    JzData();
    world.server.watch = {};
    return result;
  }
  static std::string at(const char* stage, const char* description) {
    return std::string(stage) + " <- " + description;
  }
  bool ran(const char* stage) const { return !world.logOf({stage}).empty(); }

  fakes::World world;
};

TEST_F(StageSequence, BetweenTwoDatabasesEveryStageRunsUnderItsName) {
  EXPECT_EQ(stages(), (std::vector<std::string>{
                          at(models, "结转函数--结转科目总账与辅助账等"),
                          at(groups, "结转函数--结转科目总账GL_accsum"),
                          at(accountTotals, "结转函数--结转科目总账GL_accsum"),
                          at(auxiliaryTotals, "结转函数--结转辅助总账GL_accass"),
                          at(multiAuxiliaryTotals, "结转函数--结转多辅助总账GL_accass"),
                          at(openItems, "结转函数--结转明细账GL_accvouch"),
                          at(openItems, "结转函数--结转未达客户往来账 "),
                          at(openItems, "结转函数--结转未达供应商往来账 "),
                          at(bankLedger, "结转函数--结转未核销银行账 "),
                          at(bankStatements, "结转函数--结转银行对账单RP_bankrecp"),
                          at(cheques, "结转函数--结转支票登记簿RP_cheque"),
                          at(settings, "结转函数--结转支票登记簿RP_cheque"),
                          at(userDefined, "结转函数--自定义项结转"),
                      }));
  EXPECT_EQ(run.m_strFuncName, "TqGLJZ.mdlZDJZ.JzData");
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--自定义项结转");
}

TEST_F(StageSequence, InOneDatabaseModelsChequesAndSettingsStayBehind) {
  shareOneDatabase(2006);
  EXPECT_EQ(stages(), (std::vector<std::string>{
                          at(groups, "结转函数--结转科目总账GL_accsum"),
                          at(accountTotals, "结转函数--结转科目总账GL_accsum"),
                          at(auxiliaryTotals, "结转函数--结转辅助总账GL_accass"),
                          at(multiAuxiliaryTotals, "结转函数--结转多辅助总账GL_accass"),
                          at(openItems, "结转函数--结转明细账GL_accvouch"),
                          at(openItems, "结转函数--结转未达客户往来账 "),
                          at(openItems, "结转函数--结转未达供应商往来账 "),
                          at(bankLedger, "结转函数--结转未核销银行账 "),
                          at(bankStatements, "结转函数--结转银行对账单RP_bankrecp"),
                          at(userDefined, "结转函数--自定义项结转"),
                      }));
  EXPECT_TRUE(world.logOf({"GL_Model", "GL_modelpreplace", "GL_bautotran", "GL_mcodeauth"}).empty());
}

TEST_F(StageSequence, WhatTheFailureTextNamesPassesTheOpenItemsThoughNoneAreCarried) {
  run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = 0;
  run.m_bManual = true;
  std::string before;
  world.forms.whenChanged = [&before](platform::Form&) {
    if (before.empty() && frmJZSN().Label2(3) == "Y") before = run.m_strFuncDesc;
  };
  JzData();
  EXPECT_FALSE(ran(openItems));
  EXPECT_EQ(before, "结转函数--结转未达供应商往来账 ") << "the step is marked all the same";
}

TEST_F(StageSequence, PersonsKnowNoSelectionByAccount) {
  run.m_iPersonMode = 3;
  run.m_iCusMode = run.m_iSupMode = 1;
  JzData();
  EXPECT_FALSE(ran(openItems));
}

// --- The detail of a later year of the span that one database holds.

TEST_F(StageSequence, ALaterYearOfOneDatabaseOnlyLosesItsOpeningDetails) {
  shareOneDatabase(2005);
  run.m_bManual = true;
  JzData();
  EXPECT_EQ(world.logOf({" delete  from gl_accvouch "}),
            Log{"new:  delete  from gl_accvouch  where iyear=2006 and iperiod=0 "});
  EXPECT_FALSE(ran(openItems));
  EXPECT_EQ(frmJZSN().Label2(2), "Y");
  EXPECT_EQ(frmJZSN().Label2(3), "");
  EXPECT_EQ(frmJZSN().Label1(3).ForeColor, gljz::red) << "nothing turned it back";
  EXPECT_TRUE(ran(bankLedger));
  EXPECT_EQ(frmJZSN().Label2(4), "Y");
  EXPECT_TRUE(ran(userDefined));
}

TEST_F(StageSequence, TheOpeningDetailsGoBetweenTheTotalsAndTheBankLedger) {
  shareOneDatabase(2005);
  JzData();
  const Log order = world.logOf({multiAuxiliaryTotals, " delete  from gl_accvouch ", bankLedger});
  ASSERT_EQ(order.size(), 3U);
  EXPECT_EQ(order[1], "new:  delete  from gl_accvouch  where iyear=2006 and iperiod=0 ");
}

TEST_F(StageSequence, TheFirstYearOfOneDatabaseTakesOpenItemsOver) {
  shareOneDatabase(2006);
  JzData();
  EXPECT_TRUE(ran(openItems));
  EXPECT_FALSE(ran(" delete  from gl_accvouch "));
}

TEST_F(StageSequence, BetweenTwoDatabasesTheStartYearDoesNotMatter) {
  world.services->startYear = 2005;
  JzData();
  EXPECT_TRUE(ran(openItems));
  EXPECT_FALSE(ran(" delete  from gl_accvouch "));
}

// --- A failure in the middle.

TEST_F(StageSequence, AFailureInTheMultiAuxiliaryTotalsEndsTheStagesAndTheRunIsCommitted) {
  world.server.answer("where not cperson_id is null", fakes::oneCell(1));
  run.m_iCusMode = run.m_iSupMode = 0;
  world.server.failures = {"new: delete from gl_accMultiass"};
  EXPECT_NO_THROW(gljz::ExecJZ());
  EXPECT_EQ(run.m_iPersonMode, 2) << "open items were to be carried";
  EXPECT_TRUE(ran(accountTotals));
  EXPECT_TRUE(ran(auxiliaryTotals));
  for (const char* stage : {openItems, bankLedger, bankStatements, cheques, settings, userDefined})
    EXPECT_FALSE(ran(stage)) << stage;
  EXPECT_EQ(world.logOf({"CashItemDataSource", "gl_yearstate set", "exec ", "CommitTrans", "RollbackTrans"}),
            (Log{"new: delete from TqData_001_2006..GL_CashItemDataSource where iyear=2006",
                 "new: update gl_yearstate set iIsUnload=1 where iyear=2006", "new: exec GL_P_AllItemName",
                 "new: exec NE_UpdateItemView_Proc", "new: CommitTrans"}));
  EXPECT_TRUE(run.m_bSuccess);
}

// --- What an operator sees.

// The red lines, one text for each time they changed.
std::vector<std::string> redLines(fakes::World& world) {
  std::vector<std::string> seen;
  world.forms.whenChanged = [&seen](platform::Form& form) {
    const auto* progress = dynamic_cast<gljz::FrmJZSN*>(&form);
    if (progress == nullptr) return;
    std::string lines;
    for (std::size_t line = 0; line < gljz::FrmJZSN::stepCount; ++line) {
      if (progress->Label1(line).ForeColor == gljz::red) lines += std::to_string(line);
    }
    if (seen.empty() || seen.back() != lines) seen.push_back(lines);
  };
  gljz::ExecJZ();
  world.forms.whenChanged = {};
  return seen;
}

TEST_F(StageSequence, OneLineIsRedAfterAnotherAndTheLastOneNever) {
  run.m_bManual = true;
  EXPECT_EQ(redLines(world), (std::vector<std::string>{"0", "", "1", "", "2", "", "3", "", "4", "", "5", "", "6", ""}));
  for (std::size_t line = 0; line < gljz::FrmJZSN::stepCount; ++line) EXPECT_EQ(frmJZSN().Label2(line), "Y") << line;
}

TEST_F(StageSequence, InOneDatabaseTheLastLineIsNotMarked) {
  shareOneDatabase(2006);
  run.m_bManual = true;
  EXPECT_EQ(redLines(world).back(), "");
  EXPECT_EQ(frmJZSN().Label2(6), "Y");
  EXPECT_EQ(frmJZSN().Label2(7), "");
}

// Intended: the step of the auxiliary totals is finished behind the multi-auxiliary ones, too.
TEST_F(StageSequence, TheMultiAuxiliaryTotalsFinishTheAuxiliaryStepASecondTime) {
  run.m_bManual = true;
  bool finishedFirst = false, finishedAgain = false;
  world.server.watch = [&](const std::string& entry) {
    auto& form = frmJZSN();
    const bool finished =
        form.Label1(2).ForeColor == gljz::black && form.Label2(2) == "Y" && form.Label1(3).ForeColor == gljz::red;
    if (entry.find(multiAuxiliaryTotals) != std::string::npos) {
      finishedFirst = finished;
      form.colourStep(2, gljz::red);  // as if the first advance had not been
      form.colourStep(3, gljz::black);
    } else if (entry.find(openItems) != std::string::npos && run.m_strFuncDesc == "结转函数--结转明细账GL_accvouch") {
      finishedAgain = finished;
    }
  };
  JzData();
  EXPECT_TRUE(finishedFirst);
  EXPECT_TRUE(finishedAgain);
}

TEST_F(StageSequence, AnUnattendedRunHasNoProgressForm) {
  JzData();
  EXPECT_TRUE(world.logOf({"localize: frmJZSN", "localize: frmNBalance"}).empty());
  EXPECT_EQ(world.forms.changes, 0);
}

}  // namespace
