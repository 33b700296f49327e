#include "detail/cheque_register.h"

#include "dialogs/frm_jzsn.h"
#include "system/bank_fixture.h"

namespace gljz::test {
namespace {

template <class Ledger>
class ChequesFixture : public BankFixture<Ledger> {
protected:
  void cheques(const Side& side, const std::vector<std::string>& lines) {
    for (std::size_t i = 1; i < lines.size(); ++i) this->fill(side, "rp_cheque", {lines.front(), lines[i]});
  }
  void expectRegister(const std::string& columns, const std::vector<std::string>& expected) {
    this->expectRows(this->opening, "select " + columns + " from rp_cheque order by ccheque_id", expected);
  }
};

class ChequeRegisterTest : public ChequesFixture<LedgerTest> {};
class SharedChequeRegisterTest : public ChequesFixture<SharedLedgerTest> {};

TEST_F(ChequeRegisterTest, AnOutstandingChequeIsCopiedWithAllItsColumns) {
  bank("100201");
  const std::string columns =
      "cCode,ccheque_id,dbill_date,cdept,cname,mmoney,ctext,dout,cdesp,cget,ccode_equal,cbankname,cbankid,dsetdate,"
      "mmoneyfact,cpassword";
  sql(closing, "insert into rp_cheque(" + columns +
                   ") values(N'100201',N'Q1','2005-11-03',N'D1',N'张三',12.5,N'备用金',Null,N'说明',N'李四',N'6601',"
                   "N'工行',N'95588','2005-11-05',12.4,N'密')");
  CarryChequeRegister();
  EXPECT_EQ(rows(opening, "select " + columns + " from rp_cheque"),
            rows(closing, "select " + columns + " from rp_cheque"));
  expectRegister("ccheque_id,dbill_date,mmoney,mmoneyfact,dout", {"Q1 | 2005-11-03 | 12.5 | 12.4 | Null"});
}

TEST_F(ChequeRegisterTest, TheTimeOfDayOfTheBillIsLost) {
  bank("100201");
  cheques(closing, {"cCode | ccheque_id | dbill_date | dsetdate",
                    "100201 | Q1 | 2005-11-03 10:30:00 | 2005-11-05 08:00:00", "100201 | Q2 | Null | Null"});
  CarryChequeRegister();
  expectRegister("ccheque_id,dbill_date,dsetdate", {"Q1 | 2005-11-03 | 2005-11-05 08:00:00", "Q2 | Null | Null"});
}

TEST_F(SharedChequeRegisterTest, InOneDatabaseTheRegisterStaysAndTheStepIsTicked) {
  watched();
  run.m_bCoverChequeData = true;
  bank("100201");
  cheques(closing, {"cCode | ccheque_id", "100201 | Q1"});
  forgetStatements();
  CarryChequeRegister();
  EXPECT_TRUE(statements().empty());
  expectRegister("ccheque_id", {"Q1"});
  EXPECT_EQ(frmJZSN().Label2(6), "Y");
}

TEST_F(ChequeRegisterTest, ACoveredRegisterIsCopiedAnew) {
  run.m_bCoverChequeData = true;
  bank("100201");
  cheques(closing, {"cCode | ccheque_id | mmoney", "100201 | Q1 | 1", "100201 | Q2 | 2"});
  cheques(opening, {"cCode | ccheque_id | mmoney", "100201 | Q1 | 100", "100201 | Q9 | 900"});
  CarryChequeRegister();
  expectRegister("ccheque_id,mmoney", {"Q1 | 1", "Q2 | 2"});
}

TEST_F(ChequeRegisterTest, AChequeThatTheNewRegisterHasIsSkipped) {
  bank("100201");
  cheques(closing, {"cCode | ccheque_id | mmoney", "100201 | Q1 | 1", "100201 | Q2 | 2"});
  cheques(opening, {"cCode | ccheque_id | mmoney", "100299 | q1 | 100"});
  CarryChequeRegister();
  expectRegister("cCode,ccheque_id,mmoney", {"100299 | q1 | 100", "100201 | Q2 | 2"});
}

TEST_F(ChequeRegisterTest, ASecondRunChangesNothing) {
  bank("100201");
  cheques(closing, {"cCode | ccheque_id | mmoney", "100201 | Q1 | 1"});
  CarryChequeRegister();
  CarryChequeRegister();
  expectRegister("ccheque_id,mmoney", {"Q1 | 1"});
}

TEST_F(ChequeRegisterTest, AUsedUpChequeIsNeverSelected) {
  bank("100201");
  cheques(closing, {"cCode | ccheque_id | dout", "100201 | Q1 | 2005-12-01", "100201 | Q2 | Null"});
  CarryChequeRegister();
  expectRegister("ccheque_id", {"Q2"});
}

TEST_F(ChequeRegisterTest, AnAccountWithoutAUsableCounterpartIsLeftOutWithAReason) {
  watched();
  bank(closing, "100201", {"ccode_name", "工行"});
  bank(closing, "100202");
  bank(opening, "100202", {"ccode_name", "中行", "bend", "0"});
  bank(closing, "100203");
  bank(opening, "100203", {"ccode_name", "建行", "be", "0"});
  cheques(closing, {"cCode | ccheque_id", "100201 | Q1", "100202 | Q2", "100203 | Q3"});
  CarryChequeRegister();
  expectRegister("ccheque_id", {});
  EXPECT_EQ(notCarried(), (std::vector<std::string>{"科目|100201|工行|支票：新年度没有此科目",
                                                    "科目|100202|中行|支票：新年度不是末级科目",
                                                    "科目|100203|建行|支票：新年度不是银行对账科目"}));
}

TEST_F(ChequeRegisterTest, AnUnattendedRunLeavesThemOutInSilence) {
  bank(closing, "100201");
  cheques(closing, {"cCode | ccheque_id", "100201 | Q1"});
  CarryChequeRegister();
  expectRegister("ccheque_id", {});
  EXPECT_TRUE(notCarried().empty());
  EXPECT_FALSE(frmJZSN.isLoaded());
}

TEST_F(ChequeRegisterTest, AChequeOfAnAccountThatChangedItsCodeKeepsTheOldOne) {
  bank(closing, "100201");
  bank(opening, "100209");
  sql(opening, "insert into GL_CodeMatch(iyear,cOldCode,cNewCode) values(2006,N'100201',N'100209')");
  cheques(closing, {"cCode | ccheque_id", "100201 | Q1", "100201 | Q2"});
  forgetStatements();
  CarryChequeRegister();
  expectRegister("cCode,ccheque_id", {"100201 | Q1", "100201 | Q2"});
  EXPECT_EQ(timesRun("m.cOldCode=N'100201'"), 2u);  // at every cheque
}

TEST_F(ChequeRegisterTest, TheCurrencyIsTheAccountsUnlessThereAreSeveral) {
  bank("100201", {"cexch_name", "欧元"});
  bank("100202");
  cheques(closing,
          {"cCode | ccheque_id | cexch_name", "100201 | Q1 | 美元", "100201 | Q2 | Null", "100202 | Q3 | 美元"});
  CarryChequeRegister();
  expectRegister("ccheque_id,cexch_name", {"Q1 | 欧元", "Q2 | Null", "Q3 | Null"});
}

TEST_F(ChequeRegisterTest, WithSeveralCurrenciesItIsTheChequesOwn) {
  severalCurrencies();
  bank("100201", {"cexch_name", "欧元"});
  cheques(closing, {"cCode | ccheque_id | cexch_name", "100201 | Q1 | 美元"});
  CarryChequeRegister();
  expectRegister("ccheque_id,cexch_name", {"Q1 | 美元"});
}

TEST(ChequeRegister, TheDateOfUseHasATwoDigitYearAndTheDayOfTheYear) {
  EXPECT_EQ(usedUpText(platform::DateTime::fromDate(2005, 11, 3)), "05307-11-03");
  EXPECT_EQ(usedUpText(platform::DateTime::fromDate(2004, 1, 1)), "041-01-01");
}

}  // namespace
}  // namespace gljz::test
