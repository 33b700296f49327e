#include "core/transfer_parameters.h"

#include <gtest/gtest.h>

#include "core/fakes.h"
#include "core/run_state.h"

namespace {

using gljz::ParseTransferParameters;
using gljz::run;

class Parameters : public testing::Test {
protected:
  fakes::World world;

  static std::string one(const std::string& id, const std::string& check) {
    return "<Parameter ID=\"" + id + "\" Check=\"" + check + "\" text=\"x\"/>";
  }
  static bool parse(const std::string& parameters) {
    return ParseTransferParameters("<Account>" + parameters + "</Account>");
  }
};

TEST_F(Parameters, ARootWithoutSwitchesSetsOnlyTheTwoDefaults) {
  EXPECT_TRUE(ParseTransferParameters("<AnyRoot/>"));
  EXPECT_EQ(run.m_bBankTransfer, 1);
  EXPECT_EQ(run.m_bCoverData, 1);
  EXPECT_EQ(run.m_iPersonMode, 0);
  EXPECT_FALSE(run.bClear || run.CusIsNull || run.m_bCoverBankData);
}

TEST_F(Parameters, EverySwitchSetsItsOwnFlagInBothForms) {
  struct Case {
    const char* name;
    bool gljz::RunState::*flag;
    bool alsoForGF;
  };
  using gljz::RunState;
  const Case cases[] = {{"BalTypeIsNull", &RunState::BalTypeIsNull, true},
                        {"DeptIsNull", &RunState::DeptIsNull, true},
                        {"CusIsNull", &RunState::CusIsNull, true},
                        {"SupIsNull", &RunState::SupIsNull, true},
                        {"PersonIsNull", &RunState::PersonIsNull, true},
                        {"ItemIsNull", &RunState::ItemIsNull, true},
                        {"Clear", &RunState::bClear, true},
                        {"CoverBankModalData", &RunState::CoverBankModalData, true},
                        {"OpeningInput", &RunState::OpeningInput, true},
                        {"PersonNoBal", &RunState::PersonNoBal, true},
                        {"CusNoBal", &RunState::CusNoBal, true},
                        {"SupNoBal", &RunState::SupNoBal, true},
                        {"m_bCoverBankData", &RunState::m_bCoverBankData, false},
                        {"m_bCoverChequeData", &RunState::m_bCoverChequeData, false},
                        {"m_bAutoWLClear", &RunState::m_bAutoWLClear, false}};
  for (const Case& c : cases) {
    run.*c.flag = false;
    EXPECT_TRUE(parse(one(std::string("GF*") + c.name, "True")));
    EXPECT_EQ(run.*c.flag, c.alsoForGF) << c.name;
    EXPECT_TRUE(parse(one(std::string("GL*") + c.name, "True")));
    EXPECT_TRUE(run.*c.flag) << c.name;
    EXPECT_TRUE(parse(""));
    EXPECT_TRUE(run.*c.flag) << c.name << " keeps its value while its switch is absent";
    EXPECT_TRUE(parse(one(std::string("GL*") + c.name, "False")));
    EXPECT_FALSE(run.*c.flag) << c.name;
  }
}

TEST_F(Parameters, OnlyTheExactWordIsTicked) {
  for (const char* check : {"true", "TRUE", "1", "-1", " True", ""}) {
    run.bClear = true;
    EXPECT_TRUE(parse(one("GL*Clear", check)));
    EXPECT_FALSE(run.bClear) << check;
  }
}

TEST_F(Parameters, TheTwoByteFlagsAreOneOrTwoAndStartAgainAtOne) {
  EXPECT_TRUE(parse(one("GL*m_bCoverData", "False") + one("GF*m_bBankTransfer", "no")));
  EXPECT_EQ(run.m_bCoverData, 2);
  EXPECT_EQ(run.m_bBankTransfer, 2);
  EXPECT_TRUE(parse(one("GL*m_bCoverData", "True")));
  EXPECT_EQ(run.m_bCoverData, 1);
  EXPECT_EQ(run.m_bBankTransfer, 1);
}

TEST_F(Parameters, TheLaterOfTwoTickedPersonSwitchesWins) {
  EXPECT_TRUE(parse(one("GL*PersonYEJZ", "True") + one("GL*PersonMXJZ", "True")));
  EXPECT_EQ(run.m_iPersonMode, 2);
  EXPECT_TRUE(parse(one("GF*PersonMXJZ", "True") + one("GL*PersonYEJZ", "True")));
  EXPECT_EQ(run.m_iPersonMode, 1);
}

TEST_F(Parameters, AnUntickedPersonSwitchLeavesTheMode) {
  EXPECT_TRUE(parse(one("GL*PersonMXJZ", "True") + one("GL*PersonYEJZ", "False")));
  EXPECT_EQ(run.m_iPersonMode, 2);
  EXPECT_TRUE(parse(one("GL*PersonMXJZ", "False")));
  EXPECT_EQ(run.m_iPersonMode, 2);
}

TEST_F(Parameters, UnknownKeysAreSkipped) {
  run.m_iCusMode = 3;
  EXPECT_TRUE(parse(one("GL*CusYEJZ", "True") + one("XX*Clear", "True") + one("GL*clear", "True") +
                    one("Clear", "True") + one("GL*", "True") + "<Parameter/>" + "<parameter ID='GL*Clear'/>"));
  EXPECT_EQ(run.m_iCusMode, 3);
  EXPECT_FALSE(run.bClear);
}

TEST_F(Parameters, OnlyDirectChildrenOfTheRootCount) {
  EXPECT_TRUE(parse("<Group>" + one("GL*Clear", "True") + "</Group>"));
  EXPECT_FALSE(run.bClear);
}

TEST_F(Parameters, ATextThatCannotBeReadIsAFailureThatKeepsTheDefaults) {
  for (const char* text : {"", "no xml", "<Account><Parameter></Account>"}) {
    run.m_strMsg.clear();
    run.m_bCoverData = 2;
    EXPECT_FALSE(ParseTransferParameters(text));
    EXPECT_NE(run.m_strMsg, "") << text;
    EXPECT_EQ(run.m_bCoverData, 1);
  }
}

TEST_F(Parameters, AFlagWithoutCheckFailsAndKeepsWhatWasSetBefore) {
  EXPECT_FALSE(parse(one("GL*CusNoBal", "True") + "<Parameter ID='GL*Clear'/>" + one("GL*SupNoBal", "True")));
  EXPECT_TRUE(run.CusNoBal);
  EXPECT_FALSE(run.SupNoBal);
  EXPECT_EQ(run.m_strMsg, "Invalid use of Null");
}

TEST_F(Parameters, ByteAndPersonSwitchesTakeAMissingCheckAsNotTicked) {
  run.m_iPersonMode = 2;
  EXPECT_TRUE(parse("<Parameter ID='GL*m_bCoverData'/><Parameter ID='GL*PersonYEJZ'/>"));
  EXPECT_EQ(run.m_bCoverData, 2);
  EXPECT_EQ(run.m_iPersonMode, 2);
}

}  // namespace
