// The page about the bank accounts: findings, words, numbers.

#include "host/bank_page.h"

#include <gtest/gtest.h>

namespace host {
namespace {

using platform::Money;
using Finding = BankCarry::Finding;

// Book balance 100 with 30 that the bank has not seen yet, bank balance 90 with 20 that the books have not seen: 120 on
// either side.
BankCarry agreed() {
  BankCarry carry;
  carry.account = "100201";
  carry.name = "工行";
  carry.closingBalance = Money::parse("100");
  carry.ledgerBalance = Money::parse("100");
  carry.bankBalance = Money::parse("90");
  carry.lines = {2, 2};
  carry.linesOnly = Money::parse("30");
  carry.statements = {1, 1};
  carry.statementsOnly = Money::parse("20");
  carry.cheques = BankCarry::Count{1, 1};
  return carry;
}

TEST(BankPage, AnAccountThatAgreesHasNoFinding) {
  EXPECT_TRUE(agreed().findings().empty());
}

TEST(BankPage, WithoutAStatementThereIsNothingToReconcile) {
  BankCarry carry = agreed();
  carry.bankBalance.reset();
  EXPECT_TRUE(carry.findings().empty());
}

TEST(BankPage, ABalanceThatIsMissingIsAFindingWhereThereWasOneToCarry) {
  BankCarry carry = agreed();
  carry.ledgerBalance.reset();
  EXPECT_EQ(carry.findings(), std::vector<Finding>{Finding::balanceMissing});
  carry.closingBalance = {};
  EXPECT_EQ(carry.findings(), std::vector<Finding>{Finding::balanceMissing});  // its lines are there to carry
  carry.lines = {};
  carry.linesOnly = {};
  carry.bankBalance.reset();
  EXPECT_TRUE(carry.findings().empty());
}

TEST(BankPage, ADifferenceIsToldInsteadOfTheReconciliation) {
  BankCarry carry = agreed();
  carry.ledgerBalance = Money::parse("101.5");
  EXPECT_EQ(carry.findings(), std::vector<Finding>{Finding::balanceDiffers});
  EXPECT_EQ(carry.difference(), Money::parse("1.5"));
}

TEST(BankPage, WhatIsNotThereIsCounted) {
  BankCarry carry = agreed();
  carry.lines.carried = 1;
  carry.statements.open = 4;
  carry.cheques->carried = 0;
  EXPECT_EQ(carry.findings(),
            (std::vector<Finding>{Finding::linesMissing, Finding::statementsMissing, Finding::chequesMissing}));
  carry = agreed();
  carry.cheques.reset();
  EXPECT_TRUE(carry.findings().empty());
}

TEST(BankPage, LedgerAndBankThatComeToDifferentAmountsAreAFinding) {
  BankCarry carry = agreed();
  carry.bankBalance = Money::parse("95");
  EXPECT_EQ(carry.findings(), std::vector<Finding>{Finding::notReconciled});
  EXPECT_EQ(carry.gap(), Money::parse("-5"));
}

TEST(BankPage, TheTableHasARowForEachAccountInTheReadersWords) {
  BankCarry dollars = agreed();
  dollars.account = "100202";
  dollars.currency = "美元";
  dollars.ledgerBalance = Money::parse("70.25");
  dollars.lines = {3, 1};
  dollars.bankBalance.reset();
  dollars.cheques.reset();
  const ReportTable table = bankTable({agreed(), dollars}, Messages("zh-CN"));
  EXPECT_EQ(table.id, "bank");
  EXPECT_EQ(table.title, "银行账的结转");
  ASSERT_EQ(table.rows.size(), 2u);
  EXPECT_EQ(table.columns.size(), table.rows[0].size());
  EXPECT_EQ(table.rows[0],
            (std::vector<std::string>{"100201", "工行", "", "100.00", "100.00", "2", "90.00", "1", "1", "Y", "相符"}));
  EXPECT_EQ(table.rows[1], (std::vector<std::string>{"100202", "工行", "美元", "100.00", "70.25", "1", "", "1", "-",
                                                     "X", "结转余额与上年末余额相差 -29.75; 2 笔未达账项未结转"}));
  EXPECT_EQ(bankTable({dollars}, Messages("en-US")).rows[0].back(),
            "carried balance differs from the closing balance by -29.75; open lines not carried: 2");
  EXPECT_EQ(bankTable({dollars}, Messages("zh-TW")).rows[0].back(),
            "結轉餘額與上年末餘額相差 -29.75; 2 筆未達帳項未結轉");
}

TEST(BankPage, WithoutAnAccountThereIsNoTable) {
  EXPECT_TRUE(bankTable({}, Messages("zh-CN")).columns.empty());
}

TEST(BankPage, EveryFindingHasWordsInEachLanguage) {
  BankCarry carry = agreed();
  carry.ledgerBalance.reset();
  carry.lines.carried = 0;
  carry.statements.carried = 0;
  carry.cheques->carried = 0;
  BankCarry apart = agreed();
  apart.bankBalance = Money();
  for (const char* language : {"zh-CN", "zh-TW", "en-US"})
    for (const auto& row : bankTable({agreed(), carry, apart}, Messages(language)).rows) {
      EXPECT_FALSE(row.back().empty());
      EXPECT_EQ(row.back().find("Gljz.Host"), std::string::npos) << row.back();
    }
}

TEST(BankPage, JsonHasNumbersAndFindings) {
  BankCarry dollars = agreed();
  dollars.currency = "美元";
  dollars.ledgerBalance.reset();
  dollars.bankBalance.reset();
  dollars.cheques.reset();
  EXPECT_EQ(bankJson({}, Messages("en-US")), "[]");
  EXPECT_EQ(
      bankJson({agreed(), dollars}, Messages("en-US")),
      "[{\"account\": \"100201\", \"name\": \"工行\", \"currency\": \"\", \"closingBalance\": 100, \"balanceCarried\": "
      "100, \"statementBalance\": 90, \"lines\": {\"open\": 2, \"carried\": 2}, \"statementLines\": {\"open\": 1, "
      "\"carried\": 1}, \"cheques\": {\"open\": 1, \"carried\": 1}, \"agrees\": true, \"findings\": []}, {\"account\": "
      "\"100201\", \"name\": \"工行\", \"currency\": \"美元\", \"closingBalance\": 100, \"balanceCarried\": null, "
      "\"statementBalance\": null, \"lines\": {\"open\": 2, \"carried\": 2}, \"statementLines\": {\"open\": 1, "
      "\"carried\": 1}, \"cheques\": null, \"agrees\": false, \"findings\": [\"balance not carried\"]}]");
}

}  // namespace
}  // namespace host
