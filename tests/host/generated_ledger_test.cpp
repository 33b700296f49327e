#include "host/generated_ledger.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace host {
namespace {

const Ledger& ledger() {
  static const Ledger made = makeLedger(3000, 2000, 5000, 800, 7);
  return made;
}

TEST(GeneratedLedgerTest, HasTheSizeThatWasAskedFor) {
  std::int64_t balances = 0;
  for (const LedgerAccount& a : ledger().accounts) balances += a.last && a.hasBalance;
  EXPECT_EQ(ledger().accounts.size(), 3000u);
  EXPECT_GE(balances, 2000);  // bank lines and the balancing account may add some
  EXPECT_EQ(ledger().items.size(), 5000u);
  EXPECT_EQ(ledger().bankLines.size(), 800u);
  EXPECT_EQ(ledger().statementLines.size(), 400u);
}

TEST(GeneratedLedgerTest, CodesAreUniqueSortedAndBeginWithTheirParents) {
  std::string last;
  for (const LedgerAccount& a : ledger().accounts) {
    EXPECT_LT(last, a.code);
    last = a.code;
    EXPECT_EQ(a.code.size(), static_cast<std::size_t>(2 + 2 * a.grade));
    if (a.parent == LedgerAccount::noParent) continue;
    const LedgerAccount& parent = ledger().accounts[a.parent];
    EXPECT_TRUE(a.code.starts_with(parent.code));
    EXPECT_FALSE(parent.last);
    EXPECT_EQ(a.kind, parent.kind);
  }
}

TEST(GeneratedLedgerTest, ParentsAreTheSumsOfTheirChildrenAndDebitsEqualCredits) {
  std::map<std::size_t, std::int64_t> sums;
  std::int64_t total = 0;
  for (const LedgerAccount& a : ledger().accounts)
    if (a.parent != LedgerAccount::noParent)
      sums[a.parent] += a.amount;
    else
      total += a.amount;
  for (const auto& [index, sum] : sums) EXPECT_EQ(ledger().accounts[index].amount, sum);
  EXPECT_EQ(total, 0);
}

TEST(GeneratedLedgerTest, AuxiliariesAddUpToTheirAccountAndItemsToTheirAuxiliary) {
  std::map<std::size_t, std::int64_t> ofAccount, ofAuxiliary;
  std::set<std::pair<std::size_t, int>> keys;
  for (const AuxiliaryBalance& a : ledger().auxiliaries) {
    ofAccount[a.account] += a.amount;
    EXPECT_TRUE(keys.insert({a.account, a.partner}).second) << "a partner stands twice on an account";
  }
  for (const auto& [index, sum] : ofAccount) EXPECT_EQ(ledger().accounts[index].amount, sum);
  for (const LedgerLine& line : ledger().items) ofAuxiliary[line.auxiliary] += line.amount;
  for (const auto& [index, sum] : ofAuxiliary) {
    EXPECT_TRUE(ledger().auxiliaries[index].fromItems);
    EXPECT_EQ(ledger().auxiliaries[index].amount, sum);
  }
}

TEST(GeneratedLedgerTest, SomeItemsAreClearedAfterTheYearAndOthersInItByTwosThatCancel) {
  int later = 0;
  for (const LedgerLine& line : ledger().items) {
    EXPECT_TRUE(line.clearedIn == 0 || line.clearedIn > 12);
    later += line.clearedIn > 12;
  }
  EXPECT_GT(later, 0);
  EXPECT_LT(later, 2500);
  const auto& cleared = ledger().clearedItems;
  ASSERT_EQ(cleared.size(), 2500u);
  for (std::size_t i = 0; i < cleared.size(); i += 2) {
    EXPECT_EQ(cleared[i].auxiliary, cleared[i + 1].auxiliary);
    EXPECT_EQ(cleared[i].amount + cleared[i + 1].amount, 0);
    EXPECT_LE(cleared[i].month, cleared[i + 1].month);
    EXPECT_EQ(cleared[i].clearedIn, cleared[i + 1].month);
    EXPECT_EQ(cleared[i + 1].clearedIn, cleared[i + 1].month);
  }
}

TEST(GeneratedLedgerTest, ABankAccountsBalanceIsItsOpeningAndItsOpenLines) {
  std::map<std::size_t, std::int64_t> sums;
  std::set<AccountKind> kinds;
  for (const BankOpening& opening : ledger().bankOpenings) {
    EXPECT_TRUE(sums.emplace(opening.account, opening.amount).second) << "an account has two openings";
    kinds.insert(ledger().accounts[opening.account].kind);
  }
  EXPECT_EQ(kinds, (std::set<AccountKind>{AccountKind::bank, AccountKind::foreign}));
  for (const LedgerLine& line : ledger().bankLines) sums[line.account] += line.amount;
  for (const auto& [index, sum] : sums) EXPECT_EQ(ledger().accounts[index].amount, sum);
}

TEST(GeneratedLedgerTest, AmountsInTheForeignCurrencyAreWholeHundredths) {
  const auto isForeign = [](const LedgerAccount& a) { return a.last && a.kind == AccountKind::foreign; };
  for (const auto* lines : {&ledger().bankLines, &ledger().statementLines})
    for (const LedgerLine& line : *lines) {
      if (isForeign(ledger().accounts[line.account])) {
        EXPECT_EQ(line.amount % foreignRate, 0);
      }
    }
  for (const LedgerAccount& a : ledger().accounts) {
    if (isForeign(a)) {
      EXPECT_EQ(a.amount % foreignRate, 0);
    }
  }
}

TEST(GeneratedLedgerTest, AThirdOfTheChequesHasBeenUsed) {
  ASSERT_EQ(ledger().cheques.size(), 80u);
  int used = 0;
  for (const Cheque& cheque : ledger().cheques) {
    EXPECT_GT(cheque.amount, 0);
    EXPECT_TRUE(isBank(ledger().accounts[cheque.account].kind));
    used += cheque.used;
  }
  EXPECT_EQ(used, 27);
}

TEST(GeneratedLedgerTest, TheSameSeedGivesTheSameLedger) {
  const Ledger again = makeLedger(3000, 2000, 5000, 800, 7), other = makeLedger(3000, 2000, 5000, 800, 8);
  bool differs = false;
  for (std::size_t i = 0; i < again.accounts.size(); ++i) {
    EXPECT_EQ(again.accounts[i].amount, ledger().accounts[i].amount);
    differs = differs || other.accounts[i].amount != ledger().accounts[i].amount;
  }
  EXPECT_TRUE(differs);
}

TEST(GeneratedLedgerTest, TheSequenceOfASeedIsFixed) {
  Random random(0);
  EXPECT_EQ(random.next(), 0xE220A8397B1DCDAFu);
  EXPECT_EQ(random.next(), 0x6E789E6AA1B965F4u);
}

TEST(GeneratedLedgerTest, TheSmallestLedgerStillHasEveryKind) {
  const Ledger small = makeLedger(1, 1000, 10, 10, 1);
  EXPECT_EQ(small.accounts.size(), static_cast<std::size_t>(kindCount + 1));
  EXPECT_EQ(small.items.size(), 10u);
  EXPECT_EQ(small.bankLines.size(), 10u);
}

}  // namespace
}  // namespace host
