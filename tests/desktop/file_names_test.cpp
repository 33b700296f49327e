// Files that a person names: their endings, and what is asked about those that are there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <deque>
#include <fstream>
#include <sstream>

#include "demo_desktop.h"
#include "desktop/dialog_windows.h"
#include "desktop/export_rows.h"
#include "desktop/result_window.h"

namespace desktop::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const QString filters = "CSV (*.csv);;HTML (*.html);;Excel (*.xlsx)", csv = "CSV (*.csv)", excel = "Excel (*.xlsx)";

std::string ended(const char* file, const QString& chosen) {
  return utf8(withEnding(file, "report.csv", filters, chosen));
}

TEST(WithEnding, FollowsTheChosenFilter) {
  EXPECT_EQ(ended("/a/report.csv", csv), "/a/report.csv");
  EXPECT_EQ(ended("/a/report.csv", excel), "/a/report.xlsx") << "in place of the one that was proposed";
  EXPECT_EQ(ended("/a/mine", excel), "/a/mine.xlsx");
  EXPECT_EQ(ended("/a/mine.XLSX", excel), "/a/mine.XLSX");
  EXPECT_EQ(ended("/a/mine.html", excel), "/a/mine.xlsx") << "the filter was chosen, too";
}

TEST(WithEnding, LetsATypedEndingStand) {
  EXPECT_EQ(ended("/a/mine.xlsx", csv), "/a/mine.xlsx") << "typed while the filter was left as it was";
}

TEST(WithEnding, KnowsWhatIsNoEnding) {
  EXPECT_EQ(ended("/a/2006.01", csv), "/a/2006.01.csv");
  EXPECT_EQ(ended("/a.b/report", excel), "/a.b/report.xlsx");
  EXPECT_EQ(ended("/a/report.doc", excel), "/a/report.doc.xlsx");
  EXPECT_EQ(ended("/a/report", ""), "/a/report.csv") << "a dialog that does not tell its filter";
}

// Answers of a person in the file dialog itself.
class AtTheDialog final : public Ask {
public:
  AtTheDialog() { setAsk(this); }
  ~AtTheDialog() override { setAsk(nullptr); }
  void answer(const std::string& file, const char* filter) { answers_.push_back({shown(file), filter}); }

  bool replaces = true;
  std::vector<std::string> asked, complaints;  // files that are there; what was told
  bool hasPrinters() override { return false; }
  void complain(QWidget*, const QString&, const QString& text) override { complaints.push_back(utf8(text)); }

protected:
  QString fileDialog(QWidget*, const QString&, const QString&, const QString& offered, QString& chosen) override {
    if (answers_.empty()) return {};
    const auto [file, filter] = answers_.front();
    answers_.pop_front();
    for (const QString& one : offered.split(";;"))
      if (one.startsWith(filter)) chosen = one;
    return file;
  }
  bool mayReplace(QWidget*, const QString&, const QString& file) override {
    asked.push_back(utf8(file));
    return replaces;
  }

private:
  std::deque<std::pair<QString, const char*>> answers_;
};

class FileNames : public testing::Test {
protected:
  std::string start(const char* name) const {
    std::ifstream in(folder_.file(name), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str().substr(0, 5);
  }
  void put(const char* name) const { std::ofstream(folder_.file(name)) << "older"; }

  host::test::TemporaryFolder folder_;
  AtTheDialog dialog_;
  Texts texts_{"zh-CN"};
  const ExportedRows rows_{"报告", "report", {{"科目"}, {"1001"}}, {}};
};

TEST_F(FileNames, AnExportIsOfTheKindThatWasChosen) {
  dialog_.answer(folder_.file("report.csv"), "Excel");
  askAndExport(nullptr, texts_, rows_);
  EXPECT_THAT(start("report.xlsx"), StartsWith("PK"));
  EXPECT_EQ(start("report.csv"), "");
  EXPECT_THAT(dialog_.asked, ElementsAre());
}

TEST_F(FileNames, AFileThatIsThereIsAskedAboutUnderItsLastName) {
  put("report.pdf");
  dialog_.replaces = false;
  dialog_.answer(folder_.file("report.csv"), "PDF");
  askAndExport(nullptr, texts_, rows_);  // asked again, and left
  EXPECT_EQ(start("report.pdf"), "older");
  EXPECT_THAT(dialog_.asked, ElementsAre(folder_.file("report.pdf")));
  dialog_.replaces = true;
  dialog_.answer(folder_.file("report.csv"), "PDF");
  askAndExport(nullptr, texts_, rows_);
  EXPECT_EQ(start("report.pdf"), "%PDF-");
}

TEST_F(FileNames, TheReportOfARunIsOfTheKindThatWasChosen) {
  host::RunResult result;
  result.language = "zh-CN";
  ResultWindow window(nullptr, result, texts_);
  window.show();
  dialog_.answer(folder_.file("gljz.html"), "PDF");
  press(window, "save");
  EXPECT_EQ(start("gljz.pdf"), "%PDF-");
  EXPECT_THAT(dialog_.complaints, ElementsAre());
}

TEST_F(FileNames, APrintIsOfTheKindThatWasChosen) {
  DialogWindows windows(nullptr, texts_);
  dialog_.answer(folder_.file("closing-report.pdf"), "TXT");
  EXPECT_EQ(windows.printFile("frmJZBG"), folder_.file("closing-report.txt"));
  EXPECT_EQ(windows.printFile("frmJZBG"), "") << "left";
}

TEST_F(FileNames, AWrongEndingIsToldInTheLanguageOfTheWindow) {
  try {
    exportRows(folder_.file("a.doc"), rows_, texts_);
    FAIL() << "a.doc was written";
  } catch (const std::runtime_error& e) {
    EXPECT_THAT(e.what(), HasSubstr("文件名的结尾应是"));
  }
}

}  // namespace
}  // namespace desktop::test
