// Auxiliary totals: which balances are carried, with which auxiliaries, and what is left out.

#include "balances/auxiliary_totals.h"

#include "dialogs/frm_jzsn.h"
#include "system/auxiliary_fixture.h"

namespace gljz::test {
namespace {

class AuxiliaryTotalsTest : public AuxiliaryTest {
protected:
  void balance(const std::string& ccode, const std::string& me, const Columns& columns) {
    closingRow("gl_accass", ccode, me, columns);
  }
  // Account, its auxiliaries, amount; and that there are twelve of each.
  void expectCarried(const std::vector<std::string>& expected) {
    std::vector<std::string> twelve;
    for (const std::string& row : expected) twelve.push_back(row + " | 12");
    expectRows(opening,
               "select ccode,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,me,count(*) from gl_accass where "
               "iyear=2006 group by ccode,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,me order by "
               "ccode,me",
               twelve);
  }
  void expectNothing() { expectCarried({}); }
  using Lines = std::vector<std::string>;
};

TEST_F(AuxiliaryTotalsTest, ABalanceBecomesTwelveEqualRows) {
  account("1131", customer);
  balance("1131", "100.25", {"ccus_id", "C1", "cendd_c", "借", "cendd_c_engl", "Dr"});
  JzAccAss();
  std::vector<std::string> expected;
  for (int period = 1; period <= 12; ++period)
    expected.push_back("2006 | 1131 | Null | Null | Null | C1 | Null | Null | Null | " + std::to_string(period) +
                       " | 借 | Dr | 借 | Dr | 100.25 | 0 | 0 | 100.25 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0");
  expectRows(opening,
             "select iyear,ccode,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,iperiod,cbegind_c,"
             "cbegind_c_engl,cendd_c,cendd_c_engl,mb,md,mc,me,mb_f,md_f,mc_f,me_f,nb_s,nd_s,nc_s,ne_s from gl_accass "
             "order by iperiod",
             expected);
}

TEST_F(AuxiliaryTotalsTest, ARowIsOneBatchOfTwelveStatements) {
  account("1131", customer);
  balance("1131", "100.25", {"ccus_id", "C1", "cendd_c", "借", "cendd_c_engl", "Dr"});
  JzAccAss();
  std::string batch;
  for (int period = 1; period <= 12; ++period)
    batch +=
        "Insert into gl_accass(iyear,cCode,cexch_name,cDept_ID,cPerson_ID,ccus_id,csup_id,cItem_id,citem_class,iPeriod,"
        "cbegind_c,cendd_c,cbegind_c_engl,cendd_c_engl,mb,Me,mb_f,me_f,nb_s,ne_s) Values(2006, "
        "N'1131',Null,Null,Null,N'C1',Null,Null,Null," +
        std::to_string(period) + ",N'借',N'借',N'Dr',N'Dr',100.25,100.25,0,0,0,0)\r\n";
  EXPECT_EQ(statements().back().text, batch);
}

TEST_F(AuxiliaryTotalsTest, EveryTypeKeepsWhatItCallsFor) {
  const Columns everything = {"cdept_id", "01", "cperson_id", "P1", "ccus_id",     "C1",
                              "csup_id",  "V1", "citem_id",   "I1", "citem_class", "98"};
  account("01", department);
  account("02", personal);
  account("03", customer);
  account("04", supplier);
  account("05", project);
  account("06", customer + department);
  account("07", supplier + department);
  account("08", customer + project);
  account("09", supplier + project);
  account("10", department + project);
  account("11", customer + department + project);
  account("12", supplier + department + project);
  account("13", personal + project);
  account("14", customer + supplier + department);
  account("15", personal + department);
  for (const char* ccode : {"01", "02", "03", "04", "05", "06", "07", "08", "09", "10", "11", "12", "13", "14", "15"})
    balance(ccode, "5", everything);
  JzAccAss();
  expectCarried({"01 | 01 | Null | Null | Null | Null | Null | 5", "02 | 01 | P1 | Null | Null | Null | Null | 5",
                 "03 | Null | Null | C1 | Null | Null | Null | 5", "04 | Null | Null | Null | V1 | Null | Null | 5",
                 "05 | Null | Null | Null | Null | I1 | 98 | 5", "06 | 01 | Null | C1 | Null | Null | Null | 5",
                 "07 | 01 | Null | Null | V1 | Null | Null | 5", "08 | Null | Null | C1 | Null | I1 | 98 | 5",
                 "09 | Null | Null | Null | V1 | I1 | 98 | 5", "10 | 01 | Null | Null | Null | I1 | 98 | 5",
                 "11 | 01 | Null | C1 | Null | I1 | 98 | 5", "12 | 01 | Null | Null | V1 | I1 | 98 | 5",
                 "13 | 01 | P1 | Null | Null | I1 | 98 | 5", "14 | 01 | Null | C1 | V1 | Null | Null | 5",
                 "15 | 01 | P1 | Null | Null | Null | Null | 5"});
}

// --- what is selected

TEST_F(AuxiliaryTotalsTest, OnlyLastLevelAccountsOfTheClosingYearAreRead) {
  account(closing, "1131", customer + Columns{"bend", "0"});
  account(opening, "1131", customer);
  balance("1131", "5", {"ccus_id", "C1"});
  watch();
  JzAccAss();
  expectNothing();
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(AuxiliaryTotalsTest, OtherPeriodsZeroRowsAndRowsWithoutAnAuxiliaryAreNotRead) {
  account("1131", customer);
  balance("1131", "0", {"ccus_id", "C1"});
  balance("1131", "5", {});
  fill(closing, "gl_accass", {"ccode | iperiod | me | ccus_id", "1131 | 11 | 5 | C1"});
  JzAccAss();
  expectNothing();
}

TEST_F(AuxiliaryTotalsTest, AForeignAmountOrAQuantityAloneIsCarried) {
  option("bMultiCurrency", "True");
  account("1131", customer + Columns{"cexch_name", "美元", "cmeasure", "吨"});
  balance("1131", "0", {"ccus_id", "C1", "cexch_name", "美元", "me_f", "3"});
  balance("1131", "0", {"ccus_id", "C1", "cexch_name", "欧元", "ne_s", "-2.5"});
  JzAccAss();
  expectRows(opening,
             "select cexch_name,mb_f,me_f,nb_s,ne_s,count(*) from gl_accass group by cexch_name,mb_f,me_f,nb_s,ne_s "
             "order by ne_s",
             {"欧元 | 0 | 0 | -2.5 | -2.5 | 12", "美元 | 3 | 3 | 0 | 0 | 12"});
}

// --- what stands in the new year

TEST_F(AuxiliaryTotalsTest, TheYearIsReplacedAndOtherYearsStay) {
  account("1131", customer);
  balance("1131", "5", {"ccus_id", "C1"});
  fill(opening, "gl_accass",
       {"iyear | ccode | iperiod | me | ccus_id", "2006 | 1131 | 1 | 99 | C9", "2007 | 1131 | 1 | 7 | C1"});
  JzAccAss();
  expectRows(opening, "select iyear,ccus_id,me,count(*) from gl_accass group by iyear,ccus_id,me order by iyear",
             {"2006 | C1 | 5 | 12", "2007 | C1 | 7 | 1"});
  expectRows(closing, "select iyear,iperiod,me from gl_accass", {"2005 | 12 | 5"});
}

TEST_F(AuxiliaryTotalsTest, TheOpeningRowsOfTheVouchersAreCleared) {
  fill(opening, "gl_accvouch",
       {"iyear | iperiod | inid | dbill_date | ccode", "2006 | 0 | 1 | 2006-01-01 | a",
        "2006 | 20 | 1 | 2006-01-01 | b", "2006 | 21 | 1 | 2006-01-01 | c", "2006 | 1 | 1 | 2006-01-01 | d",
        "2006 | 12 | 1 | 2006-01-01 | e", "2007 | 0 | 1 | 2007-01-01 | f"});
  JzAccAss();
  expectRows(opening, "select ccode from gl_accvouch order by ccode", {"d", "e", "f"});
}

TEST_F(AuxiliaryTotalsTest, ASecondRunGivesTheSameRows) {
  account("1131", customer);
  balance("1131", "5", {"ccus_id", "C1"});
  const std::string everything = "select iyear,ccode,ccus_id,iperiod,mb,me from gl_accass order by iperiod";
  JzAccAss();
  const auto first = rows(opening, everything);
  JzAccAss();
  EXPECT_EQ(first.size(), 12u);
  EXPECT_EQ(rows(opening, everything), first);
}

// --- the account

TEST_F(AuxiliaryTotalsTest, AMissingAccountIsLeftOut) {
  account(closing, "1131", customer + Columns{"ccode_name", "应收"});
  account("1132", customer);
  balance("1131", "5", {"ccus_id", "C1"});
  balance("1132", "6", {"ccus_id", "C1"});  // its sibling goes on
  watch();
  JzAccAss();
  expectCarried({"1132 | Null | Null | C1 | Null | Null | Null | 6"});
  EXPECT_EQ(notCarried(), Lines{"科目|1131|应收|辅助余额：新年度没有此科目"});
}

TEST_F(AuxiliaryTotalsTest, AnAccountThatBecameAParentIsLeftOutAndReported) {  // unlike in the account totals
  account(closing, "1131", customer + Columns{"ccode_name", "应收"});
  account(opening, "1131", customer + Columns{"bend", "0"});
  balance("1131", "5", {"ccus_id", "C1"});
  watch();
  JzAccAss();
  expectNothing();
  EXPECT_EQ(notCarried(), Lines{"科目|1131|应收|辅助余额：新年度不是末级科目"});
}

TEST_F(AuxiliaryTotalsTest, AChangedTypeLosesAllRowsOfTheAccount) {
  account(closing, "1131", customer + Columns{"ccode_name", "应收"});
  account(opening, "1131", customer + department);
  balance("1131", "5", {"ccus_id", "C1", "cdept_id", "01"});
  balance("1131", "6", {"ccus_id", "C1", "cdept_id", "01"});
  watch();
  JzAccAss();
  expectNothing();
  const std::string line = "科目|1131|应收|辅助余额：新旧年度的辅助核算不同";
  EXPECT_EQ(notCarried(), (Lines{line, line}));
}

TEST_F(AuxiliaryTotalsTest, NothingIsReportedWhenNobodyWatches) {
  account(closing, "1", customer);
  account(closing, "2", customer);
  account(opening, "2", customer + Columns{"bend", "0"});
  account(closing, "3", customer);
  account(opening, "3", supplier);
  account("4", customer);
  for (const char* ccode : {"1", "2", "3"}) balance(ccode, "5", {"ccus_id", "C1"});
  balance("4", "5", {"ccus_id", "C2"});
  JzAccAss();
  expectNothing();
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(AuxiliaryTotalsTest, TheClosingYearIsLookedUpByTheNewCode) {
  account(closing, "1131", customer);
  account(opening, "113101", customer);
  fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "1131 | 113101"});
  balance("1131", "5", {"ccus_id", "C1"});
  watch();
  JzAccAss();
  expectNothing();  // the closing year has no 113101, so the types differ
  EXPECT_EQ(notCarried(), Lines{"科目|1131|科目1131|辅助余额：新旧年度的辅助核算不同"});

  account(closing, "113101", customer);
  run.m_bManual = false;
  JzAccAss();
  expectCarried({"113101 | Null | Null | C1 | Null | Null | Null | 5"});
}

// --- currency and quantity

TEST_F(AuxiliaryTotalsTest, WithOneCurrencyTheAccountsOwnCounts) {
  account("1131", customer + Columns{"cexch_name", "美元"});
  account("1132", customer);
  balance("1131", "8", {"ccus_id", "C1", "cexch_name", "欧元", "me_f", "2"});
  balance("1132", "9", {"ccus_id", "C1", "cexch_name", "欧元", "me_f", "2"});
  JzAccAss();
  expectRows(opening, "select ccode,cexch_name,mb_f,me_f from gl_accass where iperiod=1 order by ccode",
             {"1131 | 美元 | 2 | 2", "1132 | Null | 0 | 0"});
}

TEST_F(AuxiliaryTotalsTest, WithSeveralCurrenciesTheRowsOwnCounts) {
  option("bMultiCurrency", "True");
  account("1131", customer + Columns{"cexch_name", "美元"});
  balance("1131", "8", {"ccus_id", "C1", "cexch_name", "欧元", "me_f", "2"});
  balance("1131", "9", {"ccus_id", "C1", "me_f", "2"});  // a stray foreign amount
  JzAccAss();
  expectRows(opening, "select me,cexch_name,mb_f,me_f from gl_accass where iperiod=1 order by me",
             {"8 | 欧元 | 2 | 2", "9 | 人民币 | 0 | 0"});
}

TEST_F(AuxiliaryTotalsTest, AnAccountThatLostItsMeasureUnitDropsTheQuantity) {
  account(closing, "1131", customer + Columns{"cmeasure", "吨"});
  account(opening, "1131", customer);
  balance("1131", "8", {"ccus_id", "C1", "ne_s", "2"});
  JzAccAss();
  expectRows(opening, "select distinct me,nb_s,ne_s from gl_accass", {"8 | 0 | 0"});
}

TEST_F(AuxiliaryTotalsTest, AMissingDirectionWordStaysNull) {
  account("1131", customer);
  balance("1131", "8", {"ccus_id", "C1"});
  JzAccAss();
  expectRows(opening, "select distinct cbegind_c,cendd_c,cbegind_c_engl,cendd_c_engl from gl_accass",
             {"Null | Null | Null | Null"});
}

// --- rows that lack what their account calls for are skipped without a report

struct Skipped {
  const char* name;
  Columns flags, row;
};
void PrintTo(const Skipped& s, std::ostream* out) {
  *out << s.name;
}

class SkippedRowTest : public AuxiliaryTotalsTest, public ::testing::WithParamInterface<Skipped> {};

TEST_P(SkippedRowTest, IsNeitherCarriedNorReported) {
  account("1131", GetParam().flags);
  balance("1131", "5", GetParam().row);
  watch();
  JzAccAss();
  expectNothing();
  EXPECT_TRUE(notCarried().empty());
}

INSTANTIATE_TEST_SUITE_P(Rows, SkippedRowTest,
                         ::testing::Values(Skipped{"PersonWithoutDept", personal, {"cperson_id", "P1"}},
                                           Skipped{"PersonWithoutPerson", personal, {"cdept_id", "01"}},
                                           Skipped{"CustomerWithoutCustomer", customer, {"csup_id", "V1"}},
                                           Skipped{"SupplierWithoutSupplier", supplier, {"ccus_id", "C1"}},
                                           Skipped{"DepartmentWithoutDept", department, {"ccus_id", "C1"}},
                                           Skipped{"ItemWithoutItem", project, {"citem_class", "98"}},
                                           Skipped{"ItemWithoutClass", project, {"citem_id", "I1"}},
                                           Skipped{"PersonItemWithoutDept",
                                                   personal + project,
                                                   {"cperson_id", "P1", "citem_id", "I1", "citem_class", "98"}},
                                           Skipped{"PersonItemWithoutPerson",
                                                   personal + project,
                                                   {"cdept_id", "01", "citem_id", "I1", "citem_class", "98"}},
                                           Skipped{"PersonItemWithoutItem",
                                                   personal + project,
                                                   {"cdept_id", "01", "cperson_id", "P1", "citem_class", "98"}},
                                           Skipped{"CusDeptItemWithoutCus",
                                                   customer + department + project,
                                                   {"cdept_id", "01", "citem_id", "I1", "citem_class", "98"}},
                                           Skipped{"SupDeptItemWithoutSup",
                                                   supplier + department + project,
                                                   {"cdept_id", "01", "citem_id", "I1", "citem_class", "98"}},
                                           Skipped{"NoAuxiliaryAccount", {}, {"ccus_id", "C1"}}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(AuxiliaryTotalsTest, CustomersThatAreNotInUseAreNotAskedFor) {
  option("bCusAccount", "False");
  option("bSupAccount", "False");
  account("1131", customer);
  account("1132", customer + department);
  account("2121", supplier);
  balance("1131", "5", {"ccus_id", "C1"});  // nothing else is set: skipped
  balance("1132", "6", {"ccus_id", "C1", "cdept_id", "01"});
  balance("2121", "7", {"csup_id", "V1"});
  JzAccAss();
  expectCarried({"1132 | 01 | Null | Null | Null | Null | Null | 6"});
}

TEST_F(AuxiliaryTotalsTest, CustomersOfTheThreefoldTypeAreTakenInAnyCase) {
  option("bCusAccount", "False");
  account("1131", customer + department + project);
  balance("1131", "5", {"ccus_id", "C1", "cdept_id", "01", "citem_id", "I1", "citem_class", "98"});
  JzAccAss();
  expectCarried({"1131 | 01 | Null | C1 | Null | I1 | 98 | 5"});
}

TEST_F(AuxiliaryTotalsTest, SuppliersOfTheThreefoldTypeAreTakenInAnyCase) {
  option("bSupAccount", "False");
  account("2121", supplier + department + project);
  balance("2121", "5", {"csup_id", "V1", "cdept_id", "01", "citem_id", "I1", "citem_class", "98"});
  JzAccAss();
  expectCarried({"2121 | 01 | Null | Null | V1 | I1 | 98 | 5"});
}

TEST_F(AuxiliaryTotalsTest, TheThreefoldTypesAskForTheirPartnerInAnyCase) {
  option("bCusAccount", "False");
  option("bSupAccount", "False");
  account("1131", customer + department + project);
  account("2121", supplier + department + project);
  const Columns withoutPartner = {"cdept_id", "01", "citem_id", "I1", "citem_class", "98"};
  balance("1131", "5", withoutPartner);
  balance("2121", "6", withoutPartner);
  watch();
  JzAccAss();
  expectNothing();
  EXPECT_TRUE(notCarried().empty());
}

// --- references that the new year lacks

struct Missing {
  const char* name;
  Columns flags, row;
  const char* line;
};
void PrintTo(const Missing& m, std::ostream* out) {
  *out << m.name;
}

class MissingReferenceTest : public AuxiliaryTotalsTest, public ::testing::WithParamInterface<Missing> {};

TEST_P(MissingReferenceTest, IsReportedWithTheClosingYearsNameWhenSomebodyWatches) {
  account("1131", GetParam().flags);
  balance("1131", "5", GetParam().row);
  watch();
  JzAccAss();
  expectNothing();
  EXPECT_EQ(notCarried(), Lines{GetParam().line});
}

TEST_P(MissingReferenceTest, IsDroppedAndNoNameIsReadOtherwise) {
  account("1131", GetParam().flags);
  balance("1131", "5", GetParam().row);
  JzAccAss();
  expectNothing();
  EXPECT_TRUE(notCarried().empty());
  for (const SpiedStatement& s : statements()) {
    if (s.database != closing.database) continue;
    EXPECT_TRUE(s.text.find("gl_accass") != std::string::npos || s.text.starts_with("select * from code")) << s.text;
  }
}

INSTANTIATE_TEST_SUITE_P(
    References, MissingReferenceTest,
    ::testing::Values(
        Missing{"Department", department, {"cdept_id", "02"}, "部门|02|旧部门|辅助余额：新年度没有此档案"},
        Missing{"Person", personal, {"cdept_id", "01", "cperson_id", "P2"}, "个人|P2|旧人|辅助余额：新年度没有此档案"},
        Missing{"Customer", customer, {"ccus_id", "C2"}, "客户|C2|旧客户|辅助余额：新年度没有此档案"},
        Missing{"Supplier", supplier, {"csup_id", "V2"}, "供应商|V2|旧供应商|辅助余额：新年度没有此供应商"},
        Missing{"Item", project, {"citem_id", "I2", "citem_class", "98"}, "项目|I2|旧项目|辅助余额：新年度没有此项目"},
        Missing{"DepartmentBeforePerson",
                personal,
                {"cdept_id", "02", "cperson_id", "P2"},
                "部门|02|旧部门|辅助余额：新年度没有此档案"},
        Missing{"CustomerBehindDepartment",
                customer + department,
                {"cdept_id", "01", "ccus_id", "C2"},
                "客户|C2|旧客户|辅助余额：新年度没有此档案"},
        Missing{"UnknownToTheClosingYearToo", customer, {"ccus_id", "C9"}, "客户|C9||辅助余额：新年度没有此档案"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(AuxiliaryTotalsTest, SiblingsOfADroppedRowGoOn) {
  account("1131", customer);
  balance("1131", "5", {"ccus_id", "C2"});
  balance("1131", "6", {"ccus_id", "C1"});
  JzAccAss();
  expectCarried({"1131 | Null | Null | C1 | Null | Null | Null | 6"});
}

// --- the run around it

TEST_F(AuxiliaryTotalsTest, TheProgressFormNamesEachAccount) {
  account("1131", customer);
  balance("1131", "5", {"ccus_id", "C1"});
  watch();
  JzAccAss();
  EXPECT_EQ(frmJZSN().Label3(), "正在结转辅助总账 1131");
}

TEST_F(AuxiliaryTotalsTest, AFailureGoesToTheCallerWithTheSelectionAsTheLastStatement) {
  account("1131", customer);
  balance("1131", "5", {"ccus_id", "C1"});
  failAt("Insert into gl_accass");
  EXPECT_THROW(JzAccAss(), platform::RunTimeError);
  EXPECT_TRUE(run.m_strLastSql.starts_with("select code.ccode,code.ccode_name,gl_accass.cdept_id"));
}

class SharedAuxiliaryTotalsTest : public AuxiliaryTest {
protected:
  SharedAuxiliaryTotalsTest() : AuxiliaryTest(Layout::shared) {}
};

TEST_F(SharedAuxiliaryTotalsTest, OneDatabaseIsReadAndWritten) {
  account("1131", customer);
  closingRow("gl_accass", "1131", "5", {"ccus_id", "C1"});
  JzAccAss();
  expectRows(opening, "select iyear,ccus_id,me,count(*) from gl_accass group by iyear,ccus_id,me order by iyear",
             {"2005 | C1 | 5 | 1", "2006 | C1 | 5 | 12"});
}

}  // namespace
}  // namespace gljz::test
