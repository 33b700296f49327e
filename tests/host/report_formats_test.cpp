// The report files: one model of a run, and CSV, workbook and PDF that say what it says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <sstream>
#include <system_error>

#include "host/messages.h"
#include "host/read_back.h"
#include "host/report_file.h"
#include "host/sample_run.h"

namespace host {
namespace {

using test::sampleRun;
using test::sampleRunOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

using Row = std::vector<std::string>;

const ReportFigure& figure(const ReportModel& model, const std::string& id) {
  for (const ReportFigure& f : model.figures)
    if (f.id == id) return f;
  throw std::out_of_range("no figure " + id);
}

TEST(ReportModelTest, SaysTheOutcomeFirst) {
  const ReportModel model = reportModel(sampleRun());
  EXPECT_EQ(model.title, "Carry-forward report, 2005 to 2006");
  EXPECT_EQ(model.grade, Grade::attention);
  EXPECT_EQ(model.headline, "The year was carried forward, but parts of it need attention.");
  EXPECT_THAT(model.sentences, Contains("Message: E1"));
  EXPECT_EQ(model.facts.at(0).value, "001 Greenstone & <Sons>");
  EXPECT_EQ(model.facts.at(1).value, "2005 → 2006");
  EXPECT_EQ(figure(model, "rows").value, "630");
  EXPECT_EQ(figure(model, "right").value, "2");
  EXPECT_EQ(figure(model, "wrong").value, "1");
  EXPECT_TRUE(figure(model, "wrong").attention);
  EXPECT_FALSE(figure(model, "right").attention);
  EXPECT_EQ(figure(model, "leftOut").value, "4");
  EXPECT_EQ(figure(model, "failures").value, "1");
}

TEST(ReportModelTest, EveryExitHasItsGrade) {
  RunResult r = sampleRun();
  r.failures.clear(), r.report->wrong = "0";
  EXPECT_EQ(reportModel(r).grade, Grade::good);
  RunResult stopped = r;
  stopped.success = false, stopped.stop = Stop{"checks", "no styles"};
  EXPECT_EQ(reportModel(stopped).grade, Grade::stopped);
  EXPECT_THAT(reportModel(stopped).sentences, Contains("Because: no styles"));
  EXPECT_THAT(reportModel(stopped).sentences, Contains("The call itself reported success."));
  RunResult refused = stopped;
  refused.returned = false;
  EXPECT_EQ(reportModel(refused).grade, Grade::stopped);
  EXPECT_THAT(reportModel(refused).sentences, Not(Contains("The call itself reported success.")));
  RunResult failed = r;
  failed.uncaught = "overflow";
  EXPECT_EQ(reportModel(failed).grade, Grade::failed);
  EXPECT_THAT(reportModel(failed).sentences, Contains("Failure: overflow"));
  EXPECT_THAT(reportModel(failed).sentences, Contains("The transaction was undone."));
}

// Where it stopped and the message of the entry are one text told once.
TEST(ReportModelTest, AStopsReasonIsToldOnce) {
  RunResult r = sampleRun();
  r.returned = r.success = false;
  r.errMsg = "no chart", r.stop = Stop{"checks", "no chart"};
  const auto sentences = reportModel(r).sentences;
  EXPECT_EQ(std::count_if(sentences.begin(), sentences.end(),
                          [](const std::string& s) { return s.find("no chart") != std::string::npos; }),
            1);
}

TEST(ReportModelTest, ARecordLeftOutStandsOnceWithItsTimesAndByReason) {
  const ReportModel model = reportModel(sampleRun());
  const ReportTable* table = model.table("leftOut");
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->title, "Records that were not carried, with the reason (4)");
  EXPECT_THAT(table->rows,
              ElementsAre(Row{"K", "1901", "Rent", "reason one", "2"}, Row{"C", "0006", "=1+1", "reason one", "1"},
                          Row{"K", "1151", "Paid", "reason two", "1"}));
}

TEST(ReportModelTest, TablesHaveAsManyCellsAsColumns) {
  for (const std::string& language : Messages::languages()) {
    const ReportModel model = reportModel(sampleRun(language));
    for (const ReportTable& table : model.tables) {
      EXPECT_LE(table.tab.size() / 3, 31u);
      for (const Row& row : table.rows) EXPECT_EQ(row.size(), table.columns.size()) << table.id;
      for (const std::size_t bar : table.bars) EXPECT_LT(bar, table.columns.size());
    }
  }
}

// A reader of CSV as RFC 4180 has it.
std::vector<Row> parseCsv(const std::string& text) {
  std::vector<Row> rows(1, Row(1));
  bool quoted = false;
  for (std::size_t i = text.starts_with("\xEF\xBB\xBF") ? 3 : 0; i < text.size(); ++i) {
    const char c = text[i];
    if (quoted && c == '"' && i + 1 < text.size() && text[i + 1] == '"')
      rows.back().back() += text[i++];
    else if (c == '"')
      quoted = !quoted;
    else if (quoted || (c != ',' && c != '\r' && c != '\n'))
      rows.back().back() += c;
    else if (c == ',')
      rows.back().emplace_back();
    else if (c == '\n')
      rows.emplace_back(1);
  }
  if (rows.back() == Row(1)) rows.pop_back();
  return rows;
}

TEST(ReportCsvTest, EveryRowNamesItsSection) {
  const ReportModel model = reportModel(sampleRun());
  const std::string csv = reportCsv(model);
  EXPECT_TRUE(csv.starts_with("\xEF\xBB\xBF"));
  const auto rows = parseCsv(csv);
  EXPECT_THAT(rows, Contains(Row{"outcome", model.headline}));
  EXPECT_THAT(rows, Contains(Row{"data", "Table", "Name", "Rows read", "New", "Changed", "Removed"}));
  EXPECT_THAT(rows, Contains(Row{"data", "gl_accsum", "Account totals", "53", "444", "180", "12"}));
  EXPECT_THAT(rows, Contains(Row{"leftOut", "K", "1901", "Rent", "reason one", "2"}));
  EXPECT_THAT(rows, Contains(Row{"leftOut", "C", "0006", "=1+1", "reason one", "1"}));
  EXPECT_THAT(rows,
              Contains(Row{"failures", "totals", "the stage ended early", "exec\nsomething </script> & \"more\""}));
  EXPECT_THAT(rows, Contains(Row{"accounts", "1131", "Due", "Due", "Customers", "贷", "100.00", "", "", "12.5", "kg",
                                 "X", "-190.00"}));
  for (const Row& row : rows)
    if (row[0] != "outcome") {
      const ReportTable* table = model.table(row[0]);
      ASSERT_NE(table, nullptr) << row[0];
      EXPECT_EQ(row.size(), table->columns.size() + 1);
    }
}

class ReportFileTest : public ::testing::Test {
protected:
  std::string write(const std::string& name, const RunResult& result) const {
    const std::string file = folder_.file(name);
    writeReport(file, reportFormat(name).value(), result);
    return file;
  }
  test::TemporaryFolder folder_;
};

class WorkbookTest : public ReportFileTest {
protected:
  void SetUp() override {
    if (!canMakeWorkbooks()) GTEST_SKIP() << test::withoutWorkbooks;
  }
  std::vector<std::string> workbook(const RunResult& result) const {
    std::istringstream in(test::workbookCells(write("r.xlsx", result)));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }
};

class PdfReportTest : public ReportFileTest {
protected:
  void SetUp() override {
    if (!canMakePdf()) GTEST_SKIP() << test::withoutPdf;
  }
  std::string pdf(const RunResult& result) const { return test::pdfText(write("r.pdf", result)); }
};

TEST_F(ReportFileTest, TheEndingDecides) {
  for (const auto& [name, format] : {std::pair("a.html", ReportFormat::html),
                                     {"a.PDF", ReportFormat::pdf},
                                     {"a.xlsx", ReportFormat::xlsx},
                                     {"a.csv", ReportFormat::csv},
                                     {"a.json", ReportFormat::json},
                                     {"a.b.txt", ReportFormat::text}})
    EXPECT_EQ(reportFormat(name), format) << name;
  for (const char* name : {"", "html", "a.htm", "a.xls", "a.pdf ", "a"})
    EXPECT_EQ(reportFormat(name), std::nullopt) << name;
}

TEST_F(WorkbookTest, AWorkbookHasTypedCellsAndASheetForEachTable) {
  const auto cells = workbook(sampleRun());
  EXPECT_THAT(cells, Contains("Outcome!A1 s Carry-forward report, 2005 to 2006"));
  EXPECT_THAT(cells, Contains("Outcome!B9 n 630"));
  EXPECT_THAT(cells, Contains("Data carried!A1 s Table"));
  EXPECT_THAT(cells, Contains("Data carried!B2 s Account totals"));
  EXPECT_THAT(cells, Contains("Data carried!D2 n 444"));
  EXPECT_THAT(cells, Contains("Data carried!C3 s -"));
  EXPECT_THAT(cells, Contains("Not carried!B2 s 1901"));
  EXPECT_THAT(cells, Contains("Not carried!E2 n 2")) << "the same record twice is one row";
  EXPECT_THAT(cells, Contains("Not carried!B3 s 0006"))
      << "codes keep their zeros; the rows of a reason stand together";
  EXPECT_THAT(cells, Contains("Not carried!C3 s =1+1")) << "a text is no formula";
  EXPECT_THAT(cells, Contains("Not carried!B4 s 1151"));
  EXPECT_THAT(cells, Contains("Opening balances!A2 s 0101"));
  EXPECT_THAT(cells, Contains("Opening balances!F2 n 1234567.8"));
  EXPECT_THAT(cells, Contains("Opening balances!I4 n 12.5"));
  EXPECT_THAT(cells, Contains("Opening balances!K4 s X"));
  EXPECT_THAT(cells, Contains("Opening balances!L4 n -190"));
  EXPECT_THAT(cells, Contains("Failures!B2 s the stage ended early"));
  for (const char* sheet : {"Data carried", "Not carried", "Failures", "Notes", "Opening balances", "Stages"})
    EXPECT_THAT(cells, Contains(std::string(sheet) + " frozen"));
}

// A workbook's numbers are doubles: an amount that one cannot hold to the cent is a text.
TEST_F(WorkbookTest, AnAmountIsANumberOnlyWhereNoDigitIsLost) {
  RunResult r = sampleRun();
  r.report->rows = {{"1", "", "", "", "", "9999999999999.99", "", "", "", "", "Y"},
                    {"2", "", "", "", "", "-922337203685477.58", "", "", "", "", "Y"}};
  const auto cells = workbook(r);
  EXPECT_THAT(cells, Contains("Opening balances!F2 n 9999999999999.99"));
  EXPECT_THAT(cells, Contains("Opening balances!F3 s -922337203685477.58"));
}

TEST_F(WorkbookTest, SpeaksEachLanguage) {
  for (const std::string& language : Messages::languages()) {
    const auto cells = workbook(sampleRun(language));
    EXPECT_THAT(cells, Contains(HasSubstr("!A1 s " + reportModel(sampleRun(language)).title)));
    EXPECT_THAT(cells, Not(Contains(HasSubstr("Gljz.Host"))));
  }
}

TEST_F(PdfReportTest, SpeaksEachLanguage) {
  for (const std::string& language : Messages::languages()) {
    const std::string text = pdf(sampleRun(language));
    EXPECT_THAT(text, HasSubstr(reportModel(sampleRun(language)).headline));
    EXPECT_THAT(text, Not(HasSubstr("Gljz.Host")));
  }
}

TEST_F(PdfReportTest, HasOutcomeTablesAndPageNumbers) {
  const std::string text = pdf(sampleRunOf(200));
  EXPECT_LT(text.find("parts of it need attention"), text.find("Data carried"));
  EXPECT_THAT(text, HasSubstr("reason one"));
  EXPECT_THAT(text, HasSubstr("00000200"));
  const auto pages = std::count(text.begin(), text.end(), '\f');
  EXPECT_GT(pages, 3);
  EXPECT_THAT(text, HasSubstr("Page " + std::to_string(pages) + " of " + std::to_string(pages)));
  std::size_t headers = 0;
  for (std::size_t at = 0; (at = text.find("Opening balance ", at)) != std::string::npos; ++at) ++headers;
  EXPECT_GE(static_cast<long>(headers), pages - 2) << "the header row is repeated";
}

RunResult runWithManyRows() {
  RunResult r = sampleRun();
  r.tables.front().inserted = 12444;
  return r;
}
void expectGroupedNumbers(const std::string& text) {
  EXPECT_THAT(text, HasSubstr("1,234,567.80"));
  EXPECT_THAT(text, HasSubstr("12,444"));
  EXPECT_THAT(text, Not(HasSubstr("1234567.80")));
  EXPECT_THAT(text, HasSubstr("0101")) << "a code is no number";
}
TEST_F(PdfReportTest, GroupsItsNumbers) {
  expectGroupedNumbers(pdf(runWithManyRows()));
}
TEST_F(ReportFileTest, TextGroupsItsNumbers) {
  expectGroupedNumbers(test::contentOf(write("r.txt", runWithManyRows())));
}

// An unknown ending, a folder that is not there: the reason is told, and nothing half-written stays.
TEST_F(ReportFileTest, AFileThatCannotBeWrittenIsToldWithItsName) {
  for (const char* ending : {".html", ".pdf", ".xlsx", ".csv", ".json", ".txt"}) {
    const std::string file = folder_.file("no/such/r") + ending;
    try {
      writeReport(file, reportFormat(file).value(), sampleRun());
      FAIL() << file;
    } catch (const std::runtime_error& e) {
      EXPECT_THAT(e.what(), HasSubstr("report file " + file + ": ")) << ending;
    }
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_.text()));
}

