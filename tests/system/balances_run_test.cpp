// Whole runs over the balances: a small company with every kind of auxiliary, and the rows of the new year in full.

#include "system/auxiliary_fixture.h"

namespace gljz::test {
namespace {

class BalancesRunTest : public AuxiliaryTest {
protected:
  explicit BalancesRunTest(Layout layout = Layout::separate) : AuxiliaryTest(layout) {
    account("1001");                                                       // cash
    account("1131", customer + Columns{"bcDefine1", "1"});                 // receivables
    account("1133", personal);                                             // advances to persons
    account("2121", supplier + department);                                // payables
    account("4105", project + Columns{"cmeasure", "吨"});                  // projects
    account("5502", department + Columns{"bcDefine4", "1"});               // expenses
    account("1151", customer + department + project);                      // prepaid
    account("1002", customer + Columns{"cexch_name", "美元"});             // foreign receivables
    account(closing, "5503", department + Columns{"ccode_name", "费用"});  // becomes personal
    account(opening, "5503", personal);
    account(closing, "1221", customer + Columns{"ccode_name", "旧应收"});  // is not there any more
    account(closing, "1132", customer);                                    // is renumbered
    account(closing, "113201", customer);
    account(opening, "113201", customer);
    fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "1132 | 113201"});
    // Vouchers of the closing year show that persons, customers and suppliers are in use; nothing is open.
    fill(closing, "gl_accvouch",
         {"iperiod | inid | dbill_date | ccode | ccus_id | csup_id | cperson_id | iflagPerson | ibook",
          "1 | 1 | 2005-01-05 | 1001 | C1 | V1 | P1 | 1 | 1"});
    balances();
  }

  // The balances at the end of the closing year.
  void balances() {
    fill(closing, "gl_accsum",
         {"ccode | iperiod | cendd_c | cendd_c_engl | me", "1001 | 12 | 借 | Dr | 10", "5503 | 12 | 借 | Dr | 9"});
    fill(closing, "gl_accass",
         {"ccode | cexch_name | cdept_id | cperson_id | ccus_id | csup_id | citem_id | citem_class | iperiod | cendd_c "
          "| "
          "cendd_c_engl | me | me_f | ne_s",
          "1131 | Null | Null | Null | C1   | Null | Null | Null | 12 | 借 | Dr | 100.25 | 0  | 0",
          "1131 | Null | Null | Null | C2   | Null | Null | Null | 12 | 借 | Dr | 7      | 0  | 0",
          "1133 | Null | 01   | P1   | Null | Null | Null | Null | 12 | 借 | Dr | 20     | 0  | 0",
          "2121 | Null | 01   | Null | Null | V1   | Null | Null | 12 | 贷 | Cr | 30     | 0  | 0",
          "4105 | Null | Null | Null | Null | Null | I1   | 98   | 12 | 借 | Dr | 50     | 0  | 2.5",
          "5502 | Null | 01   | Null | Null | Null | Null | Null | 12 | 借 | Dr | 60     | 0  | 0",
          "1151 | Null | 01   | Null | C1   | Null | I1   | 98   | 12 | 借 | Dr | 70     | 0  | 0",
          "1002 | 美元 | Null | Null | C1   | Null | Null | Null | 12 | 借 | Dr | 80     | 10 | 0",
          "1002 | 欧元 | Null | Null | C1   | Null | Null | Null | 12 | 借 | Dr | 90     | 9  | 0",
          "5503 | Null | 01   | Null | Null | Null | Null | Null | 12 | 借 | Dr | 9      | 0  | 0",
          "1221 | Null | Null | Null | C1   | Null | Null | Null | 12 | 借 | Dr | 3      | 0  | 0",
          "1132 | Null | Null | Null | C1   | Null | Null | Null | 12 | 借 | Dr | 4      | 0  | 0"});
    fill(
        closing, "gl_accMultiass",
        {"ccode | cexch_name | cdept_id | cperson_id | ccus_id | csup_id | citem_id | citem_class | cname | cDefine1 | "
         "cDefine4 | iperiod | me | me_f | ne_s",
         "1131 | Null | Null | Null | C1   | Null | Null | Null | 王五 | 甲   | Null       | 12 | 60.25 | 0  | 0",
         "1131 | Null | Null | Null | C1   | Null | Null | Null | 王五 | 乙   | Null       | 12 | 40    | 0  | 0",
         "1131 | Null | Null | Null | C2   | Null | Null | Null | Null | 甲   | Null       | 12 | 7     | 0  | 0",
         "1133 | Null | 01   | P1   | Null | Null | Null | Null | Null | Null | Null       | 12 | 20    | 0  | 0",
         "2121 | Null | 01   | Null | Null | V1   | Null | Null | 陈七 | Null | Null       | 12 | -30   | 0  | 0",
         "4105 | Null | Null | Null | Null | Null | I1   | 98   | Null | Null | Null       | 12 | 50    | 0  | 2.5",
         "5502 | Null | 01   | Null | C1   | Null | Null | Null | Null | Null | 2005-06-30 | 12 | 35    | 0  | 0",
         "5502 | Null | 01   | Null | C2   | Null | Null | Null | Null | Null | 2005-06-30 | 12 | 25    | 0  | 0",
         "1002 | 美元 | Null | Null | C1   | Null | Null | Null | Null | Null | Null       | 12 | 80    | 10 | 0"});
  }

