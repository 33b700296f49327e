// The ledger stages on databases: what a failure in the middle leaves behind, and which opening details a later year of
// one database loses.

#include "detail/jz_data.h"
#include "system/bank_fixture.h"
#include "system/progress_observer.h"

namespace gljz::test {
namespace {

// --- A failure in the middle

// Something to carry for each stage: totals of all three kinds, an open item, a bank line, a statement line, a cheque,
// a settings table.
class BrokenSequenceTest : public BankFixture<LedgerTest> {
protected:
  BrokenSequenceTest() {
    bank("100201");
    account("1133", {"bperson", "1"});
    for (const Side& side : {closing, opening}) {
      fill(side, "Department", {"cDepCode | cDepName", "01 | 财务部"});
      fill(side, "Person", {"cPersonCode | cPersonName", "P1 | 张三"});
    }
    fill(opening, "settlestyle", {"csscode | cssname", "1 | 支票"});  // no bank account without one
    fill(closing, "gl_accsum",
         {"ccode | iperiod | me | cendd_c | cendd_c_engl", "100201 | 12 | 70 | 借 | Dr", "1133 | 12 | 100 | 借 | Dr"});
    fill(closing, "gl_accass",
         {"ccode | cdept_id | cperson_id | iperiod | me | cendd_c | cendd_c_engl",
          "1133 | 01 | P1 | 12 | 100 | 借 | Dr"});
    fill(closing, "gl_accMultiass", {"ccode | cdept_id | cperson_id | iperiod | me", "1133 | 01 | P1 | 12 | 100"});
    vouchers(closing,
             {"ccode | cdept_id | cperson_id | md | cdigest", "1133 | 01 | P1 | 100 | 借款", "100201 | | | 70 | 收款"});
    fill(closing, "rp_bankrecp", {"ccode | ibegin | mmoney | bd_c", "100201 | 1 | 60 | 1"});
    fill(closing, "rp_cheque", {"cCode | ccheque_id", "100201 | Q1"});
    fill(closing, "GL_mybooktype", {"cid", "日记"});
  }

