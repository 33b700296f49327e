// Rules of auxiliaries and opening rows that no account of a chart comes to, asked directly; and opening rows in the
// first year of a database.

#include "balances/multi_auxiliary_totals.h"
#include "balances/opening_row.h"
#include "system/auxiliary_fixture.h"

namespace gljz::test {
namespace {

using platform::CodeRecord;
using platform::Value;

class OpeningRowRulesTest : public AuxiliaryTest {
protected:
  explicit OpeningRowRulesTest(Layout layout = Layout::separate) : AuxiliaryTest(layout) {}

  // What is picked from a balance that names these; "no" when one that is called for is missing.
  std::string picked(const CodeRecord& account, const std::string& dept, const std::string& person,
                     const std::string& item) {
    auto balance = lastConn().OpenRecordset("select " + dept + " as cdept_id," + person + " as cperson_id," + item +
                                                " as citem_id," + (item == "null" ? "null" : "N'98'") +
                                                " as citem_class,null as ccus_id,null as csup_id",
                                            2);
    Auxiliaries auxiliaries;
    if (!pickAuxiliaries(*balance, account, auxiliaries)) return "no";
    return auxiliaryValues(auxiliaries);
  }
};

TEST_F(OpeningRowRulesTest, APersonalAccountWithAnItemClassGoesOnWithoutAPerson) {
  CodeRecord account;
  account.bPersonOnly = true;
  account.cItemClass = "98";
  EXPECT_EQ(picked(account, "null", "N'P1'", "N'I1'"), "Null,Null,Null,Null,N'I1',N'98',");
  EXPECT_EQ(picked(account, "N'01'", "null", "N'I1'"), "Null,Null,Null,Null,N'I1',N'98',");  // both stay out
  EXPECT_EQ(picked(account, "N'01'", "N'P1'", "N'I1'"), "N'01',N'P1',Null,Null,N'I1',N'98',");
}

TEST_F(OpeningRowRulesTest, APersonStandsInForTheItem) {
  CodeRecord account;
  account.bPersonOnly = true;
  account.cItemClass = "98";
  EXPECT_EQ(picked(account, "N'01'", "N'P1'", "null"), "N'01',N'P1',Null,Null,Null,Null,");
  EXPECT_EQ(picked(account, "N'01'", "null", "null"), "no");
  account.bPersonOnly = false;  // the balance's person does not count when it is not taken
  EXPECT_EQ(picked(account, "N'01'", "N'P1'", "null"), "no");
}

TEST_F(OpeningRowRulesTest, APersonalBalanceWithoutAPersonGetsNone) {
  run.m_iPersonMode = 1;
  TargetAccount target;
  target.newCode = "1133";
  target.newRec.bPersonOnly = true;
  Auxiliaries auxiliaries;
  EXPECT_FALSE(openingRowIsDue(target, auxiliaries));
  auxiliaries.dept = Value("01");
  EXPECT_FALSE(openingRowIsDue(target, auxiliaries));
  auxiliaries.person = Value("P1");
  EXPECT_TRUE(openingRowIsDue(target, auxiliaries));
}

TEST_F(OpeningRowRulesTest, NorOneOfACustomerOnAPersonalAccount) {
  TargetAccount target;
  target.newCode = "1133";
  target.newRec.bPersonOnly = target.newRec.bCus = true;
  Auxiliaries auxiliaries;
  auxiliaries.cus = Value("C1");
  EXPECT_FALSE(openingRowIsDue(target, auxiliaries));
  auxiliaries.person = Value("P1");
  EXPECT_TRUE(openingRowIsDue(target, auxiliaries));
}

TEST_F(OpeningRowRulesTest, PersonsWithItemsNeedNoPerson) {
  run.m_iPersonMode = 1;
  TargetAccount target;
  target.newCode = "1133";
  target.newRec.cPersonItemClass = "98";
  EXPECT_TRUE(openingRowIsDue(target, Auxiliaries{}));
  run.m_iPersonMode = 2;
  EXPECT_FALSE(openingRowIsDue(target, Auxiliaries{}));
}

class SharedOpeningRowRulesTest : public OpeningRowRulesTest {
protected:
  SharedOpeningRowRulesTest() : OpeningRowRulesTest(Layout::shared) {}
};

// Two spans of years can lie in one database; the second one begins anew.
TEST_F(SharedOpeningRowRulesTest, TheFirstYearOfASpanTakesOpeningRowsInOneDatabaseToo) {
  sql("TqSystem", "update UA_AccountDatabase set iEndYear=2005");
  sql("TqSystem",
      "insert into UA_AccountDatabase(cAcc_Id, iBeginYear, iEndYear, cDatabase) values(N'001', 2006, 2006, N'" +
          opening.database + "')");
  option("iZBMsg", "0");  // the services read their year span once
  ASSERT_EQ(pubCls().iStartYear(), 2006);
  account("1131", customer);
  closingRow("gl_accMultiass", "1131", "5", {"ccus_id", "C1"});
  JzAccMultiAss();
  expectRows(opening, "select iyear,iperiod,ccode,ccus_id,md from gl_accvouch where iyear=2006",
             {"2006 | 0 | 1131 | C1 | 5"});
}

}  // namespace
}  // namespace gljz::test
