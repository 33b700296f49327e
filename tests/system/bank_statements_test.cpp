#include "detail/bank_statements.h"

#include "system/bank_fixture.h"
#include "system/observers.h"

namespace gljz::test {
namespace {

template <class Ledger>
class StatementsFixture : public BankFixture<Ledger> {
protected:
  StatementsFixture() { run.m_bBankTransfer = 2; }

  // Rows of rp_bankrecp; the opening row of an account has ibegin 0. Without a date a line is of 6 June.
  void statements(const Side& side, const std::vector<std::string>& lines) {
    const bool dated = lines.front().find("ddate") != std::string::npos;
    const std::string date = std::to_string(side.year) + "-06-06|";
    for (std::size_t i = 1; i < lines.size(); ++i)
      this->fill(side, "rp_bankrecp", {(dated ? "" : "ddate|") + lines.front(), (dated ? "" : date) + lines[i]});
  }
  void carry() {
    std::string idText;
    CarryBankStatements(idText);
  }
  void expectNew(const std::string& columns, const std::vector<std::string>& expected) {
    this->expectRows(this->opening,
                     "select " + columns + " from rp_bankrecp where iyear=2006 order by ccode,ibegin,mmoney", expected);
  }
};

class BankStatementsTest : public StatementsFixture<LedgerTest> {};
class SharedBankStatementsTest : public StatementsFixture<SharedLedgerTest> {};

// --- Lines

TEST_F(BankStatementsTest, AnOpenLineGoesOverWithAllItsColumns) {
  bank("100201");
  sql(opening, "insert into settlestyle(csscode,cssname) values(N'1',N'支票')");
  statements(closing,
             {"ccode | ibegin | ddate | mmoney | mbalance | csettle | cn_id | bd_c | cBankReconNo | cexch_name "
              "| cdigest",
              "100201 | 1 | 2005-03-04 | 200.25 | 900 | 1 | A-1 | 1 | R1 | 美元 | 收款"});
  carry();
  expectRows(opening,
             "select iyear,ibegin,ddate,mmoney,mbalance,ccode,csettle,cn_id,bd_c,iflag,bdelete,cBankReconNo,cexch_name,"
             "cdigest from rp_bankrecp where ibegin<>0",
             {"2006 | 1 | 2005-03-04 | 200.25 | 900 | 100201 | 1 | A-1 | 1 | Null | 0 | R1 | 美元 | 收款"});
}

TEST_F(BankStatementsTest, AMissingDateStaysMissing) {
  bank("100201");
  statements(closing, {"ccode | ibegin | ddate | mmoney", "100201 | 1 | Null | 5"});
  carry();
  expectRows(opening, "select ddate,mmoney from rp_bankrecp where ibegin=1", {"Null | 5"});
}

TEST_F(BankStatementsTest, AProtectedLineOfTheClosingYearArrivesAsAnOrdinaryOne) {
  bank("100201");
  statements(closing, {"ccode | ibegin | mmoney", "100201 | 2 | 5"});
  carry();
  expectRows(opening, "select ibegin,mmoney from rp_bankrecp where ibegin<>0", {"1 | 5"});
}

TEST_F(BankStatementsTest, OnlyLiveLinesOfLastLevelBankAccountsGoOver) {
  bank("100201");
  bank("1002", {"bend", "0"});
  account("1001");
  statements(closing, {"ccode | ibegin | mmoney | bdelete", "100201 | 1 | 1 | 0", "100201 | 1 | 2 | 1",
                       "1002 | 1 | 4 | 0", "1001 | 1 | 8 | 0"});
  carry();
  expectRows(opening, "select ccode,mmoney from rp_bankrecp where ibegin=1", {"100201 | 1"});
}

TEST_F(BankStatementsTest, OnlyOpenLinesGoOverAndOnlyAnOpenOpeningRow) {
  bank("100201");
  bank("100202");
  statements(closing, {"ccode | ibegin | mmoney | iflag", "100201 | 0 | 100 | Null", "100201 | 1 | 1 | Null",
                       "100201 | 1 | 2 | 1", "100202 | 0 | 200 | 1", "100202 | 1 | 4 | Null"});
  carry();
  expectNew("ccode,ibegin,mmoney",
            {"100201 | 0 | 97", "100201 | 1 | 1", "100202 | 1 | 4"});  // both lines are credit and count
}

TEST_F(BankStatementsTest, ReconciledLinesGoOverWhenTheyAreWanted) {
  run.m_bBankTransfer = 1;
  bank("100201");
  statements(closing, {"ccode | ibegin | mmoney | bd_c | iflag", "100201 | 0 | 100 | 1 | 1",
                       "100201 | 1 | 1 | 1 | Null", "100201 | 1 | 2 | 1 | 1"});
  carry();
  expectNew("ibegin,mmoney,iflag", {"0 | 103 | 1", "1 | 1 | Null", "1 | 2 | 1"});
}

// --- What the new year had

TEST_F(BankStatementsTest, ProtectedRowsOfTheNewYearSurvive) {
  bank("100201");
  statements(opening, {"ccode | ibegin | mmoney", "100201 | 0 | 7", "100201 | 1 | 8", "100201 | 2 | 9"});
  statements(closing, {"ccode | ibegin | mmoney | bd_c", "100201 | 0 | 100 | 1"});
  carry();
  expectNew("ibegin,mmoney", {"0 | 100", "2 | 9"});
}

TEST_F(BankStatementsTest, TheyGoWhenTheOperatorCoversThem) {
  run.m_bCoverBankData = true;
  bank("100201");
  statements(opening, {"ccode | ibegin | mmoney", "100201 | 0 | 7", "100201 | 2 | 9"});
  statements(closing, {"ccode | ibegin | mmoney | bd_c", "100201 | 0 | 100 | 1"});
  carry();
  expectNew("ibegin,mmoney", {"0 | 100"});
}

TEST_F(BankStatementsTest, RowsOfOtherYearsStay) {
  run.m_bCoverBankData = true;
  sql(opening, "insert into rp_bankrecp(iyear,ibegin,ccode,mmoney) values(2004,1,N'100201',5)");
  carry();
  expectRows(opening, "select iyear,mmoney from rp_bankrecp", {"2004 | 5"});
}

// --- Opening rows of the closing year

TEST_F(BankStatementsTest, AnAccountWithoutAnOpeningRowGetsOne) {
  bank("100201");
  bank(closing, "100202", {"bd_c", "0"});
  bank(opening, "100202", {"bd_c", "0"});
  statements(closing, {"ccode | ibegin | mmoney", "100201 | 1 | 5", "100202 | 1 | 6"});
  carry();
  expectRows(closing,
             "select ccode,ibegin,bd_c,ddate,mmoney,mbalance,bdelete,cBankReconNo,cexch_name,iflag from rp_bankrecp "
             "where iyear=2005 and ibegin=0 order by ccode",
             {"100201 | 0 | 1 | 2006-01-10 | 0 | 0 | 0 | Null | Null | Null",
              "100202 | 0 | 0 | 2006-01-10 | 0 | 0 | 0 | Null | Null | Null"});
}

TEST_F(BankStatementsTest, ASecondRunAddsNone) {
  bank("100201");
  statements(closing, {"ccode | ibegin | mmoney | bd_c", "100201 | 1 | 5 | 1"});
  carry();
  carry();
  expectRows(closing, "select count(*) from rp_bankrecp where ibegin=0", {"1"});
  expectNew("ibegin,mmoney", {"0 | 5", "1 | 5"});
}

TEST_F(BankStatementsTest, OfSeveralOpeningRowsTheFirstStaysWhateverTheCurrency) {
  bank("100201");
  statements(closing, {"ccode | ibegin | mmoney | bd_c | cexch_name", "100201 | 0 | 100 | 1 | Null",
                       "100201 | 0 | 200 | 1 | Null", "100201 | 0 | 300 | 1 | 美元"});
  carry();
  expectRows(closing, "select mmoney from rp_bankrecp where iyear=2005 and ibegin=0", {"100"});
  expectNew("ibegin,mmoney", {"0 | 100"});
}

TEST_F(BankStatementsTest, AnAccountThatTheNewYearLacksGetsACreditOpeningRow) {
  bank(closing, "100201");
  statements(closing, {"ccode | ibegin | mmoney", "100201 | 1 | 5"});
  carry();
  expectRows(closing, "select bd_c from rp_bankrecp where iyear=2005 and ibegin=0", {"0"});
  expectNew("ibegin", {});
}

// --- The balance brought forward

TEST_F(BankStatementsTest, TheOpeningRowTakesTheMovementAndTheFirstDayOfTheYear) {
  bank("100201", {"dbegin", "2005-06-01"});
  statements(closing, {"ccode | ibegin | ddate | mmoney | mbalance | bd_c", "100201 | 0 | 2005-01-01 | 100 | 77 | 1",
                       "100201 | 1 | 2005-05-31 | 1000 | 0 | 1", "100201 | 1 | 2005-06-01 | 30 | 0 | 1",
                       "100201 | 2 | 2005-07-01 | 10 | 0 | 0"});
  carry();
  expectRows(opening, "select ddate,mmoney,mbalance,bd_c from rp_bankrecp where iyear=2006 and ibegin=0",
             {"2006-01-01 | 120 | 77 | 1"});
}

// The side is the closing year's, whatever the account's is in the new one.
TEST_F(BankStatementsTest, OnACreditAccountTheSignTurnsOver) {
  bank(closing, "100201", {"bd_c", "0"});
  bank(opening, "100201", {"bd_c", "1"});
  statements(closing, {"ccode | ibegin | ddate | mmoney | bd_c", "100201 | 0 | 2005-01-01 | 100 | 0",
                       "100201 | 1 | 2005-05-01 | 30 | 1"});
  carry();
  expectRows(opening, "select mmoney from rp_bankrecp where ibegin=0", {"70"});
}

TEST_F(BankStatementsTest, TheOneOpeningRowCountsItsOwnCurrencyOnly) {
  severalCurrencies();
  bank("100201");
  statements(closing,
             {"ccode | ibegin | ddate | mmoney | bd_c | cexch_name", "100201 | 0 | 2005-01-01 | 100 | 1 | 美元",
              "100201 | 1 | 2005-05-01 | 30 | 1 | 美元", "100201 | 1 | 2005-05-01 | 500 | 1 | Null"});
  carry();
  expectRows(opening, "select cexch_name,mmoney from rp_bankrecp where iyear=2006 and ibegin=0", {"美元 | 130"});
}

TEST_F(BankStatementsTest, WithoutABeginEveryLineCounts) {
  bank("100201", {"dbegin", "Null"});
  statements(closing, {"ccode | ibegin | ddate | mmoney | bd_c", "100201 | 0 | 2005-01-01 | 100 | 1",
                       "100201 | 1 | 1999-05-01 | 30 | 1"});
  carry();
  expectRows(opening, "select mmoney from rp_bankrecp where ibegin=0", {"130"});
}

TEST_F(BankStatementsTest, TheReconciliationOfTheAccountBeginsWithTheYear) {
  bank("100201");
  bank("100202");
  statements(closing, {"ccode | ibegin | mmoney | bd_c", "100201 | 0 | 100 | 1"});
  carry();
  expectRows(opening, "select ccode,dbegin from code where iyear=2006 order by ccode",
             {"100201 | 2006-01-01", "100202 | 2005-01-01"});
}

TEST_F(SharedBankStatementsTest, OneDatabaseForBothYears) {
  bank("100201");
  statements(closing, {"ccode | ibegin | ddate | mmoney | bd_c", "100201 | 0 | 2005-01-01 | 100 | 1",
                       "100201 | 1 | 2005-05-01 | 30 | 1"});
  carry();
  expectNew("ibegin,mmoney", {"0 | 130", "1 | 30"});
  expectRows(opening, "select iyear,dbegin from code order by iyear", {"2005 | 2005-01-01", "2006 | 2006-01-01"});
}

TEST_F(BankStatementsTest, AnAccountWhoseNormalSideIsNotSetCannotBeBroughtForward) {
  bank("100201", {"bd_c", "Null"});
  statements(closing, {"ccode | ibegin | mmoney | bd_c", "100201 | 0 | 100 | 1"});
  EXPECT_THROW(carry(), platform::RunTimeError);
  expectNew("ibegin", {});
}

// --- An account that the new year does not know by its old code

// The gate of the boxes is open here, which no run ever does.
class UnknownAccountTest : public BankStatementsTest {
protected:
  UnknownAccountTest() {
    bank(closing, "100201");
    run.m_pubCls = services_;
    run.m_bManual = run.m_bCancelable = true;
    SetupImbalanceGrid(4);
  }
  void renumber() {
    bank(opening, "100209");
    fill(opening, "GL_CodeMatch", {"cOldCode | cNewCode", "100201 | 100209"});
  }
  const Box missing_{"Orvo.GL.TqGLJZ.00223", 0, "Orvo.GL.TqGLJZ.00094"};
  std::shared_ptr<AskingServices> services_ = std::make_shared<AskingServices>(run.m_pubCls);
};

TEST_F(UnknownAccountTest, AnOpeningRowThatIsMadeForItIsACreditOneAndTheOperatorIsTold) {
  bank("100202");
  statements(closing, {"ccode | ibegin | mmoney", "100201 | 1 | 5", "100202 | 1 | 6"});
  carry();
  EXPECT_EQ(services_->boxes, std::vector<Box>{missing_});
  expectRows(closing, "select ccode,bd_c from rp_bankrecp where iyear=2005 and ibegin=0 order by ccode",
             {"100201 | 0", "100202 | 1"});
  expectNew("ccode,ibegin,mmoney", {"100202 | 0 | -6", "100202 | 1 | 6"});
}

TEST_F(UnknownAccountTest, ARenumberedOneIsBroughtForwardUnderItsOldCodeAndTheOperatorIsTold) {
  renumber();
  statements(closing, {"ccode | ibegin | ddate | mmoney | bd_c", "100201 | 0 | 2005-01-01 | 100 | 1",
                       "100201 | 1 | 2005-05-01 | 30 | 1"});
  carry();
  EXPECT_EQ(services_->boxes, std::vector<Box>{missing_});
  expectNew("ccode,ibegin,mmoney", {"100201 | 0 | 130", "100201 | 1 | 30"});
  expectRows(opening, "select ccode,dbegin from code where iyear=2006", {"100209 | 2005-01-01"});  // as it was
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(UnknownAccountTest, ARenumberedOneWithoutAnOpeningRowIsToldOfTwice) {
  renumber();
  statements(closing, {"ccode | ibegin | mmoney | bd_c", "100201 | 1 | 30 | 1"});
  carry();
  EXPECT_EQ(services_->boxes, (std::vector<Box>{missing_, missing_}));
  expectNew("ccode,ibegin,mmoney,bd_c", {"100201 | 0 | 30 | 0", "100201 | 1 | 30 | 1"});
}

TEST_F(UnknownAccountTest, AnUnattendedRunGoesOnInSilence) {
  run.m_bManual = false;
  renumber();
  statements(closing, {"ccode | ibegin | mmoney | bd_c", "100201 | 1 | 30 | 1"});
  carry();
  EXPECT_EQ(services_->boxes, std::vector<Box>{});
  expectNew("ccode,ibegin,mmoney", {"100201 | 0 | 30", "100201 | 1 | 30"});
}

// --- Lines that are left out

TEST_F(BankStatementsTest, ALineWithAnUnknownSettlementStyleIsDroppedAndReportedToAWatcher) {
  watched();
  bank("100201");
  sql(closing, "insert into settlestyle(csscode,cssname) values(N'9',N'托收')");
  statements(closing, {"ccode | ibegin | mmoney | csettle", "100201 | 1 | 5 | 9", "100201 | 1 | 6 |"});
  carry();
  expectRows(opening, "select mmoney from rp_bankrecp where ibegin=1", {"6"});
  EXPECT_EQ(notCarried(), std::vector<std::string>{"结算方式|9|托收|银行对账单：新年度中不存在"});
}

TEST_F(BankStatementsTest, ItIsDroppedInAnUnattendedRunAsWell) {
  bank("100201");
  statements(closing, {"ccode | ibegin | mmoney | csettle", "100201 | 1 | 5 | 9"});
  carry();
  expectRows(opening, "select mmoney from rp_bankrecp where ibegin=1", {});
  EXPECT_FALSE(wasRun("select * from SettleStyle where csscode='9'"));
}

TEST_F(BankStatementsTest, AnAccountWithoutAUsableCounterpartIsLeftOutWithAReason) {
  watched();
  bank(closing, "100201", {"ccode_name", "工行"});
  bank(closing, "100202");
  bank(opening, "100202", {"ccode_name", "中行", "bend", "0"});
  bank(closing, "100203");
  bank(opening, "100203", {"ccode_name", "建行", "be", "0"});
  statements(closing, {"ccode | ibegin | mmoney", "100201 | 0 | 1", "100202 | 0 | 2", "100203 | 0 | 4"});
  carry();
  expectNew("ccode", {});
  EXPECT_EQ(notCarried(), (std::vector<std::string>{"科目|100201|工行|银行对账单：新年度中不存在",
                                                    "科目|100202|中行|银行对账单：新年度不是末级科目",
                                                    "科目|100203|建行|银行对账单：新年度不是银行对账科目"}));
}

TEST_F(BankStatementsTest, AnAccountIsLookedUpOnceForAllItsLines) {
  bank("100201");
  statements(closing,
             {"ccode | ibegin | mmoney | bd_c", "100201 | 0 | 1 | 1", "100201 | 1 | 2 | 1", "100201 | 1 | 4 | 1"});
  forgetStatements();
  carry();
  EXPECT_EQ(timesRun("select ccode from code where iyear=2006 and ccode=N'100201'"), 1u);
}

}  // namespace
}  // namespace gljz::test
