// Two bank accounts in two currencies over two successive carry-forwards, 2005 to 2006 and 2006 to 2007: whole runs,
// the second one on what the first one left.

#include "system/account_set.h"

namespace gljz::test {
namespace {

using host::BankCarry;
using platform::Money;

class TwoYears : public AccountSet {
protected:
  explicit TwoYears(Databases databases) : AccountSet(databases, 2005) {
    setting(2005, "bMultiCurrency", "True");
    fill(year(2005), "dsign", {"csign | isignseq", "记 | 1"});
    fill(year(2005), "settlestyle", {"csscode | cssname", "1 | 支票"});
    account(year(2005), "100201", {"ccode_name", "工行", "be", "1", "bd_c", "1", "dbegin", "2005-01-01"});
    account(year(2005), "100202",
            {"ccode_name", "中行", "cexch_name", "美元", "be", "1", "bd_c", "1", "dbegin", "2005-01-01"});
    year2005();
    turn(2005);
  }

  void year2005() {
    lines(2005, {"100201 | 20 | 2005-01-01 | Null | 1000 | 0 | 0 | 0 | Null",
                 "100201 | 3 | 2005-03-01 | Null | 300 | 0 | 0 | 0 | 1",
                 "100201 | 6 | 2005-06-10 | Null | 0 | 50 | 0 | 0 | Null",
                 "100201 | 12 | 2005-12-20 | Null | 80 | 0 | 0 | 0 | 0",
                 "100202 | 5 | 2005-05-05 | 美元 | 800 | 0 | 100 | 0 | Null",
                 "100202 | 9 | 2005-09-09 | 美元 | 0 | 240 | 0 | 30 | 25"});
    statements(2005,
               {"100201 | 0 | 2005-01-01 | 1300 | 1 | Null | Null", "100201 | 1 | 2005-06-12 | 50 | 0 | Null | Null",
                "100201 | 1 | 2005-12-25 | 80 | 1 | Null | Null", "100202 | 1 | 2005-05-06 | 100 | 1 | Null | 美元",
                "100202 | 1 | 2005-09-10 | 30 | 0 | 1 | 美元"});
    fill(year(2005), "rp_cheque", {"cCode | ccheque_id | dout", "100201 | Q1 | Null", "100201 | Q2 | 2005-12-01"});
    fill(year(2005), "gl_accsum",
         {"ccode | cexch_name | iperiod | cendd_c | cendd_c_engl | me | me_f",
          "100201 | Null | 12 | 借 | Dr | 1330 | 0", "100202 | 美元 | 12 | 借 | Dr | 560 | 70"});
  }
  // The payment of 50 is reconciled; new lines come in.
  void year2006() {
    sql(year(2006),
        "update gl_accvouch set iflagbank=1 where iyear=2006 and iperiod=21 and mc=50 "
        "update rp_bankrecp set iflag=1 where iyear=2006 and mmoney=50 "
        "update gl_accsum set me=850 where iyear=2006 and iperiod=12 and ccode=N'100201' "
        "update gl_accsum set me=400,me_f=50 where iyear=2006 and iperiod=12 and ccode=N'100202'");
    lines(2006, {"100201 | 4 | 2006-04-04 | Null | 20 | 0 | 0 | 0 | Null",
                 "100201 | 7 | 2006-07-07 | Null | 0 | 500 | 0 | 0 | 30",
                 "100202 | 2 | 2006-02-02 | 美元 | 0 | 160 | 0 | 20 | Null"});
    statements(2006,
               {"100201 | 1 | 2006-03-03 | 10 | 1 | Null | Null", "100201 | 1 | 2006-07-08 | 500 | 0 | 1 | Null"});
    fill(year(2006), "rp_cheque", {"cCode | ccheque_id | cexch_name", "100202 | Q3 | 美元"});
    turn(2006);
  }

