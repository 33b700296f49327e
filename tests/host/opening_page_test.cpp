// What a report says of the opening balances: whether debits and credits of the new year are equal, what became of the
// records, and what a wrong account differs by.
#include "host/opening_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/read_back.h"
#include "host/report_file.h"
#include "host/run_report.h"
#include "host/sample_run.h"

namespace host {
namespace {

using platform::Money;
using test::sampleRun;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

using Row = std::vector<std::string>;

YearBalance lostDebit() {
  YearBalance b;
  b.closing = {Money::parse("3549201"), Money::parse("3549201")};
  b.opening = {Money::parse("3513201"), Money::parse("3549201")};
  b.leftOut = {{"1901", Money::parse("36000")}};
  return b;
}

RunResult unbalanced(const std::string& language) {
  RunResult r = sampleRun(language);
  r.balance = lostDebit();
  return r;
}

TEST(YearSidesTest, AYearThatOpensOutOfBalanceIsToldInASentence) {
  EXPECT_THAT(reportModel(unbalanced("en-US")).sentences,
              Contains("The opening balances of 2006 do not balance: debits 3,513,201.00, credits 3,549,201.00, "
                       "difference 36,000.00."));
  EXPECT_THAT(reportModel(unbalanced("zh-CN")).sentences,
              Contains("2006 年的期初余额借贷不平：借方 3,513,201.00，贷方 3,549,201.00，相差 36,000.00。"));
  EXPECT_THAT(reportModel(unbalanced("zh-TW")).sentences,
              Contains("2006 年的期初餘額借貸不平：借方 3,513,201.00，貸方 3,549,201.00，相差 36,000.00。"));
}

TEST(YearSidesTest, ThatTheClosingYearDifferedAlreadyIsToldToo) {
  YearBalance b = lostDebit();
  b.closing.credit = Money::parse("3549200.5");
  EXPECT_THAT(sidesSentences(b, 2005, 2006, Messages("en-US")),
              ElementsAre(HasSubstr("do not balance"), "The balances at the end of 2005 already differed by 0.50."));
  b.opening = {Money::parse("5"), Money::parse("5")};
  EXPECT_THAT(sidesSentences(b, 2005, 2006, Messages("en-US")), IsEmpty());
}

// The exit code is the system's; the page must not be green above such a sentence.
TEST(YearSidesTest, ARunWithoutAnyOtherFindingNeedsAttention) {
  RunResult r = unbalanced("en-US");
  r.failures.clear(), r.report->wrong = "0", r.notCarried.clear();
  EXPECT_EQ(exitCode(r), 0);
  EXPECT_EQ(reportModel(r).grade, Grade::attention);
  EXPECT_THAT(runReportText(r), HasSubstr("\nCarried, but not wholly: see above.\nThe opening balances of 2006 do"));
  r.balance->opening = r.balance->closing;
  EXPECT_EQ(reportModel(r).grade, Grade::good);
}

TEST(YearSidesTest, BothYearsAndWhatTheyDifferByStandInATable) {
  const ReportModel model = reportModel(unbalanced("en-US"));
  const ReportTable* table = model.table("sides");
  ASSERT_NE(table, nullptr);
  EXPECT_THAT(table->rows, ElementsAre(Row{"2005, end of year", "3549201.00", "3549201.00", "0.00", "Y"},
                                       Row{"2006, opening", "3513201.00", "3549201.00", "-36000.00", "X"},
                                       Row{"Opening less end of year", "-36000.00", "0.00", "-36000.00", "X"}));
  EXPECT_EQ(reportModel(sampleRun()).table("sides"), nullptr) << "of a year that was not carried there is nothing";
}

TEST(YearSidesTest, EveryFormatSaysIt) {
  const RunResult r = unbalanced("en-US");
  EXPECT_THAT(runReportText(r), HasSubstr("2006, opening"));
  EXPECT_THAT(reportHtml(reportModel(r)), HasSubstr("do not balance"));
  EXPECT_THAT(reportCsv(reportModel(r)), HasSubstr("sides,\"2006, opening\",3513201.00,3549201.00,-36000.00,X"));
  EXPECT_THAT(runReportJson(r),
              HasSubstr("\"balance\": {\"closing\": {\"debit\": 3549201, \"credit\": 3549201, \"difference\": 0}, "
                        "\"opening\": {\"debit\": 3513201, \"credit\": 3549201, \"difference\": -36000}, "
                        "\"leftOut\": {\"1901\": 36000}}"));
  EXPECT_THAT(runReportJson(sampleRun()), HasSubstr("\"balance\": null"));
}

TEST(YearSidesTest, DocumentsSayIt) {
  if (!canMakePdf()) GTEST_SKIP() << test::withoutPdf;
  const test::TemporaryFolder folder;
  writeReport(folder.file("r.pdf"), ReportFormat::pdf, unbalanced("en-US"));
  EXPECT_THAT(test::pdfText(folder.file("r.pdf")), HasSubstr("difference 36,000.00."));
}

TEST(YearSidesTest, WorkbooksSayIt) {
  if (!canMakeWorkbooks()) GTEST_SKIP() << test::withoutWorkbooks;
  const test::TemporaryFolder folder;
  writeReport(folder.file("r.xlsx"), ReportFormat::xlsx, unbalanced("en-US"));
  EXPECT_THAT(test::workbookCells(folder.file("r.xlsx")), HasSubstr("Debits and credits!D3 n -36000"));
}

// --- Records of the grid

RunResult withRecords(const std::string& language) {
  RunResult r = sampleRun(language);
  const Messages m(language);
  r.balance = lostDebit();
  r.notCarried = {{"Account", "1901", "Deferred", m.text("Orvo.GL.TqGLJZ.00109")},
                  {"Account", "1151", "Prepaid", m.text("Orvo.GL.TqGLJZ.00113")},
                  {"Settlement", "4", "Draft", m.text("Orvo.GL.TqGLJZ.00155")},
                  {"Department", "01", "Sales", m.text("Orvo.GL.TqGLJZ.00192")}};
  return r;
}

TEST(LeftOutTest, RecordsThatWereCarriedWithAChangeStandApart) {
  for (const char* key : {"139", "155", "171", "192"}) {
    RunResult r = sampleRun();
    r.notCarried = {{"K", "4", "Draft", Messages("en-US").text(std::string("Orvo.GL.TqGLJZ.00") + key)}};
    const ReportModel model = reportModel(r);
    EXPECT_EQ(model.table("leftOut"), nullptr) << key;
    ASSERT_NE(model.table("changed"), nullptr) << key;
  }
  for (const std::string& language : Messages::languages()) {
    const ReportModel model = reportModel(withRecords(language));
    EXPECT_THAT(model.table("leftOut")->rows, SizeIs(2)) << language;
    EXPECT_THAT(model.table("changed")->rows, SizeIs(2)) << language;
  }
  const ReportModel model = reportModel(withRecords("en-US"));
  EXPECT_EQ(model.table("changed")->title, "Records that were carried with a change, with the reason (2)");
  EXPECT_THAT(model.sentences, Contains("Records that were not carried; their list has the reasons: 2."));
  EXPECT_THAT(model.sentences, Contains("Records that were carried without a part that the new year lacks: 2."));
  for (const ReportFigure& f : model.figures)
    if (f.id == "leftOut" || f.id == "changed") {
      EXPECT_EQ(f.value, "2") << f.id;
    }
}

// An account that is there, with other auxiliaries, has a counterpart.
TEST(LeftOutTest, NoSentenceSpeaksOfACounterpart) {
  EXPECT_THAT(runReportText(withRecords("en-US")), Not(HasSubstr("counterpart")));
  EXPECT_THAT(runReportText(withRecords("zh-CN")), Not(HasSubstr("没有对应记录")));
  EXPECT_THAT(runReportText(withRecords("zh-TW")), Not(HasSubstr("沒有對應記錄")));
}

TEST(LeftOutTest, AnAccountsLostBalanceStandsBesideIt) {
  const ReportModel model = reportModel(withRecords("en-US"));
  const ReportTable& table = *model.table("leftOut");
  EXPECT_EQ(table.columns.back().title, "Closing balance");
  EXPECT_EQ(table.rows.at(0).back(), "36000.00");
  EXPECT_EQ(table.rows.at(1).back(), "") << "of the auxiliaries no balance was read";
  EXPECT_THAT(runReportText(withRecords("en-US")), HasSubstr("    Account 1901 Deferred: 36,000.00\n"));
}

TEST(LeftOutTest, ImbalancesAreNotRecordsLeftOut) {
  RunResult r = sampleRun();
  r.returned = r.success = false;
  r.notCarried = {{"1131", "Receivables", "C001", "CNY", "10.00", "7.00"}};
  const ReportModel model = reportModel(r);
  EXPECT_EQ(model.table("leftOut")->title, "Cleared items that do not balance (1)");
  EXPECT_THAT(model.sentences, Contains("Cleared items whose debits and credits differ: 1."));
}

// --- What a wrong account differs by

Row account(const std::string& code, const std::string& side, const std::string& amount, const std::string& foreign,
            const std::string& currency, const std::string& quantity, const std::string& verdict) {
  return {code, "Name", "Name", "Kind", side, amount, foreign, currency, quantity, "kg", verdict};
}
Row sum(const std::string& side, const std::string& amount, const std::string& foreign = " ",
        const std::string& quantity = "") {
  return {"", "", "", Messages("en-US").text("Orvo.GL.TqGLJZ.00260"), side, amount, foreign, "", quantity, "", ""};
}
std::vector<std::string> differences(const std::vector<Row>& rows) {
  std::vector<std::string> found;
  for (const Row& row : accountsTable({"0", "1", rows}, Messages("en-US")).rows) found.push_back(row.back());
  return found;
}

TEST(DifferenceTest, IsTheAccountLessItsAuxiliaries) {
  EXPECT_THAT(differences({account("1131", "Dr", "100.00", " ", "", "", "X"), sum("Dr", "90.00")}),
              ElementsAre("10.00", ""));
  EXPECT_THAT(differences({account("2131", "Cr", "100.00", " ", "", "", "X"), sum("Cr", "90.00")}),
              ElementsAre("-10.00", ""));
  EXPECT_THAT(differences({account("1131", "借", "100.00", " ", "", "", "X"), sum("贷", ".50")}),
              ElementsAre("100.50", ""));
}

TEST(DifferenceTest, WithoutAuxiliariesItIsTheWholeBalance) {
  EXPECT_THAT(
      differences({account("1131", "Dr", "100.00", " ", "", "", "X"), account("1132", "Dr", "5.00", " ", "", "", "Y")}),
      ElementsAre("100.00", ""));
  Row alone = sum("Dr", "7.00");
  alone[0] = "1133", alone[10] = "X";
  EXPECT_THAT(differences({alone}), ElementsAre("-7.00")) << "auxiliaries without an account";
}

TEST(DifferenceTest, WhereTheAmountsAgreeItIsForeignOrOfQuantity) {
  EXPECT_THAT(differences({account("1131", "Dr", "100.00", "12.00", "USD", "", "X"), sum("Dr", "100.00", "11.50")}),
              ElementsAre("0.50 USD", ""));
  EXPECT_THAT(differences({account("1243", "Dr", "100.00", " ", "", "5", "X"), sum("Dr", "100.00", " ", "3")}),
              ElementsAre("2 kg", ""));
}

TEST(DifferenceTest, ARightAccountHasNone) {
  EXPECT_THAT(differences({account("1131", "Dr", "100.00", " ", "", "", "Y"), sum("Dr", "100.00")}),
              ElementsAre("", ""));
}

// A label that is joined to another one begins with a blank; alone in its cell it does not.
TEST(AccountsTableTest, LabelsHaveNoBlankBeforeThem) {
  Row row = account("113302", "Dr", "1.00", " ", "", "", "Y");
  row[3] = " (with user-defined columns)";
  EXPECT_EQ(accountsTable({"1", "0", {row}}, Messages("en-US")).rows.at(0).at(3), "(with user-defined columns)");
}

}  // namespace
}  // namespace host
