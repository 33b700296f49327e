#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <fstream>
#include <sstream>

#include "demo_desktop.h"
#include "desktop/grid_view.h"
#include "desktop/report_windows.h"

namespace desktop::test {
namespace {

using gljz::Alignment;
using testing::ElementsAre;
using testing::HasSubstr;

class ReportWindowTest : public testing::Test {
protected:
  ReportWindowTest() {
    form_.Grid1.rows = {
        {"科目", "名称", "金额", "核对"}, {"1002", "银行", "900.00", "Y"}, {"1131", "应收", "-12.50", "X"},
        {"", "合计", "90.00", ""},        {"1001", "Cash", "1000.1", "Y"}, {"2131", "预收", "", "Y"},
    };
    form_.Grid1.alignments = {Alignment::left, Alignment::left, Alignment::right, Alignment::centred};
    form_.Label2.Caption = "3";
    form_.Label4.Caption = "1";
    leftOut_.rows = {
        {"类别", "编码", "名称", "原因"}, {"科目", "1901", "待摊", "没有"}, {"客户", "C006", "远图", "没有"}};
  }
  static std::vector<std::string> firstCells(const GridModel& model) {
    std::vector<std::string> cells;
    for (int i = 0; i < model.rowCount(); ++i) cells.push_back(model.row(i)[0]);
    return cells;
  }
  static GridView& grid(const QWidget& window) { return static_cast<GridView&>(child<QTableView>(window, "Grid1")); }

  Texts texts_{"zh-CN"};
  gljz::FrmJZBG form_;
  gljz::Grid leftOut_;
  Person person_;
  host::test::TemporaryFolder folder_;
};

TEST_F(ReportWindowTest, FiltersByVerdictAndShowsWhatWasLeftOut) {
  ReportWindow window(nullptr, form_, &leftOut_, texts_);
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
  EXPECT_EQ(window.rowsOnScreen(), form_.Grid1.rows) << "the print is the accounts'";
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
  press(window, "filterAll");
  QTest::keyClicks(&child<QLineEdit>(window, "search"), "cash");
  QTest::keyClick(&child<QLineEdit>(window, "search"), Qt::Key_Return);
  EXPECT_TRUE(window.isVisible()) << "Enter looks for the text; it does not confirm the report";
  EXPECT_THAT(firstCells(view.grid()), ElementsAre("1001"));
}

TEST_F(ReportWindowTest, ExportsWhatIsShownUnderItsOwnName) {
  ReportWindow window(nullptr, form_, &leftOut_, texts_);
  window.QWidget::show();
  const auto exported = [&](const char* name) {
    person_.file = folder_.file(name);
    press(window, "export");
    std::ifstream in(person_.file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
  };
  EXPECT_THAT(exported("a.html"), HasSubstr("<title>结转报告"));
  press(window, "filterLeftOut");
  const std::string leftOut = exported("b.html");
  EXPECT_THAT(leftOut, HasSubstr("<title>无对应记录"));
  EXPECT_THAT(leftOut, HasSubstr("C006"));
  EXPECT_THAT(person_.proposed, ElementsAre("closing-report.csv", "left-out.csv"));
  EXPECT_THAT(person_.complaints, ElementsAre());
}

TEST_F(ReportWindowTest, TabGoesThroughItAsItIsRead) {
  ReportWindow window(nullptr, form_, &leftOut_, texts_);
  window.QWidget::show();
  window.activateWindow();
  child<QPushButton>(window, "filterAll").setFocus();
  std::vector<std::string> reached;
  for (int i = 0; i < 12; ++i) {
    QWidget* focus = window.focusWidget();
    const std::string name = utf8(focus->objectName());
    if (std::find(reached.begin(), reached.end(), name) != reached.end()) break;
    reached.push_back(name);
    QTest::keyClick(focus, Qt::Key_Tab);
  }
  EXPECT_THAT(reached, ElementsAre("filterAll", "filterWrong", "filterLeftOut", "search", "Grid1", "copy", "export",
                                   "Command1", "command2", "Command3"));
}

TEST_F(ReportWindowTest, EscapeGivesUpTheSearchFirst) {
  ReportWindow window(nullptr, form_, &leftOut_, texts_);
  window.QWidget::show();
  auto& search = child<QLineEdit>(window, "search");
  QTest::keyClicks(&search, "cash");
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_EQ(grid(window).grid().rowCount(), 1);
  QTest::keyClick(&search, Qt::Key_Escape);
  EXPECT_EQ(search.text(), "");
  EXPECT_EQ(grid(window).grid().rowCount(), 5);
  EXPECT_TRUE(window.isVisible());
}

// The bounds are far above what it takes and far below what a person would call waiting.
TEST_F(ReportWindowTest, AHundredThousandRowsStayAtHand) {
  auto& rows = form_.Grid1.rows;
  rows.resize(1);
  for (int i = 0; i < 100000; ++i)
    rows.push_back({std::to_string(1000000 + i), "科目", std::to_string(i * 31 % 99991) + ".50", i % 100 ? "Y" : "X"});
  QElapsedTimer time;
  time.start();
  ReportWindow window(nullptr, form_, &leftOut_, texts_);
  window.QWidget::show();
  QApplication::processEvents();
  EXPECT_LT(time.restart(), 5000) << "to show it";
  GridModel& model = grid(window).grid();
  int arranged = 0;
  QObject::connect(&model, &QAbstractItemModel::modelReset, &window, [&] { ++arranged; });
  QTest::keyClicks(&child<QLineEdit>(window, "search"), "1012345");
  EXPECT_EQ(arranged, 0) << "a key does not wait for the search";
  EXPECT_TRUE(QTest::qWaitFor([&] { return arranged > 0; }, 5000));
  EXPECT_EQ(arranged, 1) << "the rows are searched once, not for every key";
  EXPECT_THAT(firstCells(model), ElementsAre("1012345"));
  EXPECT_LT(time.restart(), 6000) << "to search it";
  child<QLineEdit>(window, "search").clear();
  EXPECT_TRUE(QTest::qWaitFor([&] { return model.rowCount() == 100000; }, 5000));
  press(window, "filterWrong");
  EXPECT_EQ(model.rowCount(), 1000);
  press(window, "filterAll");
  EXPECT_LT(time.restart(), 6000) << "to filter it";
  grid(window).setCurrentIndex(model.index(0, 2));
  QTest::keyClick(&grid(window), Qt::Key_F8);
  EXPECT_EQ(model.row(0)[2], "0.50");
  EXPECT_LT(time.restart(), 8000) << "to sort it";
}

}  // namespace
}  // namespace desktop::test
