// What the journal counts, and under which stage: work tables are no result, and the work that the run names no step
// for has a stage of its own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "core/run_state.h"
#include "host/demo.h"
#include "host/journal.h"
#include "host/messages.h"
#include "host/report_model.h"
#include "host/settings_watch.h"
#include "host/temporary_folder.h"

namespace host::test {
namespace {

using ::testing::Contains;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class JournalStagesTest : public ::testing::Test {
protected:
  void SetUp() override { gljz::run = {}; }
  void TearDown() override { gljz::run = {}; }
  void execute(const std::string& sql, std::int64_t rows) {
    journal_.end(journal_.begin(Role::newYear, "execute", sql), sql, rows);
  }
  const Journal::Stage& stage(const std::string& name) const {
    for (const auto& s : journal_.stages())
      if (s.name == name) return s;
    throw std::out_of_range("no stage " + name);
  }
  Journal journal_;
};

TEST_F(JournalStagesTest, RowsOfWorkTablesAreNotWritten) {
  gljz::run.m_strFuncDesc = "step";
  execute("insert into gl_accsum select 1", 3);
  execute("insert into #T select 1", 5);
  execute("insert into tempdb..jztmp select 1", 7);
  execute("update #T set a=1", 11);
  execute("update gl_accsum set a=1", 2);
  execute("delete from gl_accsum", 13);
  EXPECT_EQ(stage("step").rowsWritten, 5);
  EXPECT_EQ(journal_.rowsWritten(), 5);
  ASSERT_EQ(journal_.tables().size(), 1u);
  EXPECT_EQ(journal_.tables().front().written(), 5);
}

TEST_F(JournalStagesTest, WhatIsUndoneIsNotWrittenInAnyStage) {
  gljz::run.m_strFuncDesc = "before";
  execute("insert into gl_accsum select 1", 3);
  journal_.transactionBegun();
  execute("insert into gl_accsum select 1", 5);
  gljz::run.m_strFuncDesc = "inside";
  execute("insert into code select 1", 7);
  journal_.transactionEnded(false);
  EXPECT_EQ(stage("before").rowsWritten, 3);
  EXPECT_EQ(stage("inside").rowsWritten, 0);
  EXPECT_EQ(journal_.rowsWritten(), 3);
}

TEST_F(JournalStagesTest, WorkWithoutANameHasOne) {
  execute("select 1", -1);
  gljz::run.m_strFuncDesc = "cash flow";
  execute("insert into GL_CashItemDataSource select 1", 5);
  execute("DROP TABLE tempdb..jztmp", -1);
  execute("select * from gl_accsum", -1);
  EXPECT_EQ(stage("Preparation").statements, 1);
  EXPECT_EQ(stage("cash flow").statements, 1);
  EXPECT_EQ(stage("Verification of the opening balances").statements, 2) << "everything behind its first statement";
}

TEST_F(JournalStagesTest, SettingsTablesStandAroundTheDefinitionsThatNameAStep) {
  gljz::run.m_strFuncDesc = "cheques";
  execute("select * from rp_cheque", -1);
  execute("select * from GL_bautotran", -1);
  execute("select * from GL_bmulti", -1);
  gljz::run.m_strFuncDesc = "definitions";
  execute("insert into GL_bautotran select 1", 2);
  execute("Delete From GL_bmulti", 1);
  execute("insert into GL_bmulti select 1", 1);
  gljz::run.m_strFuncDesc = "openings";
  execute("insert into GL_QcUserDef select 1", 1);
  EXPECT_EQ(stage("cheques").statements, 1);
  EXPECT_EQ(stage("Settings tables").statements, 4);
  EXPECT_EQ(stage("definitions").statements, 1);
  EXPECT_EQ(stage("openings").statements, 1);
}

TEST_F(JournalStagesTest, AFailureStandsUnderTheStageItCameUpIn) {
  gljz::run.m_strFuncDesc = "cash flow";
  const std::string sql = "DROP TABLE tempdb..jztmp", next = "insert into tempdb..jztmp select 1";
  execute(sql, -1);
  journal_.fail(journal_.begin(Role::newYear, "execute", next), next, std::runtime_error("no room"));
  ASSERT_EQ(journal_.failures().size(), 1u);
  EXPECT_EQ(journal_.failures().front().stage, "Verification of the opening balances");
}

// The new year keeps tables that have rows, unless the run was told to overwrite them.
TEST_F(JournalStagesTest, OfTheSettingsTablesThoseThatAreKeptAreNotMissed) {
  SettingsWatch watch;
  EXPECT_EQ(watch.brokeOff(), std::nullopt) << "a stage that was never begun";
  watch.statement(Role::newYear, "select * from GL_bautotran", 0);
  watch.selectionWasEmpty(Role::newYear, "select * from GL_btext");
  constexpr std::uint8_t overwrite = 1, keep = 2;
  const std::string where = "the settings tables were not carried to the end: broke off at GL_bautotran, not reached: ";
  gljz::run.m_bCoverData = keep;
  EXPECT_THAT(watch.brokeOff().value_or(""), StartsWith(where + "GL_btext, GL_mcodeauth, "));
  gljz::run.m_bCoverData = overwrite;
  EXPECT_THAT(watch.brokeOff().value_or(""),
              StartsWith(where + "GL_bmulti, GL_btext, GL_cvprintinfset, GL_mcodeauth, "));
  watch.statement(Role::newYear, "Delete From GL_PRN_Format", 0);
  EXPECT_THAT(watch.brokeOff().value_or(""), EndsWith("broke off at GL_PRN_Format, not reached: -"));
  watch.ended();
  EXPECT_EQ(watch.brokeOff(), std::nullopt);
}

// --- A whole run

TEST(JournalOfARunTest, TheStagesWriteWhatTheHeadlineFigureSays) {
  gljz::run = {};
  const TemporaryFolder folder;
  CarryForwardOptions options;
  options.server = parseServer("embedded:" + folder.text());
  createDemo(openAnyServer(options.server, true));
  options.account = demoAccount, options.closingYear = demoClosingYear, options.newYear = demoNewYear;
  const RunResult result = carryForward(options);
  gljz::run = {};

  std::int64_t stages = 0;
  for (const auto& s : result.stages) {
    EXPECT_THAT(s.name, Not(IsEmpty()));
    stages += s.rowsWritten;
    if (s.name == "Verification of the opening balances") {
      EXPECT_EQ(s.rowsWritten, 0);
      EXPECT_GT(s.statements, 10);
    }
  }
  EXPECT_GT(stages, 1000);
  const ReportModel model = reportModel(result);
  EXPECT_EQ(model.figures.front().id, "rows");
  EXPECT_EQ(model.figures.front().value, std::to_string(stages));

  // The demo's new year lacks account 1901.
  ASSERT_TRUE(result.balance);
  EXPECT_TRUE(result.balance->closing.difference().isZero());
  EXPECT_EQ(result.balance->opening.difference().text(), "-36000");
  EXPECT_EQ(result.balance->leftOut.at("1901").text(), "36000");
  EXPECT_THAT(model.sentences, Contains(HasSubstr("36,000.00")));

  RunResult english = result;
  english.language = "en-US";
  const ReportModel englishModel = reportModel(english);
  for (const auto& row : englishModel.table("stages")->rows)
    EXPECT_TRUE(std::all_of(row[0].begin(), row[0].end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        << row[0];

  // Every table that a run writes has a name in each language.
  for (const std::string& language : Messages::languages()) {
    RunResult told = result;
    told.language = language;
    const ReportModel shown = reportModel(told);
    for (const auto& row : shown.table("data")->rows) EXPECT_NE(row[1], "") << row[0] << " in " << language;
  }
}

}  // namespace
}  // namespace host::test
