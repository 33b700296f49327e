// Parent accounts of gl_accsum are rebuilt from their last-level accounts.

#include "balances/roll_up.h"

#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

class RollUpTest : public LedgerTest {
protected:
  void rollUp() { RollUpAccSum(newConn(), 2006); }
  void expectParents(const std::string& columns, const std::vector<std::string>& expected) {
    expectRows(opening,
               "select s.ccode," + columns +
                   " from gl_accsum s inner join code c on c.ccode=s.ccode and c.iyear=s.iyear where s.iyear=2006 and "
                   "c.bend=0 order by s.ccode,s.cexch_name,s.iperiod",
               expected);
  }
  void family() {
    account(opening, "10", {"bend", "0"});
    account(opening, "1001");
    account(opening, "1002");
  }
};

TEST_F(RollUpTest, AYearWithoutParentsStaysAsItIs) {
  account(opening, "1001");
  fill(opening, "gl_accsum", {"ccode | iperiod | cendd_c | me", "1001 | 1 | 贷 | 5"});
  rollUp();
  expectRows(opening, "select ccode,cendd_c,me from gl_accsum", {"1001 | 贷 | 5"});
}

TEST_F(RollUpTest, EqualSidesBalance) {
  family();
  fill(opening, "gl_accsum",
       {"ccode | iperiod | cbegind_c | mb | cendd_c | me", "1001 | 1 | 借 | 100 | 借 | 100",
        "1002 | 1 | 贷 | 100 | 贷 | 100"});
  rollUp();
  expectParents("cbegind_c,cbegind_c_engl,mb,cendd_c,cendd_c_engl,me", {"10 | 平 | - | 0 | 平 | - | 0"});
}

TEST_F(RollUpTest, TheLargerSideGivesTheDirection) {
  family();
  fill(opening, "gl_accsum",
       {"ccode | iperiod | cbegind_c | mb | cendd_c | me", "1001 | 1 | 借 | 30 | 借 | 100",
        "1002 | 1 | 贷 | 100 | 贷 | 30"});
  rollUp();
  expectParents("cbegind_c,cbegind_c_engl,mb,cendd_c,cendd_c_engl,me", {"10 | 贷 | Cr | 70 | 借 | Dr | 70"});
}

TEST_F(RollUpTest, ABalancedChildCountsAsADebit) {
  family();
  fill(opening, "gl_accsum", {"ccode | iperiod | cendd_c | me", "1001 | 1 | 平 | 5", "1002 | 1 | Null | 7"});
  rollUp();
  expectParents("cendd_c,me", {"10 | 借 | 12"});
}

TEST_F(RollUpTest, MovementsAreSummedWithoutASignAndTheirQuantitiesNot) {
  family();
  fill(opening, "gl_accsum",
       {"ccode | iperiod | cbegind_c | md | mc | nd_s | nc_s | md_f | mc_f", "1001 | 3 | 借 | 1 | 2 | 3 | 4 | 5 | 6",
        "1002 | 3 | 贷 | 10 | 20 | 30 | 40 | 50 | 60"});
  rollUp();
  expectParents("iperiod,md,mc,nd_s,nc_s,md_f,mc_f", {"10 | 3 | 11 | 22 | 0 | 0 | 55 | 66"});
}

TEST_F(RollUpTest, AQuantityOnTheCreditSideAdds) {  // and then follows the sign of the amount
  account(opening, "12", {"bend", "0", "cmeasure", "吨"});
  account(opening, "1201", {"cmeasure", "吨"});
  account(opening, "1202", {"cmeasure", "吨"});
  fill(opening, "gl_accsum",
       {"ccode | iperiod | cbegind_c | mb | nb_s | cendd_c | me | ne_s", "1201 | 1 | 借 | 10 | 1 | 借 | 1 | 1",
        "1202 | 1 | 贷 | 4 | 2 | 贷 | 4 | 2"});
  rollUp();
  expectParents("cbegind_c,mb,nb_s,cendd_c,me,ne_s", {"12 | 借 | 6 | 3 | 贷 | 3 | -3"});
}

TEST_F(RollUpTest, AParentWithoutAMeasureUnitHasNoQuantity) {
  account(opening, "12", {"bend", "0"});
  account(opening, "1201", {"cmeasure", "吨"});
  fill(opening, "gl_accsum", {"ccode | iperiod | cbegind_c | mb | nb_s | ne_s", "1201 | 1 | 借 | 10 | 1 | 1"});
  rollUp();
  expectParents("mb,nb_s,ne_s", {"12 | 10 | 0 | 0"});
}

TEST_F(RollUpTest, AForeignAmountOnTheOtherSideKeepsAMinus) {
  account(opening, "10", {"bend", "0", "cexch_name", "美元"});
  account(opening, "1001", {"cexch_name", "美元"});
  account(opening, "1002", {"cexch_name", "美元"});
  fill(opening, "gl_accsum",
       {"ccode | cexch_name | iperiod | cbegind_c | mb | mb_f", "1001 | 美元 | 1 | 借 | 100 | 1",
        "1002 | 美元 | 1 | 贷 | 60 | 9"});
  rollUp();
  expectParents("s.cexch_name,cbegind_c,mb,mb_f", {"10 | 美元 | 借 | 40 | -8"});
}

