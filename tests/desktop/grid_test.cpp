#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>
#include <fstream>
#include <sstream>

#include "demo_desktop.h"
#include "desktop/export_rows.h"
#include "desktop/grid_view.h"

namespace desktop::test {
namespace {

using gljz::Alignment;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const GridModel::Rows report = {
    {"科目", "名称", "金额", "核对"}, {"1002", "银行", "900.00", "Y"}, {"1131", "应收", "-12.50", "X"},
    {"", "合计", "90.00", ""},        {"1001", "Cash", "1000.1", "Y"}, {"2131", "预收", "", "Y"},
};
const std::vector<Alignment> sides = {Alignment::left, Alignment::left, Alignment::right, Alignment::centred};

bool isWrong(const GridModel::Row& row) {
  return row.back() == "X";
}

std::vector<std::string> firstCells(const GridModel& model) {
  std::vector<std::string> cells;
  for (int i = 0; i < model.rowCount(); ++i) cells.push_back(model.row(i)[0]);
  return cells;
}

TEST(GridModel, SortsNumbersByValueAndKeepsTheRowsOfAnAccountTogether) {
  GridModel model;
  model.setGrid({&report, sides, true});
  EXPECT_THAT(firstCells(model), ElementsAre("1002", "1131", "", "1001", "2131"));
  model.sort(2, Qt::AscendingOrder);
  EXPECT_THAT(firstCells(model), ElementsAre("2131", "1131", "", "1002", "1001")) << "none, -12.50, 900, 1000.1";
  model.sort(0, Qt::DescendingOrder);
  EXPECT_THAT(firstCells(model), ElementsAre("2131", "1131", "", "1002", "1001"));
  model.sort(-1, Qt::AscendingOrder);
  EXPECT_THAT(firstCells(model), ElementsAre("1002", "1131", "", "1001", "2131")) << "as they came";
}

// Amounts as the report has them: no zero before the point, and a zero is one blank.
TEST(GridModel, SortsTheReportsOwnAmounts) {
  const GridModel::Rows amounts = {{"科目", "金额"}, {"1", "-.50"},   {"2", "9.00"}, {"3", " "},
                                   {"4", ".50"},     {"5", "-12.00"}, {"6", ""},     {"7", "10.00"}};
  GridModel model;
  model.setGrid({&amounts, {Alignment::left, Alignment::right}});
  model.sort(1, Qt::AscendingOrder);
  EXPECT_THAT(firstCells(model), ElementsAre("3", "6", "5", "1", "4", "2", "7"));
  model.sort(1, Qt::DescendingOrder);
  EXPECT_THAT(firstCells(model), ElementsAre("7", "2", "4", "1", "5", "3", "6"));
}

TEST(GridModel, WhatIsANumberIsDecidedByTheCells) {
  const GridModel::Rows rows = {{"编码", "数量", "批号", "外币"},
                                {"1131", "9", "12", "900.00 美元"},
                                {"113101", " ", "A", "-"},
                                {"1133", "100", "9", "1000.00 欧元"}};
  GridModel model;
  model.setGrid({&rows, {Alignment::left, Alignment::left, Alignment::right, Alignment::right}});
  model.sort(1, Qt::AscendingOrder);
  EXPECT_THAT(firstCells(model), ElementsAre("113101", "1131", "1133")) << "quantities, though on the left side";
  model.sort(2, Qt::AscendingOrder);
  EXPECT_THAT(firstCells(model), ElementsAre("1131", "1133", "113101")) << "texts, though on the right side";
  model.setFilter([](const GridModel::Row& row) { return row[2] != "A"; });
  EXPECT_THAT(firstCells(model), ElementsAre("1131", "1133")) << "and texts still when only digits are left";
  model.setFilter(nullptr);
  model.sort(3, Qt::AscendingOrder);
  EXPECT_THAT(firstCells(model), ElementsAre("113101", "1131", "1133")) << "amounts that name their currency";
  model.sort(0, Qt::AscendingOrder);
  EXPECT_THAT(firstCells(model), ElementsAre("1131", "113101", "1133")) << "codes by their digits, not by their value";
}

TEST(GridModel, FiltersAndSearchesWholeAccounts) {
  GridModel model;
  model.setGrid({&report, sides, true});
  model.setFilter(isWrong);
  EXPECT_THAT(firstCells(model), ElementsAre("1131", ""));
  model.setSearch("CASH");
  EXPECT_EQ(model.rowCount(), 0);
  model.setFilter(nullptr);
  EXPECT_THAT(firstCells(model), ElementsAre("1001"));
  model.setSearch("合计");
  EXPECT_THAT(firstCells(model), ElementsAre("1131", "")) << "found in the row below its account";
  EXPECT_EQ(model.matching(isWrong), 1u) << "counted whatever is shown";
}

TEST(GridModel, GivesTheSidesOfTheGrid) {
  GridModel model;
  model.setGrid({&report, sides, true});
  const auto side = [&](int column) { return model.index(0, column).data(Qt::TextAlignmentRole).toInt(); };
  EXPECT_EQ(side(0), int(Qt::AlignLeft | Qt::AlignVCenter));
  EXPECT_EQ(side(2), int(Qt::AlignRight | Qt::AlignVCenter));
  EXPECT_EQ(side(3), int(Qt::AlignCenter));
}

TEST(GridModel, IsEmptyWithoutRows) {
  GridModel model;
  EXPECT_EQ(model.rowCount(), 0);
  EXPECT_EQ(model.columnCount(), 0);
  EXPECT_EQ(model.visibleRows().size(), 0u);
  const GridModel::Rows none;
  model.setGrid({&none});
  model.sort(0, Qt::AscendingOrder);
  EXPECT_EQ(model.rowCount(), 0);
}

TEST(CompareNumberTexts, ComparesByValueWithoutRounding) {
  EXPECT_EQ(compareNumberTexts("2", "10"), -1);
  EXPECT_EQ(compareNumberTexts("-2", "-10"), 1);
  EXPECT_EQ(compareNumberTexts("0.00", "-0"), 0);
  EXPECT_EQ(compareNumberTexts("1.50", "1.5"), 0);
  EXPECT_EQ(compareNumberTexts("007", "7"), 0);
  EXPECT_EQ(compareNumberTexts("922337203685477.5807", "922337203685477.5806"), 1);
  EXPECT_EQ(compareNumberTexts(".50", "0.5"), 0);
  EXPECT_EQ(compareNumberTexts(" -.50 ", ".50"), -1);
  EXPECT_EQ(compareNumberTexts(".", "1"), std::nullopt);
  EXPECT_EQ(compareNumberTexts(" ", "1"), std::nullopt);
  EXPECT_EQ(compareNumberTexts("1e5", "1"), std::nullopt);
  EXPECT_EQ(compareNumberTexts("", "1"), std::nullopt);
}

class GridViewTest : public testing::Test {
protected:
  GridViewTest() {
    grid_.rows = report;
    grid_.alignments = sides;
    grid_.columnWidths = {1500, 3000, 1500, 500};
    grid_.shadeColour = platform::rgb(247, 237, 236);
    grid_.borderStyle = 0;
  }
  Texts texts_{"zh-CN"};
  gljz::Grid grid_;
  Person person_;
  host::test::TemporaryFolder folder_;
};

TEST_F(GridViewTest, LooksAsTheDialogTellsIt) {
  GridView view(nullptr, texts_);
  view.showGrid(grid_, true);
  EXPECT_EQ(view.palette().color(QPalette::AlternateBase), QColor(247, 237, 236));
  EXPECT_EQ(view.frameShape(), QFrame::NoFrame);
  EXPECT_GE(view.columnWidth(1), 3000 * view.logicalDpiX() / 1440) << "twips";
}

TEST_F(GridViewTest, CopiesTheSelectedRowsOrAll) {
  GridView view(nullptr, texts_);
  view.showGrid(grid_, true);
  view.selectRow(0);
  QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(utf8(QApplication::clipboard()->text()), "科目\t名称\t金额\t核对\n1002\t银行\t900.00\tY\n");
  view.clearSelection();
  view.grid().setFilter(isWrong);
  view.copy();
  EXPECT_EQ(utf8(QApplication::clipboard()->text()),
            "科目\t名称\t金额\t核对\n1131\t应收\t-12.50\tX\n\t合计\t90.00\t\n");
}

TEST_F(GridViewTest, SortsByTheCurrentColumnFromTheKeyboard) {
  GridView view(nullptr, texts_);
  view.showGrid(grid_, true);
  view.show();
  view.setCurrentIndex(view.model()->index(1, 1));
  QTest::keyClick(&view, Qt::Key_Right);
  QTest::keyClick(&view, Qt::Key_F8);
  EXPECT_THAT(firstCells(view.grid()), ElementsAre("2131", "1131", "", "1002", "1001"));
  EXPECT_EQ(view.currentIndex(), view.model()->index(0, 2)) << "the column stays, at the first row";
  QTest::keyClick(&view, Qt::Key_F8);
  EXPECT_THAT(firstCells(view.grid()), ElementsAre("1001", "1002", "1131", "", "2131"));
  QTest::keyClick(&view, Qt::Key_F8);
  EXPECT_THAT(firstCells(view.grid()), ElementsAre("1002", "1131", "", "1001", "2131")) << "as they came";
  EXPECT_THAT(utf8(view.horizontalHeader()->toolTip()), HasSubstr("F8"));
}

TEST_F(GridViewTest, TakesTheRoomThatIsLackingFromTheTexts) {
  grid_.rows.push_back({"3131", "A name that is longer than any column of this grid is wide at first", "7.00", "Y"});
  GridView view(nullptr, texts_);
  view.showGrid(grid_, true);
  const int amounts = view.columnWidth(2), codes = view.columnWidth(0);
  const int room = view.fullWidth() - 120;
  view.fitInto(room);
  EXPECT_LE(view.fullWidth(), room);
  EXPECT_EQ(view.columnWidth(2), amounts) << "no number is cut off";
  EXPECT_EQ(view.columnWidth(0), codes) << "the widest column gives first";
  view.fitInto(10);
  EXPECT_EQ(view.columnWidth(2), amounts);
  EXPECT_GT(view.columnWidth(1), 20) << "the heads stay to be read";
}

TEST_F(GridViewTest, ExportsWhatItShows) {
  GridView view(nullptr, texts_);
  view.showGrid(grid_, true);
  view.grid().setFilter(isWrong);
  const auto written = [&](const char* name) {
    person_.file = folder_.file(name);
    view.exportRows("报告", "report");
    std::ifstream in(person_.file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
  };
  EXPECT_EQ(written("a.csv"), "\xEF\xBB\xBF科目,名称,金额,核对\r\n1131,应收,-12.50,X\r\n,合计,90.00,\r\n");
  EXPECT_THAT(written("a.html"), HasSubstr("应收"));
  EXPECT_THAT(written("a.pdf"), StartsWith("%PDF-"));
  EXPECT_THAT(written("a.xlsx"), StartsWith("PK"));
  EXPECT_TRUE(person_.complaints.empty());
  EXPECT_EQ(written("a.doc"), "");
  EXPECT_EQ(person_.complaints.size(), 1u);
  person_.file = folder_.file("missing/a.csv");
  view.exportRows("报告", "report");
  EXPECT_EQ(person_.complaints.size(), 2u);
}

// What an accountant does with a large report: scroll it, sort it, look for something. The bounds are far above what it
// takes and far below what a person would call waiting.
TEST_F(GridViewTest, AHundredThousandRowsStayAtHand) {
  gljz::Grid large;
  large.rows.push_back(report[0]);
  large.alignments = sides;
  for (int i = 0; i < 100000; ++i)
    large.rows.push_back({std::to_string(1000000 + i * 7919 % 100000), "科目", std::to_string(i * 31 % 99991) + ".50",
                          i % 100 == 0 ? "X" : "Y"});
  GridView view(nullptr, texts_);
  QElapsedTimer time;
  time.start();
  view.showGrid(large, true);
  view.resize(800, 600);
  view.show();
  QApplication::processEvents();
  EXPECT_LT(time.restart(), 4000) << "to show it";
  for (int i = 0; i < 50; ++i) {
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum() * i / 50);
    view.viewport()->repaint();
  }
  EXPECT_LT(time.restart(), 4000) << "to scroll it from top to bottom";
  view.sortByColumn(2, Qt::DescendingOrder);
  EXPECT_EQ(view.grid().row(0)[2], "99990.50");
  EXPECT_LT(time.restart(), 8000) << "to sort it";
  view.grid().setFilter(isWrong);
  EXPECT_EQ(view.grid().rowCount(), 1000);
  EXPECT_LT(time.restart(), 4000) << "to filter it";
}

}  // namespace
}  // namespace desktop::test
