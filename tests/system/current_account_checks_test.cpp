#include "driver/current_account_checks.h"

#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "system/voucher_lines.h"

namespace gljz::test {
namespace {

using platform::Component;
using platform::RunTimeError;

const std::string personMessage = "个人借贷两清不平衡!不能继续结转！";
const std::string customerMessage = "客户借贷两清不平衡!不能继续结转！";
const std::string supplierMessage = "供应商借贷两清不平衡!不能继续结转！";

class CurrentAccountChecksTest : public VoucherLines<LedgerTest> {
protected:
  // Lines that count as cleared in a period of the closing year.
  void cleared(const std::vector<std::string>& lines) {
    std::vector<std::string> marked{lines.front() + "| iflagPerson | wllqPeriod"};
    for (std::size_t i = 1; i < lines.size(); ++i) marked.push_back(lines[i] + "| 1 | 200512");
    vouchers(closing, marked);
  }
  void expectPass() {
    EXPECT_EQ(CheckCurrentAccounts(), CheckOutcome::goOn);
    EXPECT_EQ(run.m_strMsg, "");
  }
  void expectStop(const std::string& message) {
    EXPECT_EQ(CheckCurrentAccounts(), CheckOutcome::stop);
    EXPECT_EQ(run.m_strMsg, message);
  }
};

TEST_F(CurrentAccountChecksTest, NothingToCheckPasses) {
  run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = 2;
  expectPass();
}

TEST_F(CurrentAccountChecksTest, ClearedItemsThatCancelPass) {
  run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = 2;
  cleared({"ccode | cdept_id | cperson_id | ccus_id | csup_id | md | mc", "1133 | 01 | P1 | | | 100 | ",
           "1133 | 01 | P1 | | | | 100", "1131 | | | C1 | | 50.25 | ", "1131 | | | C1 | | | 50.25",
           "2121 | | | | V1 | 7 | 7"});
  expectPass();
}

struct Imbalance {
  const char *line, *message;
  bool RunState::*flag;
  int persons, customers, suppliers;
};

class ImbalanceTest : public CurrentAccountChecksTest, public ::testing::WithParamInterface<Imbalance> {
protected:
  ImbalanceTest() {
    run.m_iPersonMode = static_cast<std::uint8_t>(GetParam().persons);
    run.m_iCusMode = static_cast<std::uint8_t>(GetParam().customers);
    run.m_iSupMode = static_cast<std::uint8_t>(GetParam().suppliers);
    fill(opening, "GL_YeMxSel", {"iCusSupType | iYeMxType | ccode", "1 | 2 | 1131", "2 | 2 | 2121"});
    cleared({"ccode | cdept_id | cperson_id | ccus_id | csup_id | md", GetParam().line});
  }
};

TEST_P(ImbalanceTest, StopsWithThePartnersMessage) {
  expectStop(GetParam().message);
}

TEST_P(ImbalanceTest, IsLetPassByThePartnersFlag) {
  run.*GetParam().flag = true;
  expectPass();
}

INSTANTIATE_TEST_SUITE_P(
    Partners, ImbalanceTest,
    ::testing::Values(Imbalance{"1133|01|P1|||5", personMessage.c_str(), &RunState::PersonNoBal, 2, 0, 0},
                      Imbalance{"1131|||C1||5", customerMessage.c_str(), &RunState::CusNoBal, 0, 2, 0},
                      Imbalance{"1131|||C1||5", customerMessage.c_str(), &RunState::CusNoBal, 0, 3, 0},
                      Imbalance{"2121||||V1|5", supplierMessage.c_str(), &RunState::SupNoBal, 0, 0, 2},
                      Imbalance{"2121||||V1|5", supplierMessage.c_str(), &RunState::SupNoBal, 0, 0, 3}));

TEST_F(CurrentAccountChecksTest, OtherModesSkipTheChecks) {
  cleared({"ccode | cdept_id | cperson_id | ccus_id | csup_id | md", "1133 | 01 | P1 | C1 | V1 | 5"});
  for (const std::uint8_t mode : {std::uint8_t{0}, std::uint8_t{1}}) {
    run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = mode;
    expectPass();
  }
  run.m_iPersonMode = 3;  // persons know no selection
  run.m_iCusMode = run.m_iSupMode = 0;
  expectPass();
  EXPECT_FALSE(wasRun("sum(md)"));
}

TEST_F(CurrentAccountChecksTest, ModeThreeLooksAtTheChosenAccountsAlone) {
  run.m_iCusMode = 3;
  fill(opening, "GL_YeMxSel", {"iCusSupType | iYeMxType | ccode", "1 | 2 | 113101", "1 | 1 | 1131", "2 | 2 | 1131"});
  cleared({"ccode | ccus_id | md", "1131 | C1 | 5"});
  expectPass();
  EXPECT_TRUE(wasRun("and gl_accvouch.ccode in ('113101') group by"));
}

TEST_F(CurrentAccountChecksTest, ModeThreeWithoutAChosenAccountFindsNothing) {
  run.m_iCusMode = 3;
  cleared({"ccode | ccus_id | md", "1131 | C1 | 5"});
  expectPass();
  EXPECT_TRUE(wasRun("gl_accvouch.ccode in ('')"));
}

TEST_F(CurrentAccountChecksTest, ADifferenceBelowACentBalancesAndACentDoesNot) {
  run.m_iCusMode = 2;
  cleared({"ccode | ccus_id | md | mc", "1131 | C1 | 100 | 100.005", "1131 | C2 | 100.0099 | 100"});
  expectPass();
  cleared({"ccode | ccus_id | md | mc", "1131 | C3 | 100 | 100.01"});
  expectStop(customerMessage);
}

TEST_F(CurrentAccountChecksTest, AGroupOfAForeignCurrencyIsMeasuredByItsForeignSums) {
  run.m_iCusMode = 2;
  cleared({"ccode | ccus_id | cexch_name | md | mc | md_f | mc_f", "1131 | C1 | 美元 | 100 | 3 | 10 | 10"});
  expectPass();
  cleared({"ccode | ccus_id | cexch_name | md | mc | md_f | mc_f", "1131 | C1 | 欧元 | 100 | 100 | 10 | 9"});
  expectStop(customerMessage);
}

TEST_F(CurrentAccountChecksTest, CurrenciesAndPartnersAreGroupsOfTheirOwn) {
  run.m_iCusMode = 2;
  cleared({"ccode | ccus_id | md | mc", "1131 | C1 | 5 | ", "1131 | C2 | | 5"});
  expectStop(customerMessage);
}

TEST_F(CurrentAccountChecksTest, OnlyItemsClearedBeforeTheNewYearWithinTheInitialisedYearsCount) {
  run.m_iCusMode = 2;
  vouchers(closing, {"ccode | ccus_id | md | iflagPerson | wllqPeriod", "1131 | C1 | 1 | | 200512",
                     "1131 | C1 | 2 | 1 | 200601", "1131 | C1 | 3 | 1 | "});
  vouchers(yearOf(2004), {"ccode | ccus_id | md | iflagPerson | wllqPeriod", "1131 | C1 | 4 | 1 | 200412"});
  vouchers(yearOf(2006), {"ccode | ccus_id | md | iflagPerson | wllqPeriod", "1131 | C1 | 4 | 1 | 200512"});
  expectPass();
  run.m_strInitYear = "2004";
  expectStop(customerMessage);
}

TEST_F(CurrentAccountChecksTest, AMarkOfZeroCountsAsCleared) {
  run.m_iCusMode = 2;
  vouchers(closing, {"ccode | ccus_id | md | iflagPerson | wllqPeriod", "1131 | C1 | 1 | 0 | 200512"});
  expectStop(customerMessage);
}

TEST_F(CurrentAccountChecksTest, PersonsCountWithADepartmentOnly) {
  run.m_iPersonMode = 2;
  cleared({"ccode | cperson_id | md", "1133 | P1 | 5"});
  expectPass();
}

TEST_F(CurrentAccountChecksTest, AnImbalanceThatWasLetPassCountsAgainstThePartnersBehindIt) {
  run.m_iPersonMode = run.m_iCusMode = 2;
  run.PersonNoBal = true;
  cleared({"ccode | cdept_id | cperson_id | ccus_id | md | mc", "1133 | 01 | P1 | | 5 | ", "1131 | | | C1 | 7 | 7"});
  expectStop(customerMessage);
}

TEST_F(CurrentAccountChecksTest, AnInheritedImbalanceHasNoEffectOnAPartnerThatIsNotChecked) {
  run.m_iPersonMode = 2, run.m_iCusMode = 0, run.m_iSupMode = 1;
  run.PersonNoBal = true;
  cleared({"ccode | cdept_id | cperson_id | md", "1133 | 01 | P1 | 5"});
  expectPass();
}

TEST_F(CurrentAccountChecksTest, AnInheritedImbalanceStopsAPartnerWithoutAnyItem) {
  run.m_iPersonMode = 2, run.m_iSupMode = 2;
  run.PersonNoBal = true;
  cleared({"ccode | cdept_id | cperson_id | md", "1133 | 01 | P1 | 5"});
  expectStop(supplierMessage);
}

TEST_F(CurrentAccountChecksTest, TheStatementsAreTheseAndTheLastOneIsNamed) {
  run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = 2;
  expectPass();
  std::vector<std::string> sums;
  for (const auto& s : statements())
    if (s.text.find("sum(md)") != std::string::npos) sums.push_back(s.text);
  const std::vector<std::string> expected{
      "select ccode,cdept_id,isnull(cexch_name,'') as cexch_name,cperson_id,sum(md) as summd,sum(mc) as "
      "summc,sum(md_f) as summd_f,sum(mc_f) as summc_f from gl_accvouch where not cdept_id is null and not cperson_id "
      "is null  and iyear >=2005 and  iyear<=2005    and ( not  iflagperson is null  and wllqperiod < 200600  ) group "
      "by ccode,cexch_name,cdept_id,cperson_id order by ccode,cexch_name,cdept_id,cperson_id",
      "select ccode,isnull(cexch_name,'') as cexch_name,ccus_id,sum(md) as summd,sum(mc) as summc,sum(md_f) as "
      "summd_f,sum(mc_f) as summc_f from gl_accvouch where not ccus_id is null  and iyear >=2005 and  iyear<=2005    "
      "and ( not iflagperson is null  and wllqperiod < 200600  ) group by ccode,cexch_name,ccus_id order by "
      "ccode,cexch_name,ccus_id ",
      "select ccode,isnull(cexch_name,'') as cexch_name,csup_id,sum(md) as summd,sum(mc) as summc,sum(md_f) as "
      "summd_f,sum(mc_f) as summc_f from gl_accvouch where not csup_id is null  and iyear >=2005 and  iyear<=2005    "
      "and ( not iflagperson is null  and wllqperiod < 200600 ) group by ccode,cexch_name,csup_id order by "
      "ccode,cexch_name,csup_id "};
  EXPECT_EQ(sums, expected);
  EXPECT_EQ(run.m_strLastSql, expected.back());
}

TEST_F(CurrentAccountChecksTest, AWatchedRunShowsTheAccountsAndAnEmptyGrid) {
  run.m_bManual = true;
  run.m_iPersonMode = 2;
  cleared({"ccode | cdept_id | cperson_id | md", "1133 | 01 | P1 | 5"});
  expectStop(personMessage);
  EXPECT_EQ(frmJZSN().Label3(), GetResString("Orvo.GL.TqGLJZ.00071"));
  EXPECT_EQ(frmNBalance().Grid1.rows.front().size(), 7u);
  run.m_iPersonMode = 0, run.m_iSupMode = 2;
  run.m_strMsg = "";
  expectPass();
  EXPECT_EQ(frmNBalance().Grid1.rows.front().size(), 6u);
  EXPECT_TRUE(notCarried().empty());
}

TEST_F(CurrentAccountChecksTest, TheStepIsNamedWhetherOrNotACheckRuns) {
  expectPass();
  EXPECT_EQ(run.m_strFuncDesc, "结转函数--条件判断-往来业务自动核销已两清业务");
}

TEST_F(CurrentAccountChecksTest, AStopLeavesTheNewYearUntouchedAndIsTheEntrysMessage) {
  account("1133", {"bperson", "1"});
  fill(opening, "Department", {"cDepCode | cDepName", "01 | 财务部"});
  fill(opening, "Person", {"cPersonCode | cPersonName", "P1 | 张三"});
  cleared({"ccode | cdept_id | cperson_id | md", "1133 | 01 | P1 | 5"});
  fill(opening, "gl_accsum", {"ccode | iperiod | me", "1133 | 1 | 77"});
  const Outcome outcome = transfer({{"GL*PersonMXJZ", true}});
  EXPECT_FALSE(outcome.returned);
  EXPECT_EQ(outcome.errMsg, personMessage);
  EXPECT_EQ(outcome.message, personMessage);
  EXPECT_FALSE(outcome.success);
  EXPECT_FALSE(wasRun("begin"));
  expectRows(opening, "select ccode,me from gl_accsum where iyear=2006", {"1133 | 77"});
}

// --- Automatic clearing

// Notes what it is called with; may hand another services object back.
class SpyComponent final : public Component {
public:
  platform::Value Call(const std::string& operation, std::vector<Argument>& arguments) override {
    std::string call = operation;
    for (const Argument& a : arguments) call += a.object ? " object" : " " + a.value.displayText();
    calls.push_back(call);
    if (operation == "InitZwPub" && replacement) arguments.at(0).object = replacement;
    if (operation == failAt) throw RunTimeError(RunTimeError::invalidCall, "clearing failed");
    return {};
  }
  std::vector<std::string> calls;
  std::shared_ptr<platform::ZwPubCls> replacement;
  std::string failAt;
};

class SpyComponents final : public platform::ComponentFactory {
public:
  std::shared_ptr<Component> Create(const std::string& programId) override {
    created.push_back(programId);
    if (!component) throw RunTimeError(RunTimeError::cannotCreate, "Component cannot be created: " + programId);
    return component;
  }
  std::shared_ptr<SpyComponent> component = std::make_shared<SpyComponent>();
  std::vector<std::string> created;
};

class AutomaticClearingTest : public CurrentAccountChecksTest {
protected:
  AutomaticClearingTest() {
    surroundings_.components = &factory_;
    run.m_bAutoWLClear = true;
  }
  SpyComponents factory_;
};

TEST_F(AutomaticClearingTest, CallsTheComponentForBothKindsOfPartner) {
  expectPass();
  EXPECT_EQ(factory_.created, std::vector<std::string>{"OrvoGLWLClear.clsInterface"});
  const std::vector<std::string> calls{"InitZwPub object", "SetCusorSup 0", "AutoClear4Task qcjz ", "SetCusorSup 1",
                                       "AutoClear4Task qcjz "};
  EXPECT_EQ(factory_.component->calls, calls);
}

TEST_F(AutomaticClearingTest, IsNotMadeUnlessAskedFor) {
  run.m_bAutoWLClear = false;
  expectPass();
  EXPECT_TRUE(factory_.created.empty());
}

TEST_F(AutomaticClearingTest, IsNotMadeBehindAStop) {
  run.m_iCusMode = 2;
  cleared({"ccode | ccus_id | md", "1131 | C1 | 5"});
  expectStop(customerMessage);
  EXPECT_TRUE(factory_.created.empty());
}

TEST_F(AutomaticClearingTest, MayReplaceTheServicesObject) {
  factory_.component->replacement = surroundings_.newServices();
  expectPass();
  EXPECT_EQ(run.m_pubCls, factory_.component->replacement);
}

TEST_F(AutomaticClearingTest, AMissingComponentIsAnUncaughtFailure) {
  factory_.component = nullptr;
  try {
    (void)CheckCurrentAccounts();
    FAIL() << "went on";
  } catch (const RunTimeError& e) {
    EXPECT_EQ(e.number(), RunTimeError::cannotCreate);
  }
}

TEST_F(AutomaticClearingTest, AFailureInsideTheComponentIsUncaught) {
  factory_.component->failAt = "AutoClear4Task";
  EXPECT_THROW((void)CheckCurrentAccounts(), RunTimeError);
}

}  // namespace
}  // namespace gljz::test
