#include "detail/jz_data.h"
#include "settings/models.h"
#include "system/ledger_fixture.h"
#include "system/observers.h"

namespace gljz::test {
namespace {

// The closing year has one model, 1.
class VoucherModelsTest : public LedgerTest {
protected:
  VoucherModelsTest() { model(closing, "1", "工资"); }

  void model(const Side& side, const std::string& id, const std::string& name) {
    fill(side, "GL_ModelMain", {"modelId | cName", id + "|" + name});
    fill(side, "GL_modelpreplace", {"modelId | cKey | cText", id + "| {季} |" + name});
    fill(side, "GL_ModelSub1", {"modelId | inid | ccode | md | mc", id + "| 1 | 1001 | 12.3456 | 0"});
    fill(side, "GL_ModelSub2", {"modelId | inid | cdigest", id + "| 1 |" + name});
  }

  // Ids of the models by table.
  std::string models(const std::string& table) {
    std::string ids;
    for (const auto& id : rows(opening, "select modelId from " + table + " order by modelId"))
      ids += ids.empty() ? id : "," + id;
    return ids;
  }
  void expectModels(const std::string& main, const std::string& preplace, const std::string& sub1,
                    const std::string& sub2) {
    EXPECT_EQ(models("GL_ModelMain"), main);
    EXPECT_EQ(models("GL_modelpreplace"), preplace);
    EXPECT_EQ(models("GL_ModelSub1"), sub1);
    EXPECT_EQ(models("GL_ModelSub2"), sub2);
  }
};

TEST_F(VoucherModelsTest, AreCopiedIntoANewYearWithoutAny) {
  EXPECT_TRUE(JzModel());
  expectRows(opening, "select * from GL_ModelMain", {"1 | 工资"});
  expectRows(opening, "select * from GL_modelpreplace", {"1 | {季} | 工资"});
  expectRows(opening, "select * from GL_ModelSub1", {"1 | 1 | 1001 | 12.3456 | 0"});
  expectRows(opening, "select * from GL_ModelSub2", {"1 | 1 | 工资"});
}

TEST_F(VoucherModelsTest, OfTheNewYearAreKeptUnlessTheOptionSaysOtherwise) {
  model(opening, "9", "旧");
  EXPECT_TRUE(JzModel());
  expectModels("9", "9", "9", "9");
}

TEST_F(VoucherModelsTest, OfTheNewYearAreReplacedInAllFourTablesWhenTheOptionSaysSo) {
  model(opening, "9", "旧");
  run.CoverBankModalData = true;
  EXPECT_TRUE(JzModel());
  expectModels("1", "1", "1", "1");
}

// The operator would be asked, but nobody ever is, and no answer means no.
TEST_F(VoucherModelsTest, OfTheNewYearAreKeptInAWatchedRunWhateverTheOptionSays) {
  model(opening, "9", "旧");
  run.m_bManual = true;
  run.CoverBankModalData = true;
  EXPECT_TRUE(JzModel());
  expectModels("9", "9", "9", "9");
  EXPECT_FALSE(wasRun("Delete from GL_modelpreplace"));
}

// The gate of the boxes is open here, which no run ever does.
class VoucherModelQuestionTest : public VoucherModelsTest {
protected:
  VoucherModelQuestionTest() {
    model(opening, "9", "旧");
    run.m_pubCls = services_;
    run.m_bManual = run.m_bCancelable = true;
  }
  std::shared_ptr<AskingServices> services_ = std::make_shared<AskingServices>(run.m_pubCls);
};

TEST_F(VoucherModelQuestionTest, IsAskedWithYesAndNo) {
  EXPECT_TRUE(JzModel());
  EXPECT_EQ(services_->boxes, (std::vector<Box>{{"Orvo.GL.TqGLJZ.00295", 68, ""}}));
}

TEST_F(VoucherModelQuestionTest, YesReplacesWhateverTheOptionSays) {
  services_->answer = 6;
  EXPECT_TRUE(JzModel());
  expectModels("1", "1", "1", "1");
}

TEST_F(VoucherModelQuestionTest, AnyOtherAnswerKeeps) {
  run.CoverBankModalData = true;
  for (const int answer : {7, 2, 0}) {
    services_->answer = answer;
    EXPECT_TRUE(JzModel());
    expectModels("9", "9", "9", "9");
  }
}

TEST_F(VoucherModelQuestionTest, IsNotAskedWhenTheNewYearHasNone) {
  for (const char* table : {"GL_ModelMain", "GL_modelpreplace", "GL_ModelSub1", "GL_ModelSub2"})
    sql(opening, std::string("delete from ") + table);
  EXPECT_TRUE(JzModel());
  EXPECT_TRUE(services_->boxes.empty());
  expectModels("1", "1", "1", "1");
}

// The settings tables after it tell of the sibling component, which is not installed.
TEST_F(VoucherModelQuestionTest, AFailureOfTheStageIsToldByTheStageSequence) {
  services_->answer = 6;
  sql(opening, "drop table GL_ModelSub1");
  account("1001");
  JzData();
  EXPECT_EQ(services_->boxes, (std::vector<Box>{{"Orvo.GL.TqGLJZ.00295", 68, ""},
                                                {"Orvo.GL.TqGLJZ.00093", 64, "Orvo.GL.TqGLJZ.00094"},
                                                {"Component cannot be created: TsGFJZ.clsGFJZ", 0, ""}}));
}

// All that keeps the box away is that nobody watches; nothing else tells of the failure either.
TEST_F(VoucherModelQuestionTest, AFailureLeavesNoTraceInAnUnattendedRunAndTheStagesBehindItRun) {
  run.m_bManual = false;
  account("1001");
  fill(closing, "gl_accsum", {"ccode | iperiod | me", "1001 | 12 | 100"});
  fill(closing, "GL_mybooktype", {"cid", "日记"});
  fill(opening, "GL_QcUserDef", {"iyear | ccode", "2006 | 9999"});
  for (const char* table : {"GL_ModelMain", "GL_modelpreplace", "GL_ModelSub2"})
    sql(opening, std::string("delete from ") + table);
  sql(opening, "drop table GL_ModelSub1");
  JzData();
  EXPECT_EQ(models("GL_ModelMain"), "1");
  EXPECT_EQ(models("GL_ModelSub2"), "");
  EXPECT_EQ(services_->boxes, std::vector<Box>{});
  EXPECT_EQ(run.m_strMsg, "");
  EXPECT_TRUE(notCarried().empty());
  expectRows(opening, "select ccode,count(*),sum(mb) from gl_accsum where iyear=2006 group by ccode",
             {"1001 | 12 | 1200"});
  expectRows(opening, "select cid from GL_mybooktype", {"日记"});  // the settings tables
  expectRows(opening, "select * from GL_QcUserDef", {});           // the last stage clears the year first
}

// --- The order of the statements.

class VoucherModelStatementsTest : public VoucherModelsTest {
protected:
  void expectStatements(const std::vector<std::string>& expected) {
    forgetStatements();
    EXPECT_TRUE(JzModel());
    std::vector<std::string> found;
    for (const auto& statement : statements()) {
      EXPECT_EQ(statement.database, opening.database);
      found.push_back(statement.text);
    }
    EXPECT_EQ(found, expected);
  }
  const std::string select = "select modelId from GL_ModelMain", deletePreplace = "Delete from GL_modelpreplace";
  std::string insert(const std::string& table) {
    return "Insert into " + table + " select * from " + closing.database + ".." + table;
  }
};

TEST_F(VoucherModelStatementsTest, ReplacementDeletesTheFourTablesAndTheReplacementsOnceMore) {
  model(opening, "9", "旧");
  run.CoverBankModalData = true;
  expectStatements({select, "Delete from GL_ModelMain", deletePreplace, "Delete from GL_ModelSub1",
                    "Delete from GL_ModelSub2", deletePreplace, insert("GL_ModelMain"), insert("GL_modelpreplace"),
                    insert("GL_ModelSub1"), insert("GL_ModelSub2")});
}

TEST_F(VoucherModelStatementsTest, ANewYearWithoutModelsHasItsReplacementsDeletedWithTheOption) {
  run.CoverBankModalData = true;
  expectStatements({select, deletePreplace, insert("GL_ModelMain"), insert("GL_modelpreplace"), insert("GL_ModelSub1"),
                    insert("GL_ModelSub2")});
}

TEST_F(VoucherModelStatementsTest, NothingIsDeletedUnattendedWithoutTheOption) {
  expectStatements(
      {select, insert("GL_ModelMain"), insert("GL_modelpreplace"), insert("GL_ModelSub1"), insert("GL_ModelSub2")});
}

TEST_F(VoucherModelStatementsTest, ModelsThatAreKeptCostOneSelection) {
  model(opening, "9", "旧");
  expectStatements({select});
}

// --- Leftovers.

TEST_F(VoucherModelsTest, LeftoverReplacementsMakeAnUnattendedCopyFail) {
  fill(opening, "GL_modelpreplace", {"modelId | cKey | cText", "1 | {季} | 旧"});
  EXPECT_FALSE(JzModel());
  expectRows(opening, "select * from GL_modelpreplace", {"1 | {季} | 旧"});
  expectModels("1", "1", "", "");  // the first table was copied and stays
}

TEST_F(VoucherModelsTest, LeftoverReplacementsThatDoNotCollideStay) {
  fill(opening, "GL_modelpreplace", {"modelId | cKey | cText", "7 | {季} | 旧"});
  EXPECT_TRUE(JzModel());
  expectModels("1", "1,7", "1", "1");
}

TEST_F(VoucherModelsTest, LeftoverReplacementsAreClearedWithTheOptionOrInAWatchedRun) {
  fill(opening, "GL_modelpreplace", {"modelId | cKey | cText", "1 | {季} | 旧"});
  run.CoverBankModalData = true;
  EXPECT_TRUE(JzModel());
  expectRows(opening, "select * from GL_modelpreplace", {"1 | {季} | 工资"});
}

TEST_F(VoucherModelsTest, LeftoverReplacementsAreClearedInAWatchedRun) {
  fill(opening, "GL_modelpreplace", {"modelId | cKey | cText", "1 | {季} | 旧"});
  run.m_bManual = true;
  EXPECT_TRUE(JzModel());
  expectRows(opening, "select * from GL_modelpreplace", {"1 | {季} | 工资"});
}

TEST_F(VoucherModelsTest, LinesWithoutTheirModelAreNotCleared) {
  fill(opening, "GL_ModelSub2", {"modelId | inid | cdigest", "9 | 1 | 旧"});
  run.CoverBankModalData = true;
  EXPECT_TRUE(JzModel());
  expectModels("1", "1", "1", "1,9");  // GL_ModelMain was empty: only the replacements go
}

TEST_F(VoucherModelsTest, ArePlacedByPositionWhateverTheColumnsAreCalled) {
  sql(opening, "drop table GL_ModelSub2");
  sql(opening, "create table GL_ModelSub2(inid int not null, modelId int not null, remark nvarchar(120) null)");
  sql(closing, "update GL_ModelSub2 set inid=5");
  EXPECT_TRUE(JzModel());
  expectRows(opening, "select inid,modelId,remark from GL_ModelSub2", {"1 | 5 | 工资"});
}

TEST_F(VoucherModelsTest, AFailureEndsTheStageAndTheRunGoesOn) {
  account("1001");
  sql(opening, "drop table GL_ModelSub1");
  const Outcome outcome = transfer();
  EXPECT_TRUE(outcome.returned);
  EXPECT_TRUE(outcome.success);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(models("GL_ModelMain"), "1");
  EXPECT_EQ(models("GL_ModelSub2"), "");
  EXPECT_TRUE(wasRun("delete from GL_bmultiGroup"));
}

class SharedVoucherModelsTest : public SharedLedgerTest {};

TEST_F(SharedVoucherModelsTest, AreNotTouchedWithinOneDatabase) {
  fill(closing, "GL_ModelMain", {"modelId | cName", "1 | 工资"});
  account("1001");
  EXPECT_TRUE(transfer().success);
  EXPECT_FALSE(wasRun("GL_ModelMain"));
}

}  // namespace
}  // namespace gljz::test
