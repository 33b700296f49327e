#include "driver/small_stages.h"

#include "core/exec_jz.h"
#include "dialogs/frm_sy_km_sel.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

// --- Cash-flow items.

class CashItemsTest : public LedgerTest {
protected:
  CashItemsTest() {
    fill(closing, "fitemss98", {"citemcode | citemname", "0101 | 销售商品"});
    fill(closing, "fitemssZF", {"citemcode | citemname", "03 | 折旧"});
    fill(closing, "GL_CashItemDataSource",
         {"cItemCode | bDataStyle | cDataSource | bDir | bRelation | dStartDate | dEndDate",
          "0101 | 0 | 1131 | 0 | 1 | 2005-01-01 | 2005-12-31", "03 | 1 | 1502 | 1 | 0 | | ",
          "0999 | 0 | 1001 | 0 | 0 | | ",  // no such item
          "03 | 0 | 9999 | 0 | 0 | | "});  // not an item of its kind
    fill(opening, "GL_CashItemDataSource", {"iyear | cItemCode | bDataStyle", "2006 | old | 0", "2007 | later | 0"});
  }
  void expectItems(const std::vector<std::string>& expected) {
    expectRows(opening,
               "select iyear,cItemCode,bDataStyle,cDataSource,bDir,bRelation,dStartDate,dEndDate from "
               "GL_CashItemDataSource order by iyear,cItemCode",
               expected);
  }
  static constexpr const char* of98 = "2006 | 0101 | 0 | 1131 | 0 | 1 | 2005-01-01 | 2005-12-31";
  static constexpr const char* ofZF = "2006 | 03 | 1 | 1502 | 1 | 0 | Null | Null";
  static constexpr const char* later = "2007 | later | 0 | Null | Null | Null | Null | Null";
};

TEST_F(CashItemsTest, ThatTheClosingYearKnowsAreCarriedForBothKinds) {
  JzCashItemDataSource(run.m_strLastDB, run.m_strCurDB);
  expectItems({of98, ofZF, later});
}

// The look for a kind of item goes to the underlying connection, everything else to the wrapper around it.
TEST_F(CashItemsTest, RunTheirStatementsInOrder) {
  forgetStatements();
  JzCashItemDataSource(run.m_strLastDB, run.m_strCurDB);
  const std::vector<std::pair<bool, std::string>> expected = {
      {false, "delete from " + opening.database + "..GL_CashItemDataSource where iyear=2006"},
      {true, "select 1 from sysobjects where id=object_id('fitemss98') "},
      {false, "insert into " + opening.database + "..GL_CashItemDataSource("},
      {true, "select 1 from sysobjects where id=object_id('fitemssZF') "},
      {false, "insert into " + opening.database + "..GL_CashItemDataSource("}};
  ASSERT_EQ(statements().size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(statements()[i].raw, expected[i].first) << statements()[i].text;
    EXPECT_TRUE(statements()[i].text.starts_with(expected[i].second)) << statements()[i].text;
    EXPECT_EQ(statements()[i].database, opening.database);
  }
}

TEST_F(CashItemsTest, OfTwoMissingKindsAreOnlyDeleted) {
  sql(opening, "drop table fitemss98 drop table fitemssZF");
  sql(closing, "drop table fitemss98 drop table fitemssZF");
  JzCashItemDataSource(run.m_strLastDB, run.m_strCurDB);
  expectItems({later});
}

TEST_F(CashItemsTest, OfOneKindDoNotNeedTheOther) {
  sql(opening, "drop table fitemss98");
  JzCashItemDataSource(run.m_strLastDB, run.m_strCurDB);
  expectItems({ofZF, later});
}

// Whether a kind exists is asked of the new year, its items of the closing year.
TEST_F(CashItemsTest, OfAKindThatOnlyTheNewYearHasAreAFailureOfTheCaller) {
  sql(closing, "drop table fitemss98");
  EXPECT_THROW(JzCashItemDataSource(run.m_strLastDB, run.m_strCurDB), platform::RunTimeError);
  expectItems({later});
}

TEST_F(CashItemsTest, AreCarriedInAWholeRunWithTheDatabasesByName) {
  account("1001");
  EXPECT_TRUE(transfer().success);
  expectItems({of98, ofZF, later});
}

// --- Groups of multi-column ledgers.

class BmultiGroupTest : public LedgerTest {};

