#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <fstream>
#include <sstream>

#include "demo_desktop.h"
#include "desktop/export_rows.h"
#include "desktop/grid_view.h"
#include "desktop/report_windows.h"

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

TEST(ReportWindow, FiltersByVerdictAndShowsWhatWasLeftOut) {
  gljz::FrmJZBG form;
  form.Grid1.rows = report;
  form.Grid1.alignments = sides;
  form.Label2.Caption = "3";
  form.Label4.Caption = "1";
  gljz::Grid leftOut;
  leftOut.rows = {{"类别", "编码", "名称", "原因"}, {"科目", "1901", "待摊", "没有"}, {"客户", "C006", "远图", "没有"}};
  const Texts texts("zh-CN");
  ReportWindow window(nullptr, form, &leftOut, texts);
  window.QWidget::show();
  auto& view = static_cast<GridView&>(child<QTableView>(window, "Grid1"));
  EXPECT_EQ(utf8(child<QPushButton>(window, "filterAll").text()), "全部科目（4）");
  EXPECT_EQ(utf8(child<QPushButton>(window, "filterWrong").text()), "错误（1）");
  EXPECT_EQ(utf8(child<QPushButton>(window, "filterLeftOut").text()), "未结转的记录（2）");
  press(window, "filterWrong");
  EXPECT_THAT(firstCells(view.grid()), ElementsAre("1131", ""));
  EXPECT_EQ(window.rowsOnScreen().size(), 3u);
  press(window, "filterLeftOut");
  EXPECT_THAT(firstCells(view.grid()), ElementsAre("科目", "客户"));
  EXPECT_EQ(window.rowsOnScreen(), form.Grid1.rows) << "the print is the accounts'";
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
  press(window, "filterAll");
  QTest::keyClicks(&child<QLineEdit>(window, "search"), "cash");
  EXPECT_THAT(firstCells(view.grid()), ElementsAre("1001"));
}

}  // namespace
}  // namespace desktop::test
