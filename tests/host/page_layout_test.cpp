#include "host/print/page_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/messages.h"
#include "host/resources.h"
#include "host/temporary_folder.h"

namespace host {
namespace {

using ::testing::DoubleEq;
using ::testing::DoubleNear;
using ::testing::ElementsAre;

constexpr double pointsPerMillimetre = 72 / 25.4;

PageLayout head(const std::string& text) {
  return parsePageLayout(text, "head.rep", LayoutPart::head);
}

std::string failureOf(const std::string& text, LayoutPart part = LayoutPart::head) {
  try {
    parsePageLayout(text, "x.rep", part);
  } catch (const LayoutError& e) {
    return e.what();
  }
  return "";
}

TEST(PageLayoutTest, ReadsPageAndRows) {
  const PageLayout layout = head(
      "\xEF\xBB\xBF# a head\r\n"
      "paper a4 landscape\n"
      "margins 10 20 5 0\n"
      "fonts \"One\" \"Two Three\"\n"
      "grid 7.5 colour #f0e1D2\n"
      "\n"
      "row gap 2   # the title\n"
      "text \"{P1}\" centre size 16 bold colour #102030\n"
      "rule 1.5 gap 1\n"
      "row\n"
      "text \"a\" width 30\n"
      "text \"b\" right\n"
      "text \"c\"\n");
  EXPECT_THAT(layout.page.width, DoubleNear(297 * pointsPerMillimetre, 1e-6));
  EXPECT_THAT(layout.page.height, DoubleNear(210 * pointsPerMillimetre, 1e-6));
  EXPECT_THAT(layout.page.left, DoubleNear(10 * pointsPerMillimetre, 1e-6));
  EXPECT_THAT(layout.page.right, DoubleNear(20 * pointsPerMillimetre, 1e-6));
  EXPECT_THAT(layout.page.bottom, DoubleEq(0));
  EXPECT_THAT(layout.page.fonts, ElementsAre("One", "Two Three"));
  EXPECT_THAT(layout.page.gridSize, DoubleEq(7.5));
  EXPECT_EQ(layout.page.gridHeader, (Ink{0xF0, 0xE1, 0xD2}));
  ASSERT_EQ(layout.rows.size(), 3u);
  EXPECT_THAT(layout.rows[0].gap, DoubleNear(2 * pointsPerMillimetre, 1e-6));
  const LayoutText& title = layout.rows[0].texts.at(0);
  EXPECT_EQ(title.align, TextAlign::centre);
  EXPECT_TRUE(title.bold);
  EXPECT_THAT(title.size, DoubleEq(16));
  EXPECT_EQ(title.ink, (Ink{0x10, 0x20, 0x30}));
  EXPECT_THAT(layout.rows[1].thickness, DoubleEq(1.5));
  EXPECT_THAT(layout.rows[2].shares(), ElementsAre(DoubleEq(0.3), DoubleEq(0.35), DoubleEq(0.35)));
}

TEST(PageLayoutTest, FillsFieldsAndKeepsDoubledBraces) {
  const PageLayout layout = head("row\ntext \"{{{p1}}} \\\"x\\\\ {P9}{page}/{pages}\"\n");
  const LayoutText& text = layout.rows[0].texts[0];
  EXPECT_EQ(text.filled({{"P1", "青石"}, {"page", "2"}, {"pages", "7"}}), "{青石} \"x\\ 2/7");
}

TEST(PageLayoutTest, AHoleThatNoFieldFillsIsAnErrorWithItsPlace) {
  const PageLayout layout = head("row\ntext \"{p2} {page}\"\nrow\ntext \"{P8}\"\n");
  EXPECT_NO_THROW(head("row\ntext \"{p2} {page}\"\n").requireFields({"P1", "P2"}));
  try {
    layout.requireFields({"P1", "P2"});
    FAIL();
  } catch (const LayoutError& e) {
    EXPECT_STREQ(e.what(), "head.rep:4: there is no field {P8}");
  }
}

TEST(PageLayoutTest, EveryMistakeIsToldWithFileAndLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"row\nrowe", "x.rep:2: \"rowe\" is no directive"},
      {"\"row\"", "x.rep:1: a line begins with what it is: row, text, rule, ..."},
      {"text \"a\"", "x.rep:1: a text belongs into a row"},
      {"rule\ntext \"a\"", "x.rep:2: a text belongs into a row"},
      {"row\ntext", "x.rep:2: a text in quotation marks is expected"},
      {"row\ntext \"a", "x.rep:2: the text has no closing quotation mark"},
      {"row\ntext \"a\" middle", "x.rep:2: \"middle\" is not expected here"},
      {"row\ntext \"a\" size 3", "x.rep:2: size: a number from 4 to 72 is expected, not \"3\""},
      {"row\ntext \"a\" size nan", "x.rep:2: size: a number from 4 to 72 is expected, not \"nan\""},
      {"row\ntext \"a\" width", "x.rep:2: width: a number from 1 to 100 is expected, not nothing"},
      {"row\ntext \"a\" colour red", "x.rep:2: colour: #RRGGBB is expected"},
      {"row\ntext \"a\" width 60\ntext \"b\" width 41", "x.rep:3: the texts of this row are wider than the page"},
      {"row\ntext \"a\" width 100\ntext \"b\"", "x.rep:3: the texts of this row are wider than the page"},
      {"row\ntext \"{P1\"", "x.rep:2: an opening brace without a closing one"},
      {"row\ntext \"P1}\"", "x.rep:2: a closing brace without an opening one"},
      {"row gap -1", "x.rep:1: gap: a number from 0 to 200 is expected, not \"-1\""},
      {"row gap 1e1", "x.rep:1: gap: a number from 0 to 200 is expected, not \"1e1\""},
      {"row 3", "x.rep:1: \"3\" is not expected here"},
      {"paper a6", "x.rep:1: paper: one of a3, a4, a5, letter is expected"},
      {"paper a4 upright", "x.rep:1: \"upright\" is not expected here"},
      {"row\npaper a4", "x.rep:2: paper belongs above the first row"},
      {"margins 1 2 3", "x.rep:1: margins: a number from 0 to 60 is expected, not nothing"},
      {"fonts", "x.rep:1: a font family in quotation marks is expected"},
      {"fonts \"a,b\"", "x.rep:1: \"a,b\" is no font family"},
      {"row\n\x01", "x.rep:2: a control character"},
      {"# \xC3(", "x.rep:1: this is not UTF-8"},
      {"# \xED\xA0\x80", "x.rep:1: this is not UTF-8"},
      {"# \xF4\x90\x80\x80", "x.rep:1: this is not UTF-8"},
  };
  for (const auto& [text, failure] : cases) EXPECT_EQ(failureOf(text), failure) << text;
  EXPECT_EQ(failureOf("paper a4", LayoutPart::foot), "x.rep:1: paper belongs into the head's layout");
  EXPECT_NE(failureOf(std::string(100'000, ' ')), "");
  std::string rows;
  for (int i = 0; i < 101; ++i) rows += "row\n";
  EXPECT_EQ(failureOf(rows), "x.rep:101: there are more than 100 rows");
}

TEST(PageLayoutTest, AFileThatIsNotThereIsToldByName) {
  const test::TemporaryFolder folder;
  for (const std::string& path : {folder.file("none.rep"), folder.text()}) try {
      readPageLayout(path, LayoutPart::head);
      FAIL();
    } catch (const LayoutError& e) {
      EXPECT_EQ(e.what(), path + ": the layout cannot be read");
    }
}

// Every language has both layouts, and they name the fields that the tables have.
TEST(PageLayoutTest, TheProgramsOwnLayoutsAreGood) {
  for (const std::string& language : Messages::languages()) {
    const std::string folder = "glrep/" + language + "/";
    const auto headText = resource(folder + "dzerru.rep"), footText = resource(folder + "dzerrd.rep");
    ASSERT_TRUE(headText && footText) << folder;
    const PageLayout up = parsePageLayout(*headText, folder + "dzerru.rep", LayoutPart::head);
    const PageLayout down = parsePageLayout(*footText, folder + "dzerrd.rep", LayoutPart::foot);
    EXPECT_NO_THROW(up.requireFields({"P1", "P2", "P3", "P4", "P5", "P6", "P7"}));
    EXPECT_NO_THROW(down.requireFields({"P1", "P2", "P3", "P4", "P5", "P6"}));
    const auto names = [](const PageLayout& layout) {
      std::vector<std::string> fields;
      for (const LayoutRow& row : layout.rows)
        for (const LayoutText& text : row.texts)
          for (const auto& piece : text.pieces)
            if (piece.field) fields.push_back(piece.text);
      return fields;
    };
    EXPECT_THAT(names(up), ::testing::UnorderedElementsAre("P1", "P2", "P3", "P4", "P5", "P6", "P7"));
    EXPECT_THAT(names(down), ::testing::UnorderedElementsAre("P1", "P2", "P3", "P4", "P5", "P6", "page", "pages"));
  }
}

}  // namespace
}  // namespace host
