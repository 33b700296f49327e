// The bank stage broken at every call: what it leaves behind in both years, and that the run goes on.

#include "detail/jz_data.h"
#include "dialogs/frm_jzsn.h"
#include "host/messages.h"
#include "host/services.h"
#include "system/bank_fixture.h"
#include "system/fault_injection.h"
#include "system/observers.h"

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
    bool counted = false;
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
      if (broken_.starts_with("select count(1)")) {  // only the choice of the cursor depends on it: the client's
        EXPECT_EQ(after, whole);
        EXPECT_EQ(faults_->serverCursors(), 0);
        counted = true;
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
    EXPECT_TRUE(counted);
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

// --- The message

// The gate of the boxes is open here, which no run ever does. The ledger has one row, the balance of 100201, and the
// statements two.
class BankMessageTest : public BankFixture<LedgerTest> {
protected:
  BankMessageTest() {
    for (const std::string ccode : {"100201", "100202", "100203"}) bank(ccode);
    vouchers(closing, {"ccode | iperiod | md", "100201 | 20 | 70"});
    fill(closing, "rp_bankrecp",
         {"ccode | ibegin | ddate | mmoney | bd_c", "100201 | 0 | 2005-01-01 | 7 | 1",
          "100201 | 1 | 2005-06-06 | 8 | 1"});
    fill(closing, "rp_cheque", {"cCode | ccheque_id", "100201 | Q1", "100203 | Q2"});
    run.m_pubCls = services_ = std::make_shared<AskingServices>(run.m_pubCls);
    run.m_bBankTransfer = 2;
    run.m_bManual = run.m_bCancelable = true;
  }

  std::string idOf(const std::string& table, const std::string& condition) {
    return text(closing, "select i_id from " + table + " where " + condition);
  }
  void expectMessage(const std::string& id) {
    EXPECT_EQ(services_->boxes, (std::vector<Box>{{"JzYhData:failure to order-" + id, 0, ""}}));
  }

  std::shared_ptr<AskingServices> services_;
};

TEST_F(BankMessageTest, BeforeTheFirstLineOfTheLedgerNamesNone) {
  failAt("select top 1 * from gl_accvouch");
  JzYhData();
  expectMessage("");
}

TEST_F(BankMessageTest, InTheLedgerNamesItsLine) {
  vouchers(closing, {"ccode | md | cdigest", "100202 | 100 | 甲", "100202 | 200 | 乙", "100203 | 400 | 丙"});
  failAt("N'乙'");
  JzYhData();
  expectMessage(idOf("gl_accvouch", "cdigest=N'乙'"));
  expectRows(opening, "select md from gl_accvouch where iyear=2006 order by i_id", {"70", "100"});
}

TEST_F(BankMessageTest, InTheStatementsNamesTheStatementLine) {
  failAt("2005-06-06',8");
  JzYhData();
  expectMessage(idOf("rp_bankrecp", "ibegin=1"));
  expectRows(opening, "select ibegin from rp_bankrecp where iyear=2006", {"0"});
  expectRows(opening, "select * from rp_cheque", {});
}

TEST_F(BankMessageTest, BeforeTheFirstStatementLineNamesTheLastLineOfTheLedger) {
  failAt("delete from rp_bankrecp");
  JzYhData();
  expectMessage(idOf("gl_accvouch", "iperiod=20"));
}

// A cheque has no identity of its own to name.
TEST_F(BankMessageTest, InTheChequesNamesTheLastStatementLine) {
  fill(closing, "rp_bankrecp", {"ccode | ibegin | ddate | mmoney | bd_c", "100202 | 0 | 2005-01-01 | 9 | 1"});
  failAt("select ccode from code where iyear=2006 and ccode=N'100203'");
  JzYhData();
  expectMessage(idOf("rp_bankrecp", "ccode=N'100202'"));
  expectRows(opening, "select ccheque_id from rp_cheque", {"Q1"});
}

TEST_F(BankMessageTest, IsTheOnlyTraceAndTheStagesBehindTheBankRun) {
  vouchers(closing, {"ccode | md | cdigest", "100202 | 100 | 甲"});
  fill(closing, "GL_mybooktype", {"cid", "日记"});
  failAt("N'甲'");
  JzData();
  ASSERT_FALSE(services_->boxes.empty());
  EXPECT_EQ(services_->boxes.front(),
            (Box{"JzYhData:failure to order-" + idOf("gl_accvouch", "cdigest=N'甲'"), 0, ""}));
  expectRows(opening, "select ibegin from rp_bankrecp where iyear=2006", {});
  expectRows(opening, "select ccheque_id from rp_cheque", {});
  EXPECT_TRUE(notCarried().empty());
  expectRows(opening, "select cid from GL_mybooktype", {"日记"});
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--自定义项结转");
  EXPECT_EQ(run.m_strMsg, "");
}

// --- The statement that a failure text would name

struct BankSelection {
  std::uint8_t bankTransfer;
  const char* text;
};
void PrintTo(const BankSelection& selection, std::ostream* out) {
  *out << static_cast<int>(selection.bankTransfer) << ": " << selection.text;
}

class BankSelectionTest : public BankFixture<LedgerTest>, public ::testing::WithParamInterface<BankSelection> {};

TEST_P(BankSelectionTest, IsTheOneThatFailed) {
  run.m_bBankTransfer = GetParam().bankTransfer;
  failAt(GetParam().text);
  JzYhData();
  EXPECT_EQ(statements().back().text, GetParam().text);
  EXPECT_EQ(run.m_strLastSql, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Steps, BankSelectionTest,
    ::testing::Values(
        BankSelection{2,
                      "select gl_accvouch.*,code.ccode_name from code inner join gl_accvouch on "
                      "code.ccode=gl_accvouch.ccode  and code.iyear=gl_accvouch.iyear where code.bend=1 and code.be=1 "
                      "and not gl_accvouch.ccode is null and not gl_accvouch.bdelete=1  and code.iyear=2005  and "
                      "(gl_accvouch.iFlagBank Is NULL Or gl_accvouch.iFlagBank = 0)  and gl_accvouch.iflag is null "
                      "order by gl_accvouch.ccode,gl_accvouch.cexch_name"},
        BankSelection{1,
                      "select gl_accvouch.*,code.ccode_name from code inner join gl_accvouch on "
                      "code.ccode=gl_accvouch.ccode  and code.iyear=gl_accvouch.iyear where code.bend=1 and code.be=1 "
                      "and not gl_accvouch.ccode is null and not gl_accvouch.bdelete=1  and code.iyear=2005  and "
                      "(gl_accvouch.iFlagBank Is NULL Or gl_accvouch.iFlagBank = 0 Or gl_accvouch.iFlagBank >= 1 And "
                      "gl_accvouch.iFlagBank <= 24)  and gl_accvouch.iflag is null order by "
                      "gl_accvouch.ccode,gl_accvouch.cexch_name"},
        BankSelection{2,
                      "select distinct rp_bankrecp.ccode,code.ccode_name from code inner join rp_bankrecp on "
                      "code.ccode=rp_bankrecp.ccode  and code.iyear=rp_bankrecp.iyear where code.bend=1 and code.be=1 "
                      "and not rp_bankrecp.ccode is null and code.iyear=2005  and rp_bankrecp.iflag is null "},
        BankSelection{1,
                      "select distinct rp_bankrecp.ccode,code.ccode_name from code inner join rp_bankrecp on "
                      "code.ccode=rp_bankrecp.ccode  and code.iyear=rp_bankrecp.iyear where code.bend=1 and code.be=1 "
                      "and not rp_bankrecp.ccode is null and code.iyear=2005 "},
        BankSelection{2,
                      "select rp_bankrecp.*,code.ccode_name from code inner join rp_bankrecp on "
                      "code.ccode=rp_bankrecp.ccode  and code.iyear=rp_bankrecp.iyear where code.bend=1 and code.be=1 "
                      "and not rp_bankrecp.ccode is null and not rp_bankrecp.bdelete=1 and code.iyear=2005  and "
                      "rp_bankrecp.iflag is null  order by code.ccode,rp_bankrecp.cexch_name "},
        BankSelection{1,
                      "select rp_bankrecp.*,code.ccode_name from code inner join rp_bankrecp on "
                      "code.ccode=rp_bankrecp.ccode  and code.iyear=rp_bankrecp.iyear where code.bend=1 and code.be=1 "
                      "and not rp_bankrecp.ccode is null and not rp_bankrecp.bdelete=1 and code.iyear=2005  order by "
                      "code.ccode,rp_bankrecp.cexch_name "},
        BankSelection{2,
                      "select A.*,C.ccode_name from TqData_001_2005..code  C inner join TqData_001_2005..rp_cheque A "
                      "on C.ccode=A.ccode and c.iyear= 2005 Where C.bEnd = 1 And C.be = 1 And Not A.ccode Is Null And "
                      "A.dout Is Null  and A.ccheque_id not in ( select ccheque_id from TqData_001_2006..rp_cheque B "
                      ")"}));

// What stands between a selection and the next one is not named.
TEST_F(BankMessageTest, TheSelectionIsNamedAndNotTheLineThatFailed) {
  const std::vector<std::pair<std::string, std::string>> failures{
      {"select sum(md) as zd1", "select gl_accvouch.*"},
      {"insert into gl_accvouch(iyear", "select gl_accvouch.*"},
      {"delete from rp_bankrecp", "select gl_accvouch.*"},
      {"and ibegin=0", "select distinct rp_bankrecp.ccode"},
      {"insert into RP_bankrecp", "select rp_bankrecp.*"},
      {"select top 1 * from rp_cheque", "select rp_bankrecp.*"},
      {"select ccode from code where iyear=2006 and ccode=N'100203'", "select A.*,C.ccode_name"}};
  for (const auto& [failing, named] : failures) {
    failAt(failing);
    JzYhData();
    EXPECT_TRUE(run.m_strLastSql.starts_with(named)) << failing << ": " << run.m_strLastSql;
  }
  EXPECT_EQ(services_->boxes.size(), failures.size());
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
