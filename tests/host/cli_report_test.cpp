// Report files and prints of a run, through the command line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/read_back.h"

namespace host::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class CliReportTest : public ::testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(gljz({"demo", folder_.file("data"), "--quiet"}).code, 0); }
  std::string server() const { return "embedded:" + folder_.file("data"); }
  Answer transfer(const std::vector<std::string>& more, const std::vector<std::string>& how = {"--quiet"}) const {
    std::vector<std::string> words{"transfer", "--server", server(), "--account", "001",       "--from",
                                   "2005",     "--to",     "2006",   "--today",   "2006-01-10"};
    words.insert(words.end(), how.begin(), how.end());
    words.insert(words.end(), more.begin(), more.end());
    return gljz(words);
  }
  void sql(const std::string& database, const std::string& text) const {
    const Answer a = gljz({"sql", "--server", server(), "--database", database, "-q", text});
    ASSERT_EQ(a.code, 0) << a.err;
  }
  std::size_t marks() const {
    const Answer a = gljz({"sql", "--server", server(), "--database", "TqSystem", "--format", "csv", "-q",
                           "select count(*) as n from UA_Mark"});
    return std::stoul(a.out.substr(a.out.find('\n') + 1));
  }
  // A file to print into, a document where this program makes documents, and what such a file says.
  std::string printFile(const std::string& stem) const { return folder_.file(stem + (canMakePdf() ? ".pdf" : ".txt")); }
  std::string textOf(const std::string& file) const { return file.ends_with(".pdf") ? pdfText(file) : contentOf(file); }
  TemporaryFolder folder_;
};

TEST_F(CliReportTest, EveryFormatTellsTheSameRun) {
  const Answer json = transfer({"--format", "json"});
  ASSERT_EQ(json.code, 4) << json.err;
  const std::size_t at = json.out.find("\"right\": \"") + 10;
  const std::string right = json.out.substr(at, json.out.find('"', at) - at);
  ASSERT_GT(std::stoi(right), 10);
  for (const std::string name : {"r.html", "r.csv", "r.json", "r.txt", "r.pdf"}) {
    if (name == "r.pdf" && !canMakePdf()) continue;  // refused, see below
    const Answer a = transfer({"--report", folder_.file(name), "--language", "en-US"});
    EXPECT_EQ(a.code, 4) << name;
    EXPECT_EQ(a.err, "") << name;
    const std::string text = textOf(folder_.file(name));
    EXPECT_THAT(text, HasSubstr("10020101")) << name;
    EXPECT_THAT(text, HasSubstr(right)) << name;
    EXPECT_THAT(text, HasSubstr("C006")) << name;
  }
  EXPECT_THAT(contentOf(folder_.file("r.html")), HasSubstr("<b>" + right + "</b><span>accounts right</span>"));
}

TEST_F(CliReportTest, AnUnknownEndingIsRefusedBeforeTheRun) {
  const std::size_t before = marks();
  for (const char* name : {"r.doc", "r", "r.xls", "r.htm"}) {
    const Answer a = transfer({"--report", folder_.file(name)});
    EXPECT_EQ(a.code, 2);
    EXPECT_EQ(a.line(), "gljz: --report \"" + folder_.file(name) +
                            "\": the file name has to end in one of .html, .pdf, .xlsx, .csv, .json, .txt");
  }
  const Answer nowhere = transfer({"--report", folder_.file("no/such/r.html")});
  EXPECT_EQ(nowhere.code, 2);
  EXPECT_EQ(nowhere.line(), "gljz: file " + folder_.file("no/such/r.html") + " cannot be written");
  EXPECT_EQ(marks(), before);
}

TEST_F(CliReportTest, AFormatThatThisProgramIsBuiltWithoutIsRefusedBeforeTheRun) {
  if (canMakePdf() && canMakeWorkbooks()) GTEST_SKIP() << "this program was built with every format";
  const std::size_t before = marks();
  for (const std::string name : {"r.pdf", "r.xlsx"}) {
    if (canWrite(*reportFormat(name))) continue;
    const Answer a = transfer({"--report", folder_.file(name)});
    EXPECT_EQ(a.code, 2) << name;
    EXPECT_THAT(a.line(), HasSubstr("\"" + folder_.file(name) + "\": this program was built without")) << name;
    EXPECT_FALSE(std::filesystem::exists(pathOf(folder_.file(name)))) << name;
  }
  if (!canMakePdf()) {
    EXPECT_EQ(transfer({"--print", folder_.file("p.pdf")}).line(),
              "gljz: --print \"" + folder_.file("p.pdf") + "\": the file name has to end in one of .txt");
  }
  EXPECT_EQ(marks(), before);
}

// A run that is refused leaves no empty report behind.
TEST_F(CliReportTest, ARefusedRunLeavesNoFile) {
  const Answer a = transfer({"--report", folder_.file("r.html"), "--check", "GL*Nonsense=True"});
  EXPECT_EQ(a.code, 2);
  EXPECT_FALSE(std::filesystem::exists(folder_.file("r.html")));
}

