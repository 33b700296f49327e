#include "balances/account_totals.h"

#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

class AccountTotalsTest : public LedgerTest {
protected:
  // A balance at the end of the closing year.
  void balance(const std::string& ccode, const std::string& direction, const std::string& me) {
    const std::string english = direction == "借" ? "Dr" : direction == "贷" ? "Cr" : "-";
    fill(closing, "gl_accsum",
         {"ccode | iperiod | cendd_c | cendd_c_engl | me", ccode + "|12|" + direction + "|" + english + "|" + me});
  }
};

TEST_F(AccountTotalsTest, ABalanceBecomesTwelveEqualRows) {
  account("1001");
  balance("1001", "借", "100.25");
  JzAccSum();
  std::vector<std::string> expected;
  for (int period = 1; period <= 12; ++period)
    expected.push_back("1001 | Null | " + std::to_string(period) +
                       " | 借 | Dr | 100.25 | 0 | 0 | 0 | 0 | 借 | Dr | 100.25 | 0 | 0");
  expectRows(opening,
             "select ccode,cexch_name,iperiod,cbegind_c,cbegind_c_engl,mb,mb_f,nb_s,md,mc,cendd_c,cendd_c_engl,me,"
             "me_f,ne_s from gl_accsum where iyear=2006 order by iperiod",
             expected);
}

TEST_F(AccountTotalsTest, AWholeRunCarriesTheBalances) {
  account("1001");
  balance("1001", "借", "100.25");
  const Outcome outcome = transfer();
  EXPECT_TRUE(outcome.returned) << outcome.errMsg;
  EXPECT_TRUE(outcome.success) << outcome.errMsg;
  expectRows(opening, "select ccode,count(*),sum(mb) from gl_accsum where iyear=2006 group by ccode",
             {"1001 | 12 | 1203"});
}

}  // namespace
}  // namespace gljz::test
