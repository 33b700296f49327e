#include "system/settings_tables.h"

#include <functional>
#include <utility>

#include "dialogs/frm_jzsn.h"
#include "settings/other_tables.h"
#include "system/observers.h"

namespace gljz::test {
namespace {

// The closing year has the row "上年" in each table. Its definition fits because its account is in no chart.
class SettingsTablesTest : public SettingsTables {
protected:
  SettingsTablesTest() {
    account("1001");
    putEverywhere(closing, "上年");
  }
  void keepData() { run.m_bCoverData = 2; }
  void coverData() { run.m_bCoverData = 1; }
};

// --- Guarded and unguarded tables.

TEST_F(SettingsTablesTest, AnEmptyNewYearTakesAllFifteenWhateverTheSwitchSays) {
  keepData();
  JzOtherTables();
  expectEverywhere("上年");
}

TEST_F(SettingsTablesTest, AnEmptyNewYearTakesAllFifteenWithTheSwitch) {
  coverData();
  JzOtherTables();
  expectEverywhere("上年");
}

TEST_F(SettingsTablesTest, DataOfTheNewYearStandsInTheFourGuardedTablesAndIsReplacedInTheOthers) {
  putEverywhere(opening, "新年");
  keepData();
  JzOtherTables();
  expectEverywhere(
      "上年", {{"GL_bautotran", "新年"}, {"GL_bmulti", "新年"}, {"GL_btext", "新年"}, {"GL_cvprintinfset", "新年"}});
}

TEST_F(SettingsTablesTest, DataOfTheNewYearIsReplacedEverywhereWithTheSwitch) {
  putEverywhere(opening, "新年");
  coverData();
  JzOtherTables();
  expectEverywhere("上年");
}

TEST_F(SettingsTablesTest, DigestsOfTheNewYearAreLeftAloneAndTheEmptyGuardedTablesAreFilled) {
  put(opening, "GL_btext", "新年");
  keepData();
  JzOtherTables();
  expectEverywhere("上年", {{"GL_btext", "新年"}});
}

TEST_F(SettingsTablesTest, DefinitionsOfTheNewYearAreLeftAloneWhileTheOthersAreFilled) {
  put(opening, "GL_bautotran", "新年");
  keepData();
  JzOtherTables();
  expectEverywhere("上年", {{"GL_bautotran", "新年"}});
  EXPECT_FALSE(wasRun("delete from gl_bautotran"));
  EXPECT_FALSE(wasRun("insert into [GL_TranReport]"));  // the run log is left alone, too
}

TEST_F(SettingsTablesTest, AnySwitchValueButOneKeeps) {
  put(opening, "GL_btext", "新年");
  run.m_bCoverData = 0;
  JzOtherTables();
  EXPECT_EQ(contents("GL_btext"), "新年");
}

// What decides is whether the collected texts say anything. A language without a text for a table guards it with those
// of the others only.
struct SilentServices final : AskingServices {
  using AskingServices::AskingServices;
  std::string ResText(const std::string& key, const std::vector<platform::Value>*) override {
    return key == "Orvo.GL.TqGLJZ.00024" ? std::string() : key;
  }
};

TEST_F(SettingsTablesTest, AGuardWithoutATextGuardsNothingAlone) {
  run.m_pubCls = std::make_shared<SilentServices>(run.m_pubCls);
  keepData();
  put(opening, "GL_btext", "新年");
  JzOtherTables();
  EXPECT_EQ(contents("GL_btext"), "上年");
  sql(opening, "delete from GL_btext");
  put(opening, "GL_btext", "新年");
  JzOtherTables();  // GL_bmulti has rows by now
  EXPECT_EQ(contents("GL_btext"), "新年");
}

TEST_F(SettingsTablesTest, ASourceWithoutRowsLeavesTheTargetEmpty) {
  putEverywhere(opening, "新年");
  for (const auto& table : settingsTables) sql(closing, std::string("delete from ") + table.name);
  coverData();
  JzOtherTables();
  expectEverywhere("");
}

TEST_F(SettingsTablesTest, WindowEventsAreLetThroughOnceBesideTheDefinitions) {
  put(opening, "GL_bautotran", "新年");
  keepData();
  CountingForms windows;
  surroundings_.forms = &windows;
  JzOtherTables();
  EXPECT_EQ(windows.eventRounds, 1);
  surroundings_.forms = &forms();
}

TEST_F(SettingsTablesTest, RunInOrderGuardsFirstThenOneTableAfterTheOther) {
  forgetStatements();
  coverData();
  JzOtherTables();
  std::vector<std::string> looks, deletions;
  for (const auto& statement : statements()) {
    if (statement.database != opening.database) continue;
    if (statement.text.starts_with("select * from GL_") && deletions.empty()) looks.push_back(statement.text);
    if (statement.text.starts_with("Delete From ")) deletions.push_back(statement.text.substr(12));
  }
  EXPECT_EQ(looks[0] + looks[1] + looks[2] + looks[3],
            "select * from GL_bautotranselect * from GL_bmultiselect * from GL_btextselect * from GL_cvprintinfset");
  std::vector<std::string> expected;
  for (std::size_t i = 1; i < std::size(settingsTables); ++i) expected.emplace_back(settingsTables[i].name);
  EXPECT_EQ(deletions, expected);
}

TEST_F(SettingsTablesTest, TheOperatorSeesTheirStage) {
  run.m_bManual = true;
  coverData();
  JzOtherTables();
  EXPECT_EQ(frmJZSN().Label3(), "正在结转设置表");
}

// --- The copy of one table.

class CopySettingTableTest : public SettingsTables {};

TEST_F(CopySettingTableTest, ReplacesTheRowsWithAllTheirColumns) {
  sql(closing, "insert into GL_mcodeauth(cid,ctext) values('1','甲') insert into GL_mcodeauth(cid) values('2')");
  sql(opening, "insert into GL_mcodeauth(cid) values('旧')");
  CopySettingTable("GL_mcodeauth");
  expectRows(opening, "select cid,ctext from GL_mcodeauth order by cid", {"1 | 甲", "2 | Null"});
}

// The known identity columns take numbers of the new year's own.
class IdentityColumnTest : public CopySettingTableTest,
                           public ::testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(IdentityColumnTest, IsNumberedByTheNewYear) {
  const auto [table, identity] = GetParam();
  put(closing, table, "甲"), put(closing, table, "乙"), put(closing, table, "丙");
  sql(closing, std::string("delete from ") + table + " where " + identity + "<3");
  CopySettingTable(table);
  EXPECT_EQ(contents(table), "丙");
  EXPECT_EQ(text(opening, std::string("select ") + identity + " from " + table), "1");
}

INSTANTIATE_TEST_SUITE_P(Tables, IdentityColumnTest,
                         ::testing::Values(std::pair{"GL_bmulti", "i_id"}, std::pair{"GL_btext", "id"},
                                           std::pair{"GL_DzDwSet", "i_id"}, std::pair{"GL_myoutput", "iid"},
                                           std::pair{"GL_cvprintinfset", "autoid"}),
                         [](const auto& test) { return test.param.first; });

TEST_F(CopySettingTableTest, KnownIdentityColumnsAreFoundWhateverTheirLetterCase) {
  sql(opening, "drop table GL_btext create table GL_btext(ID int identity(1,1), ctext nvarchar(60))");
  sql(closing, "drop table GL_btext create table GL_btext(ID int identity(1,1), ctext nvarchar(60))");
  put(closing, "GL_btext", "甲");
  CopySettingTable("gl_BTEXT");
  EXPECT_EQ(contents("GL_btext"), "甲");
}

TEST_F(CopySettingTableTest, AnIdentityColumnThatIsNotKnownMakesTheCopyFail) {
  for (const auto& side : {closing, opening})
    sql(side, "drop table GL_mcodeauth create table GL_mcodeauth(cid nvarchar(20), nr int identity(1,1))");
  sql(closing, "insert into GL_mcodeauth(cid) values('1')");
  EXPECT_THROW(CopySettingTable("GL_mcodeauth"), platform::RunTimeError);
  expectRows(opening, "select * from GL_mcodeauth", {});
}

TEST_F(CopySettingTableTest, TheRowGuidColumnIsLeftOut) {
  put(closing, "GL_mcodeused", "1");
  CopySettingTable("GL_mcodeused");
  expectRows(closing, "select cid,tqguid from GL_mcodeused", {"1 | guid"});
  expectRows(opening, "select cid,tqguid from GL_mcodeused", {"1 | Null"});
}

TEST_F(CopySettingTableTest, ARowGuidColumnInCapitalsIsCopied) {
  for (const auto& side : {closing, opening})
    sql(side, "drop table GL_mcodeused create table GL_mcodeused(cid nvarchar(20), TQGUID nvarchar(38))");
  sql(closing, "insert into GL_mcodeused values('1', 'guid')");
  CopySettingTable("GL_mcodeused");
  expectRows(opening, "select * from GL_mcodeused", {"1 | guid"});
}

TEST_F(CopySettingTableTest, ColumnsAtOtherPositionsAreLostInSilence) {
  sql(opening,
      "drop table GL_mybooktype create table GL_mybooktype(cid nvarchar(20), other int default 7, ctext nvarchar(60))");
  sql(closing, "insert into GL_mybooktype(cid,ctext,tqguid) values('1','甲','guid')");
  CopySettingTable("GL_mybooktype");
  expectRows(opening, "select * from GL_mybooktype", {"1 | 7 | Null"});
}

TEST_F(CopySettingTableTest, ColumnsWhoseNamesDifferInLetterCaseAreLostInSilence) {
  sql(opening, "drop table GL_mybooktype create table GL_mybooktype(cid nvarchar(20), CText nvarchar(60))");
  sql(closing, "insert into GL_mybooktype(cid,ctext) values('1','甲')");
  CopySettingTable("GL_mybooktype");
  expectRows(opening, "select * from GL_mybooktype", {"1 | Null"});
}

TEST_F(CopySettingTableTest, FurtherColumnsOfTheClosingYearAreLostInSilence) {
  sql(opening, "drop table GL_mybooktype create table GL_mybooktype(cid nvarchar(20))");
  sql(closing, "insert into GL_mybooktype(cid,ctext) values('1','甲')");
  CopySettingTable("GL_mybooktype");
  expectRows(opening, "select * from GL_mybooktype", {"1"});
}

TEST_F(CopySettingTableTest, AFurtherColumnThatIsNeverWrittenIsNotLookedForInTheClosingYear) {
  for (const auto& side : {closing, opening})
    sql(side, "drop table GL_btext create table GL_btext(ctext nvarchar(60))");
  sql(opening, "alter table GL_btext add tqguid nvarchar(38) null");
  sql(opening, "alter table GL_btext add id int identity(1,1)");
  put(closing, "GL_btext", "甲");
  CopySettingTable("GL_btext");
  expectRows(opening, "select ctext,tqguid,id from GL_btext", {"甲 | Null | 1"});
}

TEST_F(CopySettingTableTest, MoreColumnsInTheNewYearMakeTheCopyFail) {
  sql(opening, "alter table GL_mybooktype add cmore nvarchar(20) null");
  sql(closing, "insert into GL_mybooktype(cid) values('1')");
  EXPECT_THROW(CopySettingTable("GL_mybooktype"), platform::RunTimeError);
}

TEST_F(CopySettingTableTest, AFailureInTheMiddleLeavesTheTablePartlyFilled) {
  sql(opening, "drop table GL_mybooktype create table GL_mybooktype(cid nvarchar(2), ctext nvarchar(60))");
  sql(closing,
      "insert into GL_mybooktype(cid) values('1') insert into GL_mybooktype(cid) values('222') "
      "insert into GL_mybooktype(cid) values('3')");
  sql(opening, "insert into GL_mybooktype(cid) values('旧')");
  EXPECT_THROW(CopySettingTable("GL_mybooktype"), platform::RunTimeError);
  expectRows(opening, "select cid from GL_mybooktype", {"1"});
}

// A name is left out for its own table only.
TEST_F(CopySettingTableTest, AColumnThatIsLeftOutElsewhereIsCopied) {
  for (const auto& side : {closing, opening})
    sql(side, "drop table GL_PRN_Format create table GL_PRN_Format(id int, i_id int, iid int, autoid int)");
  sql(closing, "insert into GL_PRN_Format values(1, 2, 3, 4)");
  CopySettingTable("GL_PRN_Format");
  expectRows(opening, "select * from GL_PRN_Format", {"1 | 2 | 3 | 4"});
}

// Nothing passes this table, but its identity is known.
TEST_F(CopySettingTableTest, TheSelectedAccountsTableIsNumberedByTheNewYear) {
  for (const char* ccode : {"'1131'", "'1133'"})
    sql(closing, std::string("insert into GL_YeMxSel(iCusSupType,ccode,iYeMxType) values(1,") + ccode + ",1)");
  sql(closing, "delete from GL_YeMxSel where ccode='1131'");
  CopySettingTable("GL_YeMxSel");
  expectRows(opening, "select iid,iCusSupType,ccode,iYeMxType from GL_YeMxSel", {"1 | 1 | 1133 | 1"});
}

// Runs something before each selection.
class Interrupted final : public platform::Connection {
public:
  Interrupted(std::shared_ptr<Connection> inner, std::function<void()> interruption)
      : inner_(std::move(inner)), interruption_(std::move(interruption)) {}
  std::unique_ptr<platform::Recordset> OpenRecordset(const std::string& sql, int options,
                                                     platform::CursorLocation location) override {
    interruption_();
    return inner_->OpenRecordset(sql, options, location);
  }
  void ConnectionOpen(const std::string& text) override { inner_->ConnectionOpen(text); }
  void ConnectionClose() override { inner_->ConnectionClose(); }
  std::string ConnectionText() const override { return inner_->ConnectionText(); }
  platform::RawConnection& RawConnection() override { return inner_->RawConnection(); }
  void BeginTrans() override { inner_->BeginTrans(); }
  void CommitTrans() override { inner_->CommitTrans(); }
  void RollbackTrans() override { inner_->RollbackTrans(); }
  std::int64_t ExecuteSql(const std::string& sql) override { return inner_->ExecuteSql(sql); }

private:
  std::shared_ptr<Connection> inner_;
  std::function<void()> interruption_;
};

TEST_F(CopySettingTableTest, ATableThatIsNotEmptyAfterTheDeleteTakesNothing) {
  put(closing, "GL_mcodeauth", "上年");
  put(opening, "GL_mcodeauth", "新年");
  run.m_conn = std::make_shared<Interrupted>(run.m_conn, [this] { put(opening, "GL_mcodeauth", "同时"); });
  CopySettingTable("GL_mcodeauth");
  EXPECT_EQ(contents("GL_mcodeauth"), "同时");  // somebody else wrote between the delete and the copy
}

// --- Failures of the stage.

TEST_F(SettingsTablesTest, AMissingTableStopsThoseBehindIt) {
  putEverywhere(opening, "新年");
  sql(opening, "drop table GL_mitemused create table GL_mitemused_gone(cid int)");
  coverData();
  EXPECT_NO_THROW(JzOtherTables());
  for (const char* table :
       {"GL_bautotran", "GL_bmulti", "GL_btext", "GL_cvprintinfset", "GL_mcodeauth", "GL_mcodeused"})
    EXPECT_EQ(contents(table), "上年") << table;
  for (const char* table : {"GL_mybooktype", "GL_myoutput", "GL_DzDwSet", "GL_MRReport_Main", "GL_MRShowItem_Main",
                            "GL_MRReportOption", "GL_MRColumnDic_Set", "GL_PRN_Format"})
    EXPECT_EQ(contents(table), "新年") << table;
}

TEST_F(SettingsTablesTest, ATableThatOnlyTheNewYearHasIsEmptiedAndStopsThoseBehindIt) {
  putEverywhere(opening, "新年");
  sql(closing, "drop table GL_mitemused");
  coverData();
  EXPECT_NO_THROW(JzOtherTables());
  EXPECT_EQ(contents("GL_mcodeused"), "上年");
  EXPECT_EQ(contents("GL_mitemused"), "");
  EXPECT_EQ(contents("GL_mybooktype"), "新年");
}

TEST_F(SettingsTablesTest, AFailureAmongTheDefinitionsLeavesAllOtherTablesAsTheyAre) {
  coverData();
  failAt("insert into [GL_TranReport]");
  EXPECT_NO_THROW(JzOtherTables());
  expectEverywhere("", {{"GL_bautotran", "上年"}});
}

TEST_F(SettingsTablesTest, AFailureDoesNotFailTheRun) {
  sql(opening, "drop table GL_mcodeauth");
  const Outcome outcome = transfer();
  EXPECT_TRUE(outcome.returned);
  EXPECT_TRUE(outcome.success);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(contents("GL_btext"), "上年");
  EXPECT_EQ(contents("GL_mcodeused"), "");
}

// --- The sibling module.

struct Sibling final : platform::Component {
  platform::Value Call(const std::string& operation, std::vector<Argument>& arguments) override {
    operations.push_back(operation);
    given = arguments;
    if (fails) throw platform::RunTimeError(platform::RunTimeError::invalidCall, "sibling failed");
    if (connection) arguments.at(0).object = connection;
    if (services) arguments.at(1).object = services;
    arguments.at(2).value = "未结转";
    return answer;
  }
  std::vector<std::string> operations;
  std::vector<Argument> given;
  std::shared_ptr<platform::Connection> connection;  // put in the place of what was given, if any
  std::shared_ptr<platform::ZwPubCls> services;
  platform::Value answer = true;
  bool fails = false;
};

struct SiblingFactory final : platform::ComponentFactory {
  std::shared_ptr<platform::Component> Create(const std::string& programId) override {
    created.push_back(programId);
    return sibling;
  }
  std::vector<std::string> created;
  std::shared_ptr<Sibling> sibling = std::make_shared<Sibling>();
};

class SiblingTest : public SettingsTablesTest {
protected:
  SiblingTest() { surroundings_.components = &factory_; }
  SiblingFactory factory_;
  Sibling& sibling() { return *factory_.sibling; }
};

TEST_F(SiblingTest, IsCalledOnceBehindTheTablesWithTheRunsObjects) {
  JzOtherTables();
  expectEverywhere("上年");
  EXPECT_EQ(factory_.created, std::vector<std::string>{"TsGFJZ.clsGFJZ"});
  EXPECT_EQ(sibling().operations, std::vector<std::string>{"JZ"});
  ASSERT_EQ(sibling().given.size(), 3u);
  EXPECT_EQ(sibling().given[0].object, run.m_conn);
  EXPECT_EQ(sibling().given[1].object, run.m_pubCls);
  EXPECT_EQ(sibling().given[2].value, platform::Value(""));
}

TEST_F(SiblingTest, MayReplaceTheClosingConnectionAndTheServices) {
  sibling().connection = surroundings_.newConnection();
  sibling().connection->ConnectionOpen(run.m_conn->ConnectionText());
  sibling().services = surroundings_.newServices();
  const auto connection = run.m_conn;
  const auto services = run.m_pubCls;
  JzOtherTables();
  EXPECT_NE(run.m_conn, connection);
  EXPECT_EQ(run.m_conn, sibling().connection);
  EXPECT_NE(run.m_pubCls, services);
  EXPECT_EQ(run.m_pubCls, sibling().services);
  EXPECT_FALSE(rows(opening, "select * from GL_btext").empty());
}

TEST_F(SiblingTest, ThatSaysNoIsNoFailureAndItsReplacementsCount) {
  sibling().answer = false;
  sibling().connection = surroundings_.newConnection();
  run.m_bManual = true;
  EXPECT_NO_THROW(JzOtherTables());
  EXPECT_EQ(run.m_conn, sibling().connection);
  EXPECT_EQ(run.m_strMsg, "");
}

// What it hands back counts before its answer is looked at.
TEST_F(SiblingTest, WhoseAnswerIsNoneHasReplacedTheObjectsAllTheSame) {
  sibling().answer = {};
  sibling().connection = surroundings_.newConnection();
  EXPECT_NO_THROW(JzOtherTables());
  EXPECT_EQ(run.m_conn, sibling().connection);
}

TEST_F(SiblingTest, ThatFailsIsPassedOverAndReplacesNothing) {
  sibling().fails = true;
  const auto connection = run.m_conn;
  const auto services = run.m_pubCls;
  EXPECT_NO_THROW(JzOtherTables());
  EXPECT_EQ(run.m_conn, connection);
  EXPECT_EQ(run.m_pubCls, services);
  expectEverywhere("上年");
}

TEST_F(SiblingTest, IsNotCalledAfterAFailureOfTheTables) {
  sql(opening, "drop table GL_PRN_Format");
  JzOtherTables();
  EXPECT_TRUE(factory_.created.empty());
}

TEST_F(SiblingTest, RunsInAWholeRun) {
  EXPECT_TRUE(transfer().success);
  EXPECT_EQ(sibling().operations, std::vector<std::string>{"JZ"});
}

// The gate of the boxes is open here, which no run ever does.
class SettingsBoxTest : public SiblingTest {
protected:
  SettingsBoxTest() {
    run.m_pubCls = services_;
    run.m_bManual = run.m_bCancelable = true;
  }
  std::shared_ptr<AskingServices> services_ = std::make_shared<AskingServices>(run.m_pubCls);
};

TEST_F(SettingsBoxTest, NothingIsSaidOfTablesThatArrive) {
  putEverywhere(opening, "新年");
  JzOtherTables();
  EXPECT_TRUE(services_->boxes.empty());
}

TEST_F(SettingsBoxTest, ASiblingThatSaysNoHasItsTextShown) {
  sibling().answer = false;
  JzOtherTables();
  EXPECT_EQ(services_->boxes, (std::vector<Box>{{"未结转", 0, ""}}));
}

TEST_F(SettingsBoxTest, ZeroIsNoAndAnyOtherNumberYes) {
  sibling().answer = 0;
  JzOtherTables();
  EXPECT_EQ(services_->boxes.size(), 1u);
  sibling().answer = 1;
  JzOtherTables();
  EXPECT_EQ(services_->boxes.size(), 1u);
}

TEST_F(SettingsBoxTest, AFailureHasItsDescriptionShown) {
  failAt("Delete From GL_mitemused");
  JzOtherTables();
  EXPECT_EQ(services_->boxes, (std::vector<Box>{{"failure to order", 0, ""}}));
}

TEST_F(SettingsBoxTest, AFailureOfTheSiblingHasItsDescriptionShown) {
  sibling().fails = true;
  JzOtherTables();
  EXPECT_EQ(services_->boxes, (std::vector<Box>{{"sibling failed", 0, ""}}));
}

TEST_F(SettingsTablesTest, WithoutTheSiblingTheTablesAreCopiedAndTheHostHasANote) {
  const Outcome outcome = transfer();
  EXPECT_TRUE(outcome.success);
  EXPECT_EQ(outcome.message, "");
  expectEverywhere("上年");
  EXPECT_EQ(journal().notes(), std::vector<std::string>{"component TsGFJZ.clsGFJZ is not installed"});
  EXPECT_TRUE(journal().failures().empty());
}

TEST_F(SettingsTablesTest, AHostWithoutComponentsIsLikeOneWithoutTheSibling) {
  surroundings_.components = nullptr;
  EXPECT_NO_THROW(JzOtherTables());
  expectEverywhere("上年");
}

class SharedSettingsTablesTest : public SharedLedgerTest {};

TEST_F(SharedSettingsTablesTest, AreNotTouchedWithinOneDatabase) {
  fill(closing, "GL_btext", {"ctext", "摘要"});
  account("1001");
  EXPECT_TRUE(transfer().success);
  expectRows(opening, "select ctext from GL_btext", {"摘要"});
  EXPECT_FALSE(wasRun("GL_btext"));
  EXPECT_TRUE(journal().notes().empty());
}

}  // namespace
}  // namespace gljz::test
