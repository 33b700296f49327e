// Two bank accounts in two currencies over two successive carry-forwards, 2005 to 2006 and 2006 to 2007.

#include "host/account.h"
#include "system/bank_fixture.h"

namespace gljz::test {
namespace {

template <class Ledger>
class TwoYearsFixture : public BankFixture<Ledger> {
protected:
  static constexpr const char* yuan = "100201";
  static constexpr const char* dollars = "100202";

  TwoYearsFixture() {
    third = {this->closing.database == this->opening.database ? this->closing.database : "TqData_001_2007", 2007};
    if (third.database != this->closing.database) {
      host::createAccountDatabase(this->server(), third.database);
      this->sql(third, "insert into accinformation select * from " + this->opening.database + "..accinformation");
    }
    for (const Side& side : {this->closing, this->opening, third})
      for (const char* ccode : {yuan, dollars}) this->bank(side, ccode);
  }

  void year2005() {
    this->vouchers(this->closing, {"ccode | iperiod | dbill_date | cexch_name | md | mc | md_f | mc_f | iflagbank",
                                   "100201 | 20 | 2005-01-01 | Null | 1000 | 0 | 0 | 0 | Null",
                                   "100201 | 3 | 2005-03-01 | Null | 300 | 0 | 0 | 0 | 1",
                                   "100201 | 6 | 2005-06-10 | Null | 0 | 50 | 0 | 0 | Null",
                                   "100201 | 12 | 2005-12-20 | Null | 80 | 0 | 0 | 0 | 0",
                                   "100202 | 5 | 2005-05-05 | 美元 | 800 | 0 | 100 | 0 | Null",
                                   "100202 | 9 | 2005-09-09 | 美元 | 0 | 240 | 0 | 30 | 25"});
    statements(this->closing, {"100201 | 0 | 2005-01-01 | 900 | 1 | Null", "100201 | 1 | 2005-06-12 | 50 | 0 | Null",
                               "100201 | 1 | 2005-12-25 | 80 | 1 | Null", "100202 | 1 | 2005-05-06 | 100 | 1 | 美元"});
    this->sql(this->closing,
              "insert into rp_cheque(cCode,ccheque_id,dout) values(N'100201',N'Q1',Null) "
              "insert into rp_cheque(cCode,ccheque_id,dout) values(N'100201',N'Q2','2005-12-01')");
  }
  // The payment of 50 is reconciled; new lines come in.
  void year2006() {
    this->sql(this->opening, "update gl_accvouch set iflagbank=1 where iyear=2006 and iperiod=21 and mc=50");
    this->vouchers(this->opening, {"ccode | dbill_date | cexch_name | md | mc | md_f | mc_f | iflagbank",
                                   "100201 | 2006-04-04 | Null | 20 | 0 | 0 | 0 | Null",
                                   "100201 | 2006-07-07 | Null | 0 | 500 | 0 | 0 | 30",
                                   "100202 | 2006-02-02 | 美元 | 0 | 160 | 0 | 20 | Null"});
    statements(this->opening, {"100201 | 1 | 2006-03-03 | 10 | 1 | Null"});
    this->sql(this->opening, "insert into rp_cheque(cCode,ccheque_id) values(N'100202',N'Q3')");
  }
  void statements(const Side& side, const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
      this->fill(side, "rp_bankrecp", {"ccode | ibegin | ddate | mmoney | bd_c | cexch_name", line});
  }

  void carryInto2006(std::uint8_t bankTransfer) {
    this->severalCurrencies();
    run.m_bBankTransfer = bankTransfer;
    JzYhData();
  }
  void carryInto2007(std::uint8_t bankTransfer) {
    const auto address = host::parseServer("embedded:" + this->server()->folder());
    const auto login = run.m_login;
    const auto services = this->surroundings_.newServices();
    services->SetLogin(login);
    services->SetYear(2007);
    services->InitServices({}, host::connectionText(third.database, address), "001", 2007, {}, {});
    this->sql(third,
              "update accinformation set cValue=N'True' where cSysID=N'GL' and cName=N'bMultiCurrency' "
              "update accinformation set cValue=N'人民币' where cSysID=N'GL' and cName=N'cDefaultCurrency'");
    run.m_pubCls = services;
    if (third.database == this->opening.database) {
      run.m_conn = services->NewYearConn();
    } else {
      run.m_conn = this->surroundings_.newConnection();
      run.m_conn->ConnectionOpen(host::connectionText(this->opening.database, address));
    }
    run.m_strLastYear = "2006";
    run.m_strCurYear = "2007";
    run.m_strLastDB = this->opening.database;
    run.m_strCurDB = third.database;
    run.m_bBankTransfer = bankTransfer;
    JzYhData();
  }

  void expectLedger(const Side& side, const std::vector<std::string>& expected) {
    this->expectRows(
        side,
        "select iperiod,ccode,cexch_name,dbill_date,md,mc,md_f,mc_f,iflagbank from gl_accvouch where iyear=" +
            std::to_string(side.year) + " and iperiod in (20,21) order by iperiod,ccode,dbill_date",
        expected);
  }
  void expectStatements(const Side& side, const std::vector<std::string>& expected) {
    this->expectRows(side,
                     "select ibegin,ccode,cexch_name,ddate,mmoney,bd_c from rp_bankrecp where iyear=" +
                         std::to_string(side.year) + " order by ibegin,ccode,ddate",
                     expected);
  }

