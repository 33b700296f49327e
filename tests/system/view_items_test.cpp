#include "settings/view_items.h"

#include <algorithm>
#include <array>

#include "system/fault_injection.h"
#include "system/ledger_fixture.h"
#include "system/observers.h"

namespace gljz::test {
namespace {

// An account set of the edition: its closing year has the schema.
class ViewItemsTest : public LedgerTest {
protected:
  ViewItemsTest() { option("iZBMsg", "1"); }

  void makeSchemaOfClosingYear() {
    sql(closing, "alter table code add iViewItem int not null default 0");
    sql(closing, "alter table code add bGCJS bit not null default 0");
    sql(closing,
        "create table GL_ViewItem(iID int not null, cTitleName varchar(30) not null, cQcQmName varchar(20) not null, "
        "cTJFS varchar(4) not null, cCode1 varchar(80) null, cCode2 varchar(80) null, cCode3 varchar(80) null, cCode4 "
        "varchar(80) null, cCode5 varchar(80) null)");
  }
  void viewItem(const Side& side, const std::string& id, const std::string& title) {
    fill(side, "GL_ViewItem",
         {"iID | cTitleName | cQcQmName | cTJFS | cCode2", id + "|" + title + "| 期初 | 借 | 1001"});
  }
  void expectAccounts(const std::vector<std::string>& expected) {
    expectRows(opening, "select iyear,ccode,iViewItem,bGCJS from code order by ccode,iyear", expected);
  }
  void expectViewItems(const std::vector<std::string>& expected) {
    expectRows(opening, "select * from GL_ViewItem order by iID", expected);
  }
  bool hasSchema(const Side& side) {
    return !rows(side, "select name from syscolumns where id=object_id(N'code') and name=N'iViewItem'").empty();
  }
};

// --- The schema.

TEST_F(ViewItemsTest, TheFirstRunMakesTheSchemaInTheNewYear) {
  account(opening, "1001");
  ViewItemSchema();
  expectAccounts({"2006 | 1001 | 0 | 0"});
  expectRows(opening,
             "select name,length,isnullable from syscolumns where id=object_id(N'GL_ViewItem') and name<>N'iID' order "
             "by colid",
             {"cTitleName | 30 | 0", "cQcQmName | 20 | 0", "cTJFS | 4 | 0", "cCode1 | 80 | 1", "cCode2 | 80 | 1",
              "cCode3 | 80 | 1", "cCode4 | 80 | 1", "cCode5 | 80 | 1"});
  EXPECT_EQ(text(opening, "select count(*) from syscolumns where id=object_id(N'GL_XmZcDetail')"), "24");
  EXPECT_EQ(text(opening, "select count(*) from GL_XmZcDetail"), "0");
  expectRows(opening, "select * from PrintEx",
             {"GL | Null | 143 | 青石专版 | GLQsZb | 9 | 0 | 2 | GLQsZbU | GLQsZbD | 0 | 0 | 0 | 0 | 0 | 0"});
}

// Types are the server's numbers: 48 tinyint, 52 smallint, 56 int, 60 money, 61 datetime, 62 float, 104 bit, 167
// varchar.
TEST_F(ViewItemsTest, TheSchemaHasItsTypes) {
  ViewItemSchema();
  const auto columns = [](const char* table) {
    return std::string("select name,xtype,length,isnullable from syscolumns where id=object_id(N'") + table + "')";
  };
  expectRows(opening, columns("code") + " and name in (N'iViewItem',N'bGCJS') order by colid",
             {"iViewItem | 56 | 4 | 0", "bGCJS | 104 | 1 | 0"});
  expectRows(opening, columns("GL_ViewItem") + " order by colid",
             {"iID | 56 | 4 | 0", "cTitleName | 167 | 30 | 0", "cQcQmName | 167 | 20 | 0", "cTJFS | 167 | 4 | 0",
              "cCode1 | 167 | 80 | 1", "cCode2 | 167 | 80 | 1", "cCode3 | 167 | 80 | 1", "cCode4 | 167 | 80 | 1",
              "cCode5 | 167 | 80 | 1"});
  expectRows(opening, columns("GL_XmZcDetail") + " order by colid",
             {"iID | 56 | 4 | 0",        "iPeriod | 48 | 1 | 0",      "cSign | 167 | 8 | 0",
              "iNo_id | 52 | 2 | 0",     "inid | 52 | 2 | 0",         "dbill_date | 61 | 8 | 1",
              "isignseq | 56 | 4 | 1",   "cCode | 167 | 80 | 0",      "cPerson_id | 167 | 8 | 1",
              "cDept_id | 167 | 12 | 1", "cCus_id | 167 | 12 | 1",    "cSup_id | 167 | 12 | 1",
              "cItem_id | 167 | 20 | 1", "cItem_class | 167 | 2 | 1", "cStructure | 167 | 30 | 1",
              "cArea | 167 | 10 | 1",    "curBuildCost | 60 | 8 | 1", "cName | 167 | 50 | 1",
              "cType | 167 | 10 | 1",    "cUnit | 167 | 5 | 1",       "iNumber | 62 | 8 | 1",
              "curInstall | 60 | 8 | 1", "curEquipment | 60 | 8 | 1", "bIfInstall | 104 | 1 | 0"});
}

TEST_F(ViewItemsTest, TablesOfAnEarlierEditionAreDroppedAlongTheWay) {
  sql(opening, "create table GL_ViewItem(x int) create table GL_XmZcDetail(x int)");
  ViewItemSchema();
  EXPECT_EQ(text(opening, "select count(*) from syscolumns where id=object_id(N'GL_ViewItem')"), "9");
  EXPECT_EQ(text(opening, "select count(*) from syscolumns where id=object_id(N'GL_XmZcDetail')"), "24");
}

TEST_F(ViewItemsTest, TheFirstStatementGuardsWhatStandsThereAlready) {
  ViewItemSchema();
  viewItem(opening, "1", "保留");
  fill(opening, "GL_XmZcDetail",
       {"iID | iPeriod | cSign | iNo_id | inid | cCode | bIfInstall", "1 | 1 | 记 | 1 | 1 | 1001 | 0"});
  forgetStatements();
  ViewItemSchema();
  expectViewItems({"1 | 保留 | 期初 | 借 | Null | 1001 | Null | Null | Null"});
  EXPECT_EQ(text(opening, "select count(*) from GL_XmZcDetail"), "1");
  EXPECT_EQ(text(opening, "select count(*) from PrintEx"), "1");
  EXPECT_FALSE(wasRun("bGCJS"));
}

TEST_F(ViewItemsTest, TheSchemaStopsAtItsFirstFailureWithoutAWord) {
  sql(opening, "drop table PrintEx");
  EXPECT_NO_THROW(ViewItemSchema());
  EXPECT_TRUE(hasSchema(opening));
  EXPECT_EQ(text(opening, "select count(*) from GL_ViewItem"), "0");
}

TEST_F(ViewItemsTest, TheSchemaStopsBeforeTheTablesWhenTheSecondColumnStands) {
  sql(opening, "alter table code add bGCJS bit not null default 0");
  ViewItemSchema();
  EXPECT_TRUE(hasSchema(opening));
  EXPECT_EQ(text(opening, "select object_id(N'GL_ViewItem')"), "Null");
  EXPECT_EQ(text(opening, "select count(*) from PrintEx"), "0");
}

TEST_F(ViewItemsTest, TheSchemaIsMadeOverAConnectionOfItsOwn) {
  forgetStatements();
  ViewItemSchema();
  ASSERT_EQ(statements().size(), 9u);
  EXPECT_EQ(statements().front().text, "open");
  EXPECT_EQ(statements().back().text, "close");
  for (const auto& statement : statements()) EXPECT_EQ(statement.database, opening.database);
}

// The stage is the first one in the run's transaction, which has read the new year but has not written.
TEST_F(ViewItemsTest, TheSchemaIsMadeWhileTheRunsTransactionHasBegun) {
  account("1001");
  newConn().BeginTrans();
  EXPECT_TRUE(hasRow(newConn(), "select * from code"));
  JzViewItem();
  auto code = newConn().OpenRecordset("select iViewItem from code", 2);
  EXPECT_EQ(code->Field(0).asInteger(), 0);
  newConn().ExecuteSql("update code set iViewItem=7");
  newConn().CommitTrans();
  expectAccounts({"2006 | 1001 | 7 | 0"});
}

// What the private connection made is final, whatever becomes of the run.
TEST_F(ViewItemsTest, TheSchemaOutlivesATransactionThatIsUndone) {
  account("1001");
  makeSchemaOfClosingYear();
  sql(closing, "update code set iViewItem=3");
  newConn().BeginTrans();
  JzViewItem();
  newConn().RollbackTrans();
  expectAccounts({"2006 | 1001 | 0 | 0"});
}

// --- The values.

TEST_F(ViewItemsTest, AccountsAndViewItemsTakeTheValuesOfTheClosingYear) {
  account("1001"), account("1002");
  account(closing, "1901"), account(opening, "2999");
  makeSchemaOfClosingYear();
  sql(closing, "update code set iViewItem=5 where ccode='1001' update code set bGCJS=1 where ccode='1002'");
  viewItem(closing, "1", "货币资金");
  viewItem(closing, "2", "存货");
  JzViewItem();
  expectAccounts({"2006 | 1001 | 5 | 0", "2006 | 1002 | 0 | 1", "2006 | 2999 | 0 | 0"});
  expectViewItems({"1 | 货币资金 | 期初 | 借 | Null | 1001 | Null | Null | Null",
                   "2 | 存货 | 期初 | 借 | Null | 1001 | Null | Null | Null"});
  EXPECT_EQ(text(opening, "select count(*) from GL_XmZcDetail"), "0");
}

TEST_F(ViewItemsTest, EachYearOfTheClosingDatabaseVisitsTheAccountAndTheFirstRowTakesTheValue) {
  account(Side{closing.database, 2004}, "1001");
  account("1001");
  account(Side{opening.database, 2007}, "1001");
  makeSchemaOfClosingYear();
  sql(closing, "update code set iViewItem=iyear-2000, bGCJS=1");
  JzViewItem();
  expectAccounts({"2006 | 1001 | 5 | 1", "2007 | 1001 | 0 | 0"});  // the last visit was that of 2005
}

TEST_F(ViewItemsTest, WithoutTheSchemaInTheClosingYearNothingArrivesAndNothingFails) {
  account("1001");
  EXPECT_NO_THROW(JzViewItem());
  expectAccounts({"2006 | 1001 | 0 | 0"});
  expectViewItems({});
}

TEST_F(ViewItemsTest, ValuesThatTheClosingYearHasArriveWithoutThoseThatItLacks) {
  account("1001");
  sql(closing, "alter table code add bGCJS bit not null default 1");
  JzViewItem();
  expectAccounts({"2006 | 1001 | 0 | 1"});
}

TEST_F(ViewItemsTest, AnAccountWhoseStatementFailsIsPassedOver) {
  for (const char* code : {"1001", "1001'1", "1002"}) account(code);
  makeSchemaOfClosingYear();
  sql(closing, "update code set iViewItem=5");
  JzViewItem();
  expectAccounts({"2006 | 1001 | 5 | 0", "2006 | 1001'1 | 0 | 0", "2006 | 1002 | 5 | 0"});
}

TEST_F(ViewItemsTest, AClosingYearWithoutAChartStillHandsItsViewItemsOver) {
  makeSchemaOfClosingYear();
  viewItem(closing, "1", "货币资金");
  JzViewItem();
  expectViewItems({"1 | 货币资金 | 期初 | 借 | Null | 1001 | Null | Null | Null"});
}

TEST_F(ViewItemsTest, AViewItemThatTheNewTableRefusesIsPassedOver) {
  makeSchemaOfClosingYear();
  sql(closing, "alter table GL_ViewItem alter column cTitleName varchar(60) null");
  for (const char* id : {"1", "2", "3"}) viewItem(closing, id, "甲");
  sql(closing, "update GL_ViewItem set cTitleName=null where iID=2");
  JzViewItem();
  expectRows(opening, "select iID from GL_ViewItem order by iID", {"1", "3"});
}

TEST_F(ViewItemsTest, ColumnsOfAViewItemArePlacedByPosition) {
  makeSchemaOfClosingYear();
  sql(closing,
      "drop table GL_ViewItem create table GL_ViewItem(iID int, a varchar(30), b varchar(20), c varchar(4), d "
      "varchar(80))");
  sql(closing, "insert into GL_ViewItem values(1, 'A', 'B', 'C', 'D')");
  JzViewItem();
  expectViewItems({"1 | A | B | C | D | Null | Null | Null | Null"});
}

TEST_F(ViewItemsTest, AColumnThatTheNewTableLacksIsPassedOver) {
  makeSchemaOfClosingYear();
  sql(closing, "alter table GL_ViewItem add cMore varchar(10) null");
  viewItem(closing, "1", "货币资金");
  sql(closing, "update GL_ViewItem set cMore='x'");
  JzViewItem();
  expectViewItems({"1 | 货币资金 | 期初 | 借 | Null | 1001 | Null | Null | Null"});
}

TEST_F(ViewItemsTest, ATableThatHasRowsIsNeverMergedWith) {
  account("1001");
  makeSchemaOfClosingYear();
  viewItem(closing, "1", "货币资金");
  JzViewItem();
  viewItem(closing, "2", "后加");
  sql(closing, "update code set iViewItem=8");
  JzViewItem();
  expectAccounts({"2006 | 1001 | 8 | 0"});  // the accounts' values are carried each time
  expectRows(opening, "select iID from GL_ViewItem", {"1"});
}

// --- What an operator would read.

class ViewItemMessagesTest : public ViewItemsTest {
protected:
  ViewItemMessagesTest() {
    run.m_pubCls = services_;
    run.m_bManual = run.m_bCancelable = true;
  }
  static Box remark(const char* key) { return {key, 64, "Orvo.GL.TqGLJZ.00094"}; }
  void expectRemarks(const std::vector<Box>& expected) {
    services_->boxes.clear();
    JzViewItem();
    EXPECT_EQ(services_->boxes, expected);
  }
  std::shared_ptr<AskingServices> services_ = std::make_shared<AskingServices>(run.m_pubCls);
};

TEST_F(ViewItemMessagesTest, WithoutAChartThatOfTheAccountsAndTheStageGoesOn) {
  makeSchemaOfClosingYear();
  expectRemarks({remark("Orvo.GL.TqGLJZ.00269"), remark("Orvo.GL.TqGLJZ.00273")});
}

TEST_F(ViewItemMessagesTest, WithoutViewItemsThatThereIsNothingToCarry) {
  account("1001");
  makeSchemaOfClosingYear();
  expectRemarks({remark("Orvo.GL.TqGLJZ.00273")});
  sql(closing, "drop table GL_ViewItem");
  expectRemarks({remark("Orvo.GL.TqGLJZ.00273")});  // a table that is not there has no rows either
}

TEST_F(ViewItemMessagesTest, OnASecondRunThatTheNewYearHasViewItems) {
  account("1001");
  makeSchemaOfClosingYear();
  viewItem(closing, "1", "货币资金");
  expectRemarks({});
  expectRemarks({remark("Orvo.GL.TqGLJZ.00271")});
}

TEST_F(ViewItemMessagesTest, NothingUnlessSomebodyWatches) {
  run.m_bManual = false;
  expectRemarks({});
}

// --- Failures behind the statements: a move, a row that is written.

class ViewItemFailuresTest : public ViewItemsTest {
protected:
  ViewItemFailuresTest() {
    for (const char* code : {"1001", "1002", "1003"}) account(code);
    makeSchemaOfClosingYear();
    sql(closing, "update code set iViewItem=5, bGCJS=1");
    for (const char* id : {"1", "2", "3"}) viewItem(closing, id, "甲");
    ViewItemSchema();
    run.m_pubCls = services_;
  }
  // Runs the stage from the start with the n-th call failing.
  void failAt(int n) {
    sql(opening, "update code set iViewItem=0, bGCJS=0 delete from GL_ViewItem");
    faults_->failAt(n);
    EXPECT_NO_THROW(JzViewItem()) << faults_->failed();
  }
  // "iViewItem bGCJS" of the three accounts, and the ids of the view items.
  std::string accounts() {
    return joined("select cast(iViewItem as varchar(2))+' '+cast(bGCJS as varchar(2)) from code");
  }
  std::string viewItems() { return joined("select iID from GL_ViewItem order by iID"); }
  std::string joined(const std::string& query) {
    std::string all;
    for (const auto& row : rows(opening, query)) all += all.empty() ? row : ", " + row;
    return all;
  }
  std::shared_ptr<Faults> faults_ = std::make_shared<Faults>();
  std::shared_ptr<AskingServices> services_ = std::make_shared<AskingServices>(run.m_pubCls);
};

TEST_F(ViewItemFailuresTest, OfTheClosingYearEndTheirHalfAndTheOtherRuns) {
  run.m_conn = faultyConnection(faults_, run.m_conn);
  const std::vector<std::array<std::string, 3>> expected = {
      {"Select * from code Order by ccode", "0 0, 0 0, 0 0", "1, 2, 3"},
      {"move", "5 1, 0 0, 0 0", "1, 2, 3"},
      {"move", "5 1, 5 1, 0 0", "1, 2, 3"},
      {"move", "5 1, 5 1, 5 1", "1, 2, 3"},
      {"Select * from GL_viewitem", "5 1, 5 1, 5 1", ""},
      {"move", "5 1, 5 1, 5 1", "1"},
      {"move", "5 1, 5 1, 5 1", "1, 2"},
      {"move", "5 1, 5 1, 5 1", "1, 2, 3"}};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    failAt(static_cast<int>(i) + 1);
    EXPECT_EQ((std::array{faults_->failed(), accounts(), viewItems()}), expected[i]) << i;
  }
  failAt(static_cast<int>(expected.size()) + 1);
  EXPECT_FALSE(faults_->happened());
}

// Each statement of its own: what fails is passed over, what follows runs.
TEST_F(ViewItemFailuresTest, OfTheNewYearArePassedOverOneByOne) {
  services_->replacedConnection = faultyConnection(faults_, services_->NewYearConn());
  const std::vector<std::array<std::string, 3>> ofTheFirstAccount = {
      {"Select * from code Where ccode='1001'", "0 0, 5 1, 5 1", "1, 2, 3"},
      {"set iViewItem", "0 1, 5 1, 5 1", "1, 2, 3"},
      {"set bGCJS", "5 0, 5 1, 5 1", "1, 2, 3"},
      {"update", "0 0, 5 1, 5 1", "1, 2, 3"}};
  for (std::size_t i = 0; i < ofTheFirstAccount.size(); ++i) {
    failAt(static_cast<int>(i) + 1);
    EXPECT_EQ((std::array{faults_->failed(), accounts(), viewItems()}), ofTheFirstAccount[i]) << i;
  }
  for (int n = 13;; ++n) {
    failAt(n);
    if (!faults_->happened()) break;
    EXPECT_EQ(accounts(), "5 1, 5 1, 5 1") << n;
    if (faults_->failed() == "set cCode2") {
      EXPECT_EQ(viewItems(), "1, 2, 3") << n;
    }
  }
}

// --- In a run.

TEST_F(ViewItemsTest, AWholeRunCarriesThemBeforeEverythingElse) {
  account("1001");
  makeSchemaOfClosingYear();
  sql(closing, "update code set iViewItem=5");
  viewItem(closing, "1", "货币资金");
  EXPECT_TRUE(transfer().success);
  expectAccounts({"2006 | 1001 | 5 | 0"});
  expectRows(opening, "select iID from GL_ViewItem", {"1"});
  const auto position = [this](const std::string& part) {
    const auto& all = statements();
    return std::find_if(all.begin(), all.end(), [&](const auto& s) { return s.text.find(part) != std::string::npos; }) -
           all.begin();
  };
  EXPECT_LT(position("begin"), position("Add [iViewItem]"));
  EXPECT_LT(position("Insert PrintEx"), position("select modelId"));
}

TEST_F(ViewItemsTest, ASecondRunAddsNothing) {
  account("1001");
  makeSchemaOfClosingYear();
  viewItem(closing, "1", "货币资金");
  EXPECT_TRUE(transfer().success);
  EXPECT_TRUE(transfer().success);
  expectRows(opening, "select iID from GL_ViewItem", {"1"});
  EXPECT_EQ(text(opening, "select count(*) from PrintEx"), "1");
}

TEST_F(ViewItemsTest, WithoutTheOptionNothingOfThisRuns) {
  account("1001");
  for (const char* value : {"0", "True", ""}) {
    option("iZBMsg", value);
    EXPECT_TRUE(transfer().success);
    EXPECT_FALSE(hasSchema(opening)) << value;
    EXPECT_FALSE(wasRun("iViewItem")) << value;
  }
}

TEST_F(ViewItemsTest, AnOptionThatTheNewYearDoesNotHaveCountsAsNotSet) {
  account("1001");
  makeSchemaOfClosingYear();
  sql(opening, "delete from accinformation where cName=N'iZBMsg'");
  sql(closing, "update accinformation set cValue=N'1' where cSysID=N'GL' and cName=N'iZBMsg'");  // nobody asks here
  const Outcome outcome = transfer();
  EXPECT_TRUE(outcome.success);
  EXPECT_EQ(outcome.message, "");
  EXPECT_FALSE(hasSchema(opening));
  EXPECT_FALSE(wasRun("iViewItem"));
}

class SharedViewItemsTest : public SharedLedgerTest {};

TEST_F(SharedViewItemsTest, OneDatabaseThatHasTheSchemaKeepsWhatItHas) {
  option("iZBMsg", "1");
  account("1001");
  EXPECT_TRUE(transfer().success);
  sql(opening, "update code set iViewItem=iyear-2000");
  fill(opening, "GL_ViewItem", {"iID | cTitleName | cQcQmName | cTJFS", "1 | 货币资金 | 期初 | 借"});
  EXPECT_TRUE(transfer().success);
  // The first row is that of 2005; it takes its own value and then that of 2006.
  expectRows(opening, "select iyear,iViewItem from code order by iyear", {"2005 | 6", "2006 | 6"});
  expectRows(opening, "select iID from GL_ViewItem", {"1"});
}

}  // namespace
}  // namespace gljz::test