TEST_F(RollUpTest, WithOneCurrencyOnlyTheParentsOwnCountsUnlessThereIsNone) {
  account(opening, "10", {"bend", "0", "cexch_name", "美元"});
  account(opening, "1001", {"cexch_name", "美元"});
  account(opening, "1002", {"cexch_name", "欧元"});
  account(opening, "1003");  // unknown: it counts
  fill(opening, "gl_accsum",
       {"ccode | cexch_name | iperiod | cbegind_c | mb | mb_f", "1001 | 美元 | 1 | 借 | 1 | 10",
        "1002 | 欧元 | 1 | 借 | 2 | 100", "1003 | Null | 1 | 借 | 4 | 1000"});
  rollUp();
  expectParents("s.cexch_name,mb,mb_f", {"10 | 美元 | 7 | 1010"});
}

TEST_F(RollUpTest, WithSeveralCurrenciesAParentWithACurrencyHasARowForEach) {
  option("bMultiCurrency", "True");
  account(opening, "10", {"bend", "0", "cexch_name", "美元"});
  account(opening, "1001", {"cexch_name", "美元"});
  account(opening, "1002", {"cexch_name", "欧元"});
  account(opening, "1003");
  fill(opening, "gl_accsum",
       {"ccode | cexch_name | iperiod | cbegind_c | mb | mb_f", "1001 | 美元 | 1 | 借 | 1 | 10",
        "1002 | 欧元 | 1 | 借 | 2 | 100", "1003 | Null | 1 | 借 | 4 | 1000"});
  rollUp();
  expectRows(opening, "select cexch_name,mb,mb_f from gl_accsum where ccode='10' order by mb",
             {"美元 | 1 | 10", "欧元 | 2 | 100", "人民币 | 4 | 0"});
}

TEST_F(RollUpTest, WithSeveralCurrenciesAParentWithoutOneHasOneRow) {
  option("bMultiCurrency", "True");
  account(opening, "10", {"bend", "0"});
  account(opening, "1001", {"cexch_name", "美元"});
  account(opening, "1002");
  fill(opening, "gl_accsum",
       {"ccode | cexch_name | iperiod | cbegind_c | mb | mb_f", "1001 | 美元 | 1 | 借 | 1 | 10",
        "1002 | Null | 1 | 借 | 4 | 1000"});
  rollUp();
  expectParents("s.cexch_name,mb,mb_f", {"10 | Null | 5 | 10"});
}

TEST_F(RollUpTest, EveryLevelSumsTheLastLevelDirectly) {
  account(opening, "10", {"bend", "0"});
  account(opening, "1001", {"bend", "0"});
  account(opening, "100101");
  account(opening, "1002");
  fill(opening, "gl_accsum", {"ccode | iperiod | cendd_c | me", "100101 | 1 | 借 | 3", "1002 | 1 | 借 | 4"});
  rollUp();
  expectParents("me", {"10 | 7", "1001 | 3"});
}

TEST_F(RollUpTest, ThePrefixAloneMakesAChild) {
  account(opening, "10", {"bend", "0"});
  account(opening, "10X9");  // no scheme of codes has this
  fill(opening, "gl_accsum", {"ccode | iperiod | cendd_c | me", "10X9 | 1 | 借 | 3"});
  rollUp();
  expectParents("me", {"10 | 3"});
}

TEST_F(RollUpTest, AParentWithoutChildRowsOfAPeriodGetsNone) {
  family();
  fill(opening, "gl_accsum",
       {"ccode | iperiod | cendd_c | me", "1001 | 2 | 借 | 3", "10 | 1 | 借 | 99", "10 | 2 | 借 | 99"});
  rollUp();
  expectParents("iperiod,me", {"10 | 2 | 3"});
}

TEST_F(RollUpTest, OtherYearsStayAsTheyAre) {
  family();
  fill(opening, "gl_accsum",
       {"iyear | ccode | iperiod | cendd_c | me", "2007 | 10 | 1 | 借 | 99", "2006 | 1001 | 1 | 借 | 3"});
  rollUp();
  expectRows(opening, "select iyear,ccode,me from gl_accsum order by iyear,ccode",
             {"2006 | 10 | 3", "2006 | 1001 | 3", "2007 | 10 | 99"});
}

TEST_F(RollUpTest, TheWorkTableIsGoneBeforeAndBehind) {
  family();
  newConn().ExecuteSql("create table #T(x int)");  // left over from a failure
  rollUp();
  rollUp();
  EXPECT_THROW(newConn().ExecuteSql("select * from #T"), platform::RunTimeError);
}

}  // namespace
}  // namespace gljz::test
