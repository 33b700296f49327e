// What the host tells of a run that says nothing itself: notes in place of failures that belong to it, failures that
// nobody saw, and what an unattended run left out.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/expected_failures.h"
#include "host/missing_codes.h"
#include "host/program.h"
#include "platform/run_time_error.h"
#include "settings/view_items_sql.h"

namespace host::test {
namespace {

namespace view_items = gljz::view_items_sql;
using platform::RunTimeError;

RunTimeError serverFailure(int number) {
  return RunTimeError(platform::ServerFailure{number, 16, 1, "no", "statement"});
}

TEST(ExpectedFailureTest, AreTheDropOfAWorkTableAndTheTwoOfTheViewItems) {
  EXPECT_EQ(expectedFailure(Role::newYear, "drop table tempdb..x", serverFailure(3701)), "");
  const auto column = expectedFailure(Role::privateConnection, view_items::addViewItem(), serverFailure(2705));
  ASSERT_TRUE(column);
  EXPECT_TRUE(column->starts_with("view items: the new year has their columns already")) << *column;
  const auto table = expectedFailure(Role::closingYear, view_items::selectViewItems(), serverFailure(208));
  ASSERT_TRUE(table);
  EXPECT_TRUE(table->starts_with("view items: the closing year has no table GL_ViewItem")) << *table;
}

TEST(ExpectedFailureTest, AreNoOthers) {
  const auto isFailure = [](Role role, const std::string& statement, const std::exception& failure) {
    return !expectedFailure(role, statement, failure);
  };
  // the same statements for another reason
  EXPECT_TRUE(isFailure(Role::privateConnection, view_items::addViewItem(), serverFailure(1222)));
  EXPECT_TRUE(isFailure(Role::privateConnection, view_items::addViewItem(), serverFailure(208)));
  EXPECT_TRUE(isFailure(Role::closingYear, view_items::selectViewItems(), serverFailure(1222)));
  // the same reason at other statements, or at the other end
  EXPECT_TRUE(isFailure(Role::privateConnection, view_items::addGCJS(), serverFailure(2705)));
  EXPECT_TRUE(isFailure(Role::newYear, view_items::addViewItem(), serverFailure(2705)));
  EXPECT_TRUE(isFailure(Role::newYear, view_items::selectViewItems(), serverFailure(208)));
  EXPECT_TRUE(isFailure(Role::closingYear, view_items::selectAccounts(), serverFailure(208)));
  // failures that no server reported
  EXPECT_TRUE(isFailure(Role::newYear, "drop table x", RunTimeError(3701, "no")));
  EXPECT_TRUE(isFailure(Role::newYear, "drop table x", std::runtime_error("no")));
}

using Kind = MissingCodes::Kind;

TEST(MissingCodesTest, EachIsToldOnceByKindAndCode) {
  MissingCodes missing;
  for (const char* code : {"C2", "C1", "C2"}) missing.add(Kind::customer, code);
  missing.add(Kind::item, "01", "98"), missing.add(Kind::item, "01", "97");
  missing.add(Kind::account, "1901"), missing.add(Kind::person, "");
  EXPECT_EQ(missing.notes(),
            (std::vector<std::string>{"the new year has no account 1901: what names it was left out",
                                      "the new year has no person \"\": what names it was left out",
                                      "the new year has no customer C1: what names it was left out",
                                      "the new year has no customer C2: what names it was left out",
                                      "the new year has no item 01 of class 97: what names it was left out",
                                      "the new year has no item 01 of class 98: what names it was left out"}));
}

TEST(MissingCodesTest, ASelectionThatAskedForARecordCountsAndNoOther) {
  MissingCodes missing;
  missing.selectionWasEmpty("select cDepCode from Department where cDepCode=N'0201'");
  missing.selectionWasEmpty("select cVenCode from Vendor where cVenCode=N'V'4'");
  missing.selectionWasEmpty("select * from Department where cdepcode='0202'");
  missing.selectionWasEmpty("select cDepCode from Department where cDepCode=N'0203' or 1=1");
  missing.selectionWasEmpty("select 1 from GL_btext");
  EXPECT_EQ(missing.notes(),
            (std::vector<std::string>{"the new year has no department 0201: what names it was left out",
                                      "the new year has no supplier V'4: what names it was left out"}));
}

TEST(MissingCodesTest, WhatBankLinesNameIsCarriedWithThem) {
  MissingCodes missing;
  const std::string question = "select cDepCode from Department where cDepCode=N'ZZ'";
  missing.selectionWasEmpty(question, MissingCodes::Named::carried);
  missing.selectionWasEmpty(question);
  EXPECT_EQ(missing.notes(),
            (std::vector<std::string>{"the new year has no department ZZ: what names it was left out",
                                      "the new year has no department ZZ: bank lines were carried with it"}));
}

TEST(MissingCodesTest, AreAThousandAtMost) {
  MissingCodes missing;
  for (int i = 0; i < 1000; ++i) missing.add(Kind::customer, std::to_string(i));
  missing.add(Kind::customer, "7");
  EXPECT_EQ(missing.notes().size(), 1000u);
  missing.add(Kind::customer, "1000");
  EXPECT_EQ(missing.notes().size(), 1001u);
  EXPECT_EQ(missing.notes().back(), "more than 1000 codes are missing in the new year; the others are not listed");
}

// The demo's company: its new year lacks account 1901 and customer C006.
class JournalNotesTest : public ::testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(gljz({"demo", folder(), "--quiet"}).err, ""); }

