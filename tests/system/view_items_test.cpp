#include "settings/view_items.h"

#include <algorithm>

#include "system/ledger_fixture.h"

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
