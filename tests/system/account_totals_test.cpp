// Account totals: balances of the closing year's period 12 become twelve equal rows of the new year.

#include "balances/account_totals.h"

#include "dialogs/frm_jzsn.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

class AccountTotalsTest : public LedgerTest {
protected:
  // A balance at the end of the closing year; more columns as "name", "value", ...
  void balance(const std::string& ccode, const std::string& direction, const std::string& me,
               const std::vector<std::string>& more = {}) {
    const std::string english = direction == "借" ? "Dr" : direction == "贷" ? "Cr" : "-";
    std::string head = "ccode|iperiod|cendd_c|cendd_c_engl|me";
    std::string row = ccode + "|12|" + direction + "|" + english + "|" + me;
    for (std::size_t i = 0; i + 1 < more.size(); i += 2) head += "|" + more[i], row += "|" + more[i + 1];
    fill(closing, "gl_accsum", {head, row});
  }
  // Period 1 of the new year; the number of its like follows.
  void expectTotals(const std::vector<std::string>& expected) {
    expectRows(opening,
               "select ccode,cexch_name,cendd_c,mb,me,mb_f,me_f,nb_s,ne_s,count(*) from gl_accsum where iyear=2006 "
               "group by ccode,cexch_name,cendd_c,mb,me,mb_f,me_f,nb_s,ne_s order by ccode,cexch_name,me",
               expected);
  }
};

TEST_F(AccountTotalsTest, ABalanceBecomesTwelveEqualRows) {
  account("1001");
  balance("1001", "借", "100.25");
  JzAccSum();
  std::vector<std::string> expected;
  for (int period = 1; period <= 12; ++period)
    expected.push_back("1001 | Null | " + std::to_string(period) +
                       " | 借 | Dr | 100.25 | 0 | 0 | 0 | 0 | 借 | Dr | 100.25 | 0 | 0");
  expectRows(opening,
             "select ccode,cexch_name,iperiod,cbegind_c,cbegind_c_engl,mb,mb_f,nb_s,md,mc,cendd_c,cendd_c_engl,me,"
             "me_f,ne_s from gl_accsum where iyear=2006 order by iperiod",
             expected);
}

TEST_F(AccountTotalsTest, ACreditKeepsItsMagnitudeAndItsWords) {
  account("2001");
  balance("2001", "贷", "100.5");
  JzAccSum();
  expectRows(opening,
             "select distinct cbegind_c,cbegind_c_engl,mb,cendd_c,cendd_c_engl,me from gl_accsum where iyear=2006",
             {"贷 | Cr | 100.5 | 贷 | Cr | 100.5"});
}

TEST_F(AccountTotalsTest, WithoutBalancesTheNewYearIsEmptied) {
  account("1001");
  fill(opening, "gl_accsum", {"ccode | iperiod | mb", "1001 | 1 | 5", "1009 | 2 | 7"});
  JzAccSum();
  expectTotals({});
  EXPECT_TRUE(wasRun("select ccode,iyear into #T from code"));  // parents are rebuilt in any case
}

TEST_F(AccountTotalsTest, OtherYearsStayAsTheyAre) {
  account("1001");
  balance("1001", "借", "10");
  fill(opening, "gl_accsum", {"iyear | ccode | iperiod | mb", "2007 | 1001 | 1 | 5"});
  JzAccSum();
  expectRows(opening, "select iyear,mb,count(*) from gl_accsum group by iyear,mb order by iyear",
             {"2006 | 10 | 12", "2007 | 5 | 1"});
  expectRows(closing, "select iyear,ccode,iperiod,me from gl_accsum", {"2005 | 1001 | 12 | 10"});
}

TEST_F(AccountTotalsTest, AClearedAccountGetsNoRows) {
  account("1001");
  balance("1001", "平", "0");
  JzAccSum();
  expectTotals({});
}

TEST_F(AccountTotalsTest, OnlyPeriodTwelveCounts) {
  account("1001");
  fill(closing, "gl_accsum", {"ccode | iperiod | me", "1001 | 11 | 5", "1001 | 1 | 7"});
  JzAccSum();
  expectTotals({});
}