  void openLinesOnly() {
    year2005();
    carryInto2006(2);
    expectLedger(this->opening, {"20 | 100201 | Null | 2006-01-01 | 1330 | 0 | 0 | 0 | Null",
                                 "20 | 100202 | 美元 | 2006-01-01 | 70 | 0 | 0 | 0 | Null",
                                 "21 | 100201 | Null | 2005-06-10 | 0 | 50 | 0 | 0 | Null",
                                 "21 | 100201 | Null | 2005-12-20 | 80 | 0 | 0 | 0 | 0",
                                 "21 | 100202 | 美元 | 2005-05-05 | 800 | 0 | 100 | 0 | Null"});
    // the dollar account had no opening row: the one that was made for it has no currency and so no movement
    expectStatements(this->opening,
                     {"0 | 100201 | Null | 2006-01-01 | 930 | 1", "0 | 100202 | Null | 2006-01-01 | 0 | 1",
                      "1 | 100201 | Null | 2005-06-12 | 50 | 0", "1 | 100201 | Null | 2005-12-25 | 80 | 1",
                      "1 | 100202 | 美元 | 2005-05-06 | 100 | 1"});

    year2006();
    carryInto2007(2);
    expectLedger(third, {"20 | 100201 | Null | 2007-01-01 | 850 | 0 | 0 | 0 | Null",
                         "20 | 100202 | 美元 | 2007-01-01 | 50 | 0 | 0 | 0 | Null",
                         "21 | 100201 | Null | 2005-12-20 | 80 | 0 | 0 | 0 | 0",
                         "21 | 100201 | Null | 2006-04-04 | 20 | 0 | 0 | 0 | Null",
                         "21 | 100202 | 美元 | 2005-05-05 | 800 | 0 | 100 | 0 | Null",
                         "21 | 100202 | 美元 | 2006-02-02 | 0 | 160 | 0 | 20 | Null"});
    expectStatements(third, {"0 | 100201 | Null | 2007-01-01 | 940 | 1", "0 | 100202 | Null | 2007-01-01 | 0 | 1",
                             "1 | 100201 | Null | 2005-06-12 | 50 | 0", "1 | 100201 | Null | 2005-12-25 | 80 | 1",
                             "1 | 100201 | Null | 2006-03-03 | 10 | 1", "1 | 100202 | 美元 | 2005-05-06 | 100 | 1"});
    // the balance rows that the first carry wrote are the second one's markers
    this->expectRows(this->opening, "select count(*) from gl_accvouch where iyear=2006 and iperiod=20", {"2"});
  }

  void markedLinesToo() {
    year2005();
    carryInto2006(1);
    expectLedger(this->opening, {"20 | 100201 | Null | 2006-01-01 | 1330 | 0 | 0 | 0 | Null",
                                 "20 | 100202 | 美元 | 2006-01-01 | 70 | 0 | 0 | 0 | Null",
                                 "21 | 100201 | Null | 2005-03-01 | 300 | 0 | 0 | 0 | 1",
                                 "21 | 100201 | Null | 2005-06-10 | 0 | 50 | 0 | 0 | Null",
                                 "21 | 100201 | Null | 2005-12-20 | 80 | 0 | 0 | 0 | 0",
                                 "21 | 100202 | 美元 | 2005-05-05 | 800 | 0 | 100 | 0 | Null"});
    year2006();
    carryInto2007(1);
    expectLedger(third, {"20 | 100201 | Null | 2007-01-01 | 850 | 0 | 0 | 0 | Null",
                         "20 | 100202 | 美元 | 2007-01-01 | 50 | 0 | 0 | 0 | Null",
                         "21 | 100201 | Null | 2005-03-01 | 300 | 0 | 0 | 0 | 1",
                         "21 | 100201 | Null | 2005-06-10 | 0 | 50 | 0 | 0 | 1",
                         "21 | 100201 | Null | 2005-12-20 | 80 | 0 | 0 | 0 | 0",
                         "21 | 100201 | Null | 2006-04-04 | 20 | 0 | 0 | 0 | Null",
                         "21 | 100202 | 美元 | 2005-05-05 | 800 | 0 | 100 | 0 | Null",
                         "21 | 100202 | 美元 | 2006-02-02 | 0 | 160 | 0 | 20 | Null"});
  }

  Side third;  // 2007
};

class BankOverTwoYearsTest : public TwoYearsFixture<LedgerTest> {};
class SharedBankOverTwoYearsTest : public TwoYearsFixture<SharedLedgerTest> {};

TEST_F(BankOverTwoYearsTest, OpenLinesOnly) {
  openLinesOnly();
  expectRows(third, "select cCode,ccheque_id from rp_cheque order by ccheque_id", {"100201 | Q1", "100202 | Q3"});
}

TEST_F(BankOverTwoYearsTest, MarkedLinesToo) {
  markedLinesToo();
}

TEST_F(SharedBankOverTwoYearsTest, OpenLinesOnly) {
  openLinesOnly();
  expectRows(third, "select ccheque_id from rp_cheque order by ccheque_id", {"Q1", "Q2", "Q3"});
}

TEST_F(SharedBankOverTwoYearsTest, MarkedLinesToo) {
  markedLinesToo();
}

}  // namespace
}  // namespace gljz::test
