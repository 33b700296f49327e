// The bank stage broken at every call: what it leaves behind in both years, and that the run goes on.

#include "dialogs/frm_jzsn.h"
#include "host/messages.h"
#include "host/services.h"
#include "system/bank_fixture.h"
#include "system/fault_injection.h"

namespace gljz::test {
namespace {

using Lines = std::vector<std::string>;

bool isPrefix(const Lines& part, const Lines& whole) {
  return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
}

template <class Ledger>
class BankFailuresFixture : public BankFixture<Ledger> {
protected:
  BankFailuresFixture() {
    for (const std::string ccode : {"100201", "100202"}) this->bank(ccode);
    this->surroundings_.newServices = [this] {
      return host::makeServices({[this] { return faultyConnection(faults_, embedded::makeConnection()); }, nullptr,
                                 std::make_shared<host::Messages>("zh-CN"), "zh-CN", "赵六"});
    };
    reset();
    this->prepareRun();
    if (separateDatabases()) run.m_conn = faultyConnection(faults_, run.m_conn);
    run.m_strCurYear = "2006";
    run.m_bBankTransfer = 2;
    run.m_bManual = true;
    frmJZSN.unload();
  }

  // As it was before the stage: lines in two accounts, one account without an opening row of its statements and one
  // with two, a protected and an old statement line in the new year, cheques.
  void reset() {
    for (const Side& side : {this->opening, this->closing})
      this->sql(side, "delete from gl_accvouch delete from rp_bankrecp delete from rp_cheque");
    this->vouchers(this->closing, {"ccode | md", "100201 | 100", "100201 | 200", "100202 | 400"});
    this->sql(this->closing,
              "insert into rp_bankrecp(iyear,ibegin,ccode,mmoney,bd_c) values(2005,1,N'100201',5,1) "
              "insert into rp_bankrecp(iyear,ibegin,ccode,mmoney,bd_c) values(2005,0,N'100202',60,1) "
              "insert into rp_bankrecp(iyear,ibegin,ccode,mmoney,bd_c) values(2005,0,N'100202',70,1) "
              "insert into rp_cheque(cCode,ccheque_id) values(N'100201',N'Q1') "
              "insert into rp_cheque(cCode,ccheque_id) values(N'100202',N'Q2')");
    this->sql(this->opening,
              "insert into rp_bankrecp(iyear,ibegin,ccode,mmoney) values(2006,2,N'100201',9) "
              "insert into rp_bankrecp(iyear,ibegin,ccode,mmoney) values(2006,1,N'100201',8)");
  }

  struct State {
    Lines ledger, statements, cheques;  // new year, as written
    Lines markers, openings;            // closing year
    bool operator==(const State&) const = default;
  };
  State state() {
    return {
        this->carried("iperiod,ccode,md"),
        this->rows(this->opening, "select ibegin,ccode,mmoney from rp_bankrecp where iyear=2006 order by i_id"),
        this->rows(this->opening, "select cCode,ccheque_id from rp_cheque order by ccheque_id"),
        this->rows(this->closing, "select ccode,md from gl_accvouch where iyear=2005 and iperiod=20 order by ccode"),
        this->rows(this->closing,
                   "select ccode,mmoney from rp_bankrecp where iyear=2005 and ibegin=0 order by ccode,mmoney")};
  }

  // In the run's transaction. True when the failure came to the caller.
  bool carryOut(int failAt) {
    frmJZSN.unload();
    newConn().BeginTrans();
    faults_->failAt(failAt);
    bool cameThrough = false;
    try {
      JzYhData();
    } catch (const platform::RunTimeError&) {
      cameThrough = true;
    }
    broken_ = faults_->failed();
    faults_->failAt(0);
    newConn().CommitTrans();
    return cameThrough;
  }

  void breakEverywhere() {
    const State before = state();
    ASSERT_FALSE(carryOut(0));
    const State whole = state();
    ASSERT_NE(whole, before);
    int n = 1;
    std::size_t ledgerLines = 0;
    for (;; ++n) {
      reset();
      const bool cameThrough = carryOut(n);
      if (broken_.empty()) break;
      SCOPED_TRACE("call " + std::to_string(n) + ": " + broken_);
      const State after = state();
      EXPECT_EQ(run.m_strMsg, "");
      if (n == 1) {
        EXPECT_TRUE(cameThrough);  // the markers stand before the trap
        EXPECT_EQ(after, before);
        continue;
      }
      EXPECT_FALSE(cameThrough);
      EXPECT_EQ(after.markers, whole.markers);
      if (broken_.starts_with("select count(1)")) {  // only the choice of the cursor depends on it
        EXPECT_EQ(after, whole);
        continue;
      }
      EXPECT_TRUE(isPrefix(after.ledger, whole.ledger));
      EXPECT_GE(after.ledger.size(), ledgerLines);
      ledgerLines = after.ledger.size();

      const bool ledgerDone = frmJZSN().Label2(4) == "Y", statementsDone = frmJZSN().Label2(5) == "Y";
      EXPECT_EQ(frmJZSN().Label2(6), "");
      if (ledgerDone) {
        EXPECT_EQ(after.ledger, whole.ledger);
      } else {
        EXPECT_EQ(after.statements, before.statements);
        EXPECT_EQ(after.openings, before.openings);
        EXPECT_FALSE(statementsDone);
      }
      const bool cleared = after.statements != before.statements;
      EXPECT_TRUE(!cleared || isPrefix(after.statements, whole.statements));
      EXPECT_TRUE(!cleared || after.statements.size() == 1 || after.openings == whole.openings);
      if (statementsDone) {
        EXPECT_EQ(after.statements, whole.statements);
      } else {
        EXPECT_EQ(after.cheques, before.cheques);
      }
      EXPECT_TRUE(isPrefix(after.cheques, whole.cheques));
      repairs(whole);
    }
    EXPECT_GT(n, 40);
    EXPECT_EQ(state(), whole);
  }

