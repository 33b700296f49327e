// Line by line: what the progress form shows while a stage walks through its rows, and that window events get through
// once a row, in a run that nobody watches as well.

#include "detail/jz_data.h"
#include "driver/current_account_checks.h"
#include "system/bank_fixture.h"
#include "system/open_items_fixture.h"
#include "system/progress_observer.h"

namespace gljz::test {
namespace {

using Rounds = std::vector<Round>;

template <class Base>
class Observed : public Base {
protected:
  Observed() { run.m_pubCls = std::make_shared<KeyedServices>(run.m_pubCls); }

  static void watch() {
    run.m_bManual = true;
    SetupImbalanceGrid(4);
  }
  // As in a run that nobody watches: the same rounds, and no form.
  static Rounds withoutCaptions(Rounds rounds) {
    for (Round& round : rounds) round.caption.clear();
    return rounds;
  }

  RecordingForms window_{this->surroundings_};
};

// --- The checks of cleared items

class CheckProgressTest : public Observed<VoucherLines<LedgerTest>> {
protected:
  // One group of persons, two of customers, one of suppliers.
  CheckProgressTest() {
    run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = 2;
    vouchers(closing, {"ccode | cdept_id | cperson_id | ccus_id | csup_id | md | mc | iflagPerson | wllqPeriod",
                       "1133 | 01 | P1 | | | 5 | 5 | 1 | 200512", "1131 | | | C1 | | 5 | 5 | 1 | 200512",
                       "1131 | | | C2 | | 5 | 5 | 1 | 200512", "2121 | | | | V1 | 5 | 5 | 1 | 200512"});
  }
  static constexpr const char* persons = "结转函数--条件判断-判断个人往来借贷是否平衡 ";
  static constexpr const char* customers = "结转函数--条件判断-判断客户往来借贷是否平衡";
  static constexpr const char* suppliers = "结转函数--条件判断-判断供应商往来借贷是否平衡 ";
  const Rounds all_{{persons, "Orvo.GL.TqGLJZ.00069 1133"},   {persons, "Orvo.GL.TqGLJZ.00071"},
                    {customers, "Orvo.GL.TqGLJZ.00079 1131"}, {customers, "Orvo.GL.TqGLJZ.00079 1131"},
                    {customers, "Orvo.GL.TqGLJZ.00081"},      {suppliers, "Orvo.GL.TqGLJZ.00089 2121"},
                    {suppliers, "Orvo.GL.TqGLJZ.00091"}};
};

TEST_F(CheckProgressTest, ShowsTheAccountOfEachGroupAndThatThePartnersAreDone) {
  run.m_bManual = true;
  EXPECT_EQ(CheckCurrentAccounts(), CheckOutcome::goOn);
  EXPECT_EQ(window_.rounds, all_);
}

TEST_F(CheckProgressTest, LetsEventsInOnceAGroupAndOnceAPartnerWhenNobodyWatches) {
  EXPECT_EQ(CheckCurrentAccounts(), CheckOutcome::goOn);
  EXPECT_EQ(window_.rounds, withoutCaptions(all_));
}

TEST_F(CheckProgressTest, LetsNoneInForPartnersThatAreNotChecked) {
  run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = 1;
  EXPECT_EQ(CheckCurrentAccounts(), CheckOutcome::goOn);
  EXPECT_EQ(window_.rounds, Rounds{});
}

// --- Open items

class OpenItemProgressTest : public Observed<OpenItems<LedgerTest>> {
protected:
  // Of each party one line that is carried and one that is left out.
  OpenItemProgressTest() {
    account(closing, "1134", {"bperson", "1"});
    account(closing, "1132", {"bcus", "1"});
    account(closing, "2122", {"bsup", "1"});
    vouchers(closing, {"ccode | cdept_id | cperson_id | ccus_id | csup_id | md", "1133 | 01 | P1 | | | 1",
                       "1134 | 01 | P1 | | | 2", "1131 | | | C1 | | 3", "1132 | | | C1 | | 4", "113101 | | | C1 | | 5",
                       "2121 | | | | V1 | 6", "2122 | | | | V1 | 7"});
  }
  const Rounds all_{{"", "Orvo.GL.TqGLJZ.00130 1133"},   {"", "Orvo.GL.TqGLJZ.00130 1134"},
                    {"", "Orvo.GL.TqGLJZ.00144 1131"},   {"", "Orvo.GL.TqGLJZ.00144 1132"},
                    {"", "Orvo.GL.TqGLJZ.00144 113101"}, {"", "Orvo.GL.TqGLJZ.00160 2121"},
                    {"", "Orvo.GL.TqGLJZ.00160 2122"}};
};

TEST_F(OpenItemProgressTest, ShowsTheAccountOfEachLineByParty) {
  watch();
  carry();
  EXPECT_EQ(window_.rounds, all_);
  expectOpening("md", {"1", "3", "6"});
}

TEST_F(OpenItemProgressTest, LetsEventsInOnceALineWhenNobodyWatches) {
  carry();
  EXPECT_EQ(window_.rounds, withoutCaptions(all_));
}

// --- The bank

class BankProgressTest : public Observed<BankFixture<LedgerTest>> {
protected:
  // Of each step lines that are carried and one that is left out. 100209 is unknown to the new year.
  BankProgressTest() {
    run.m_bBankTransfer = 2;
    bank("100201");
    bank(closing, "100209");
    vouchers(closing, {"ccode | iperiod | md", "100201 | 20 | 1", "100201 | 6 | 2", "100209 | 20 | 4"});
    fill(closing, "rp_bankrecp",
         {"ccode | ibegin | mmoney | csettle", "100201 | 0 | 1 |", "100201 | 1 | 2 | 9", "100209 | 0 | 4 |"});
    fill(closing, "rp_cheque", {"cCode | ccheque_id", "100201 | Q1", "100209 | Q2"});
  }
  static constexpr const char* ledger = "结转函数--结转未核销银行账 ";
  static constexpr const char* statementLines = "结转函数--结转银行对账单RP_bankrecp";
  static constexpr const char* cheques = "结转函数--结转支票登记簿RP_cheque";
  const Rounds all_{{ledger, "Orvo.GL.TqGLJZ.00185 100201"},         {ledger, "Orvo.GL.TqGLJZ.00185 100201"},
                    {ledger, "Orvo.GL.TqGLJZ.00185 100209"},         {statementLines, "Orvo.GL.TqGLJZ.00205 100201"},
                    {statementLines, "Orvo.GL.TqGLJZ.00205 100201"}, {statementLines, "Orvo.GL.TqGLJZ.00205 100209"},
                    {cheques, "Orvo.GL.TqGLJZ.00215 100201"},        {cheques, "Orvo.GL.TqGLJZ.00215 100209"}};
};

TEST_F(BankProgressTest, ShowsTheAccountOfEachLineByStep) {
  watch();
  JzYhData();
  EXPECT_EQ(window_.rounds, all_);
}

TEST_F(BankProgressTest, LetsEventsInOnceALineWhenNobodyWatches) {
  JzYhData();
  EXPECT_EQ(window_.rounds, withoutCaptions(all_));
}

// --- Between the bank and the settings tables

template <class Ledger>
class OtherDataProgress : public Observed<Ledger> {
protected:
  // How often the text stood there, still under the name of the last step of the bank.
  std::size_t shown() const {
    std::size_t count = 0;
    for (const Round& round : this->window_.rounds)
      count += round == Round{"结转函数--结转支票登记簿RP_cheque", "Orvo.GL.TqGLJZ.00176"} ? 1u : 0u;
    return count;
  }
};
class OtherDataProgressTest : public OtherDataProgress<LedgerTest> {};
class SharedOtherDataProgressTest : public OtherDataProgress<SharedLedgerTest> {};

TEST_F(OtherDataProgressTest, ShowsThatOtherDataFollowTheBank) {
  watch();
  JzData();
  EXPECT_EQ(shown(), 1u);
}

TEST_F(SharedOtherDataProgressTest, ShowsThatOtherDataFollowTheBankInOneDatabaseToo) {
  watch();
  JzData();
  EXPECT_EQ(window_.rounds, (Rounds{{"结转函数--结转支票登记簿RP_cheque", "Orvo.GL.TqGLJZ.00176"}}));
}

TEST_F(SharedOtherDataProgressTest, LetsEventsInWhenNobodyWatches) {
  JzData();
  EXPECT_EQ(window_.rounds, (Rounds{{"结转函数--结转支票登记簿RP_cheque", ""}}));
}

}  // namespace
}  // namespace gljz::test