  void lines(int ofYear, const std::vector<std::string>& cells) {
    for (const std::string& line : cells)
      fill(year(ofYear), "gl_accvouch",
           {"inid | idoc | ccode | iperiod | dbill_date | cexch_name | md | mc | md_f | mc_f | iflagbank",
            "1 | 0 | " + line});
  }
  void statements(int ofYear, const std::vector<std::string>& cells) {
    for (const std::string& line : cells)
      fill(year(ofYear), "rp_bankrecp", {"ccode | ibegin | ddate | mmoney | bd_c | iflag | cexch_name", line});
  }

  host::RunResult carryBank(int closingYear, bool markedLinesToo) {
    host::ConditionChoices choices;
    choices.checks = {{"GL*m_bBankTransfer", markedLinesToo}};
    host::RunResult result = carry(closingYear, choices);
    expectClean(result);
    return result;
  }

  // Balances first; period, account, currency, date, amounts, foreign amounts, mark.
  void expectLedger(int ofYear, const std::vector<std::string>& expected) {
    expectRows(year(ofYear),
               "select iperiod,ccode,cexch_name,dbill_date,md,mc,md_f,mc_f,iflagbank,ibook,bdelete from gl_accvouch "
               "where iyear=" +
                   std::to_string(ofYear) + " and iperiod>12 order by iperiod,ccode,dbill_date",
               expected);
  }
  // Opening rows first; kind, account, currency, date, amount, side, mark.
  void expectStatements(int ofYear, const std::vector<std::string>& expected) {
    expectRows(year(ofYear),
               "select ibegin,ccode,cexch_name,ddate,mmoney,bd_c,iflag from rp_bankrecp where iyear=" +
                   std::to_string(ofYear) + " order by ibegin,ccode,ddate",
               expected);
  }
  void expectReconciliation(int ofYear, const std::string& begin) {
    expectRows(year(ofYear),
               "select ccode,dbegin from code where be=1 and iyear=" + std::to_string(ofYear) + " order by ccode",
               {"100201 | " + begin, "100202 | " + begin});
  }

  // Account, currency, closing balance, carried balance, statement balance; counts as carried/open.
  static std::vector<std::string> page(const host::RunResult& result) {
    std::vector<std::string> all;
    const auto text = [](const std::optional<Money>& amount) { return amount ? amount->text() : std::string("-"); };
    const auto count = [](const std::optional<BankCarry::Count>& c) {
      return c ? std::to_string(c->carried) + "/" + std::to_string(c->open) : std::string("-");
    };
    if (!result.bank) return {"no page"};
    for (const BankCarry& b : *result.bank)
      all.push_back(b.account + " " + b.name + " " + b.currency + " " + b.closingBalance.text() + " " +
                    text(b.ledgerBalance) + " " + text(b.bankBalance) + " " + count(b.lines) + " " +
                    count(b.statements) + " " + count(b.cheques) + (b.findings().empty() ? " agrees" : ""));
    return all;
  }
  using Page = std::vector<std::string>;

