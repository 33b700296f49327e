// What the host reads of the bank accounts after a run, also where the system has said nothing.

#include "system/account_set.h"

namespace gljz::test {
namespace {

using host::BankCarry;
using Finding = BankCarry::Finding;
using platform::Money;

class BankCarryTest : public AccountSet {
protected:
  BankCarryTest() : AccountSet(Databases::separate, 2005) {
    fill(year(2005), "dsign", {"csign | isignseq", "记 | 1"});
    fill(year(2005), "settlestyle", {"csscode | cssname", "1 | 支票", "9 | 托收"});
    bank("100201", "1");
  }
  void bank(const std::string& ccode, const std::string& side) {
    account(year(2005), ccode, {"be", "1", "bd_c", side, "dbegin", "2005-01-01", "ccode_name", "工行"});
  }
  void line(const std::string& cells) {
    fill(year(2005), "gl_accvouch",
         {"inid | idoc | dbill_date | ccode | iperiod | md | mc | cdigest", "1 | 0 | 2005-06-06 | " + cells});
  }
  void statement(const std::string& cells) {
    fill(year(2005), "rp_bankrecp", {"ccode | ibegin | ddate | mmoney | bd_c | csettle", cells});
  }
  void balance(const std::string& cells) {
    fill(year(2005), "gl_accsum", {"ccode | iperiod | cendd_c | cendd_c_engl | me", cells});
  }

  // The one account's page; empty findings: it agrees.
  BankCarry onlyPage() {
    const host::RunResult result = carry(2005);
    EXPECT_TRUE(result.success) << result.errMsg;
    if (!result.bank || result.bank->size() != 1) {
      ADD_FAILURE() << "not one account";
      return {};
    }
    return result.bank->front();
  }
};

TEST_F(BankCarryTest, AnAccountThatIsCarriedWholeAgrees) {
  balance("100201 | 12 | 借 | Dr | 120");
  line("100201 | 20 | 100 | 0 |");
  line("100201 | 6 | 30 | 0 | 收款");
  line("100201 | 7 | 0 | 10 | 付款");
  statement("100201 | 0 | 2005-01-01 | 100 | 1 |");
  fill(year(2005), "rp_cheque", {"cCode | ccheque_id | dout", "100201 | Q1 | Null", "100201 | Q2 | 2005-05-05"});
  turn(2005);
  const BankCarry page = onlyPage();
  EXPECT_TRUE(page.findings().empty());
  EXPECT_EQ(page.closingBalance, Money::parse("120"));
  EXPECT_EQ(page.ledgerBalance, Money::parse("120"));
  EXPECT_EQ(page.bankBalance, Money::parse("100"));
  EXPECT_EQ(page.lines.carried, 2);
  EXPECT_EQ(page.linesOnly, Money::parse("20"));
  EXPECT_EQ(page.cheques->open, 1);
  EXPECT_EQ(page.cheques->carried, 1);
}

TEST_F(BankCarryTest, AStageThatBreaksOffInSilenceIsSeen) {
  balance("100201 | 12 | 借 | Dr | 30");
  line("100201 | 6 | 10 | 0 | 收款");
  line("100201 | 7 | 20 | 0 | it's");  // closes its text early: the server refuses the line
  statement("100201 | 1 | 2005-06-06 | 5 | 1 |");
  fill(year(2005), "rp_cheque", {"cCode | ccheque_id", "100201 | Q1"});
  turn(2005);
  EXPECT_EQ(onlyPage().findings(), (std::vector<Finding>{Finding::balanceMissing, Finding::linesMissing,
                                                         Finding::statementsMissing, Finding::chequesMissing}));
}

TEST_F(BankCarryTest, ABalanceRowThatDoesNotFitTheLedgerIsSeen) {
  balance("100201 | 12 | 借 | Dr | 130");
  line("100201 | 20 | 90 | 0 |");
  line("100201 | 6 | 30 | 0 | 收款");
  turn(2005);
  const BankCarry page = onlyPage();
  EXPECT_EQ(page.findings(), std::vector<Finding>{Finding::balanceDiffers});
  EXPECT_EQ(page.difference(), Money::parse("-10"));
}

TEST_F(BankCarryTest, AStatementLineThatWasDroppedForItsStyleIsSeen) {
  balance("100201 | 12 | 借 | Dr | 30");
  line("100201 | 6 | 30 | 0 | 收款");
  statement("100201 | 1 | 2005-06-06 | 5 | 1 | 9");
  turn(2005);
  sql(year(2006), "delete from settlestyle where csscode=N'9'");
  EXPECT_EQ(onlyPage().findings(), std::vector<Finding>{Finding::statementsMissing});
}

TEST_F(BankCarryTest, LedgerAndBankThatDoNotMeetAreSeen) {
  balance("100201 | 12 | 借 | Dr | 30");
  line("100201 | 6 | 30 | 0 | 收款");
  statement("100201 | 0 | 2005-01-01 | 7 | 1 |");
  turn(2005);
  const BankCarry page = onlyPage();
  EXPECT_EQ(page.findings(), std::vector<Finding>{Finding::notReconciled});
  EXPECT_EQ(page.gap(), Money::parse("-7"));
}

TEST_F(BankCarryTest, ABalanceOnTheCreditSideIsNegative) {
  bank("100202", "0");
  sql(year(2005), "delete from code where ccode=N'100201'");
  balance("100202 | 12 | 贷 | Cr | 70");
  line("100202 | 20 | -100 | 0 |");
  line("100202 | 6 | 30 | 0 | 收款");
  statement("100202 | 0 | 2005-01-01 | 100 | 0 |");
  turn(2005);
  const BankCarry page = onlyPage();
  EXPECT_TRUE(page.findings().empty());
  EXPECT_EQ(page.closingBalance, Money::parse("-70"));
  EXPECT_EQ(page.bankBalance, Money::parse("-100"));
}

TEST_F(BankCarryTest, ARunThatStopsAtACheckHasNoPage) {
  host::openYear(server(), "001", 2006);  // 2005 has not been closed
  EXPECT_FALSE(carry(2005).bank);
}

}  // namespace
}  // namespace gljz::test