TEST_F(BmultiGroupTest, ReplaceThoseOfTheNewYearAndNoOther) {
  fill(
      closing, "GL_bmultiGroup",
      {"cname | ctext | cass | cclass | ctype | igroupnum | csubname | ccode | cdef | bye | isubnum | bd_c | ccodes | "
       "cass_code | cdef_name | cnames | is_f | bsingle | bdouble",
       "管理费用 | 多栏账 | 部门 | 损益 | 科目 | 1 | 人员 | 5502 | d | 1 | 2 | 0 | 550201 | a | n | 工资 | 0 | 1 | 0"});
  fill(closing, "GL_bmultiGroup", {"cname | iyear", "更早 | 2004"});
  fill(opening, "GL_bmultiGroup", {"cname | iyear", "旧 | 2006", "明年 | 2007"});
  JzBmultiGroup();
  expectRows(
      opening, "select * from GL_bmultiGroup order by iyear",
      {"管理费用 | 多栏账 | 部门 | 损益 | 科目 | 1 | 人员 | 5502 | d | 1 | 2 | 0 | 550201 | a | n | 工资 | 0 | 1 | 0 "
       "| 2006",
       "明年 | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | "
       "Null | Null | Null | Null | 2007"});
}

TEST_F(BmultiGroupTest, AFailureGoesToTheCaller) {
  sql(closing, "drop table GL_bmultiGroup");
  EXPECT_THROW(JzBmultiGroup(), platform::RunTimeError);
}

// --- Clearing of profit-and-loss accounts. The earlier years have to lie in the database of the new one.

class ClearSyKmTest : public SharedLedgerTest {
protected:
  ClearSyKmTest() {
    for (const char* code : {"5101", "510101", "5502"}) account(code);
    sql(closing, "update code set cexch_name=N'美元' where ccode='510101'");
  }

  void choose(const std::string& entry) { frmSyKmSel().CtlSelList1.addRight(entry); }

  void lines(const Side& side, std::initializer_list<std::string> rows) {
    std::vector<std::string> all(rows);
    for (std::size_t i = 1; i < all.size(); ++i)
      fill(side, "gl_accvouch", {"inid | dbill_date | " + all[0], "1 | 2005-06-06 | " + all[i]});
  }
  int count(const std::string& table) {
    return std::stoi(text(opening, "select count(*) from " + table + " where iyear=2006"));
  }
};

TEST_F(ClearSyKmTest, TakesTheAccountAndAllBelowItOutOfTheNewYear) {
  for (const char* table : {"gl_accsum", "gl_accass", "gl_accMultiass"})
    fill(opening, table, {"ccode | iperiod", "5101 | 1", "510101 | 1", "5502 | 1"});
  fill(opening, "GL_QcUserDef", {"ccode", "5101", "510101", "5502"});
  lines(opening, {"ccode | iperiod", "510101 | 0", "510101 | 1", "5502 | 0"});
  fill(closing, "gl_accsum", {"ccode | iperiod", "5101 | 12"});
  choose("5101 主营业务收入");
  ClearSyKm();
  for (const char* table : {"gl_accsum", "gl_accass", "gl_accMultiass", "GL_QcUserDef"})
    expectRows(opening, std::string("select ccode from ") + table + " where iyear=2006", {"5502"});
  expectRows(opening, "select ccode,iperiod from gl_accvouch where iyear=2006 order by i_id",
             {"510101 | 1", "5502 | 0"});
  expectRows(closing, "select ccode from gl_accsum where iyear=2005", {"5101"});
}

TEST_F(ClearSyKmTest, WritesACancellingOpeningDetailForEachEarlierLine) {
  lines(closing, {"ccode | iperiod | csign | ino_id | cexch_name | md | mc | md_f | mc_f | nd_s | nc_s | nfrat | "
                  "coutno_id | cdigest | ibook",
                  "510101 | 6 | 记 | 3 | 欧元 | 10 | 20 | 1 | 2 | 3 | 4 | 8.1 | GL001 | 销售 | 1"});
  choose("5101 主营业务收入");
  ClearSyKm();
  expectRows(
      opening,
      "select iperiod,csign,ino_id,cexch_name,md,mc,md_f,mc_f,nd_s,nc_s,nfrat,coutno_id,cdigest,ibook,iflagPerson,"
      "iYPeriod,wllqDate,wllqPeriod from gl_accvouch where iyear=2006",
      {"0 | 记 | 3 | 美元 | -10 | -20 | -1 | -2 | -3 | -4 | 8.1 | Null | 销售 | 1 | 1 | 200600 | 2006-01-01 | "
       "200600"});
}

TEST_F(ClearSyKmTest, MarksTheEarlierLinesAsClearedAtTheOpening) {
  lines(closing, {"ccode | iperiod | md | cexch_name", "510101 | 6 | 10 | 欧元"});
  choose("5101 主营业务收入");
  ClearSyKm();
  expectRows(closing, "select iperiod,md,cexch_name,iflagPerson,wllqDate,wllqPeriod from gl_accvouch where iyear=2005",
             {"6 | 10 | 欧元 | 1 | 2006-01-01 | 200600"});
}

