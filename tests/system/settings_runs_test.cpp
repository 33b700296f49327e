// Whole runs over the settings of two years: what a new year keeps and what is replaced in it.

#include "detail/jz_data.h"
#include "host/journal_services.h"
#include "settings/view_items.h"
#include "system/settings_tables.h"

namespace gljz::test {
namespace {

class SettingsRunTest : public SettingsTables {
protected:
  SettingsRunTest() {
    account("1001"), account("1301");
    putEverywhere(closing, "上年");
    model(closing, "1");
    fill(closing, "GL_bmultiGroup", {"cname", "上年"});
    fill(closing, "gl_bautotran", {"itype | ctran_id | inid | ccode", "80 | 上年摊销 | 1 | 1301"});
    fill(closing, "gl_tranreport", {"itype | ctran_id | vouchYear | sumJe", "80 | 上年摊销 | 2004 | 5"});
  }

  void model(const Side& side, const std::string& id) {
    fill(side, "GL_ModelMain", {"modelId | cName", id + "| 凭证"});
    fill(side, "GL_modelpreplace", {"modelId | cKey", id + "| 季"});
    fill(side, "GL_ModelSub1", {"modelId | inid", id + "| 1"});
    fill(side, "GL_ModelSub2", {"modelId | inid", id + "| 1"});
  }

  // What a person does in the new year before the carry-forward runs (again).
  void configureNewYear() {
    putEverywhere(opening, "新年");
    model(opening, "9");
    fill(opening, "GL_bmultiGroup", {"cname", "新年"});
    fill(opening, "gl_bautotran", {"itype | ctran_id | inid | ccode", "80 | 新年摊销 | 1 | 1301"});
    fill(opening, "gl_tranreport", {"itype | ctran_id | vouchYear | sumJe", "80 | 新年摊销 | 2006 | 7"});
  }

  std::vector<std::string> everything() {
    std::vector<std::string> all;
    for (const auto& table : settingsTables) all.push_back(std::string(table.name) + ": " + contents(opening, table));
    for (const char* query :
         {"select * from GL_TranReport", "select * from GL_bmultiGroup", "select * from GL_ModelMain",
          "select * from GL_modelpreplace", "select * from GL_ModelSub1", "select * from GL_ModelSub2"})
      for (const auto& row : rows(opening, query)) all.push_back(row);
    return all;
  }
  std::string column(const std::string& query) {
    std::string all;
    for (const auto& row : rows(opening, query)) all += all.empty() ? row : "," + row;
    return all;
  }
  std::string models() { return column("select modelId from GL_ModelMain order by modelId"); }
  std::string groups() { return column("select cname from GL_bmultiGroup where iyear=2006"); }
  std::string log() { return column("select ctran_id from GL_TranReport order by ctran_id"); }
};

TEST_F(SettingsRunTest, AnEmptyNewYearTakesEverything) {
  ASSERT_TRUE(transfer({{"GL*m_bCoverData", false}}).success);
  expectEverywhere("上年", {{"GL_bautotran", "上年,上年摊销"}});
  EXPECT_EQ(models(), "1");
  EXPECT_EQ(groups(), "上年");
  EXPECT_EQ(log(), "上年摊销");
}

TEST_F(SettingsRunTest, ASecondRunChangesNothing) {
  for (const bool cover : {true, false}) {
    ASSERT_TRUE(transfer({{"GL*m_bCoverData", cover}}).success);
    const auto first = everything();
    ASSERT_TRUE(transfer({{"GL*m_bCoverData", cover}}).success);
    EXPECT_EQ(everything(), first) << cover;
  }
}

// Kept: the four guarded tables with the run log, and the voucher models. Replaced: everything else.
TEST_F(SettingsRunTest, AConfiguredNewYearKeepsItsGuardedTables) {
  configureNewYear();
  ASSERT_TRUE(transfer({{"GL*m_bCoverData", false}}).success);
  expectEverywhere(
      "上年",
      {{"GL_bautotran", "新年,新年摊销"}, {"GL_bmulti", "新年"}, {"GL_btext", "新年"}, {"GL_cvprintinfset", "新年"}});
  EXPECT_EQ(models(), "9");
  EXPECT_EQ(groups(), "上年");
  EXPECT_EQ(log(), "新年摊销");
}

// Kept: an amortisation that has run in the new year, its log, and the voucher models, which a watched run never
// replaces. Replaced: everything else.
TEST_F(SettingsRunTest, AConfiguredNewYearIsOverwrittenWithTheSwitch) {
  configureNewYear();
  ASSERT_TRUE(transfer({{"GL*m_bCoverData", true}, {"GL*CoverBankModalData", true}}).success);
  expectEverywhere("上年", {{"GL_bautotran", "上年,上年摊销,新年摊销"}});
  EXPECT_EQ(models(), "9");
  EXPECT_EQ(groups(), "上年");
  EXPECT_EQ(log(), "上年摊销,新年摊销");
}

TEST_F(SettingsRunTest, WhatWasAddedAfterAFirstRunStandsInTheGuardedTablesOnly) {
  ASSERT_TRUE(transfer().success);
  putEverywhere(opening, "后加");
  ASSERT_TRUE(transfer({{"GL*m_bCoverData", false}}).success);
  expectEverywhere("上年", {{"GL_bautotran", "后加,上年,上年摊销"},
                            {"GL_bmulti", "后加,上年"},
                            {"GL_btext", "后加,上年"},
                            {"GL_cvprintinfset", "后加,上年"}});
}

TEST_F(SettingsRunTest, WhatTheClosingYearAddsAfterAFirstRunArrivesWithTheSwitch) {
  ASSERT_TRUE(transfer().success);
  putEverywhere(closing, "补记");
  ASSERT_TRUE(transfer({{"GL*m_bCoverData", true}}).success);
  expectEverywhere("补记,上年", {{"GL_bautotran", "补记,上年,上年摊销"}});
}

TEST_F(SettingsRunTest, TheClosingYearIsLeftAsItWas) {
  std::vector<std::string> before;
  for (const auto& table : settingsTables) before.push_back(contents(closing, table));
  ASSERT_TRUE(transfer().success);
  for (std::size_t i = 0; i < before.size(); ++i)
    EXPECT_EQ(contents(closing, settingsTables[i]), before[i]) << settingsTables[i].name;
}

// --- What the host's journal makes of stages that catch their failures themselves.

class SettingsJournalTest : public SettingsRunTest {
protected:
  SettingsJournalTest() { run.m_pubCls = host::journalServices(journal_, run.m_pubCls); }
  std::shared_ptr<host::Journal> journal_ = std::make_shared<host::Journal>();
};

TEST_F(SettingsJournalTest, ARemarkOfAStageIsNoFailure) {
  sql(closing, "create table GL_ViewItem(iID int)");
  JzViewItem();  // says that there are no view items to carry
  EXPECT_TRUE(journal_->failures().empty());
}

TEST_F(SettingsJournalTest, VoucherModelsThatCouldNotBeCarriedAreAFailure) {
  sql(opening, "drop table GL_ModelSub1");
  JzData();
  EXPECT_EQ(journal_->failures().size(), 1u);
}

}  // namespace
}  // namespace gljz::test
