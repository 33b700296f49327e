#include "host/condition_answers.h"

#include <gmock/gmock.h>

#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_tran_cond.h"
#include "host/usage_error.h"
#include "system/ledger_fixture.h"

namespace gljz::test {
namespace {

using host::AccountChoice;
using host::UsageError;
using ::testing::HasSubstr;

class ConditionAnswersTest : public LedgerTest {
protected:
  explicit ConditionAnswersTest(Layout layout = Layout::separate) : LedgerTest(layout) {
    account("1131", {"bcus", "1"});
    account("1133", {"bcus", "1"});
    account("2121", {"bsup", "1"});
    account("5101", {"cclass", "损益"});
    fill(closing, "gl_accsum", {"ccode | iperiod | me", "5101 | 12 | 7"});
  }
  // Answers the conditions dialog and returns the parameter text.
  std::string answer() {
    host::ConditionAnswers answers(choices_);
    host::FormHost dialogs({nullptr, nullptr, GLJZ_SOURCE_DIR "/data", &answers});
    surroundings_.forms = &dialogs;
    try {
      frmTranCond().ShowModal();
    } catch (...) {
      leave();
      throw;
    }
    leave();
    return run.m_strCondXml;
  }
  void leave() {
    frmTranCond.unload();
    surroundings_.forms = &forms();
  }
  std::string refusal() {
    try {
      return "not refused: " + answer();
    } catch (const UsageError& e) {
      return e.what();
    }
  }
  void tick(const char* key, bool checked = true) { choices_.checks.emplace_back(key, checked); }
  std::vector<std::string> stored() {
    return rows(opening, "select iCusSupType, ccode, iYeMxType from GL_YeMxSel order by iCusSupType, ccode");
  }
  static AccountChoice codes(std::vector<std::string> list) { return {false, std::move(list)}; }

