// Opening balances by user-defined column, from the new year's own multi-auxiliary totals.

#include "balances/user_defined_openings.h"

#include "dialogs/frm_jzsn.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

class UserDefinedOpeningsTest : public LedgerTest {
protected:
  void expectOpenings(const std::vector<std::string>& expected) {
    expectRows(opening,
               "select ccode,cdefine1,cDirec,mb,mb_f,nb_s from GL_QcUserDef where iyear=2006 order by ccode,mb",
               expected);
  }
};

TEST_F(UserDefinedOpeningsTest, EachCombinationBecomesARow) {
  fill(opening, "gl_accMultiass",
       {"ccode | cdept_id | cperson_id | ccus_id | csup_id | citem_id | citem_class | cname | cDefine1 | cDefine4 | "
        "cDefine16 | iperiod | mb | mb_f | nb_s",
        "1131 | 01 | P1 | C1 | V1 | I1 | 98 | 王五 | 甲 | 2005-06-30 | 末 | 1 | 10.5 | 2 | 3.25",
        "1131 | 01 | P1 | C1 | V1 | I1 | 98 | 赵六 | 甲 | 2005-06-30 | 末 | 1 | 1 | 1 | 1",
        "1132 | Null | Null | Null | Null | Null | Null | Null | Null | Null | 末 | 1 | 7 | 0 | 0"});
  JzQcUserDef();
  const std::string none = " | Null";
  expectRows(
      opening,
      "select iyear,ccode,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cdefine1,cdefine2,cdefine3,"
      "cdefine4,cdefine5,cdefine6,cdefine7,cdefine8,cdefine9,cdefine10,cdefine11,cdefine12,cdefine13,cdefine14,"
      "cdefine15,cdefine16,cDirec,mb,mb_f,nb_s from GL_QcUserDef order by ccode",
      {"2006 | 1131 | 01 | P1 | C1 | V1 | I1 | 98 | 甲 | Null | Null | 2005-06-30 | Null | Null | Null | Null | "
       "Null | Null | Null | Null | Null | Null | Null | 末 | 借 | 11.5 | 3 | 4.25",
       "2006 | 1132 | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | Null | "
       "Null | Null | Null | Null | Null | Null | Null | Null | 末 | 借 | 7 | 0 | 0"});
}

TEST_F(UserDefinedOpeningsTest, ABalancedAmountReadsAsADebit) {
  fill(opening, "gl_accMultiass", {"ccode | cDefine1 | iperiod | mb | nb_s", "1131 | 甲 | 1 | 0 | -3"});
  JzQcUserDef();
  expectOpenings({"1131 | 甲 | 借 | 0 | 0 | 3"});
}

TEST_F(UserDefinedOpeningsTest, ANegativeAmountIsACredit) {
  fill(opening, "gl_accMultiass", {"ccode | cDefine1 | iperiod | mb | mb_f", "1131 | 甲 | 1 | -5.00 | -2"});
  JzQcUserDef();
  expectOpenings({"1131 | 甲 | 贷 | 5 | 2 | 0"});
}

TEST_F(UserDefinedOpeningsTest, RowsThatCancelOutStandAsADebitOfNothing) {
  fill(opening, "gl_accMultiass",
       {"ccode | cname | cDefine1 | iperiod | mb", "1131 | a | 甲 | 1 | 5", "1131 | b | 甲 | 1 | -5"});
  JzQcUserDef();
  expectOpenings({"1131 | 甲 | 借 | 0 | 0 | 0"});
}

TEST_F(UserDefinedOpeningsTest, TheDirectionIsTheAmounts) {  // foreign amount and quantity have none of their own
  fill(opening, "gl_accMultiass", {"ccode | cDefine1 | iperiod | mb | mb_f | nb_s", "1131 | 甲 | 1 | 5 | -2 | -1"});
  JzQcUserDef();
  expectOpenings({"1131 | 甲 | 借 | 5 | 2 | 1"});
}

TEST_F(UserDefinedOpeningsTest, ADateAloneMakesNoRow) {
  fill(opening, "gl_accMultiass",
       {"ccode | cDefine4 | cDefine6 | iperiod | mb", "1131 | Null | 2005-01-01 | 1 | 5",
        "1132 | 2005-01-01 | Null | 1 | 5", "1133 | 2005-01-01 | 2005-01-01 | 1 | 5"});
  JzQcUserDef();
  expectOpenings({});
}

TEST_F(UserDefinedOpeningsTest, EveryOtherColumnAloneMakesARow) {
  std::vector<std::string> expected;
  for (int i = 1; i <= 16; ++i) {
    if (i == 4 || i == 6) continue;
    const std::string ccode = std::to_string(1100 + i);
    fill(opening, "gl_accMultiass", {"ccode | iperiod | mb | cDefine" + std::to_string(i), ccode + " | 1 | 5 | 甲"});
    expected.push_back(ccode + (i == 1 ? " | 甲" : " | Null") + " | 借 | 5 | 0 | 0");
  }
  JzQcUserDef();
  expectOpenings(expected);
}

TEST_F(UserDefinedOpeningsTest, RowsWithoutAnAmountOrOfOtherPeriodsDoNotCount) {
  fill(opening, "gl_accMultiass",
       {"ccode | cDefine1 | iperiod | mb", "1131 | 甲 | 1 | 0", "1131 | 甲 | 2 | 5", "1131 | Null | 1 | 5"});
  JzQcUserDef();
  expectOpenings({});
}

TEST_F(UserDefinedOpeningsTest, TheYearIsReplacedAndOtherYearsStay) {
  fill(opening, "GL_QcUserDef", {"iyear | ccode | cdefine1 | mb", "2006 | 1131 | 甲 | 9", "2007 | 1131 | 甲 | 8"});
  fill(opening, "gl_accMultiass",
       {"iyear | ccode | cDefine1 | iperiod | mb", "2007 | 1131 | 甲 | 1 | 5", "2005 | 1131 | 甲 | 1 | 5"});
  JzQcUserDef();
  expectRows(opening, "select iyear,mb from GL_QcUserDef", {"2007 | 8"});
}

TEST_F(UserDefinedOpeningsTest, ASecondRunGivesTheSameRows) {
  fill(opening, "gl_accMultiass", {"ccode | cDefine1 | iperiod | mb", "1131 | 甲 | 1 | 5", "1131 | 乙 | 1 | -6"});
  JzQcUserDef();
  JzQcUserDef();
  expectOpenings({"1131 | 甲 | 借 | 5 | 0 | 0", "1131 | 乙 | 贷 | 6 | 0 | 0"});
}

TEST_F(UserDefinedOpeningsTest, TheClosingYearIsNotRead) {
  fill(opening, "gl_accMultiass", {"ccode | cDefine1 | iperiod | mb", "1131 | 甲 | 1 | 5"});
  run.m_bManual = true;
  JzQcUserDef();
  for (const SpiedStatement& s : statements()) EXPECT_EQ(s.database, opening.database);
  EXPECT_EQ(frmJZSN().Label3(), "正在结转自定义项期初余额 1131");
  EXPECT_TRUE(run.m_strLastSql.starts_with("Select cCode,cDept_ID,cPerson_ID,cCus_ID"));
}

}  // namespace
}  // namespace gljz::test
