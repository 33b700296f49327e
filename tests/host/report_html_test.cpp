// The report as a page: what stands in it, and what a browser makes of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "host/messages.h"
#include "host/program.h"
#include "host/report_file.h"
#include "host/sample_run.h"

namespace host {
namespace {

using test::sampleRun;
using test::sampleRunOf;
using test::shellQuoted;
using ::testing::HasSubstr;
using ::testing::Not;

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t n = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++n;
  return n;
}

std::string page(const RunResult& result) {
  return reportHtml(reportModel(result));
}

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

// A page in headless Chromium, with a script of the test behind the page's own.
class BrowserTest : public ::testing::Test {
protected:
  std::string run(const std::string& html, const std::string& script, const std::string& options) const {
    std::string all = html;
    if (!script.empty()) all.insert(all.rfind("</body>"), "<script>" + script + "</script>\n");
    folder_.write("page.html", all);
    std::filesystem::create_directory(folder_.file("home"));
    const std::string command =
        "HOME=" + shellQuoted(folder_.file("home")) +
        " timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run "
        "--disable-background-networking --disable-component-update --disable-sync --disable-dev-shm-usage "
        "--user-data-dir=" +
        shellQuoted(folder_.file("home/profile")) + " " + options + " " +
        shellQuoted("file://" + folder_.file("page.html")) + " >" + shellQuoted(folder_.file("out")) + " 2>" +
        shellQuoted(folder_.file("err"));
    EXPECT_EQ(std::system(command.c_str()), 0) << test::contentOf(folder_.file("err"));
    return test::contentOf(folder_.file("out"));
  }
  // The page as the browser has it when scripts have run.
  std::string dom(const std::string& html, const std::string& script = "") const {
    const std::string out = run(html, script, "--dump-dom");
    return out.substr(0, out.find("<script"));  // what follows is not seen
  }
  test::TemporaryFolder folder_;
};

TEST_F(BrowserTest, ALongTableCanBePaged) {
  const std::string html = page(sampleRunOf(5'000));
  const std::string first = dom(html);
  EXPECT_THAT(first, HasSubstr("1–200 of 5000"));
  EXPECT_THAT(first, Not(HasSubstr("The first 200 of")));
  EXPECT_THAT(first, HasSubstr(">00000200<"));
  const std::string second = dom(html, "document.querySelector('#accounts .pages button:last-child').click()");
  EXPECT_THAT(second, HasSubstr("201–400 of 5000"));
  EXPECT_THAT(second, HasSubstr(">00000201<"));
  EXPECT_THAT(second, Not(HasSubstr(">00000200<")));
}

TEST_F(BrowserTest, ALongTableCanBeSearched) {
  const std::string found = dom(page(sampleRunOf(5'000)),
                                "const s = document.querySelector('#accounts input[type=search]');"
                                "s.value = 'aCCount 4711'; s.dispatchEvent(new Event('input'))");
  EXPECT_THAT(found, HasSubstr("1–1 of 1"));
  EXPECT_THAT(found, HasSubstr(">00004712<"));
  EXPECT_THAT(found, HasSubstr(">4,711.25<"));
}

TEST_F(BrowserTest, WrongAccountsCanBeSeenAlone) {
  RunResult r = sampleRunOf(1'000);
  r.report->rows.insert(r.report->rows.begin() + 51, {"", "", "", "Sum", "借", "7.00", "", "", "", "", ""});
  const std::string wrong = dom(page(r), "document.querySelector('#accounts input[type=checkbox]').click()");
  EXPECT_THAT(wrong, HasSubstr("1–11 of 11"));  // ten accounts, and the auxiliary total of the first
  EXPECT_EQ(count(wrong, "<tr class=\"wrong\">"), 10u);
  EXPECT_EQ(count(wrong, "<tr class=\"sum\">"), 1u);
}

TEST_F(BrowserTest, AShortTableKeepsItsRows) {
  const std::string short30 = dom(page(sampleRunOf(30)),
                                  "const s = document.querySelector('#accounts input[type=search]');"
                                  "s.value = 'nothing like it'; s.dispatchEvent(new Event('input'));"
                                  "s.value = ''; s.dispatchEvent(new Event('input'))");
  EXPECT_THAT(short30, HasSubstr("1–30 of 30"));
  EXPECT_EQ(count(short30, "<td class=\"c\">000000"), 30u);
}

TEST_F(BrowserTest, PagesArePaintedInEachLanguage) {
  std::string last;
  for (const std::string& language : Messages::languages()) {
    run(page(sampleRun(language)), "",
        "--window-size=1200,1600 --hide-scrollbars --screenshot=" + shellQuoted(folder_.file(language + ".png")));
    const std::string picture = test::contentOf(folder_.file(language + ".png"));
    ASSERT_TRUE(picture.starts_with("\x89PNG")) << language;
    EXPECT_GT(picture.size(), 40'000u) << language << ": a blank sheet";
    EXPECT_NE(picture, last);
    last = picture;
  }
}

// Neither a script's failure nor something that the page's own policy forbids.
TEST_F(BrowserTest, TheBrowserHasNothingToComplainOf) {
  const std::string html = page(sampleRunOf(1'000));
  run(html, "", "--enable-logging=stderr --dump-dom");
  EXPECT_THAT(test::contentOf(folder_.file("err")), Not(HasSubstr("CONSOLE")));
  run(html, "throw new Error('seen')", "--enable-logging=stderr --dump-dom");
  EXPECT_THAT(test::contentOf(folder_.file("err")), HasSubstr("seen")) << "complaints are not heard";
}

}  // namespace
}  // namespace host