  std::string folder() const { return folder_.file("demo"); }
  std::vector<std::string> words(const std::string& entry, std::vector<std::string> more) const {
    std::vector<std::string> all{
        entry, "--server", "embedded:" + folder(), "--from", "2005", "--to", "2006", "--format", "json", "--quiet"};
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }
  Answer transfer(std::vector<std::string> more = {}) const {
    more.insert(more.end(), {"--account", "001"});
    return gljz(words("transfer", more));
  }
  Answer transGL(std::vector<std::string> more = {}) const {
    more.insert(more.end(), {"--from-db", "TqData_001_2005", "--to-db", "TqData_001_2006"});
    return gljz(words("transgl", more));
  }
  void sql(const std::string& database, const std::string& text) const {
    const Answer a = gljz({"sql", "--server", "embedded:" + folder(), "--database", database, "-q", text});
    ASSERT_EQ(a.code, 0) << a.err;
  }
  static std::string part(const std::string& json, const std::string& key) {
    const std::size_t begin = json.find("\"" + key + "\": [");
    return begin == std::string::npos ? "" : json.substr(begin, json.find("]", begin) - begin);
  }
  const TemporaryFolder folder_;
};

TEST_F(JournalNotesTest, AnUnattendedRunTellsWhatItLeftOut) {
  const Answer a = transGL();
  EXPECT_NE(a.out.find("\"notCarried\": []"), std::string::npos) << a.out;
  const std::string notes = part(a.out, "notes");
  for (const char* text : {"\"the new year has no account 1901: what names it was left out\"",
                           "\"the new year has no customer C006: what names it was left out\""})
    EXPECT_NE(notes.find(text), std::string::npos) << notes;
}

// A line of a bank account keeps a department that the new year lacks.
TEST_F(JournalNotesTest, AnUnattendedRunTellsOfCodesThatBankLinesKeep) {
  sql("TqData_001_2005",
      "update gl_accvouch set cdept_id=N'ZZ' from gl_accvouch v inner join code c on v.ccode=c.ccode and "
      "v.iyear=c.iyear where c.bbank=1 and v.iyear=2005");
  const Answer a = transGL();
  EXPECT_NE(part(a.out, "notes").find("the new year has no department ZZ: bank lines were carried with it"),
            std::string::npos)
      << a.out;
  EXPECT_EQ(part(a.out, "notes").find("department ZZ: what names it was left out"), std::string::npos) << a.out;
}

TEST_F(JournalNotesTest, AWatchedRunTellsOfItInItsRowsAlone) {
  const Answer a = transfer();
  EXPECT_EQ(a.out.find("\"notCarried\": []"), std::string::npos) << a.out;
  EXPECT_EQ(a.out.find("the new year has no"), std::string::npos) << a.out;
}

TEST_F(JournalNotesTest, APersonReadsTheNotesInTheLanguageOfTheRun) {
  std::vector<std::string> text = words("transgl", {"--from-db", "TqData_001_2005", "--to-db", "TqData_001_2006"});
  *std::find(text.begin(), text.end(), "json") = "text";
  std::erase(text, "--quiet");
  const Answer a = gljz(text);
  EXPECT_NE(a.out.find("新年度没有客户 C006：涉及它的内容没有结转"), std::string::npos) << a.out;
  EXPECT_EQ(a.out.find("the new year has no"), std::string::npos) << a.out;
}

TEST_F(JournalNotesTest, ARefusedParameterTextStopsTransGLAtTheEntry) {
  const Answer a = transGL({"--params", folder_.write("bad.xml", "<Account><Parameter")});
  EXPECT_EQ(a.code, 1) << a.err;
  EXPECT_NE(a.out.find("\"stop\": {\"where\": \"TransGL\", \"why\": \""), std::string::npos) << a.out;
}

TEST_F(JournalNotesTest, ARepeatedRunOfTheEditionHasANoteAndNoFailure) {
  sql("TqData_001_2006", "update accinformation set cValue=N'1' where cSysID=N'GL' and cName=N'iZBMsg'");
  const Answer first = transfer();
  EXPECT_NE(first.out.find("\"failures\": []"), std::string::npos) << first.out;
  EXPECT_NE(first.out.find("view items: the closing year has no table GL_ViewItem"), std::string::npos) << first.out;
  EXPECT_EQ(first.out.find("view items: the new year"), std::string::npos) << first.out;
  const Answer second = transfer();
  EXPECT_NE(second.out.find("\"failures\": []"), std::string::npos) << second.out;
  EXPECT_NE(second.out.find("view items: the new year has their columns already"), std::string::npos) << second.out;
}

