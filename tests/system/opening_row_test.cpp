// Opening rows among the vouchers: which multi-auxiliary balances get one, and what it holds.

#include "balances/multi_auxiliary_totals.h"
#include "system/auxiliary_fixture.h"

namespace gljz::test {
namespace {

class OpeningRowTest : public AuxiliaryTest {
protected:
  explicit OpeningRowTest(Layout layout = Layout::separate) : AuxiliaryTest(layout) {}

  void balance(const std::string& ccode, const std::string& me, const Columns& columns) {
    closingRow("gl_accMultiass", ccode, me, columns);
  }
  void expectSides(const std::vector<std::string>& expected) {
    expectRows(opening, "select md,md_f,nd_s,mc,mc_f,nc_s from gl_accvouch where iyear=2006 order by ccode", expected);
  }
  std::string openings() { return text(opening, "select count(*) from gl_accvouch where iyear=2006"); }
  std::string periodRows() { return text(opening, "select count(*) from gl_accMultiass where iyear=2006"); }

  // Opening rows for one customer, supplier or personal balance.
  std::string openingsOfCustomer() {
    account("1131", customer);
    balance("1131", "5", {"ccus_id", "C1"});
    JzAccMultiAss();
    return openings();
  }
  std::string openingsOfSupplier() {
    account("2121", supplier);
    balance("2121", "5", {"csup_id", "V1"});
    JzAccMultiAss();
    return openings();
  }
  std::string openingsOfPerson() {
    account("1133", personal);
    balance("1133", "5", {"cdept_id", "01", "cperson_id", "P1"});
    JzAccMultiAss();
    return openings();
  }
};

TEST_F(OpeningRowTest, HoldsTheBalanceAndItsKeys) {
  option("bMultiCurrency", "True");
  account("1131", customer + Columns{"bcDefine2", "1", "bcDefine6", "1", "cexch_name", "美元", "cmeasure", "吨"});
  balance("1131", "100.25",
          {"ccus_id", "C1", "cname", "王五", "cDefine2", "乙", "cDefine6", "2005-06-30", "cexch_name", "美元", "me_f",
           "10", "ne_s", "1.5"});
  JzAccMultiAss();
  expectRows(
      opening,
      "select iyear,iperiod,inid,dbill_date,idoc,cbook,ibook,cdigest,ccode,cexch_name,md,md_f,nd_s,mc,mc_f,nc_s,"
      "cdept_id,cperson_id,ccus_id,csup_id,citem_id,citem_class,cname,cDefine1,cDefine2,cDefine3,cDefine4,"
      "cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,"
      "cDefine16 from gl_accvouch",
      {"2006 | 0 | 1 | 2005-12-31 | 0 | 赵六 | 1 | 期初余额 | 1131 | 美元 | 100.25 | 10 | 1.5 | 0 | 0 | 0 | Null | "
       "Null | C1 | Null | Null | Null | 王五 | Null | 乙 | Null | Null | Null | 2005-06-30 | Null | Null | Null | "
       "Null | Null | Null | Null | Null | Null | Null"});
  expectRows(opening, "select csign,ino_id,cbill,iflag,iflagPerson,iYPeriod from gl_accvouch",
             {"Null | Null | Null | Null | Null | Null"});
}

TEST_F(OpeningRowTest, IsOneStatement) {
  account("1131", customer);
  balance("1131", "-5.5", {"ccus_id", "C1"});
  JzAccMultiAss();
  EXPECT_TRUE(wasRun(
      "insert into gl_accvouch(iyear,iPeriod,inid,dbill_date,idoc,cbook,ibook,cDigest,cCode,cexch_name,md,md_f,nd_s,mc,"
      "mc_f,nc_s,cDept_ID,cPerson_ID,ccus_id,csup_id,cItem_id,citem_class,cName,cDefine1,cDefine2,cDefine3,cDefine4,"
      "cDefine5,cDefine6,cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,"
      "cDefine16) values(2006,0,1,'2005-12-31',0,N'赵六',1,N'期初余额',N'1131',Null,0,0,0,5.5,0,0,Null,Null,N'C1',Null,"
      "Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null,Null)"));
}

TEST_F(OpeningRowTest, TheDateIsTheDayBeforeTheYearsCalendar) {
  sql("TqSystem", "update UA_Period set dBegin='2005-12-26' where iYear=2006 and iId=1");
  option("iZBMsg", "0");  // the services read their calendar once
  EXPECT_EQ(openingsOfCustomer(), "1");
  EXPECT_EQ(text(opening, "select dbill_date from gl_accvouch"), "2005-12-25");
}

// --- sides

TEST_F(OpeningRowTest, ACreditTakesItsForeignAmountAndQuantityAlong) {
  account("1131", customer + Columns{"cexch_name", "美元", "cmeasure", "吨"});
  account("1132", customer + Columns{"cexch_name", "美元", "cmeasure", "吨"});
  balance("1131", "-100", {"ccus_id", "C1", "cexch_name", "美元", "me_f", "-10", "ne_s", "-1.5"});
  balance("1132", "-100", {"ccus_id", "C1", "cexch_name", "美元", "me_f", "10", "ne_s", "1.5"});
  JzAccMultiAss();
  expectSides({"0 | 0 | 0 | 100 | 10 | 1.5", "0 | 0 | 0 | 100 | -10 | -1.5"});
}

TEST_F(OpeningRowTest, ABalanceOfNothingIsADebit) {
  account("1131", customer + Columns{"cexch_name", "美元"});
  balance("1131", "0", {"ccus_id", "C1", "cexch_name", "美元", "me_f", "-10"});
  JzAccMultiAss();
  expectSides({"0 | -10 | 0 | 0 | 0 | 0"});
}

TEST_F(OpeningRowTest, ForeignAmountAndQuantityNeedCurrencyAndMeasureUnit) {
  account(closing, "1131", customer + Columns{"cexch_name", "美元", "cmeasure", "吨"});
  account(opening, "1131", customer);
  balance("1131", "-100", {"ccus_id", "C1", "cexch_name", "美元", "me_f", "-10", "ne_s", "-1.5"});
  JzAccMultiAss();
  expectSides({"0 | 0 | 0 | 100 | 0 | 0"});
  EXPECT_TRUE(wasRun(",Null,0,0,0,100,0,0,"));
}

// --- when it is due

TEST_F(OpeningRowTest, CustomersByBalanceOrWithoutAMode) {
  EXPECT_EQ(openingsOfCustomer(), "1");
}
TEST_F(OpeningRowTest, CustomersInModeBalance) {
  run.m_iCusMode = 1;
  EXPECT_EQ(openingsOfCustomer(), "1");
}
TEST_F(OpeningRowTest, CustomersItemByItemGetNone) {
  run.m_iCusMode = 2;
  run.m_iSupMode = run.m_iPersonMode = 1;  // of no matter
  EXPECT_EQ(openingsOfCustomer(), "0");
  EXPECT_EQ(periodRows(), "12");
}
TEST_F(OpeningRowTest, CustomersByAccountWhenItIsSelectedByBalance) {
  run.m_iCusMode = 3;
  fill(opening, "GL_YeMxSel", {"iCusSupType | iYeMxType | ccode", "1 | 1 | 1131"});
  EXPECT_EQ(openingsOfCustomer(), "1");
}
TEST_F(OpeningRowTest, CustomersByAccountWhenItIsSelectedOtherwise) {
  run.m_iCusMode = 3;
  fill(opening, "GL_YeMxSel", {"iCusSupType | iYeMxType | ccode", "1 | 2 | 1131", "2 | 1 | 1131", "1 | 1 | 1132"});
  EXPECT_EQ(openingsOfCustomer(), "0");
}

TEST_F(OpeningRowTest, SuppliersWithoutAMode) {
  EXPECT_EQ(openingsOfSupplier(), "1");
}
TEST_F(OpeningRowTest, SuppliersInModeBalance) {
  run.m_iSupMode = 1;
  EXPECT_EQ(openingsOfSupplier(), "1");
}
TEST_F(OpeningRowTest, SuppliersItemByItemGetNone) {
  run.m_iSupMode = 2;
  run.m_iCusMode = run.m_iPersonMode = 1;
  EXPECT_EQ(openingsOfSupplier(), "0");
}
TEST_F(OpeningRowTest, SuppliersByAccountWhenItIsSelectedByBalance) {
  run.m_iSupMode = 3;
  fill(opening, "GL_YeMxSel", {"iCusSupType | iYeMxType | ccode", "2 | 1 | 2121"});
  EXPECT_EQ(openingsOfSupplier(), "1");
}
TEST_F(OpeningRowTest, SuppliersByAccountWhenItIsSelectedOtherwise) {
  run.m_iSupMode = 3;
  fill(opening, "GL_YeMxSel", {"iCusSupType | iYeMxType | ccode", "2 | 2 | 2121", "1 | 1 | 2121"});
  EXPECT_EQ(openingsOfSupplier(), "0");
}

TEST_F(OpeningRowTest, PersonsOnlyInModeBalance) {
  EXPECT_EQ(openingsOfPerson(), "0");
  run.m_iPersonMode = 1;
  JzAccMultiAss();
  EXPECT_EQ(openings(), "1");
}
TEST_F(OpeningRowTest, PersonsItemByItemGetNone) {
  run.m_iPersonMode = 2;
  EXPECT_EQ(openingsOfPerson(), "0");
}
TEST_F(OpeningRowTest, PersonsWithItemsCountAsPersons) {
  run.m_iPersonMode = 1;
  account("1133", personal + project);
  balance("1133", "5", {"cdept_id", "01", "cperson_id", "P1", "citem_id", "I1", "citem_class", "98"});
  JzAccMultiAss();
  EXPECT_EQ(openings(), "1");
}
TEST_F(OpeningRowTest, CustomersThatAreNotInUseStillCount) {  // the account's flag decides, not the option
  option("bCusAccount", "False");
  account("1131", customer + department);
  balance("1131", "5", {"cdept_id", "01", "ccus_id", "C1"});
  JzAccMultiAss();
  expectRows(opening, "select cdept_id,ccus_id,md from gl_accvouch", {"01 | Null | 5"});
}
TEST_F(OpeningRowTest, OtherAccountsGetNone) {
  run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = 1;
  account("5502", department);
  account("4105", project);
  account("1001", {"bcDefine1", "1"});
  balance("5502", "5", {"cdept_id", "01"});
  balance("4105", "5", {"citem_id", "I1", "citem_class", "98"});
  balance("1001", "5", {"cDefine1", "甲"});
  JzAccMultiAss();
  EXPECT_EQ(openings(), "0");
  EXPECT_EQ(periodRows(), "36");
}

TEST_F(OpeningRowTest, EveryBalanceHasItsOwnAlsoWhenTheTotalsAreMerged) {
  account("1131", customer);
  balance("1131", "5", {"ccus_id", "C1", "csup_id", "V1"});
  balance("1131", "-6", {"ccus_id", "C1", "csup_id", "V2"});
  JzAccMultiAss();
  EXPECT_EQ(periodRows(), "12");
  expectRows(opening, "select md,mc from gl_accvouch order by md", {"0 | 6", "5 | 0"});
}

class SharedOpeningRowTest : public OpeningRowTest {
protected:
  SharedOpeningRowTest() : OpeningRowTest(Layout::shared) {}
};

TEST_F(SharedOpeningRowTest, ALaterYearOfOneDatabaseGetsPeriodRowsAndNoOpenings) {
  run.m_strCurDB = "tqdata_001_2005";  // letter case does not count
  EXPECT_EQ(openingsOfCustomer(), "0");
  EXPECT_EQ(periodRows(), "12");
}

}  // namespace
}  // namespace gljz::test
