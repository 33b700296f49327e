// Whole runs over generated account sets with open items and bank accounts: what is generated is carried and verified.

#include <set>

#include "host/carry_forward.h"
#include "host/generate.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

class GeneratedRunTest : public LedgerTest, public ::testing::WithParamInterface<std::uint64_t> {
protected:
  GeneratedRunTest() : LedgerTest(Layout::unmade) {
    host::GeneratedSize size;
    size.accounts = 80;
    size.balances = 60;
    size.items = 40;
    size.bank = 30;
    made_ = host::generateAccountSet(server(), "001", 2005, 2006, size, GetParam());
  }
  host::RunResult carry(const host::ConditionChoices& choices) {
    host::CarryForwardOptions options;
    options.server = host::parseServer("embedded:" + server()->folder());
    options.account = "001";
    options.closingYear = 2005;
    options.newYear = 2006;
    options.choices = choices;
    options.today = platform::DateTime::fromDate(2006, 1, 9);
    run = {};
    return host::carryForward(options);
  }
  static host::ConditionChoices detail() {
    host::ConditionChoices c;
    c.checks = {{"GL*PersonMXJZ", true}, {"GL*CusMXJZ", true}, {"GL*SupMXJZ", true}};
    c.customerDetail = c.supplierDetail = host::AccountChoice{true, {}};
    return c;
  }
  host::Generated made_;
};

TEST_P(GeneratedRunTest, EveryBalanceIsRight) {
  for (const host::ConditionChoices& choices : {host::ConditionChoices{}, detail()})
    EXPECT_EQ(host::exitCode(carry(choices)), 0);
}

TEST_P(GeneratedRunTest, TheOpenItemsAreThereLineByLineWithTheirSum) {
  carry(detail());
  expectRows(opening, "select count(*) from gl_accvouch where iyear=2006 and iperiod=0", {std::to_string(made_.items)});
  const std::string open =
      " from gl_accvouch v inner join code c on c.iyear=v.iyear and c.ccode=v.ccode where c.be=0 and "
      "(v.iflagPerson is null or v.wllqPeriod>=200600) group by v.ccode order by v.ccode";
  EXPECT_EQ(rows(opening,
                 "select v.ccode,sum(v.md),sum(v.mc) from gl_accvouch v where v.iyear=2006 and v.iperiod=0 "
                 "group by v.ccode order by v.ccode"),
            rows(closing, "select v.ccode,sum(v.md),sum(v.mc)" + open));
}

TEST_P(GeneratedRunTest, TheBankAccountsAgreeInBothCurrencies) {
  const host::RunResult result = carry({});
  ASSERT_TRUE(result.bank);
  std::set<std::string> currencies;
  std::int64_t lines = 0, statements = 0, cheques = 0;
  for (const host::BankCarry& account : *result.bank) {
    EXPECT_TRUE(account.findings().empty()) << account.account;
    currencies.insert(account.currency);
    lines += account.lines.carried;
    statements += account.statements.carried;
    cheques += account.cheques->carried;
  }
  EXPECT_EQ(currencies, (std::set<std::string>{"", "美元"}));
  EXPECT_EQ(lines, made_.bank);
  EXPECT_EQ(statements, made_.statements);
  EXPECT_EQ(cheques, 2);  // of three one has been used
}

INSTANTIATE_TEST_SUITE_P(Seeds, GeneratedRunTest, ::testing::Values(1, 77));

}  // namespace
}  // namespace gljz::test