TEST_F(AccountTotalsTest, AStrayForeignAmountIsCarriedAsNothing) {
  account("1001");
  account("1002", {"cexch_name", "美元"});
  balance("1001", "借", "0", {"me_f", "8"});  // no currency
  balance("1002", "借", "0", {"me_f", "9", "cexch_name", "美元"});
  JzAccSum();
  expectTotals({"1001 | Null | 借 | 0 | 0 | 0 | 0 | 0 | 0 | 12", "1002 | 美元 | 借 | 0 | 0 | 9 | 9 | 0 | 0 | 12"});
}

TEST_F(AccountTotalsTest, AQuantityNeedsAMeasureUnitInBothYears) {
  account("1201", {"cmeasure", "吨"});
  account("1202");                               // never had one
  account(closing, "1203", {"cmeasure", "吨"});  // lost it
  account(opening, "1203");
  account(closing, "1204");  // has got one
  account(opening, "1204", {"cmeasure", "吨"});
  for (const char* ccode : {"1201", "1202", "1203", "1204"}) balance(ccode, "借", "10", {"ne_s", "2.5"});
  JzAccSum();
  expectTotals({"1201 | Null | 借 | 10 | 10 | 0 | 0 | 2.5 | 2.5 | 12",
                "1202 | Null | 借 | 10 | 10 | 0 | 0 | 0 | 0 | 12", "1203 | Null | 借 | 10 | 10 | 0 | 0 | 0 | 0 | 12",
                "1204 | Null | 借 | 10 | 10 | 0 | 0 | 0 | 0 | 12"});
}

TEST_F(AccountTotalsTest, SeveralCurrenciesKeepTheirOwnRows) {
  option("bMultiCurrency", "True");
  account("1002", {"cexch_name", "美元"});
  balance("1002", "借", "80", {"cexch_name", "美元", "me_f", "10"});
  balance("1002", "借", "90", {"cexch_name", "欧元", "me_f", "9"});
  JzAccSum();
  expectRows(
      opening,
      "select cexch_name,me,me_f,count(*) from gl_accsum where iyear=2006 group by cexch_name,me,me_f order by me",
      {"美元 | 80 | 10 | 12", "欧元 | 90 | 9 | 12"});
}

TEST_F(AccountTotalsTest, WithOneCurrencyBothRowsTakeTheAccountsOwn) {
  account("1002", {"cexch_name", "美元"});
  balance("1002", "借", "80", {"cexch_name", "美元", "me_f", "10"});
  balance("1002", "借", "90", {"cexch_name", "欧元", "me_f", "9"});
  JzAccSum();
  expectTotals(
      {"1002 | 美元 | 借 | 80 | 80 | 10 | 10 | 0 | 0 | 12", "1002 | 美元 | 借 | 90 | 90 | 9 | 9 | 0 | 0 | 12"});
}

TEST_F(AccountTotalsTest, AForeignBalanceLosesItsCurrencyInAnAccountWithoutOne) {
  account(closing, "1002", {"cexch_name", "美元"});
  account(opening, "1002");
  balance("1002", "借", "80", {"cexch_name", "美元", "me_f", "10"});
  JzAccSum();
  expectTotals({"1002 | Null | 借 | 80 | 80 | 0 | 0 | 0 | 0 | 12"});
}

TEST_F(AccountTotalsTest, ABalanceWithoutACurrencyTakesTheMainOneInAForeignAccount) {
  option("bMultiCurrency", "True");
  account("1002", {"cexch_name", "美元"});
  balance("1002", "借", "80");
  JzAccSum();
  expectTotals({"1002 | 人民币 | 借 | 80 | 80 | 0 | 0 | 0 | 0 | 12"});
}

TEST_F(AccountTotalsTest, AnAccountWithoutACurrencyHasNull) {
  option("bMultiCurrency", "True");
  account("1001");
  balance("1001", "借", "80");
  JzAccSum();
  expectTotals({"1001 | Null | 借 | 80 | 80 | 0 | 0 | 0 | 0 | 12"});
}

TEST_F(AccountTotalsTest, ARenumberedAccountCarriesUnderItsNewCode) {
  account(closing, "1001");
  account(opening, "100101");
  fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "1001 | 100101"});
  balance("1001", "借", "5");
  JzAccSum();
  expectTotals({"100101 | Null | 借 | 5 | 5 | 0 | 0 | 0 | 0 | 12"});
}