  void expectTotals() {
    expectRows(opening,
               "select ccode,count(*),min(mb),max(me) from gl_accsum where iyear=2006 group by ccode order by 1",
               {"100201 | 12 | 70 | 70", "1133 | 12 | 100 | 100"});
    expectRows(opening,
               "select ccode,cdept_id,cperson_id,count(*),min(mb),max(me) from gl_accass where iyear=2006 group by "
               "ccode,cdept_id,cperson_id",
               {"1133 | 01 | P1 | 12 | 100 | 100"});
  }
  // How many rows stand behind the totals: in the new year, and of the bank stage in the closing one.
  std::vector<std::string> behindTheTotals() {
    const auto count = [this](const Side& side, const std::string& from) {
      return text(side, "select count(*) from " + from);
    };
    return {count(opening, "gl_accMultiass where iyear=2006") + " multi-auxiliary totals",
            count(opening, "gl_accvouch where iyear=2006 and iperiod=0") + " opening details",
            count(opening, "gl_accvouch where iyear=2006 and iperiod>19") + " bank lines",
            count(opening, "rp_bankrecp where iyear=2006") + " statement lines",
            count(opening, "rp_cheque") + " cheques",
            count(opening, "GL_mybooktype") + " settings",
            count(closing, "gl_accvouch where iyear=2005 and iperiod=20") + " markers"};
  }
};

TEST_F(BrokenSequenceTest, AFailureInTheMultiAuxiliaryTotalsLeavesTheTotalsBeforeThemAndNothingBehindThem) {
  failAt("delete from gl_accMultiass");
  const Outcome outcome = transfer({{"GL*PersonMXJZ", true}});
  EXPECT_TRUE(outcome.returned) << outcome.errMsg;
  EXPECT_TRUE(outcome.success);
  EXPECT_EQ(outcome.message, "");
  EXPECT_TRUE(wasRun("commit"));
  EXPECT_FALSE(wasRun("rollback"));
  expectTotals();
  EXPECT_EQ(behindTheTotals(),
            (std::vector<std::string>{"0 multi-auxiliary totals", "0 opening details", "0 bank lines",
                                      "0 statement lines", "0 cheques", "0 settings", "0 markers"}));
  EXPECT_FALSE(wasRun("GL_qcuserdef"));
  EXPECT_TRUE(wasRun("update gl_yearstate set iIsUnload=1"));
}

// The same run without the failure: there was something to leave behind.
TEST_F(BrokenSequenceTest, TheNextRunCarriesEverything) {
  failAt("delete from gl_accMultiass");
  ASSERT_TRUE(transfer({{"GL*PersonMXJZ", true}}).success);
  const Outcome outcome = transfer({{"GL*PersonMXJZ", true}});
  EXPECT_TRUE(outcome.success);
  expectTotals();
  EXPECT_EQ(behindTheTotals(),
            (std::vector<std::string>{"12 multi-auxiliary totals", "1 opening details", "2 bank lines",
                                      "2 statement lines", "1 cheques", "1 settings", "1 markers"}));
  expectRows(opening, "select cdigest from gl_accvouch where iyear=2006 and iperiod=0", {"借款"});  // item, not balance
  EXPECT_TRUE(wasRun("Delete From GL_qcuserdef"));
}

// --- Opening details of a later year in one database

// Behind the auxiliary totals, which remove the opening details, another one turns up: somebody keys it in while the
// multi-auxiliary totals let window events through.
template <class Ledger>
class LateDetail : public VoucherLines<Ledger> {
protected:
  LateDetail() {
    this->account("1131", {"bcus", "1"});
    this->fill(this->closing, "Customer", {"cCusCode | cCusName | cCusAbbName", "C1 | 北一公司 | 北一"});
    if (separateDatabases())
      this->fill(this->opening, "Customer", {"cCusCode | cCusName | cCusAbbName", "C1 | 北一公司 | 北一"});
    this->fill(this->closing, "gl_accMultiass", {"ccode | ccus_id | iperiod | me", "1131 | C1 | 12 | 100"});
    this->vouchers(this->closing, {"ccode | iperiod | md", "1131 | 0 | 5"});
    this->vouchers(this->opening, {"ccode | iperiod | md", "1131 | 1 | 7"});
    run.m_iCusMode = 2;  // no opening rows of balances
    window_.whenLetIn = [this] {
      if (run.m_strFuncDesc != "结转函数--结转多辅助总账GL_accass" || keyedIn_) return;
      keyedIn_ = true;
      newConn().ExecuteSql(
          "insert into gl_accvouch(iyear,iperiod,inid,idoc,dbill_date,ccode,md) "
          "values(2006,0,1,0,'2006-01-01',N'1131',9)");
    };
  }
  void expectAfterwards(const std::vector<std::string>& details) {
    JzData();
    EXPECT_TRUE(keyedIn_);
    this->expectRows(this->opening, "select iperiod,md from gl_accvouch where iyear=2006 order by iperiod", details);
    this->expectRows(this->closing, "select iperiod,md from gl_accvouch where iyear=2005", {"0 | 5"});
  }

  RecordingForms window_{this->surroundings_};
  bool keyedIn_ = false;
};

class LateDetailTest : public LateDetail<LedgerTest> {};
class SharedLateDetailTest : public LateDetail<SharedLedgerTest> {};

TEST_F(SharedLateDetailTest, GoesInALaterYearOfTheDatabaseAndTheYearsOtherDetailsStay) {
  expectAfterwards({"1 | 7"});
}

TEST_F(SharedLateDetailTest, StaysInTheFirstYearOfItsSpan) {
  sql("TqSystem", "update UA_AccountDatabase set iBeginYear=2006 where cAcc_Id=N'001'");
  expectAfterwards({"0 | 9", "1 | 7"});
}

TEST_F(LateDetailTest, StaysBetweenTwoDatabases) {
  expectAfterwards({"0 | 9", "1 | 7"});
}

}  // namespace
}  // namespace gljz::test
