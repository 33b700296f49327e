#include "host/default_conditions.h"

#include <gtest/gtest.h>

#include "host/resources.h"
#include "host/usage_error.h"
#include "xml/xml_reader.h"

namespace host {
namespace {

constexpr const char* definition = R"(<Transfer><Parameters>
<Parameter ID="GL*m_bAutoWLClear" Check="True" Text_CN="a" Text_TW="b" Text_EN="c"/>
<Parameter ID="GF*Clear" Check="True" Text_CN="a" Text_TW="b" Text_EN="c"/>
<Parameter ID="GL*PersonYEJZ" Check="True" Text_CN="余额" Text_TW="餘額" Text_EN="balance"/>
<Parameter ID="GL*PersonMXJZ" Check="False" Text_CN="明细" Text_TW="明細" Text_EN="detail"/>
<Parameter ID="GL*OpeningInput" Check="True" Text_CN="期初" Text_TW="期初" Text_EN="opening"/>
</Parameters><RadioParameters><Parameters FirstID="GL*PersonYEJZ" SecondID="GL*PersonMXJZ"/></RadioParameters></Transfer>)";

std::string keys(const std::string& text) {
  const auto xml = xml::newXmlReader();
  const auto document = xml->NewDocument();
  EXPECT_TRUE(document->LoadText(text)) << text;
  std::string out = document->Root()->Name();
  for (const auto& p : document->Root()->Select("Parameter"))
    out += " " + p->Attribute("ID").value_or("?") + "=" + p->Attribute("Check").value_or("?");
  return out;
}
std::string conditions(const ConditionSituation& situation, const ConditionChoices& choices = {}) {
  const auto xml = xml::newXmlReader();
  return conditionsText(*xml, definition, situation, choices);
}

TEST(DefaultConditionsTest, ListsTheLedgersSwitchesInReverse) {
  EXPECT_EQ(keys(conditions({})), "Account GL*OpeningInput=True GL*PersonMXJZ=False GL*PersonYEJZ=True");
}

TEST(DefaultConditionsTest, ALaterYearOfOneDatabaseOffersClearingUnticked) {
  EXPECT_EQ(keys(conditions({true, "zh-CN"})), "Account GL*OpeningInput=True GL*m_bAutoWLClear=False");
}

TEST(DefaultConditionsTest, TickingOneOfAPairUnticksTheOther) {
  EXPECT_EQ(keys(conditions({}, {{{"GL*PersonMXJZ", true}}})),
            "Account GL*OpeningInput=True GL*PersonMXJZ=True GL*PersonYEJZ=False");
}

TEST(DefaultConditionsTest, TextsAreInTheLanguageOfTheLogin) {
  const auto lastText = [](const std::string& language) {
    const auto xml = xml::newXmlReader();
    const auto document = xml->NewDocument();
    EXPECT_TRUE(document->LoadText(conditions({false, language})));
    return document->Root()->Select("Parameter").back()->Attribute("text").value_or("");
  };
  EXPECT_EQ(lastText("zh-CN"), "余额");
  EXPECT_EQ(lastText("zh-TW"), "餘額");
  EXPECT_EQ(lastText("en-us"), "balance");
}

TEST(DefaultConditionsTest, WhatTheDialogDoesNotOfferIsRefused) {
  EXPECT_THROW(conditions({}, {{{"GL*m_bAutoWLClear", true}}}), UsageError);
  EXPECT_THROW(conditions({}, {{{"GF*Clear", true}}}), UsageError);
  EXPECT_THROW(conditions({}, {{{"GL*OpeningInput", false}}}), UsageError);
  EXPECT_NO_THROW(conditions({true, ""}, {{{"GL*m_bAutoWLClear", true}}}));
}

TEST(DefaultConditionsTest, TheBuiltInDefinitionIsReadable) {
  const auto text = resource("TransferParameter.xml");
  ASSERT_TRUE(text);
  const auto xml = xml::newXmlReader();
  EXPECT_NE(keys(conditionsText(*xml, *text, {false, "zh-CN"}, {})).find("GL*PersonYEJZ="), std::string::npos);
}

}  // namespace
}  // namespace host