  host::ConditionChoices choices_;
};

class SharedConditionAnswersTest : public ConditionAnswersTest {
protected:
  SharedConditionAnswersTest() : ConditionAnswersTest(Layout::shared) {}
};

TEST_F(ConditionAnswersTest, WithoutChoicesTheDialogIsConfirmedAsItStarts) {
  EXPECT_THAT(answer(), HasSubstr("<Parameter ID=\"GL*PersonYEJZ\" Check=\"True\""));
  EXPECT_EQ(run.m_iCusMode, 0);
}

TEST_F(ConditionAnswersTest, TicksFollowTheDialogsRules) {
  tick("GL*PersonMXJZ");
  const std::string text = answer();
  EXPECT_THAT(text, HasSubstr("ID=\"GL*PersonMXJZ\" Check=\"True\""));
  EXPECT_THAT(text, HasSubstr("ID=\"GL*PersonYEJZ\" Check=\"False\""));
}

TEST_F(ConditionAnswersTest, ASwitchThatIsNotOfferedIsRefused) {
  tick("GL*m_bAutoWLClear");
  EXPECT_THAT(refusal(), HasSubstr("GL*m_bAutoWLClear is not offered"));
}

TEST_F(SharedConditionAnswersTest, WhatIsOfferedDependsOnTheSituation) {
  tick("GL*m_bAutoWLClear");
  EXPECT_THAT(answer(), HasSubstr("ID=\"GL*m_bAutoWLClear\" Check=\"True\""));
  choices_.checks.clear();
  tick("GL*CusMXJZ");
  EXPECT_THAT(refusal(), HasSubstr("GL*CusMXJZ is not offered"));
}

TEST_F(ConditionAnswersTest, TheSwitchThatIsAlwaysTickedCannotBeCleared) {
  tick("GL*OpeningInput", false);
  EXPECT_THAT(refusal(), HasSubstr("always ticked"));
}

TEST_F(ConditionAnswersTest, AllMovesEveryAccountRight) {
  tick("GL*CusMXJZ");
  choices_.customerDetail = AccountChoice{true, {}};
  answer();
  EXPECT_EQ(run.m_iCusMode, 2);
  EXPECT_EQ(stored(), (std::vector<std::string>{"1\t1131\t2", "1\t1133\t2"}));
}

TEST_F(ConditionAnswersTest, NoneMovesEveryAccountLeft) {
  sql(opening, "insert into GL_YeMxSel(iCusSupType, ccode, iYeMxType) values(1, N'1131', 2)");
  tick("GL*CusMXJZ");
  choices_.customerDetail = AccountChoice{};
  answer();
  EXPECT_EQ(run.m_iCusMode, 1);
  EXPECT_EQ(stored(), std::vector<std::string>{"1\t1131\t1"});  // the lists show what was stored
}

TEST_F(ConditionAnswersTest, AListPutsExactlyItsAccountsRight) {
  sql(opening, "insert into GL_YeMxSel(iCusSupType, ccode, iYeMxType) values(1, N'1131', 2)");
  sql(opening, "insert into GL_YeMxSel(iCusSupType, ccode, iYeMxType) values(1, N'1133', 1)");
  tick("GL*CusMXJZ");
  choices_.customerDetail = codes({"1133"});
  answer();
  EXPECT_EQ(run.m_iCusMode, 3);
  EXPECT_EQ(stored(), (std::vector<std::string>{"1\t1131\t1", "1\t1133\t2"}));
}

TEST_F(ConditionAnswersTest, SuppliersHaveTheirOwnButton) {
  tick("GL*SupMXJZ");
  choices_.supplierDetail = codes({"2121"});
  answer();
  EXPECT_EQ(run.m_iSupMode, 2);
  EXPECT_EQ(run.m_iCusMode, 0);
  EXPECT_EQ(stored(), std::vector<std::string>{"2\t2121\t2"});
}

TEST_F(ConditionAnswersTest, ADisabledButtonIsNotPressed) {
  choices_.customerDetail = AccountChoice{true, {}};
  EXPECT_THAT(refusal(), HasSubstr("--customer-detail: the button \"客户明细结转科目设置\" is disabled"));
  choices_ = {};
  choices_.supplierDetail = AccountChoice{true, {}};
  EXPECT_THAT(refusal(), HasSubstr("--supplier-detail"));
  choices_ = {};
  tick("GL*Clear", false);
  choices_.clear = AccountChoice{true, {}};
  EXPECT_THAT(refusal(), HasSubstr("--clear"));
  EXPECT_EQ(stored(), std::vector<std::string>{});
}

TEST_F(ConditionAnswersTest, AnAccountOnNeitherListIsRefusedBeforeAnythingIsStored) {
  tick("GL*CusMXJZ");
  tick("GL*SupMXJZ");
  choices_.customerDetail = codes({"1131"});
  choices_.supplierDetail = codes({"9999"});
  EXPECT_EQ(refusal(), "--supplier-detail: account 9999 is on neither list; on the lists: 2121");
  EXPECT_EQ(stored(), std::vector<std::string>{});
  EXPECT_EQ(run.m_iCusMode, 0);
}

TEST_F(ConditionAnswersTest, ChosenProfitAndLossAccountsStandInTheDialogsRightList) {
  choices_.clear = codes({"5101"});
  answer();
  ASSERT_TRUE(frmSyKmSel.isLoaded());
  EXPECT_EQ(frmSyKmSel().CtlSelList1.right().size(), 1u);
  EXPECT_EQ(accountOf(frmSyKmSel().CtlSelList1.right().at(0)), "5101");
}

TEST_F(ConditionAnswersTest, AnAccountThatCannotBeClearedIsRefused) {
  choices_.clear = codes({"1131"});
  EXPECT_EQ(refusal(), "--clear: account 1131 is on neither list; on the lists: 5101");
}

TEST_F(ConditionAnswersTest, WhatAPersonMayWrite) {
  EXPECT_TRUE(AccountChoice::parse("--clear", "ALL").all);
  EXPECT_TRUE(AccountChoice::parse("--clear", "none").codes.empty());
  EXPECT_EQ(AccountChoice::parse("--clear", "1131, 2121").codes, (std::vector<std::string>{"1131", "2121"}));
  EXPECT_THROW(AccountChoice::parse("--clear", ""), UsageError);
  EXPECT_THROW(AccountChoice::parse("--clear", "1131,"), UsageError);
}

// --- The host's other answers

TEST_F(ConditionAnswersTest, WithoutAViewTheDialogsAreClosedAtOnce) {
  host::FormHost dialogs({nullptr, nullptr, GLJZ_SOURCE_DIR "/data"});
  surroundings_.forms = &dialogs;
  run.m_strCondXml = "before";
  frmTranCond().ShowModal();
  EXPECT_FALSE(frmTranCond.isLoaded());
  EXPECT_EQ(run.m_strCondXml, "before");
  GetSyKmList();
  EXPECT_FALSE(frmSyKmSel.isLoaded());
  surroundings_.forms = &forms();
}

}  // namespace
}  // namespace gljz::test
