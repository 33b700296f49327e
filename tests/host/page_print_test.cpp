// The reference print control: pages of PDF, read back with the tools of poppler, and of plain text.
#include "host/print/page_print.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "host/format_database.h"
#include "host/read_back.h"

namespace host {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using Rows = std::vector<std::vector<std::string>>;

class PagePrintTest : public ::testing::Test {
protected:
  PagePrintTest() {
    const auto database = openFormatDatabase(folder_.file("format.db"));
    database->Execute("CREATE TABLE ZPDJ_Head (P1 String,P2 String)");
    database->Execute("CREATE TABLE ZPDJ_Tail (P1 String)");
    addRow(*database, "ZPDJ_Head", {{"P1", "上年余额结转报告"}});
    addRow(*database, "ZPDJ_Tail", {{"P1", "核算单位：青石商贸"}});
    layouts("paper a5 landscape\nrow\ntext \"{P1}\" centre size 14 bold\nrow\ntext \"{P2}\"\n",
            "rule\nrow\ntext \"{P1}\"\ntext \"第 {page} 页，共 {pages} 页\" right\n");
    grid_ = {{"科目编码", "科目名称", "期初余额"}};
    for (int i = 1; i <= 100; ++i) grid_.push_back({std::to_string(1000 + i), "现金账户", std::to_string(i) + ".50"});
  }
  static void addRow(platform::FormatDatabase& database, const std::string& table,
                     const std::vector<std::pair<std::string, std::string>>& fields) {
    const auto rows = database.OpenTable(table);
    rows->AddNew();
    for (const auto& [name, text] : fields) rows->SetField(name, text);
    rows->Update();
  }
  void layouts(const std::string& head, const std::string& foot) const {
    folder_.write("head.rep", head);
    folder_.write("foot.rep", foot);
  }
  // Prints into a file of the folder; what the control answers.
  int print(const std::string& name) {
    platform::PrintControl::Job job;
    job.formatDatabase = folder_.file("format.db");
    job.headLayout = folder_.file("head.rep"), job.headTable = "ZPDJ_Head";
    job.footLayout = folder_.file("foot.rep"), job.footTable = "ZPDJ_Tail";
    job.grid = &grid_;
    job.columnWidths = {800, 1200, 800};
    job.alignments = {0, 0, 1};
    control_.printTo(name.empty() ? "" : folder_.file(name));
    return control_.Print(job);
  }
  static std::vector<std::string> pagesOf(const std::string& text) {
    std::vector<std::string> pages(1);
    for (const char c : text)
      if (c == '\f')
        pages.emplace_back();
      else
        pages.back() += c;
    if (pages.back().empty()) pages.pop_back();  // pdftotext ends each page with a form feed
    return pages;
  }

  // A name of each kind of file that this program prints into.
  static std::vector<std::string> names() {
    return canMakePdf() ? std::vector<std::string>{"p.pdf", "p.txt"} : std::vector<std::string>{"p.txt"};
  }