TEST_F(AccountTotalsTest, AMissingAccountIsReportedWhenSomebodyWatches) {
  account(closing, "1009", {"ccode_name", "旧科目"});
  balance("1009", "借", "5");
  run.m_bManual = true;
  JzAccSum();
  expectTotals({});
  EXPECT_EQ(notCarried(), std::vector<std::string>{"科目|1009|旧科目|总账余额：新年度没有此科目"});
}

TEST_F(AccountTotalsTest, AMissingAccountIsDroppedWithoutAWordOtherwise) {
  account(closing, "1009");
  balance("1009", "借", "5");
  JzAccSum();
  expectTotals({});
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(AccountTotalsTest, AParentPassesWithoutAReportAndIsRebuilt) {
  account("1002", {"bend", "0"});
  account("100201");
  balance("1002", "借", "7");
  balance("100201", "借", "5");
  run.m_bManual = true;
  JzAccSum();
  expectTotals({"1002 | Null | 借 | 5 | 5 | 0 | 0 | 0 | 0 | 12", "100201 | Null | 借 | 5 | 5 | 0 | 0 | 0 | 0 | 12"});
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(AccountTotalsTest, AnAccountThatBecameAParentLosesItsBalance) {
  account(closing, "1002");
  account(opening, "1002", {"bend", "0"});
  account(opening, "100201");
  balance("1002", "借", "7");
  run.m_bManual = true;
  JzAccSum();
  expectTotals({});
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(AccountTotalsTest, AParentThatBecameLastLevelIsCarriedByItsOwnTotal) {
  account(closing, "1002", {"bend", "0"});
  account(closing, "100201");
  account(opening, "1002");
  balance("1002", "借", "7");
  balance("100201", "借", "7");
  JzAccSum();
  expectTotals({"1002 | Null | 借 | 7 | 7 | 0 | 0 | 0 | 0 | 12"});
}

TEST_F(AccountTotalsTest, ASecondRunGivesTheSameRows) {
  account("1002", {"bend", "0"});
  account("100201");
  balance("100201", "贷", "5.5");
  JzAccSum();
  const std::string everything =
      "select iyear,ccode,iperiod,cbegind_c,mb,md,mc,cendd_c,me from gl_accsum order by ccode,iperiod";
  const auto first = rows(opening, everything);
  JzAccSum();
  EXPECT_EQ(first.size(), 24u);
  EXPECT_EQ(rows(opening, everything), first);
}

TEST_F(AccountTotalsTest, TheProgressFormNamesEachAccount) {
  account("1001");
  balance("1001", "借", "5");
  run.m_bManual = true;
  JzAccSum();
  EXPECT_EQ(frmJZSN().Label3(), "正在结转科目总账 1001");
}

TEST_F(AccountTotalsTest, AFailureEndsTheStageWhereItIs) {
  account("1001");
  balance("1001", "借", "5");
  sql(opening, "create unique index ix_one on gl_accsum(iyear, ccode)");  // the second period fails
  EXPECT_THROW(JzAccSum(), platform::RunTimeError);
  expectRows(opening, "select iperiod,me from gl_accsum", {"1 | 5"});
  EXPECT_TRUE(run.m_strLastSql.starts_with("select code.ccode,code.ccode_name,gl_accsum.cendd_c")) << run.m_strLastSql;
}

TEST_F(AccountTotalsTest, AWholeRunCarriesTheBalances) {
  account("1001");
  balance("1001", "借", "100.25");
  const Outcome outcome = transfer();
  EXPECT_TRUE(outcome.returned) << outcome.errMsg;
  EXPECT_TRUE(outcome.success) << outcome.errMsg;
  expectTotals({"1001 | Null | 借 | 100.25 | 100.25 | 0 | 0 | 0 | 0 | 12"});
}

class SharedAccountTotalsTest : public SharedLedgerTest {};

TEST_F(SharedAccountTotalsTest, OneDatabaseIsReadAndWritten) {
  account("1001");
  fill(closing, "gl_accsum", {"ccode | iperiod | cendd_c | me", "1001 | 12 | 借 | 3"});
  JzAccSum();
  expectRows(opening, "select iyear,me,count(*) from gl_accsum group by iyear,me order by iyear",
             {"2005 | 3 | 1", "2006 | 3 | 12"});
}

}  // namespace
}  // namespace gljz::test