TEST_F(CliReportTest, AReportThatCannotBeWrittenDoesNotLoseTheResult) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  std::filesystem::create_symlink("/dev/full", folder_.file("r.csv"));
  const Answer a = transfer({"--report", folder_.file("r.csv"), "--format", "json"});
  EXPECT_EQ(a.code, 4) << "the run's own exit code";
  EXPECT_THAT(a.out, HasSubstr("\"success\": true"));
  EXPECT_THAT(a.line(), HasSubstr("gljz: report file " + folder_.file("r.csv") + ": "));
}

TEST_F(CliReportTest, TheClosingReportIsPrinted) {
  const std::string file = printFile("closing");
  const Answer a = transfer({"--print", file, "--operator", "赵六"});
  EXPECT_EQ(a.code, 4);
  EXPECT_EQ(a.err, "");
  const std::string text = textOf(file);
  EXPECT_THAT(text, HasSubstr("上年余额结转报告（2005年结转至2006年）"));
  EXPECT_THAT(text, HasSubstr("新年度期初余额核对"));
  EXPECT_THAT(text, HasSubstr("正确结转科目数："));
  EXPECT_THAT(text, HasSubstr("科目编码"));
  EXPECT_THAT(text, HasSubstr("10020101"));
  EXPECT_THAT(text, HasSubstr("制表人：赵六"));
  EXPECT_THAT(text, HasSubstr("打印日期：2006.01.10"));
  EXPECT_THAT(text, HasSubstr("第 1 页，共 "));
}

TEST_F(CliReportTest, WhatWasLeftOutIsPrinted) {
  const std::string file = folder_.file("left.txt");
  const Answer a = transfer({"--print-left-out", file, "--language", "zh-TW"});
  EXPECT_EQ(a.err, "");
  const std::string text = contentOf(file);
  EXPECT_THAT(text, HasSubstr("無對應記錄（2005年結轉至2006年）"));
  EXPECT_THAT(text, HasSubstr("C006"));
  EXPECT_THAT(text, HasSubstr("第 1 頁，共 1 頁"));
}

// What is printed changes nothing of the run.
TEST_F(CliReportTest, PrintingLeavesTheResultAsItIs) {
  const auto withoutTime = [](std::string json) { return json.substr(0, json.find("\"seconds\"")); };
  const Answer plain = transfer({"--format", "json"});
  const Answer printed = transfer({"--format", "json", "--print", printFile("a"), "--print-left-out", printFile("b")});
  EXPECT_EQ(withoutTime(printed.out), withoutTime(plain.out));
  EXPECT_EQ(printed.code, plain.code);
  EXPECT_TRUE(std::filesystem::exists(printFile("a")));
  EXPECT_TRUE(std::filesystem::exists(printFile("b")));
}

TEST_F(CliReportTest, APrintThatDidNotComeAboutIsTold) {
  sql("TqData_001_2005", "update gl_mend set bflag=0");
  const std::string file = printFile("closing");
  const Answer a = transfer({"--print", file});
  EXPECT_EQ(a.code, 1);
  EXPECT_EQ(a.line(), "gljz: nothing was printed into " + file + ": the run ended before its report");
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(CliReportTest, PrintsGoIntoPdfAndTextOnly) {
  const Answer a = transfer({"--print", "closing.html"});
  EXPECT_EQ(a.code, 2);
  EXPECT_EQ(a.line(), std::string("gljz: --print \"closing.html\": the file name has to end in one of ") +
                          (canMakePdf() ? ".pdf, .txt" : ".txt"));
  const Answer b = transfer({"--print", printFile("a"), "--print-left-out", printFile("a")});
  EXPECT_EQ(b.code, 2);
  EXPECT_EQ(b.line(), "gljz: --print and --print-left-out name the same file");
}

TEST_F(CliReportTest, APrintThatCannotBeWrittenChangesNoExitCode) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  std::filesystem::create_symlink("/dev/full", folder_.file("full.pdf"));
  const Answer a = transfer({"--print", folder_.file("full.pdf"), "--format", "json"});
  EXPECT_EQ(a.code, 4);
  EXPECT_THAT(a.line(), HasSubstr("gljz: print into " + folder_.file("full.pdf") + ": "));
  EXPECT_THAT(a.out, HasSubstr("\"success\": true"));
}

// In a pipe the steps are lines.
TEST_F(CliReportTest, ProgressInAPipeIsALineForEachFinishedStep) {
  const Answer a = transfer({}, {"--format", "json"});
  EXPECT_EQ(a.err,
            "结转上年之前的检查... Y\n结转科目总账... Y\n结转辅助总账... Y\n结转明细账... Y\n结转未核销银行账... Y\n"
            "结转银行对账单... Y\n结转支票登记簿... Y\n结转其它表... Y\n");
}

}  // namespace
}  // namespace host::test
