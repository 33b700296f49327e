// Multi-auxiliary totals: names and user-defined columns, and the repair of duplicates.

#include "balances/multi_auxiliary_totals.h"

#include "system/auxiliary_fixture.h"

namespace gljz::test {
namespace {

class MultiAuxiliaryTotalsTest : public AuxiliaryTest {
protected:
  void balance(const std::string& ccode, const std::string& me, const Columns& columns) {
    closingRow("gl_accMultiass", ccode, me, columns);
  }
  // Account, auxiliaries, name, some of the user-defined columns, amount; and that there are twelve of each.
  void expectCarried(const std::vector<std::string>& expected) {
    const std::string columns = "ccode,cdept_id,cperson_id,ccus_id,csup_id,citem_id,cname,cDefine1,cDefine3,me";
    std::vector<std::string> twelve;
    for (const std::string& row : expected) twelve.push_back(row + " | 12");
    expectRows(opening,
               "select " + columns + ",count(*) from gl_accMultiass where iyear=2006 group by " + columns +
                   " order by ccode,me",
               twelve);
  }
  void expectNothing() { expectCarried({}); }
  bool merged() const { return wasRun("into #gl_accmultiass"); }
  using Lines = std::vector<std::string>;
};

TEST_F(MultiAuxiliaryTotalsTest, ABalanceBecomesTwelveEqualRows) {
  option("bMultiCurrency", "True");
  account("1131", customer + Columns{"bcDefine1", "1", "bcDefine4", "1", "bcDefine16", "1", "cexch_name", "美元",
                                     "cmeasure", "吨"});
  balance("1131", "-100.25",
          {"ccus_id", "C1", "cname", "王五", "cDefine1", "甲", "cDefine4", "2005-06-30", "cDefine16", "末",
           "cexch_name", "美元", "me_f", "-10", "ne_s", "-1.5"});
  JzAccMultiAss();
  std::vector<std::string> expected;
  for (int period = 1; period <= 12; ++period)
    expected.push_back(
        "2006 | 1131 | 美元 | Null | Null | C1 | Null | Null | Null | 王五 | 甲 | Null | Null | "
        "2005-06-30 | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | 末 | " +
        std::to_string(period) + " | -100.25 | 0 | 0 | -100.25 | -10 | 0 | 0 | -10 | -1.5 | 0 | 0 | -1.5 | 0 | 0");
  expectRows(opening,
             "select iyear,ccode,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cname,cDefine1,"
             "cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,"
             "cDefine13,cDefine14,cDefine15,cDefine16,iperiod,mb,md,mc,me,mb_f,md_f,mc_f,me_f,nb_s,nd_s,nc_s,ne_s,"
             "addmd,addmc from gl_accMultiass order by iperiod",
             expected);
}

TEST_F(MultiAuxiliaryTotalsTest, ARowIsOneBatchOfTwelveStatements) {
  account("4105", project + Columns{"bcDefine3", "1", "bcDefine4", "1", "cmeasure", "吨"});
  balance("4105", "50",
          {"citem_id", "I1", "citem_class", "98", "cDefine3", "甲", "cDefine4", "2005-12-31", "ne_s", "2.25"});
  JzAccMultiAss();
  std::string batch;
  for (int period = 1; period <= 12; ++period)
    batch +=
        "Insert into gl_accMultiass(iyear,cCode,cexch_name,cDept_ID,cPerson_ID,ccus_id,csup_id,cItem_id,citem_class,"
        "cName,cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,"
        "cDefine12,cDefine13,cDefine14,cDefine15,cDefine16,iPeriod,mb,Me,mb_f,me_f,nb_s,ne_s) Values(2006 ,N'4105',"
        "Null,Null,Null,Null,Null,N'I1',N'98',Null,Null,Null,N'甲',N'2005-12-31',Null,Null,Null,Null,Null,Null,Null,"
        "Null,Null,Null,Null,Null," +
        std::to_string(period) + ",50,50,0,0,2.25,2.25)\r\n";
  EXPECT_TRUE(wasRun(batch));
}

// --- names and user-defined columns

TEST_F(MultiAuxiliaryTotalsTest, AUserDefinedColumnAloneIsCarriedWhereTheAccountHasIt) {
  account("1131", {"bcDefine3", "1"});
  account("1132");  // has it not: nothing remains
  balance("1131", "5", {"cDefine3", "甲"});
  balance("1132", "5", {"cDefine3", "甲"});
  watch();
  JzAccMultiAss();
  expectCarried({"1131 | Null | Null | Null | Null | Null | Null | Null | 甲 | 5"});
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(MultiAuxiliaryTotalsTest, AMissingUserDefinedValueIsNoReasonToSkip) {
  account("1131", customer + Columns{"bcDefine3", "1"});
  balance("1131", "5", {"ccus_id", "C1"});
  JzAccMultiAss();
  expectCarried({"1131 | Null | Null | C1 | Null | Null | Null | Null | Null | 5"});
}

TEST_F(MultiAuxiliaryTotalsTest, EachUserDefinedColumnHasItsFlag) {
  for (int i = 1; i <= 16; ++i) {
    const std::string ccode = std::to_string(1100 + i), number = std::to_string(i);
    const bool date = i == 4 || i == 6;
    account(ccode, {"bcDefine" + number, "1"});
    balance(ccode, "5", {"cDefine" + number, date ? "2005-06-30" : "甲"});
    balance(ccode, "6",
            {"cDefine" + std::to_string(i % 16 + 1), i % 16 + 1 == 4 || i % 16 + 1 == 6 ? "2005-06-30" : "乙"});
  }
  JzAccMultiAss();
  for (int i = 1; i <= 16; ++i) {
    const std::string ccode = std::to_string(1100 + i), number = std::to_string(i);
    expectRows(opening,
               "select cDefine" + number + ",me,count(*) from gl_accMultiass where ccode=N'" + ccode +
                   "' group by cDefine" + number + ",me",
               {std::string(i == 4 || i == 6 ? "2005-06-30" : "甲") + " | 5 | 12"});
  }
}

TEST_F(MultiAuxiliaryTotalsTest, NamesBelongToCustomersAndSuppliers) {
  account("1", customer);
  account("2", supplier);
  account("3", department);
  account("4", customer + department + project);
  account("5", supplier + department + project);
  const Columns everything = {"cname", "王五",    "cdept_id", "01",       "cperson_id", "P1",          "ccus_id",
                              "C1",    "csup_id", "V1",       "citem_id", "I1",         "citem_class", "98"};
  for (const char* ccode : {"1", "2", "3", "4", "5"}) balance(ccode, "5", everything);
  JzAccMultiAss();
  expectCarried({"1 | Null | Null | C1 | Null | Null | 王五 | Null | Null | 5",
                 "2 | Null | Null | Null | V1 | Null | 王五 | Null | Null | 5",
                 "3 | 01 | Null | Null | Null | Null | Null | Null | Null | 5",
                 "4 | 01 | Null | C1 | Null | I1 | 王五 | Null | Null | 5",
                 "5 | 01 | Null | Null | V1 | I1 | 王五 | Null | Null | 5"});
}

TEST_F(MultiAuxiliaryTotalsTest, ANameAloneCarriesNothingAndWithoutOneARowIsCarried) {
  account("1", customer);
  balance("1", "5", {"cname", "王五"});
  balance("1", "6", {"ccus_id", "C1"});
  JzAccMultiAss();
  expectCarried({"1 | Null | Null | C1 | Null | Null | Null | Null | Null | 6"});
}

TEST_F(MultiAuxiliaryTotalsTest, CustomersThatAreNotInUseHaveNoNames) {
  option("bCusAccount", "False");
  account("1", customer + department);
  balance("1", "5", {"cname", "王五", "ccus_id", "C1", "cdept_id", "01"});
  JzAccMultiAss();
  expectCarried({"1 | 01 | Null | Null | Null | Null | Null | Null | Null | 5"});
}

TEST_F(MultiAuxiliaryTotalsTest, TheThreefoldTypesKeepTheirNamesInAnyCase) {
  option("bCusAccount", "False");
  option("bSupAccount", "False");
  account("4", customer + department + project);
  account("5", supplier + department + project);
  const Columns row = {"cname", "王五", "cdept_id", "01", "citem_id", "I1", "citem_class", "98"};
  balance("4", "5", row + Columns{"ccus_id", "C1"});
  balance("5", "6", row + Columns{"csup_id", "V1"});
  JzAccMultiAss();
  expectCarried({"4 | 01 | Null | C1 | Null | I1 | 王五 | Null | Null | 5",
                 "5 | 01 | Null | Null | V1 | I1 | 王五 | Null | Null | 6"});
}

// --- what is left out

TEST_F(MultiAuxiliaryTotalsTest, ReportsAreThoseOfTheAuxiliaryTotals) {
  account(closing, "1", customer);
  account(closing, "2", customer);
  account(opening, "2", customer + Columns{"bend", "0"});
  account(closing, "3", customer);
  account(opening, "3", supplier);
  account("4", customer);
  for (const char* ccode : {"1", "2", "3"}) balance(ccode, "5", {"ccus_id", "C1"});
  balance("4", "5", {"ccus_id", "C2"});
  watch();
  JzAccMultiAss();
  expectNothing();
  EXPECT_EQ(notCarried(),
            (Lines{"科目|1|科目1|辅助余额：新年度没有此科目", "科目|2|科目2|辅助余额：新年度不是末级科目",
                   "科目|3|科目3|辅助余额：新旧年度的辅助核算不同", "客户|C2|旧客户|辅助余额：新年度没有此档案"}));
}

TEST_F(MultiAuxiliaryTotalsTest, AChangedUserDefinedFlagIsAnotherType) {
  for (int i = 1; i <= 16; ++i) {
    const std::string ccode = std::to_string(1100 + i);
    account(closing, ccode, customer + Columns{"bcDefine" + std::to_string(i), "1"});
    account(opening, ccode, customer);
    balance(ccode, "5", {"ccus_id", "C1"});
  }
  watch();
  JzAccMultiAss();
  expectNothing();
  ASSERT_EQ(notCarried().size(), 16u);
  EXPECT_EQ(notCarried().front(), "科目|1101|科目1101|辅助余额：新旧年度的辅助核算不同");
}

TEST_F(MultiAuxiliaryTotalsTest, NothingIsReportedWhenNobodyWatches) {
  account(closing, "1", customer);
  balance("1", "5", {"ccus_id", "C1"});
  JzAccMultiAss();
  expectNothing();
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(MultiAuxiliaryTotalsTest, TheYearIsReplacedAndOtherYearsStay) {
  account("1131", customer);
  balance("1131", "5", {"ccus_id", "C1"});
  fill(opening, "gl_accMultiass",
       {"iyear | ccode | iperiod | me | ccus_id", "2006 | 1131 | 1 | 99 | C9", "2007 | 1131 | 1 | 7 | C1"});
  JzAccMultiAss();
  expectRows(opening, "select iyear,ccus_id,me,count(*) from gl_accMultiass group by iyear,ccus_id,me order by iyear",
             {"2006 | C1 | 5 | 12", "2007 | C1 | 7 | 1"});
  expectRows(closing, "select iyear,iperiod,me from gl_accMultiass", {"2005 | 12 | 5"});
}

// --- the repair of duplicates

TEST_F(MultiAuxiliaryTotalsTest, RowsThatBecomeOneKeyAreMerged) {
  account("1131", department);
  balance("1131", "5.5", {"cdept_id", "01", "ccus_id", "C1"});
  balance("1131", "-2", {"cdept_id", "01", "ccus_id", "C2"});
  JzAccMultiAss();
  EXPECT_TRUE(merged());
  expectCarried({"1131 | 01 | Null | Null | Null | Null | Null | Null | Null | 3.5"});
  expectRows(opening, "select distinct mb,me,md,mc from gl_accMultiass", {"3.5 | 3.5 | 0 | 0"});
  EXPECT_TRUE(run.m_strLastSql.starts_with("select top 1 ccode,cexch_name"));
}

TEST_F(MultiAuxiliaryTotalsTest, AMergeSumsForeignAmountsAndQuantities) {
  account("1131", department + Columns{"cexch_name", "美元", "cmeasure", "吨"});
  balance("1131", "5", {"cdept_id", "01", "ccus_id", "C1", "cexch_name", "美元", "me_f", "1", "ne_s", "0.5"});
  balance("1131", "6", {"cdept_id", "01", "ccus_id", "C2", "cexch_name", "欧元", "me_f", "2", "ne_s", "0.25"});
  JzAccMultiAss();
  expectRows(opening,
             "select cexch_name,mb,me,mb_f,me_f,nb_s,ne_s,count(*) from gl_accMultiass group by "
             "cexch_name,mb,me,mb_f,me_f,nb_s,ne_s",
             {"美元 | 11 | 11 | 3 | 3 | 0.75 | 0.75 | 12"});
}

TEST_F(MultiAuxiliaryTotalsTest, AMergeKeepsRowsThatAreAloneAndOtherYears) {
  account("1131", department);
  account("1132", department);
  balance("1131", "5", {"cdept_id", "01", "ccus_id", "C1"});
  balance("1131", "6", {"cdept_id", "01", "ccus_id", "C2"});
  balance("1132", "7", {"cdept_id", "01"});
  fill(opening, "gl_accMultiass", {"iyear | ccode | iperiod | me", "2007 | 1131 | 1 | 1", "2007 | 1131 | 1 | 2"});
  JzAccMultiAss();
  expectCarried({"1131 | 01 | Null | Null | Null | Null | Null | Null | Null | 11",
                 "1132 | 01 | Null | Null | Null | Null | Null | Null | Null | 7"});
  expectRows(opening, "select me from gl_accMultiass where iyear=2007 order by me", {"1", "2"});
}

TEST_F(MultiAuxiliaryTotalsTest, WithoutADuplicateNothingIsMerged) {
  account("1131", customer);
  balance("1131", "5", {"ccus_id", "C1"});
  JzAccMultiAss();
  EXPECT_FALSE(merged());
  EXPECT_FALSE(wasRun("DROP TABLE #gl_accmultiass"));
  expectRows(opening, "select object_id('tempdb..#gl_accmultiass')", {"Null"});
  EXPECT_THROW(newConn().ExecuteSql("select * from #gl_accmultiass"), platform::RunTimeError);
}

TEST_F(MultiAuxiliaryTotalsTest, TheWorkTableOfAMergeStandsUntilTheConnectionEnds) {
  account("1131", department);
  balance("1131", "5", {"cdept_id", "01", "ccus_id", "C1"});
  balance("1131", "6", {"cdept_id", "01", "ccus_id", "C2"});
  JzAccMultiAss();
  EXPECT_NO_THROW(newConn().ExecuteSql("select * from #gl_accmultiass"));
  JzAccMultiAss();  // again: it is replaced, and the rows are the same
  expectCarried({"1131 | 01 | Null | Null | Null | Null | Null | Null | Null | 11"});
}

TEST_F(MultiAuxiliaryTotalsTest, AFailureGoesToTheCallerWithTheSelectionAsTheLastStatement) {
  account("1131", customer);
  balance("1131", "5", {"ccus_id", "C1"});
  failAt("Insert into gl_accMultiass");
  EXPECT_THROW(JzAccMultiAss(), platform::RunTimeError);
  EXPECT_TRUE(run.m_strLastSql.starts_with("select code.ccode,code.ccode_name,gl_accMultiass.cdept_id"));
}

}  // namespace
}  // namespace gljz::test