TEST_F(JournalNotesTest, SettingsTablesThatBrokeOffWithoutAStatementToBlameAreAFailure) {
  sql("TqData_001_2006", "alter table GL_mybooktype add cmore nvarchar(20) null");
  const Answer a = transfer();
  EXPECT_EQ(a.code, 4);
  EXPECT_NE(part(a.out, "failures").find("the settings tables were not carried to the end"), std::string::npos)
      << a.out;
  EXPECT_EQ(part(a.out, "notes").find("the settings tables"), std::string::npos) << a.out;
}

TEST_F(JournalNotesTest, SettingsTablesThatBrokeOffAtAStatementHaveANoteBesideItsFailure) {
  sql("TqData_001_2006", "drop table GL_mybooktype");
  const Answer a = transfer();
  EXPECT_EQ(a.code, 4);
  EXPECT_NE(part(a.out, "failures").find("Delete From GL_mybooktype"), std::string::npos) << a.out;
  EXPECT_EQ(part(a.out, "failures").find("the settings tables"), std::string::npos) << a.out;
  EXPECT_NE(part(a.out, "notes").find("the settings tables were not carried to the end"), std::string::npos) << a.out;
}

TEST_F(JournalNotesTest, TheSettingsTablesThatWereNotReachedAreNamed) {
  sql("TqData_001_2006", "drop table GL_MRReportOption");
  const std::string text =
      "the settings tables were not carried to the end: broke off at GL_MRReportOption, not reached: "
      "GL_MRColumnDic_Set, GL_PRN_Format";
  EXPECT_NE(part(transfer().out, "notes").find(text), std::string::npos);
  std::vector<std::string> people = words("transfer", {"--account", "001"});
  *std::find(people.begin(), people.end(), "json") = "text";
  std::erase(people, "--quiet");
  const Answer a = gljz(people);
  EXPECT_NE(
      a.out.find("设置表没有全部结转：在 GL_MRReportOption 处中断，未结转到的：GL_MRColumnDic_Set, GL_PRN_Format"),
      std::string::npos)
      << a.out;
}

// What the new year keeps is not missed.
TEST_F(JournalNotesTest, GuardedTablesThatTheNewYearKeepsWereNotToBeReached) {
  sql("TqData_001_2006", "drop table GL_mcodeauth");
  const std::string notes = part(transfer({"--check", "GL*m_bCoverData=False"}).out, "notes");
  EXPECT_NE(notes.find("broke off at GL_mcodeauth, not reached: GL_mcodeused, "), std::string::npos) << notes;
  sql("TqData_001_2005", "drop table GL_bmulti");
  const std::string earlier = part(transfer({"--check", "GL*m_bCoverData=True"}).out, "notes");
  EXPECT_NE(earlier.find("broke off at GL_bmulti, not reached: GL_btext, GL_cvprintinfset, GL_mcodeauth, "),
            std::string::npos)
      << earlier;
}

TEST_F(JournalNotesTest, FailuresOfTheSettingsTablesStandUnderThem) {
  sql("TqData_001_2006", "drop table GL_mybooktype");
  EXPECT_NE(part(transfer().out, "failures").find("{\"stage\": \"Settings tables\", \"statement\": \"Delete From"),
            std::string::npos);
}

// Ticked detail without a division of accounts carries no detail.
TEST_F(JournalNotesTest, ATickWithoutADivisionIsTold) {
  const std::string customers = "accounts were not divided: no open items of customers were carried",
                    suppliers = "accounts were not divided: no open items of suppliers were carried";
  const std::string both = part(transfer({"--check", "GL*CusMXJZ=True", "--check", "GL*SupMXJZ=True"}).out, "notes");
  EXPECT_NE(both.find(customers), std::string::npos) << both;
  EXPECT_NE(both.find(suppliers), std::string::npos) << both;
  const std::string one = part(
      transfer({"--check", "GL*CusMXJZ=True", "--check", "GL*SupMXJZ=True", "--customer-detail", "all"}).out, "notes");
  EXPECT_EQ(one.find(customers), std::string::npos) << one;
  EXPECT_NE(one.find(suppliers), std::string::npos) << one;
  EXPECT_EQ(transfer().out.find("were not divided"), std::string::npos);
}

TEST_F(JournalNotesTest, SettingsTablesThatArriveNeedNoWord) {
  EXPECT_EQ(transfer().out.find("the settings tables"), std::string::npos);
}

}  // namespace
}  // namespace host::test