  void expectAuxiliaryTotals(const std::vector<std::string>& expected) {
    const std::string columns =
        "ccode,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cbegind_c,cbegind_c_engl,cendd_c,"
        "cendd_c_engl,mb,me,mb_f,me_f,nb_s,ne_s";
    expectTwelve("gl_accass", columns, expected);
  }
  void expectMultiAuxiliaryTotals(const std::vector<std::string>& expected) {
    expectTwelve("gl_accMultiass",
                 "ccode,cexch_name,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cname,cDefine1,cDefine4,mb,"
                 "me,mb_f,me_f,nb_s,ne_s",
                 expected);
  }
  void expectTwelve(const std::string& table, const std::string& columns, const std::vector<std::string>& expected) {
    std::vector<std::string> twelve;
    for (const std::string& row : expected) twelve.push_back(row + " | 1 | 12 | 12");
    expectRows(opening,
               "select " + columns + ",min(iperiod),max(iperiod),count(*) from " + table +
                   " where iyear=2006 group by " + columns + " order by ccode,me",
               twelve);
  }
};

TEST_F(BalancesRunTest, EveryKindOfAuxiliaryIsCarried) {
  const Outcome outcome = transfer();
  ASSERT_TRUE(outcome.success) << outcome.errMsg;
  expectAuxiliaryTotals({
      "1002   | 美元 | Null | Null | C1   | Null | Null | Null | 借 | Dr | 借 | Dr | 80     | 80     | 10 | 10 | 0   | "
      "0",
      "1002   | 美元 | Null | Null | C1   | Null | Null | Null | 借 | Dr | 借 | Dr | 90     | 90     | 9  | 9  | 0   | "
      "0",
      "1131   | Null | Null | Null | C1   | Null | Null | Null | 借 | Dr | 借 | Dr | 100.25 | 100.25 | 0  | 0  | 0   | "
      "0",
      "113201 | Null | Null | Null | C1   | Null | Null | Null | 借 | Dr | 借 | Dr | 4      | 4      | 0  | 0  | 0   | "
      "0",
      "1133   | Null | 01   | P1   | Null | Null | Null | Null | 借 | Dr | 借 | Dr | 20     | 20     | 0  | 0  | 0   | "
      "0",
      "1151   | Null | 01   | Null | C1   | Null | I1   | 98   | 借 | Dr | 借 | Dr | 70     | 70     | 0  | 0  | 0   | "
      "0",
      "2121   | Null | 01   | Null | Null | V1   | Null | Null | 贷 | Cr | 贷 | Cr | 30     | 30     | 0  | 0  | 0   | "
      "0",
      "4105   | Null | Null | Null | Null | Null | I1   | 98   | 借 | Dr | 借 | Dr | 50     | 50     | 0  | 0  | 2.5 | "
      "2.5",
      "5502   | Null | 01   | Null | Null | Null | Null | Null | 借 | Dr | 借 | Dr | 60     | 60     | 0  | 0  | 0   | "
      "0",
  });
  expectMultiAuxiliaryTotals({
      "1002 | 美元 | Null | Null | C1   | Null | Null | Null | Null | Null | Null       | 80    | 80    | 10 | 10 | 0  "
      " | 0",
      "1131 | Null | Null | Null | C1   | Null | Null | Null | 王五 | 乙   | Null       | 40    | 40    | 0  | 0  | 0  "
      " | 0",
      "1131 | Null | Null | Null | C1   | Null | Null | Null | 王五 | 甲   | Null       | 60.25 | 60.25 | 0  | 0  | 0  "
      " | 0",
      "1133 | Null | 01   | P1   | Null | Null | Null | Null | Null | Null | Null       | 20    | 20    | 0  | 0  | 0  "
      " | 0",
      "2121 | Null | 01   | Null | Null | V1   | Null | Null | 陈七 | Null | Null       | -30   | -30   | 0  | 0  | 0  "
      " | 0",
      "4105 | Null | Null | Null | Null | Null | I1   | 98   | Null | Null | Null       | 50    | 50    | 0  | 0  | "
      "2.5 | 2.5",
      "5502 | Null | 01   | Null | Null | Null | Null | Null | Null | Null | 2005-06-30 | 60    | 60    | 0  | 0  | 0  "
      " | 0",
  });
  // A row for every balance of a partner or a person, whatever has been merged; project and expense have none.
  expectRows(opening,
             "select iperiod,inid,dbill_date,cbook,ibook,cdigest,ccode,cexch_name,md,md_f,nd_s,mc,mc_f,nc_s,cdept_id,"
             "cperson_id,ccus_id,csup_id,cname,cDefine1 from gl_accvouch where iyear=2006 order by ccode,md",
             {
                 "0 | 1 | 2005-12-31 | 赵六 | 1 | 期初余额 | 1002 | 美元 | 80    | 10 | 0 | 0  | 0 | 0 | Null | Null | "
                 "C1   | Null | Null | Null",
                 "0 | 1 | 2005-12-31 | 赵六 | 1 | 期初余额 | 1131 | Null | 40    | 0  | 0 | 0  | 0 | 0 | Null | Null | "
                 "C1   | Null | 王五 | 乙",
                 "0 | 1 | 2005-12-31 | 赵六 | 1 | 期初余额 | 1131 | Null | 60.25 | 0  | 0 | 0  | 0 | 0 | Null | Null | "
                 "C1   | Null | 王五 | 甲",
                 "0 | 1 | 2005-12-31 | 赵六 | 1 | 期初余额 | 1133 | Null | 20    | 0  | 0 | 0  | 0 | 0 | 01   | P1   | "
                 "Null | Null | Null | Null",
                 "0 | 1 | 2005-12-31 | 赵六 | 1 | 期初余额 | 2121 | Null | 0     | 0  | 0 | 30 | 0 | 0 | 01   | Null | "
                 "Null | V1   | 陈七 | Null",
             });
  // The expense's only user-defined value is a date: it has no row.
  expectRows(opening,
             "select iyear,ccode,cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cdefine1,cdefine4,cDirec,mb,"
             "mb_f,nb_s from GL_QcUserDef order by ccode,mb",
             {"2006 | 1131 | Null | Null | C1 | Null | Null | Null | 乙 | Null | 借 | 40    | 0 | 0",
              "2006 | 1131 | Null | Null | C1 | Null | Null | Null | 甲 | Null | 借 | 60.25 | 0 | 0"});
}

