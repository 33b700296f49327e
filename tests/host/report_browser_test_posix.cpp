// What a browser makes of the report as a page.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/messages.h"
#include "host/program.h"
#include "host/report_file.h"
#include "host/sample_run.h"
#include "host/text_count.h"

namespace host {
namespace {

using test::Answer;
using test::count;
using test::page;
using test::runProgram;
using test::sampleRun;
using test::sampleRunOf;
using ::testing::HasSubstr;
using ::testing::Not;

// A page in headless Chromium, with a script of the test behind the page's own.
class BrowserTest : public ::testing::Test {
protected:
  Answer run(const std::string& html, const std::string& script, const std::vector<std::string>& options) const {
    std::string all = html;
    if (!script.empty()) all.insert(all.rfind("</body>"), "<script>" + script + "</script>\n");
    folder_.write("page.html", all);
    std::filesystem::create_directory(folder_.file("home"));
    std::vector<std::string> words{"env",
                                   "HOME=" + folder_.file("home"),
                                   "timeout",
                                   "120",
                                   "chromium",
                                   "--headless",
                                   "--no-sandbox",
                                   "--disable-gpu",
                                   "--disable-quic",
                                   "--no-first-run",
                                   "--disable-background-networking",
                                   "--disable-component-update",
                                   "--disable-sync",
                                   "--disable-dev-shm-usage",
                                   "--user-data-dir=" + folder_.file("home/profile")};
    words.insert(words.end(), options.begin(), options.end());
    words.push_back("file://" + folder_.file("page.html"));
    Answer a = runProgram(words);
    EXPECT_EQ(a.code, 0) << a.err;
    return a;
  }
  // The page as the browser has it when scripts have run.
  std::string dom(const std::string& html, const std::string& script = "") const {
    const std::string out = run(html, script, {"--dump-dom"}).out;
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
        {"--window-size=1200,1600", "--hide-scrollbars", "--screenshot=" + folder_.file(language + ".png")});
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
  const std::vector<std::string> options{"--enable-logging=stderr", "--dump-dom"};
  EXPECT_THAT(run(html, "", options).err, Not(HasSubstr("CONSOLE")));
  EXPECT_THAT(run(html, "throw new Error('seen')", options).err, HasSubstr("seen")) << "complaints are not heard";
}

}  // namespace
}  // namespace host