  void openLinesOnly(const Page& page2006, const Page& page2007) {
    EXPECT_EQ(page(carryBank(2005, false)), page2006);
    // The balance of 2005 and the marker that the dollar account got there stay as they are.
    expectLedger(2005, {"20 | 100201 | Null | 2005-01-01 | 1000 | 0 | 0 | 0 | Null | 0 | 0",
                        "20 | 100202 | 美元 | 2006-01-09 | 0 | 0 | 0 | 0 | Null | 1 | 0"});
    expectLedger(2006, {"20 | 100201 | Null | 2006-01-01 | 1330 | 0 | 0 | 0 | Null | 1 | 0",
                        "20 | 100202 | 美元 | 2006-01-01 | 70 | 0 | 0 | 0 | Null | 1 | 0",
                        "21 | 100201 | Null | 2005-06-10 | 0 | 50 | 0 | 0 | Null | 1 | 0",
                        "21 | 100201 | Null | 2005-12-20 | 80 | 0 | 0 | 0 | 0 | 1 | 0",
                        "21 | 100202 | 美元 | 2005-05-05 | 800 | 0 | 100 | 0 | Null | 1 | 0"});
    // The dollar account had no opening row: the one that was made for it has no currency and so no movement.
    expectStatements(
        2006, {"0 | 100201 | Null | 2006-01-01 | 1330 | 1 | Null", "0 | 100202 | Null | 2006-01-01 | 0 | 1 | Null",
               "1 | 100201 | Null | 2005-06-12 | 50 | 0 | Null", "1 | 100201 | Null | 2005-12-25 | 80 | 1 | Null",
               "1 | 100202 | 美元 | 2005-05-06 | 100 | 1 | Null"});
    expectReconciliation(2006, "2006-01-01");

    year2006();
    EXPECT_EQ(page(carryBank(2006, false)), page2007);
    expectLedger(2007, {"20 | 100201 | Null | 2007-01-01 | 850 | 0 | 0 | 0 | Null | 1 | 0",
                        "20 | 100202 | 美元 | 2007-01-01 | 50 | 0 | 0 | 0 | Null | 1 | 0",
                        "21 | 100201 | Null | 2005-12-20 | 80 | 0 | 0 | 0 | 0 | 1 | 0",
                        "21 | 100201 | Null | 2006-04-04 | 20 | 0 | 0 | 0 | Null | 1 | 0",
                        "21 | 100202 | 美元 | 2005-05-05 | 800 | 0 | 100 | 0 | Null | 1 | 0",
                        "21 | 100202 | 美元 | 2006-02-02 | 0 | 160 | 0 | 20 | Null | 1 | 0"});
    expectStatements(
        2007, {"0 | 100201 | Null | 2007-01-01 | 840 | 1 | Null", "0 | 100202 | Null | 2007-01-01 | 0 | 1 | Null",
               "1 | 100201 | Null | 2005-12-25 | 80 | 1 | Null", "1 | 100201 | Null | 2006-03-03 | 10 | 1 | Null",
               "1 | 100202 | 美元 | 2005-05-06 | 100 | 1 | Null"});
    expectReconciliation(2007, "2007-01-01");
    // The balance rows that the first run wrote are the second one's markers.
    expectRows(year(2006), "select ccode,md from gl_accvouch where iyear=2006 and iperiod=20 order by ccode",
               {"100201 | 1330", "100202 | 70"});
  }