TEST_F(BalancesRunTest, AChangedTypeKeepsTheTotalAndLosesTheAuxiliaries) {
  ASSERT_TRUE(transfer().success);
  expectRows(opening, "select ccode,me,count(*) from gl_accsum where iyear=2006 group by ccode,me order by ccode",
             {"1001 | 10 | 12", "5503 | 9 | 12"});
  expectRows(opening, "select ccode from gl_accass where ccode='5503'", {});
}

TEST_F(BalancesRunTest, SeveralCurrenciesStayApart) {
  option("bMultiCurrency", "True");
  ASSERT_TRUE(transfer().success);
  expectRows(opening,
             "select cexch_name,me,me_f from gl_accass where iyear=2006 and iperiod=1 and ccode='1002' order by me",
             {"美元 | 80 | 10", "欧元 | 90 | 9"});
}

TEST_F(BalancesRunTest, ASecondRunGivesTheSameRows) {
  const auto everything = [&] {
    std::vector<std::string> all;
    for (const std::string table : {"gl_accsum", "gl_accass", "gl_accMultiass", "gl_accvouch", "GL_QcUserDef"}) {
      std::string columns;
      for (const std::string& column :
           rows(opening, "select name from syscolumns where id=object_id(N'" + table + "') order by colid"))
        if (column != "i_id") columns += (columns.empty() ? "" : ",") + column;
      for (const std::string& row : rows(opening, "select " + columns + " from " + table)) all.push_back(row);
    }
    return all;
  };
  ASSERT_TRUE(transfer().success);
  const auto first = everything();
  ASSERT_TRUE(transfer().success);
  EXPECT_EQ(everything(), first);
}

class SharedBalancesRunTest : public BalancesRunTest {
protected:
  SharedBalancesRunTest() : BalancesRunTest(Layout::shared) {}
};

TEST_F(SharedBalancesRunTest, ALaterYearOfOneDatabaseHasTotalsAndNoOpeningRows) {
  fill(opening, "GL_CodeMatch", {"iyear | cOldCode | cNewCode", "2007 | 1131 | 1132"});  // of no matter
  ASSERT_TRUE(transfer().success);
  EXPECT_EQ(text(opening, "select count(*) from gl_accvouch where iyear=2006"), "0");
  EXPECT_EQ(text(opening, "select count(*) from gl_accvouch where iyear=2005"), "1");
  // The references of the closing year are the new year's, so nothing is left out for them: ten rows, C2 included.
  EXPECT_EQ(text(opening, "select count(*) from gl_accass where iyear=2006 and iperiod=1"), "10");
  EXPECT_EQ(text(opening, "select count(*) from gl_accass where iyear=2005"), "12");
  EXPECT_EQ(text(opening, "select count(*) from GL_QcUserDef where iyear=2006"), "3");
}

}  // namespace
}  // namespace gljz::test
