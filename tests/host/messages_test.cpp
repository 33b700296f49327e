#include "host/messages.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "host/flat_json.h"

namespace host {
namespace {

using platform::Value;

Messages table() {
  return Messages({{"one", "a {0} b"}, {"two", "{1}/{0}"}, {"plain", "no {x} {} braces {"}});
}

std::set<std::string> placeholders(const std::string& text) {
  const std::regex hole("\\{[0-9]+\\}");
  std::set<std::string> found;
  for (auto i = std::sregex_iterator(text.begin(), text.end(), hole); i != std::sregex_iterator(); ++i)
    found.insert(i->str());
  return found;
}

TEST(MessagesTest, FillsPlaceholdersByTheirNumber) {
  EXPECT_EQ(table().text("two", {Value("x"), Value(7)}), "7/x");
}

TEST(MessagesTest, APlaceholderWithoutAnArgumentRendersAsNothing) {
  EXPECT_EQ(table().text("one"), "a  b");
  EXPECT_EQ(table().text("two", {Value("x")}), "/x");
}

TEST(MessagesTest, ANullArgumentRendersAsNothing) {
  EXPECT_EQ(table().text("one", {Value()}), "a  b");
}

TEST(MessagesTest, AnArgumentIsNotFilledInAgain) {
  EXPECT_EQ(table().text("two", {Value("{1}"), Value("y")}), "y/{1}");
}

TEST(MessagesTest, BracesThatAreNoPlaceholderStay) {
  EXPECT_EQ(table().text("plain", {Value("z")}), "no {x} {} braces {");
}

TEST(MessagesTest, AMissingKeyGivesTheKey) {
  EXPECT_EQ(table().text("Orvo.GL.TqGLJZ.99999"), "Orvo.GL.TqGLJZ.99999");
}

TEST(MessagesTest, AnUnknownLanguageReadsAsChinese) {
  EXPECT_EQ(Messages("fr-FR").all(), Messages("zh-CN").all());
  EXPECT_FALSE(Messages("zh-CN").all().empty());
}

TEST(MessagesTest, EveryLanguageHasTheSameKeysWithTheSamePlaceholders) {
  const auto languages = Messages::languages();
  ASSERT_EQ(languages, (std::vector<std::string>{"en-US", "zh-CN", "zh-TW"}));
  const Messages reference("zh-CN");
  for (const std::string& language : languages) {
    const Messages other(language);
    EXPECT_EQ(other.all().size(), reference.all().size()) << language;
    for (const auto& [key, text] : reference.all()) {
      const auto found = other.all().find(key);
      ASSERT_NE(found, other.all().end()) << language << " lacks " << key;
      EXPECT_EQ(placeholders(found->second), placeholders(text)) << language << " " << key;
      EXPECT_FALSE(found->second.empty()) << language << " " << key;
    }
  }
}

TEST(FlatJsonTest, ReadsEscapesAndSurrogatePairs) {
  const auto pairs = parseFlatJson(R"( {"a" : "x\n\"\u4e2d\ud83d\ude00" , "b":""} )");
  EXPECT_EQ(pairs.at("a"), "x\n\"中😀");
  EXPECT_EQ(pairs.at("b"), "");
}

TEST(FlatJsonTest, TellsTheLineOfWhatItCannotRead) {
  for (const char* text : {"{\"a\": 1}", "{\"a\": \"x\"", "{\"a\": \"x\"} y", "{\"a\": \"\\q\"}", "[]", "",
                           "{\"a\": \"\\ud83d\"}", "{\"a\": \"x\", \"a\": \"y\"}"})
    EXPECT_THROW(parseFlatJson(text), std::runtime_error) << text;
  try {
    parseFlatJson("{\n\"a\": \"x\",\n\"a\": \"y\"}");
    FAIL();
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "line 3: a key stands twice");
  }
}

}  // namespace
}  // namespace host