TEST_F(ReportFileTest, AReportReplacesTheLastOneWholly) {
  const std::string file = folder_.write("r.html", std::string(1'000'000, 'x'));
  writeReport(file, ReportFormat::html, sampleRun());
  EXPECT_THAT(test::contentOf(file), Not(HasSubstr("xxxx")));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.text()), {}), 1);
}

TEST_F(ReportFileTest, ALinkStaysALink) {
  const std::string target = folder_.write("real.csv", "old"), link = folder_.file("link.csv");
  std::error_code refused;
  std::filesystem::create_symlink(pathOf(target), pathOf(link), refused);
  if (refused == std::errc::function_not_supported) GTEST_SKIP() << "the library makes no links on this system";
  ASSERT_FALSE(refused) << refused.message();
  writeReport(link, ReportFormat::csv, sampleRun());
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_THAT(test::contentOf(target), HasSubstr("outcome"));
}

// The files of a run of many accounts stay within what programs open.
TEST_F(ReportFileTest, AHundredThousandAccountsAreWritten) {
  const RunResult r = sampleRunOf(100'000);
  const std::string csv = test::contentOf(write("r.csv", r));
  EXPECT_THAT(csv, HasSubstr("accounts,00100000,"));
  const std::string html = test::contentOf(write("r.html", r));
  EXPECT_LT(html.size(), 20'000'000u);
  EXPECT_LT(std::count(html.begin(), html.end(), '>'), 40'000) << "rows beyond the first page are data, not elements";
}

TEST_F(WorkbookTest, AHundredThousandAccountsAreWritten) {
  const auto cells = workbook(sampleRunOf(100'000));
  EXPECT_THAT(cells.back(), HasSubstr("Stages!"));
  EXPECT_TRUE(std::find(cells.begin(), cells.end(), "Opening balances!A100001 s 00100000") != cells.end());
}

}  // namespace
}  // namespace host
