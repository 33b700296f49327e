// The report as a page: what stands in it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "host/messages.h"
#include "host/report_file.h"
#include "host/sample_run.h"
#include "host/text_count.h"

namespace host {
namespace {

using test::count;
using test::page;
using test::sampleRun;
using test::sampleRunOf;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(ReportHtmlTest, TheOutcomeComesFirstAndTheTablesFollow) {
  const std::string html = page(sampleRun());
  std::size_t last = 0;
  for (const char* part :
       {"<h1>Carry-forward report, 2005 to 2006</h1>", "class=\"outcome attention\"", "parts of it need attention",
        "class=\"figures\"", "<section id=\"data\"", "<section id=\"leftOut\"", "<section id=\"failures\"",
        "<section id=\"notes\"", "<section id=\"accounts\"", "<section id=\"stages\""}) {
    const std::size_t at = html.find(part);
    ASSERT_NE(at, std::string::npos) << part;
    EXPECT_GT(at, last) << part;
    last = at;
  }
}

TEST(ReportHtmlTest, ItNeedsNothingBesideIt) {
  for (const std::string& language : Messages::languages()) {
    const std::string html = page(sampleRun(language));
    EXPECT_THAT(html, HasSubstr("default-src 'none'"));
    EXPECT_THAT(html, HasSubstr("<html lang=\"" + language + "\">"));
    for (const char* foreign : {"http:", "https:", "//www", "src=", "@import", "url(", "<link", "Gljz.Host", "Orvo."})
      EXPECT_THAT(html, Not(HasSubstr(foreign)));
    const std::regex reference("href=\"([^\"]*)\"");
    for (std::sregex_iterator it(html.begin(), html.end(), reference), end; it != end; ++it) {
      const std::string target = (*it)[1];
      EXPECT_EQ(target.front(), '#');
      EXPECT_THAT(html, HasSubstr("id=\"" + target.substr(1) + "\""));
    }
  }
}

TEST(ReportHtmlTest, TextsAreTextsAndNeverMarkup) {
  RunResult r = sampleRunOf(300);
  r.notes = {"<img src=x onerror=alert(1)>"};
  r.report->rows[250][1] = "</script><b>\"&'";
  r.failures[0].description = "<!--";
  const std::string html = page(r);
  EXPECT_THAT(html, Not(HasSubstr("<img")));
  EXPECT_THAT(html, Not(HasSubstr("<b>\"")));
  EXPECT_THAT(html, HasSubstr("&lt;img src=x onerror=alert(1)&gt;"));
  EXPECT_THAT(html, HasSubstr("Greenstone &amp; &lt;Sons&gt;"));
  EXPECT_THAT(html, HasSubstr("\\u003c/script>\\u003cb>\\\"&'"));
  EXPECT_EQ(count(html, "<script"), count(html, "</script>"));
}

TEST(ReportHtmlTest, BarsAreInProportion) {
  const std::string html = page(sampleRun());
  EXPECT_THAT(html, HasSubstr("<i class=\"p0\" style=\"width:max(2px,69.81%)\"></i>"
                              "<i class=\"p1\" style=\"width:max(2px,28.30%)\"></i>"
                              "<i class=\"p2\" style=\"width:max(2px,1.89%)\"></i>"));  // 444, 180, 12 of 636
  EXPECT_THAT(html, HasSubstr("style=\"width:max(2px,0.94%)\""));                       // code: 6
  EXPECT_THAT(html, HasSubstr("style=\"width:max(2px,15.79%)\""));                      // 3 of 19 milliseconds
}

TEST(ReportHtmlTest, WrongAccountsStandOutAndAmountsAreGrouped) {
  const std::string html = page(sampleRun());
  EXPECT_EQ(count(html, "<tr class=\"wrong\">"), 1u);
  EXPECT_THAT(html, HasSubstr("<span class=\"mark X\">X</span>"));
  EXPECT_THAT(html, HasSubstr("<td class=\"n\" data-raw=\"1234567.80\">1,234,567.80</td>"));
  EXPECT_THAT(html, HasSubstr("<td class=\"c\">0101</td>"));
  EXPECT_THAT(html, HasSubstr("<span class=\"right\" style=\"flex:2\"></span>"
                              "<span class=\"wrongs\" style=\"flex:1\"></span>"));
}

TEST(ReportHtmlTest, OfALongTableOnlyTheFirstRowsAreElements) {
  const std::string html = page(sampleRunOf(5'000));
  EXPECT_THAT(html, HasSubstr("The first 200 of 5000 rows"));
  EXPECT_EQ(count(html, "<td class=\"c\">00000"), 200u);
  EXPECT_EQ(count(html, "\n[\"0000"), 5'000u);
}

TEST(ReportHtmlTest, ARunThatStoppedSaysWhy) {
  RunResult r;
  r.language = "en-US";
  r.returned = true;
  r.stop = Stop{"checks", "the new year has no settlement styles"};
  const std::string html = page(r);
  EXPECT_THAT(html, HasSubstr("class=\"outcome stopped\""));
  EXPECT_THAT(html, HasSubstr("<p>Because: the new year has no settlement styles</p>"));
  EXPECT_THAT(html, Not(HasSubstr("<section")));
}

}  // namespace
}  // namespace host