TEST_F(ClearSyKmTest, LeavesLinesAloneThatWereClearedBefore) {
  lines(closing, {"ccode | iperiod | md | iflagPerson | wllqDate | wllqPeriod",
                  "5101 | 6 | 1 | 1 | 2005-11-30 | 200511",  //
                  "5101 | 6 | 2 | 1 | 2006-03-31 | 200603",  // cleared in the new year: cancelled, with its own date
                  "5101 | 21 | 4 | | | "});                  // not a line of the ledger's periods
  choose("5101 主营业务收入");
  ClearSyKm();
  expectRows(opening, "select md,wllqDate,wllqPeriod from gl_accvouch where iyear=2006", {"-2 | 2006-03-31 | 200603"});
  expectRows(closing, "select md,wllqPeriod from gl_accvouch where iyear=2005 order by md",
             {"1 | 200511", "2 | 200600", "4 | Null"});
}

TEST_F(ClearSyKmTest, LooksAtTheYearsOfTheDatabaseOnly) {
  account(Side{closing.database, 2004}, "5101");
  lines(Side{closing.database, 2004}, {"ccode | iperiod | md", "5101 | 6 | 1"});  // before the first year
  lines(opening, {"ccode | iperiod | md", "5101 | 6 | 2"});
  choose("5101 主营业务收入");
  ClearSyKm();
  EXPECT_EQ(text(opening, "select count(*) from gl_accvouch where iperiod=0"), "0");
}

TEST_F(ClearSyKmTest, ClearsEveryChosenAccountAndUnloadsTheDialog) {
  fill(opening, "gl_accsum", {"ccode | iperiod", "5101 | 1", "5502 | 1"});
  choose("5101 主营业务收入");
  choose("5502 管理费用 其他");
  ClearSyKm();
  EXPECT_EQ(count("gl_accsum"), 0);
  EXPECT_FALSE(frmSyKmSel.isLoaded());
}

TEST_F(ClearSyKmTest, RunsAnAccountsStatementsInTheirOrder) {
  choose("5101 主营业务收入");
  forgetStatements();
  ClearSyKm();
  const std::string db = run.m_strCurDB;
  const std::vector<std::string> expected = {
      "Delete From  " + db + "..GL_accsum ",     "Delete From " + db + "..GL_accass ",
      "Delete From " + db + "..GL_accMultiass ", "Delete From " + db + "..GL_accvouch ",
      "Delete From " + db + "..GL_QcUserDef ",   "INSERT INTO [GL_accvouch](",
      "update gl_accvouch set iflagperson=1,"};
  std::vector<std::string> found;
  for (const auto& statement : statements())
    if (statement.text.find("'5101%'") != std::string::npos) found.push_back(statement.text);
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_TRUE(found[i].starts_with(expected[i])) << found[i];
}

TEST_F(ClearSyKmTest, DoesNotTouchTheDialogWithoutTheOption) {
  fill(opening, "gl_accsum", {"ccode | iperiod", "5101 | 1"});
  choose("5101 主营业务收入");
  ExecJZ();
  EXPECT_TRUE(run.m_bSuccess);
  ASSERT_TRUE(frmSyKmSel.isLoaded());
  EXPECT_EQ(frmSyKmSel().CtlSelList1.right().size(), 1u);
  EXPECT_FALSE(wasRun("Delete From  "));
}

TEST_F(ClearSyKmTest, LoadsADialogThatNobodyOpenedAndClearsNothing) {
  sql(opening, "update code set cclass=N'损益', igrade=1");
  fill(opening, "gl_accsum", {"ccode | iperiod | mb", "5101 | 1 | 5"});
  EXPECT_EQ(frmSyKmSel().CtlSelList1.left(), DoubleList::Entries{"5101 科目5101"});  // it could have been chosen
  EXPECT_EQ(frmSyKmSel().CtlSelList1.right(), DoubleList::Entries{});
  frmSyKmSel.unload();
  forgetStatements();
  ClearSyKm();
  EXPECT_EQ(count("gl_accsum"), 1);
  EXPECT_TRUE(wasRun("Select Distinct C.ccode as ccode,C.ccode_name as ccode_name from GL_accsum G,code C"));
  EXPECT_FALSE(wasRun("Delete From"));
  EXPECT_FALSE(frmSyKmSel.isLoaded());
}

TEST_F(ClearSyKmTest, RunsAfterTheStagesOfAWholeRun) {
  fill(closing, "gl_accsum",
       {"ccode | iperiod | cendd_c | cendd_c_engl | me", "5101 | 12 | 贷 | Cr | 100", "5502 | 12 | 借 | Dr | 100"});
  choose("5101 主营业务收入");
  run.bClear = true;
  ExecJZ();
  EXPECT_TRUE(run.m_bSuccess);
  expectRows(opening, "select distinct ccode from gl_accsum where iyear=2006", {"5502"});
  EXPECT_FALSE(frmSyKmSel.isLoaded());
}

TEST_F(ClearSyKmTest, AFailureGoesToTheCallerAndLeavesTheDialogLoaded) {
  choose("5101 主营业务收入");
  failAt("GL_accMultiass");
  EXPECT_THROW(ClearSyKm(), platform::RunTimeError);
  EXPECT_TRUE(frmSyKmSel.isLoaded());
}

}  // namespace
}  // namespace gljz::test