  void markedLinesToo(const Page& page2006, const Page& page2007) {
    EXPECT_EQ(page(carryBank(2005, true)), page2006);
    expectLedger(2006, {"20 | 100201 | Null | 2006-01-01 | 1330 | 0 | 0 | 0 | Null | 1 | 0",
                        "20 | 100202 | 美元 | 2006-01-01 | 70 | 0 | 0 | 0 | Null | 1 | 0",
                        "21 | 100201 | Null | 2005-03-01 | 300 | 0 | 0 | 0 | 1 | 1 | 0",
                        "21 | 100201 | Null | 2005-06-10 | 0 | 50 | 0 | 0 | Null | 1 | 0",
                        "21 | 100201 | Null | 2005-12-20 | 80 | 0 | 0 | 0 | 0 | 1 | 0",
                        "21 | 100202 | 美元 | 2005-05-05 | 800 | 0 | 100 | 0 | Null | 1 | 0"});
    expectStatements(
        2006, {"0 | 100201 | Null | 2006-01-01 | 1330 | 1 | Null", "0 | 100202 | Null | 2006-01-01 | 0 | 1 | Null",
               "1 | 100201 | Null | 2005-06-12 | 50 | 0 | Null", "1 | 100201 | Null | 2005-12-25 | 80 | 1 | Null",
               "1 | 100202 | 美元 | 2005-05-06 | 100 | 1 | Null", "1 | 100202 | 美元 | 2005-09-10 | 30 | 0 | 1"});
    year2006();
    EXPECT_EQ(page(carryBank(2006, true)), page2007);
    expectLedger(2007, {"20 | 100201 | Null | 2007-01-01 | 850 | 0 | 0 | 0 | Null | 1 | 0",
                        "20 | 100202 | 美元 | 2007-01-01 | 50 | 0 | 0 | 0 | Null | 1 | 0",
                        "21 | 100201 | Null | 2005-03-01 | 300 | 0 | 0 | 0 | 1 | 1 | 0",
                        "21 | 100201 | Null | 2005-06-10 | 0 | 50 | 0 | 0 | 1 | 1 | 0",
                        "21 | 100201 | Null | 2005-12-20 | 80 | 0 | 0 | 0 | 0 | 1 | 0",
                        "21 | 100201 | Null | 2006-04-04 | 20 | 0 | 0 | 0 | Null | 1 | 0",
                        "21 | 100202 | 美元 | 2005-05-05 | 800 | 0 | 100 | 0 | Null | 1 | 0",
                        "21 | 100202 | 美元 | 2006-02-02 | 0 | 160 | 0 | 20 | Null | 1 | 0"});
    expectStatements(
        2007, {"0 | 100201 | Null | 2007-01-01 | 840 | 1 | Null", "0 | 100202 | Null | 2007-01-01 | 0 | 1 | Null",
               "1 | 100201 | Null | 2005-06-12 | 50 | 0 | 1", "1 | 100201 | Null | 2005-12-25 | 80 | 1 | Null",
               "1 | 100201 | Null | 2006-03-03 | 10 | 1 | Null", "1 | 100201 | Null | 2006-07-08 | 500 | 0 | 1",
               "1 | 100202 | 美元 | 2005-05-06 | 100 | 1 | Null", "1 | 100202 | 美元 | 2005-09-10 | 30 | 0 | 1"});
  }
};

class BankOverTwoYearsTest : public TwoYears {
protected:
  BankOverTwoYearsTest() : TwoYears(Databases::separate) {}
};
class SharedBankOverTwoYearsTest : public TwoYears {
protected:
  SharedBankOverTwoYearsTest() : TwoYears(Databases::shared) {}
};

TEST_F(BankOverTwoYearsTest, OpenLinesOnly) {
  openLinesOnly({"100201 工行  1330 1330 1330 2/2 2/2 1/1 agrees", "100202 中行 美元 70 70 - 1/1 1/1 0/0 agrees"},
                {"100201 工行  850 850 840 2/2 2/2 1/1 agrees", "100202 中行 美元 50 50 - 2/2 1/1 1/1 agrees"});
  expectRows(year(2006), "select cCode,ccheque_id from rp_cheque order by ccheque_id", {"100201 | Q1", "100202 | Q3"});
  expectRows(year(2007), "select cCode,ccheque_id from rp_cheque order by ccheque_id", {"100201 | Q1", "100202 | Q3"});
}

TEST_F(BankOverTwoYearsTest, MarkedLinesToo) {
  markedLinesToo({"100201 工行  1330 1330 1330 3/3 2/2 1/1 agrees", "100202 中行 美元 70 70 - 1/1 2/2 0/0 agrees"},
                 {"100201 工行  850 850 840 4/4 4/4 1/1 agrees", "100202 中行 美元 50 50 - 2/2 2/2 1/1 agrees"});
}

TEST_F(SharedBankOverTwoYearsTest, OpenLinesOnly) {
  openLinesOnly({"100201 工行  1330 1330 1330 2/2 2/2 - agrees", "100202 中行 美元 70 70 - 1/1 1/1 - agrees"},
                {"100201 工行  850 850 840 2/2 2/2 - agrees", "100202 中行 美元 50 50 - 2/2 1/1 - agrees"});
  expectRows(year(2007), "select ccheque_id from rp_cheque order by ccheque_id", {"Q1", "Q2", "Q3"});
}

TEST_F(SharedBankOverTwoYearsTest, MarkedLinesToo) {
  markedLinesToo({"100201 工行  1330 1330 1330 3/3 2/2 - agrees", "100202 中行 美元 70 70 - 1/1 2/2 - agrees"},
                 {"100201 工行  850 850 840 4/4 4/4 - agrees", "100202 中行 美元 50 50 - 2/2 2/2 - agrees"});
}

}  // namespace
}  // namespace gljz::test