  // The next run, whose earlier stages have removed the new year's bank ledger, gets through as the first would have.
  void repairs(const State& whole) {
    this->sql(this->opening, "delete from gl_accvouch where iyear=2006");
    ASSERT_FALSE(carryOut(0));
    EXPECT_EQ(state(), whole);
  }

  const std::shared_ptr<Faults> faults_ = std::make_shared<Faults>();
  std::string broken_;
};

class BankFailuresTest : public BankFailuresFixture<LedgerTest> {};
class SharedBankFailuresTest : public BankFailuresFixture<SharedLedgerTest> {};

TEST_F(BankFailuresTest, EveryFailureEndsTheStageAndLeavesWhatWasWritten) {
  breakEverywhere();
}

TEST_F(SharedBankFailuresTest, EveryFailureEndsTheStageInOneDatabaseToo) {
  breakEverywhere();
}

TEST_F(BankFailuresTest, TheMarkersStayWhenTheTransactionIsUndone) {
  newConn().BeginTrans();
  JzYhData();
  newConn().RollbackTrans();
  EXPECT_TRUE(state().ledger.empty());
  EXPECT_EQ(state().markers, (Lines{"100201\t0", "100202\t0"}));
}

TEST_F(SharedBankFailuresTest, InOneDatabaseTheyGoWithIt) {
  newConn().BeginTrans();
  JzYhData();
  newConn().RollbackTrans();
  EXPECT_TRUE(state().markers.empty());
}

TEST_F(BankFailuresTest, FewLinesAreHeldInMemory) {
  JzYhData();
  EXPECT_EQ(faults_->serverCursors(), 0);
}

TEST_F(BankFailuresTest, From200000LinesTheServerKeepsThem) {
  // The new year's database is asked, so it is there that the closing year's lines count.
  sql(opening, "insert into code(iyear,ccode,ccode_name,be) values(2005,N'100201',N'工行',1)");
  vouchers({opening.database, 2005}, {"ccode | md", "100201 | 1"});
  const auto copy = [this](const std::string& top) {
    sql(opening, "insert into gl_accvouch(iyear,iperiod,inid,dbill_date,ccode) select " + top +
                     " iyear,iperiod,inid,dbill_date,ccode from gl_accvouch where iyear=2005");
  };
  for (int lines = 1; lines < 131072; lines *= 2) copy("");
  copy("top 68927");  // 199,999
  JzYhData();
  EXPECT_EQ(faults_->serverCursors(), 0);
  const Lines inMemory = state().ledger;

  copy("top 1");
  sql(opening, "delete from gl_accvouch where iyear=2006");
  JzYhData();
  EXPECT_EQ(faults_->serverCursors(), 1);
  EXPECT_EQ(state().ledger, inMemory);
}

// --- In a whole run

class BankFailureInARunTest : public BankFixture<LedgerTest> {};

// An apostrophe in a text ends its literal early, so that the server refuses the line.
TEST_F(BankFailureInARunTest, ABrokenLineEndsTheBankStageAndTheRunGoesOnWithoutATrace) {
  bank("100201");
  sql(opening, "insert into settlestyle(csscode,cssname) values(N'1',N'支票')");
  vouchers(closing, {"ccode | md | cdigest", "100201 | 100 | 收款", "100201 | 200 | it's"});
  sql(closing, "insert into rp_cheque(cCode,ccheque_id) values(N'100201',N'Q1')");
  const Outcome outcome = transfer();
  EXPECT_TRUE(outcome.returned) << outcome.errMsg;
  EXPECT_TRUE(outcome.success) << outcome.errMsg;
  expectCarried("iperiod,md", {"21 | 100"});
  expectRows(opening, "select * from rp_cheque", {});
  EXPECT_FALSE(wasRun("rp_bankrecp where"));
  EXPECT_TRUE(wasRun("GL_QcUserDef"));  // the stages behind the bank
  EXPECT_TRUE(wasRun("update gl_yearstate set iIsUnload=1"));
}

}  // namespace
}  // namespace gljz::test
