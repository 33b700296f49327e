// Stages of balances that break off or are watched: what the run variables say then, what stands, what is let through.

#include "balances/account_totals.h"
#include "balances/auxiliary_totals.h"
#include "balances/multi_auxiliary_totals.h"
#include "balances/user_defined_openings.h"
#include "detail/jz_data.h"
#include "dialogs/frm_jzsn.h"
#include "system/auxiliary_fixture.h"
#include "verify/opening_balance.h"

namespace gljz::test {
namespace {

using platform::RunTimeError;

class BalancesFailuresTest : public AuxiliaryTest {
protected:
  ~BalancesFailuresTest() override { surroundings_.forms = &forms(); }

  // Two balances of one account that become one.
  void twoOfOneKey() {
    account("5502", department);
    closingRow("gl_accMultiass", "5502", "5", {"cdept_id", "01", "ccus_id", "C1"});
    closingRow("gl_accMultiass", "5502", "6", {"cdept_id", "01", "ccus_id", "C2"});
  }
  void openingOf(const std::string& ccode, const std::string& mb) {
    fill(opening, "gl_accMultiass", {"ccode | cDefine1 | iperiod | mb", ccode + "|甲|1|" + mb});
  }

  struct Windows final : platform::FormHost {
    void ShowModal(platform::Form&) override {}
    void Changed(platform::Form&) override {}
    void DoEvents() override { ++events; }
    void ScreenPointer(int) override {}
    std::string ProgramFolder() const override { return ""; }
    int events = 0;
  };
  int eventsOf(void (*stage)()) {
    Windows windows;
    surroundings_.forms = &windows;
    stage();
    surroundings_.forms = &forms();
    return windows.events;
  }
};

// --- the last statement

TEST_F(BalancesFailuresTest, AuxiliaryTotalsNoteTheirSelectionBeforeItRuns) {
  run.m_strLastSql = "before";
  failAt("from code inner join gl_accass");
  EXPECT_THROW(JzAccAss(), RunTimeError);
  EXPECT_TRUE(run.m_strLastSql.starts_with("select code.ccode,code.ccode_name,gl_accass.cdept_id"));
}

TEST_F(BalancesFailuresTest, MultiAuxiliaryTotalsNoteTheirsBehind) {
  run.m_strLastSql = "before";
  failAt("from code inner join gl_accMultiass");
  EXPECT_THROW(JzAccMultiAss(), RunTimeError);
  EXPECT_EQ(run.m_strLastSql, "before");
}

TEST_F(BalancesFailuresTest, UserDefinedOpeningsNoteTheirsBehind) {
  run.m_strLastSql = "before";
  failAt("From GL_AccMultiAss");
  EXPECT_THROW(JzQcUserDef(), RunTimeError);
  EXPECT_EQ(run.m_strLastSql, "before");
}

TEST_F(BalancesFailuresTest, AMergeThatFailsShowsTheSearchForDuplicates) {
  twoOfOneKey();
  failAt("into #gl_accmultiass");
  EXPECT_THROW(JzAccMultiAss(), RunTimeError);
  EXPECT_TRUE(run.m_strLastSql.starts_with("select top 1 ccode,cexch_name,cdept_id")) << run.m_strLastSql;
  EXPECT_EQ(text(opening, "select count(*) from gl_accMultiass where iyear=2006"), "24");  // still unmerged
}

// --- the name of the function in a run

TEST_F(BalancesFailuresTest, ASequenceThatBreaksOffHasNamedItsStage) {
  failAt("delete from gl_accass where iyear=2006");
  EXPECT_THROW(JzData(), RunTimeError);
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--结转辅助总账GL_accass");
}

TEST_F(BalancesFailuresTest, TheMultiAuxiliaryStageBearsTheTableOfTheAuxiliaryOne) {  // that is intended
  failAt("delete from gl_accMultiass where iyear=2006");
  EXPECT_THROW(JzData(), RunTimeError);
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--结转多辅助总账GL_accass");
}

// --- what stands

TEST_F(BalancesFailuresTest, UserDefinedOpeningsWrittenBeforeAFailureStand) {
  sql(opening, "create unique index ux_amount on GL_QcUserDef(mb)");  // so that the second row cannot be added
  openingOf("1131", "5");
  openingOf("1132", "5");
  EXPECT_THROW(JzQcUserDef(), RunTimeError);
  expectRows(opening, "select ccode,mb from GL_QcUserDef where iyear=2006", {"1131 | 5"});
}

TEST_F(BalancesFailuresTest, AColumnWithoutAValueKeepsItsDefault) {
  sql(opening, "drop table GL_QcUserDef");
  sql(opening,
      "create table GL_QcUserDef(i_id int identity(1,1) not null primary key, iyear int not null, ccode nvarchar(40) "
      "not null, cdept_id nvarchar(12) null default N'无', ccus_id nvarchar(12) null default N'无', cdefine1 "
      "nvarchar(60) null, cdefine2 nvarchar(60) null default N'无', cDirec nvarchar(4) null, mb money null, mb_f money "
      "null, nb_s float null)");
  fill(opening, "gl_accMultiass", {"ccode | ccus_id | cDefine1 | iperiod | mb", "1131 | C1 | 甲 | 1 | 5"});
  JzQcUserDef();
  expectRows(opening, "select cdept_id,ccus_id,cdefine1,cdefine2,mb from GL_QcUserDef", {"无 | C1 | 甲 | 无 | 5"});
}

TEST_F(BalancesFailuresTest, AQuoteInANameBreaksItsBatch) {  // values go into a statement as they stand
  account("1131", customer);
  sql(closing,
      "insert into gl_accMultiass(iyear,ccode,ccus_id,cname,iperiod,me) values(2005,N'1131',N'C1',N'O''Neill',12,5)");
  EXPECT_THROW(JzAccMultiAss(), RunTimeError);
  EXPECT_EQ(text(opening, "select count(*) from gl_accMultiass where iyear=2006"), "0");
  EXPECT_EQ(text(opening, "select count(*) from gl_accvouch where iyear=2006"), "0");
}

// --- a run that is watched

TEST_F(BalancesFailuresTest, MultiAuxiliaryTotalsShareTheCaptionOfTheAuxiliaryOnes) {
  account("5502", department);
  closingRow("gl_accMultiass", "5502", "5", {"cdept_id", "01"});
  watch();
  JzAccMultiAss();
  EXPECT_EQ(frmJZSN().Label3(), GetResString("Orvo.GL.TqGLJZ.00110", {platform::Value("5502")}));
  EXPECT_EQ(frmJZSN().Label3(), "正在结转辅助总账 5502");
}

// Twice for a row whose account is the same in both years, once for one that is left out before.
TEST_F(BalancesFailuresTest, WindowEventsAreLetThroughForEachRow) {
  account("5502", department);
  account(closing, "5503", department);
  for (const char* table : {"gl_accass", "gl_accMultiass"}) {
    closingRow(table, "5502", "5", {"cdept_id", "01"});
    closingRow(table, "5502", "6", {"cdept_id", "02"});
    closingRow(table, "5503", "7", {"cdept_id", "01"});
  }
  EXPECT_EQ(eventsOf(JzAccAss), 5);
  EXPECT_EQ(eventsOf(JzAccMultiAss), 5);
  EXPECT_EQ(eventsOf(JzQcUserDef), 0);
  openingOf("1131", "5");
  openingOf("1132", "6");
  EXPECT_EQ(eventsOf(JzQcUserDef), 2);
}

TEST_F(BalancesFailuresTest, AnInventoryItemThatIsMissingIsReportedByItsName) {
  account("1243", {"bitem", "1", "cass_item", "ch"});
  fill(closing, "inventory", {"cInvCode | cInvName", "S1 | 钢", "S2 | 铁"});
  fill(opening, "inventory", {"cInvCode | cInvName", "S1 | 钢"});
  closingRow("gl_accass", "1243", "5", {"citem_id", "S1", "citem_class", "ch"});
  closingRow("gl_accass", "1243", "6", {"citem_id", "S2", "citem_class", "ch"});
  watch();
  JzAccAss();
  expectRows(opening, "select citem_id,citem_class,me,count(*) from gl_accass group by citem_id,citem_class,me",
             {"S1 | ch | 5 | 12"});
  EXPECT_EQ(notCarried(), std::vector<std::string>{"项目|S2|铁|辅助余额：新年度没有此项目"});
}

// The total goes on without its auxiliaries: the two reports of the run show it from both sides.
TEST_F(BalancesFailuresTest, AChangedTypeShowsInBothReports) {
  account(closing, "5503", department);
  account(opening, "5503", personal);
  account("9001");  // a row behind the account's, so that it has a verdict of its own
  fill(closing, "gl_accsum",
       {"ccode | iperiod | cendd_c | cendd_c_engl | me", "5503 | 12 | 借 | Dr | 9", "9001 | 12 | 贷 | Cr | 9"});
  closingRow("gl_accass", "5503", "9", {"cdept_id", "01"});
  closingRow("gl_accMultiass", "5503", "9", {"cdept_id", "01"});
  run.m_bManual = true;
  JzAccSum();
  JzAccAss();
  JzAccMultiAss();
  const std::string line = "科目|5503|科目5503|辅助余额：新旧年度的辅助核算不同";
  EXPECT_EQ(notCarried(), (std::vector<std::string>{line, line}));
  CheckOpeningBalance();
  ASSERT_TRUE(forms().report().has_value());
  EXPECT_EQ(forms().report()->wrong, "1");
  ASSERT_FALSE(forms().report()->rows.empty());
  EXPECT_EQ(forms().report()->rows.front().front(), "5503");
  EXPECT_EQ(forms().report()->rows.front().back(), "X");
  EXPECT_EQ(notCarried(), (std::vector<std::string>{line, line}));
}

}  // namespace
}  // namespace gljz::test