  test::TemporaryFolder folder_;
  PagePrint control_{"zh-CN"};
  Rows grid_;
};

class PdfPrintTest : public PagePrintTest {
protected:
  void SetUp() override {
    if (!canMakePdf()) GTEST_SKIP() << test::withoutPdf;
  }
  std::string pdfText() const { return test::pdfText(folder_.file("p.pdf")); }
};

// What pages of either kind have in common.
void expectWholePages(const std::vector<std::string>& pages) {
  ASSERT_GT(pages.size(), 1u);
  int next = 1001;
  for (std::size_t n = 0; n < pages.size(); ++n) {
    EXPECT_THAT(pages[n], HasSubstr("上年余额结转报告"));
    EXPECT_THAT(pages[n], HasSubstr("科目编码")) << "the header row is repeated";
    EXPECT_THAT(pages[n], HasSubstr("核算单位：青石商贸"));
    EXPECT_THAT(pages[n], HasSubstr("第 " + std::to_string(n + 1) + " 页，共 " + std::to_string(pages.size()) + " 页"));
    const std::regex row("(1\\d{3}) +现金账户 +(\\d+)\\.50");
    for (std::sregex_iterator it(pages[n].begin(), pages[n].end(), row), end; it != end; ++it, ++next) {
      EXPECT_EQ((*it)[1], std::to_string(next));
      EXPECT_EQ((*it)[2], std::to_string(next - 1000));
    }
  }
  EXPECT_EQ(next, 1101) << "every row once, in order";
}

TEST_F(PdfPrintTest, PdfPagesHaveHeadHeaderRowFootAndNumber) {
  ASSERT_EQ(print("p.pdf"), 0) << control_.failure();
  EXPECT_EQ(control_.unknownCharacters(), 0u) << "a font for Chinese is missing";
  expectWholePages(pagesOf(pdfText()));
  const std::string info = test::said({"pdfinfo", folder_.file("p.pdf")});
  EXPECT_THAT(info, HasSubstr("Title:           上年余额结转报告"));
  EXPECT_TRUE(
      std::regex_search(info, std::regex("Page size: +595\\.\\d* x 419\\.\\d* pts|Page size: +595\\.\\d* x 420")))
      << info;
}

// A sum says nothing on a page that its account is not on.
TEST_F(PdfPrintTest, ARowWithoutAFirstCellStaysWithTheRowAboveIt) {
  for (const int above : {0, 1, 2, 3}) {  // so that the page would end behind each kind of row
    grid_.resize(1);
    for (int i = 0; i < above; ++i) grid_.push_back({"999", "开头", "1.00"});
    for (int i = 1; i <= 60; ++i) {
      grid_.push_back({std::to_string(1000 + i), "现金账户", "1.00"});
      grid_.push_back({"", "合计", std::to_string(1000 + i)});
      grid_.push_back({"", "核对", std::to_string(1000 + i)});
    }
    ASSERT_EQ(print("p.pdf"), 0) << control_.failure();
    const auto pages = pagesOf(pdfText());
    ASSERT_GT(pages.size(), 3u);
    std::size_t sums = 0;
    for (const std::string& page : pages) {
      const std::regex row("(1\\d{3}) +现金账户|(合计|核对) +(1\\d{3})");
      std::string account;
      for (std::sregex_iterator it(page.begin(), page.end(), row), end; it != end; ++it) {
        if ((*it)[1].matched) account = (*it)[1];
        if ((*it)[1].matched) continue;
        EXPECT_EQ((*it)[3], account) << "a sum on a page without its account\n" << page;
        ++sums;
      }
    }
    EXPECT_EQ(sums, 120u);
  }
}

// More of them than a page holds are parted, each once.
TEST_F(PdfPrintTest, RowsThatBelongTogetherAndFillMoreThanAPageAreParted) {
  grid_.resize(1);
  grid_.push_back({"1000", "第一", "1.00"});
  for (int i = 1; i <= 100; ++i) grid_.push_back({"", "合计", std::to_string(1000 + i)});
  ASSERT_EQ(print("p.pdf"), 0) << control_.failure();
  const std::string text = pdfText();
  int next = 1001;
  const std::regex row("合计 +(1\\d{3})");
  for (std::sregex_iterator it(text.begin(), text.end(), row), end; it != end; ++it, ++next)
    EXPECT_EQ((*it)[1], std::to_string(next));
  EXPECT_EQ(next, 1101);
}

TEST_F(PagePrintTest, TextPagesHaveTheSame) {
  ASSERT_EQ(print("p.txt"), 0) << control_.failure();
  const std::string text = test::contentOf(folder_.file("p.txt"));
  expectWholePages(pagesOf(text));
  for (const std::string& page : pagesOf(text)) EXPECT_LE(std::count(page.begin(), page.end(), '\n'), 60);
}

// Fonts are in the file, so that it looks the same everywhere, and ink is on the paper.
TEST_F(PdfPrintTest, PdfDrawsItsTexts) {
  ASSERT_EQ(print("p.pdf"), 0);
  const std::string file = folder_.file("p.pdf");
  std::istringstream fonts(test::said({"pdffonts", file}));
  std::string line;
  std::getline(fonts, line), std::getline(fonts, line);
  int embedded = 0;
  while (std::getline(fonts, line)) {
    EXPECT_TRUE(std::regex_search(line, std::regex("(WinAnsi|Identity-H|Custom) +yes yes yes"))) << line;
    ++embedded;
  }
  EXPECT_GT(embedded, 0);
  test::said({"pdftoppm", "-r", "50", "-gray", "-f", "1", "-l", "1", file, folder_.file("page")});
  std::string picture;
  for (const auto& entry : std::filesystem::directory_iterator(folder_.text()))
    if (entry.path().extension() == ".pgm") picture = test::contentOf(entry.path().string());
  ASSERT_THAT(picture, StartsWith("P5"));
  const auto dark =
      std::count_if(picture.begin() + 15, picture.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
  EXPECT_GT(dark, 1000);
  EXPECT_LT(dark, static_cast<long>(picture.size() / 4));
}

TEST_F(PdfPrintTest, LongTextsBreakAndNumbersDoNot) {
  const std::string name(200, 'w');
  grid_ = {{"科目编码", "科目名称", "期初余额"}, {"1001", "长期待摊费用 " + name, "-123456789012.34"}};
  ASSERT_EQ(print("p.pdf"), 0);
  const std::string text = pdfText();
  EXPECT_THAT(text, HasSubstr("-123456789012.34"));
  EXPECT_THAT(text, Not(HasSubstr(name)));
  EXPECT_EQ(std::count(text.begin(), text.end(), 'w'), 200);
}

TEST_F(PdfPrintTest, ARowHigherThanAPageDoesNotStopThePrint) {
  grid_ = {{"a", "b", "c"}, {"1", std::string(20'000, 'w'), "2"}, {"3", "x", "4"}};
  ASSERT_EQ(print("p.pdf"), 0);
  EXPECT_THAT(pdfText(), HasSubstr("x"));
}

TEST_F(PdfPrintTest, AGridWithoutRowsIsOnePage) {
  grid_.resize(1);
  ASSERT_EQ(print("p.pdf"), 0);
  EXPECT_THAT(pdfText(), HasSubstr("第 1 页，共 1 页"));
}

TEST_F(PagePrintTest, NoGridAtAllIsOnePage) {
  grid_.clear();
  ASSERT_EQ(print("p.txt"), 0);
  EXPECT_THAT(test::contentOf(folder_.file("p.txt")), HasSubstr("第 1 页，共 1 页"));
}

TEST_F(PdfPrintTest, BytesThatAreNoTextArePrintedAsSuch) {
  grid_ = {{"a", "b", "c"}, {"1\xC3", "line\nline", "\x01"}};
  EXPECT_EQ(print("p.pdf"), 0) << control_.failure();
  EXPECT_THAT(pdfText(), HasSubstr("line line"));
}

TEST_F(PagePrintTest, WithoutAFileTheOperatorHasLeft) {
  EXPECT_EQ(print(""), PagePrint::operatorLeft);
  EXPECT_EQ(control_.failure(), "");
  EXPECT_EQ(control_.printed(), 0u);
}

TEST_F(PagePrintTest, AMistakeInALayoutIsToldAndPrintsNothing) {
  layouts("row\ntext \"{P3}\"\n", "row\n");
  EXPECT_EQ(print("p.pdf"), PagePrint::badLayout) << "the layouts are read before anything is written";
  EXPECT_EQ(control_.failure(), folder_.file("head.rep") + ":2: there is no field {P3}");
  layouts("row\n", "row\ntexts\n");
  EXPECT_EQ(print("p.txt"), PagePrint::badLayout);
  EXPECT_EQ(control_.failure(), folder_.file("foot.rep") + ":2: \"texts\" is no directive");
  std::filesystem::remove(folder_.file("foot.rep"));
  EXPECT_EQ(print("p.txt"), PagePrint::badLayout);
  EXPECT_FALSE(std::filesystem::exists(folder_.file("p.pdf")));
  EXPECT_FALSE(std::filesystem::exists(folder_.file("p.txt")));
}

TEST_F(PagePrintTest, LayoutsThatLeaveNoRoomAreRefused) {
  std::string rows;
  for (int i = 0; i < 70; ++i) rows += "row\ntext \"x\" size 30\n";
  layouts(rows, "row\n");
  for (const std::string& name : names()) {
    EXPECT_EQ(print(name), PagePrint::cannotWrite);
    EXPECT_EQ(control_.failure(), "the layouts leave no room on the page") << name;
  }
}

TEST_F(PagePrintTest, AFailedPrintLeavesTheLastOne) {
  std::string rows;
  for (int i = 0; i < 70; ++i) rows += "row\ntext \"x\" size 30\n";
  for (const std::string& name : names()) {
    layouts("row\n", "row\n");
    ASSERT_EQ(print(name), 0) << control_.failure();
    const std::string before = test::contentOf(folder_.file(name));
    EXPECT_NE(before, "");
    layouts(rows, "row\n");
    EXPECT_NE(print(name), 0);
    EXPECT_EQ(test::contentOf(folder_.file(name)), before);
    EXPECT_FALSE(std::filesystem::exists(folder_.file(name + ".part")));
  }
}

TEST_F(PagePrintTest, AFileThatCannotBeWrittenIsTold) {
  for (const std::string& name : names()) {
    EXPECT_EQ(print("no/such/" + name), PagePrint::cannotWrite);
    EXPECT_THAT(control_.failure(), HasSubstr("file " + folder_.file("no/such/" + name) + ".part cannot be written"));
  }
}

TEST_F(PagePrintTest, AFormatDatabaseWithoutTheTablesIsTold) {
  openFormatDatabase(folder_.file("format.db"))->Execute("DROP TABLE ZPDJ_Tail");
  EXPECT_EQ(print("p.txt"), PagePrint::badFormatDatabase);
  EXPECT_NE(control_.failure(), "");
}

TEST(PagePrintNameTest, PrintsPdfAndText) {
  EXPECT_EQ(PagePrint::canPrint("a.PDF"), canMakePdf());
  EXPECT_TRUE(PagePrint::canPrint("a.txt"));
  for (const char* name : {"", "a", "a.html", "pdf"}) EXPECT_FALSE(PagePrint::canPrint(name)) << name;
}

}  // namespace
}  // namespace host
