// The whole road of a carry-forward through the real windows.

#include <gmock/gmock.h>

#include <QPainter>
#include <QScrollBar>
#include <QTest>
#include <fstream>
#include <sstream>

#include "core/run_state.h"
#include "demo_desktop.h"
#include "desktop/grid_view.h"
#include "desktop/result_window.h"

namespace desktop::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class DesktopTransfer : public DemoDesktop {
protected:
  static std::string read(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
  }
  static GridView& grid(const QWidget& window) { return static_cast<GridView&>(child<QTableView>(window, "Grid1")); }
};

TEST_F(DesktopTransfer, GoesFromTheStartWindowToTheConfirmedReport) {
  Autopilot pilot;
  std::string right, wrong;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZBG", [&](QWidget& w) {
    right = textOf(w, "Label2");
    wrong = textOf(w, "Label4");
    press(w, "Command3");
  });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  ASSERT_TRUE(start().ready());
  press(start(), "transfer");
  expectWalked(pilot);

  ASSERT_TRUE(start().lastResult());
  const host::RunResult& result = *start().lastResult();
  EXPECT_TRUE(result.returned);
  EXPECT_TRUE(result.success);
  EXPECT_FALSE(result.uncaught) << *result.uncaught;
  EXPECT_EQ(result.operatorName, "zhao");
  EXPECT_EQ(textOf(start(), "outcome"), host::reportModel(result).headline) << "the start window tells it, too";
  EXPECT_EQ(child<QLabel>(start(), "outcome").palette().color(QPalette::WindowText),
            gradeColour(host::reportModel(result).grade));
  ASSERT_TRUE(result.report);
  EXPECT_EQ(right, result.report->right);
  EXPECT_EQ(wrong, result.report->wrong);
  EXPECT_NE(right, "");
  EXPECT_GT(number("select count(*) from gl_accsum where iyear=2006 and mb<>0"), 0);
  EXPECT_THAT(result.parameters, HasSubstr("GL*OpeningInput"));
  EXPECT_TRUE(QFile::exists(StartWindow::reportFile())) << "the report is kept";
}

TEST_F(DesktopTransfer, TheRunHappensInsideTheProgressWindowWhichStaysPainted) {
  Autopilot pilot;
  int inRun = 0;
  std::string red;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZSN", [&](QWidget& w) {
    ++inRun;  // an event that the run has let through, or the one before its timer
    EXPECT_TRUE(w.isVisible());
    EXPECT_FALSE(w.close()) << "nothing stops a run from its form";
    press(w, "Command1");
    press(w, "Command2");
    EXPECT_TRUE(w.isVisible());
    EXPECT_EQ(textOf(w, "Label1_0"), "结转上年之前的检查...");
  });
  pilot.then("frmJZBG", [&](QWidget& w) {
    ASSERT_EQ(QApplication::activeModalWidget(), &w);
    QWidget* progress = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->objectName() == "frmJZSN") progress = window;
    ASSERT_NE(progress, nullptr);
    EXPECT_TRUE(progress->isVisible()) << "the report stands on the form of the run";
    EXPECT_EQ(textOf(*progress, "Label2_0"), "Y");
    EXPECT_EQ(textOf(*progress, "Label2_7"), "Y");
    press(w, "Command3");
  });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transfer");
  expectWalked(pilot);
  EXPECT_EQ(inRun, 1);
  EXPECT_EQ(start().lastResult()->steps.size(), 8u);
}

TEST_F(DesktopTransfer, BothSelectionDialogsDecideWhatIsCarried) {
  Autopilot pilot;
  std::vector<std::string> offered;
  pilot.then("frmTranCond", [](QWidget& w) {
    EXPECT_FALSE(child<QPushButton>(w, "cmdCustomerTran").isEnabled());
    EXPECT_TRUE(child<QPushButton>(w, "cmdSyKmSel").isEnabled());
    tick(w, "GL*CusMXJZ");
    EXPECT_TRUE(child<QPushButton>(w, "cmdCustomerTran").isEnabled());
    EXPECT_EQ(lineOf(w, "GL*CusYEJZ").checkState(), Qt::Unchecked) << "the other of the pair";
    press(w, "cmdCustomerTran");
    press(w, "cmdSyKmSel");
    press(w, "cmdOk");
  });
  pilot.then("frmYeMxSel", [&](QWidget& w) {
    offered = entries(w, "left");
    ASSERT_GE(offered.size(), 2u);
    EXPECT_FALSE(textOf(w, "lblNote").empty());
    child<QListWidget>(w, "left").setCurrentRow(0);
    press(w, "moveRight");
    EXPECT_THAT(entries(w, "right"), ElementsAre(offered[0]));
    press(w, "moveAllRight");
    EXPECT_EQ(entries(w, "left").size(), 0u);
    press(w, "cmdRefresh");
    EXPECT_EQ(entries(w, "left"), offered);
    child<QListWidget>(w, "left").setCurrentRow(1);
    QTest::keyClick(&child<QListWidget>(w, "left"), Qt::Key_Right);
    EXPECT_THAT(entries(w, "right"), ElementsAre(offered[1]));
    w.close();  // the close box confirms
  });
  pilot.then("frmSyKmSel", [](QWidget& w) {
    EXPECT_GT(entries(w, "left").size() + entries(w, "right").size(), 0u);
    press(w, "moveAllRight");
    press(w, "cmdOK");
  });
  pilot.then("frmJZBG", [](QWidget& w) { press(w, "Command3"); });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transfer");
  expectWalked(pilot);
  const std::string code = offered[1].substr(0, offered[1].find(' '));
  EXPECT_EQ(number("select count(*) from GL_YeMxSel where iCusSupType=1 and iYeMxType=2"), 1);
  EXPECT_EQ(number("select count(*) from GL_YeMxSel where iCusSupType=1 and iYeMxType=2 and ccode='" + code + "'"), 1);
  EXPECT_THAT(start().lastResult()->parameters, HasSubstr("GL*CusMXJZ\" Check=\"True\""));
}

TEST_F(DesktopTransfer, CancelledConditionsCarryNothingAndOpenNoReport) {
  const auto before = number("select count(*) from gl_accsum where iyear=2006 and mb<>0");
  for (const bool byButton : {true, false}) {
    Autopilot pilot;
    pilot.then("frmTranCond", [&](QWidget& w) {
      if (byButton)
        press(w, "cmdCancel");
      else
        QTest::keyClick(&w, Qt::Key_Escape);
    });
    press(start(), "transfer");
    expectWalked(pilot);
    EXPECT_FALSE(start().lastResult());
    EXPECT_EQ(textOf(start(), "outcome"), "已取消，没有结转任何数据。");
  }
  EXPECT_EQ(number("select count(*) from gl_accsum where iyear=2006 and mb<>0"), before);
}

TEST_F(DesktopTransfer, ACancelledSecondRunDoesNotRepeatTheFirst) {
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZBG", [](QWidget& w) { press(w, "Command3"); });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transfer");
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdCancel"); });
  press(start(), "transfer");
  expectWalked(pilot);
  EXPECT_EQ(textOf(start(), "outcome"), "已取消，没有结转任何数据。");
}

TEST_F(DesktopTransfer, TheReportShowsWhatWasLeftOutAndPrintsBothGrids) {
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZBG", [&](QWidget& w) {
    person_.file = folder_.file("report.pdf");
    press(w, "command2");
    person_.file = folder_.file("report.txt");
    press(w, "filterWrong");
    press(w, "command2");
    press(w, "Command1");
    press(w, "Command3");
  });
  pilot.then("frmNBalance", [&](QWidget& w) {
    EXPECT_FALSE(child<QPushButton>(w, "Command1").isVisible()) << "there is nothing to go on with";
    EXPECT_GT(grid(w).grid().rowCount(), 0);
    person_.file = folder_.file("left-out.pdf");
    press(w, "Command3");
    w.close();  // acts as giving up: the dialog is hidden and the report is still there
  });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transfer");
  expectWalked(pilot);
  EXPECT_THAT(read(folder_.file("report.pdf")), StartsWith("%PDF-"));
  EXPECT_THAT(read(folder_.file("left-out.pdf")), StartsWith("%PDF-"));
  const std::string text = read(folder_.file("report.txt"));
  EXPECT_THAT(text, HasSubstr("1131")) << "a wrong account";
  EXPECT_THAT(text, testing::Not(HasSubstr("1001"))) << "the print is what the screen shows";
  EXPECT_EQ(start().lastResult()->prints.size(), 3u);
}

TEST_F(DesktopTransfer, APrinterGetsThePagesOfTheLayout) {
  person_.printerFile = folder_.file("printer.ps");  // an ending that the print control does not write itself
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZBG", [](QWidget& w) {
    press(w, "command2");
    press(w, "Command3");
  });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transfer");
  expectWalked(pilot);
  ASSERT_EQ(start().lastResult()->prints.size(), 1u);
  EXPECT_EQ(start().lastResult()->prints[0].failure, "");
  EXPECT_THAT(read(person_.printerFile), StartsWith("%PDF-"));
}

TEST_F(DesktopTransfer, APrintThatFailsIsToldAndTheReportStays) {
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZBG", [&](QWidget& w) {
    person_.file = folder_.file("no-such-folder/report.pdf");
    press(w, "command2");
    EXPECT_TRUE(w.isVisible());
    press(w, "Command3");
  });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transfer");
  ASSERT_EQ(person_.complaints.size(), 1u);
  EXPECT_THAT(person_.complaints[0], HasSubstr("no-such-folder"));
  EXPECT_TRUE(start().lastResult()->success);
}

TEST_F(DesktopTransfer, AYearThatIsNotReadySaysWhyBeforeAndAfter) {
  run("TqData_001_2005", "update gl_mend set bflag=0 where iperiod=12 and iyear=2005");
  EXPECT_FALSE(start().ready());
  bool told = false;
  for (const QLabel* label : start().findChildren<QLabel*>())
    told = told || utf8(label->text()) == "✗  2005 年 12 月没有结账，请先结账。";
  EXPECT_TRUE(told);
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("result", [](QWidget& w) {
    EXPECT_EQ(textOf(w, "headline"), "没有结转。");
    press(w, "close");
  });
  press(start(), "transfer");
  expectWalked(pilot);
  EXPECT_FALSE(start().lastResult()->success);
}

TEST_F(DesktopTransfer, AFailureInADialogEndsTheRunAndIsTold) {
  run("TqData_001_2006", "drop table GL_YeMxSel");
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) {
    tick(w, "GL*CusMXJZ");
    press(w, "cmdCustomerTran");
    EXPECT_FALSE(w.isVisible()) << "nobody in the dialog answers the failure";
  });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transfer");
  expectWalked(pilot);
  ASSERT_TRUE(start().lastResult()->uncaught);
  EXPECT_THAT(*start().lastResult()->uncaught, HasSubstr("GL_YeMxSel"));
}

TEST_F(DesktopTransfer, TransGLCarriesTheSameDatabases) {
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZBG", [](QWidget& w) { press(w, "Command3"); });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transGL");
  expectWalked(pilot);
  ASSERT_TRUE(start().lastResult());
  EXPECT_TRUE(start().lastResult()->success);
  EXPECT_GT(number("select count(*) from gl_accsum where iyear=2006 and mb<>0"), 0);
}

TEST_F(DesktopTransfer, ThePreviewShowsTheSwitchesAndChangesNothing) {
  const auto before = number("select count(*) from gl_accsum where iyear=2006 and mb<>0");
  gljz::run = {};
  Autopilot pilot;
  pilot.then("parameters", [&](QWidget& w) {
    EXPECT_GT(child<QTableView>(w, "switches").model()->rowCount(), 5);
    person_.file = folder_.file("parameters.xml");
    press(w, "save");
    press(w, "close");
  });
  press(start(), "preview");
  expectWalked(pilot);
  const std::string text = read(folder_.file("parameters.xml"));
  EXPECT_THAT(text, StartsWith("<Account>"));
  EXPECT_THAT(text, HasSubstr("ID=\"GL*OpeningInput\" Check=\"True\""));
  EXPECT_EQ(number("select count(*) from gl_accsum where iyear=2006 and mb<>0"), before);
  EXPECT_EQ(gljz::run.m_strCondXml, "") << "a cancelled dialog would fall back on it";
}

TEST_F(DesktopTransfer, EveryDialogSpeaksTheLanguageOfTheRun) {
  choice_.language = "en-US";
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) {
    tick(w, "GL*CusMXJZ");
    press(w, "cmdCustomerTran");
    press(w, "cmdOk");
  });
  pilot.then("frmYeMxSel", [](QWidget& w) {
    EXPECT_EQ(textOf(w, "Frame1"), "Choose how customer accounts are carried");
    EXPECT_EQ(utf8(child<QPushButton>(w, "cmdRefresh").text()), "Choose anew");
    press(w, "cmdOK");
  });
  pilot.then("frmJZSN", [](QWidget& w) { EXPECT_EQ(textOf(w, "Label1_1"), "Account totals..."); });
  pilot.then("frmJZBG", [](QWidget& w) {
    EXPECT_EQ(utf8(w.windowTitle()), "Carry-forward report");
    EXPECT_EQ(utf8(child<QPushButton>(w, "Command3").text()), "Confirm");
    const GridView& view = grid(w);
    const int verdict = view.model()->columnCount() - 1;
    EXPECT_LE(view.columnViewportPosition(verdict) + view.columnWidth(verdict), view.viewport()->width())
        << "the verdict is on the screen when the window opens";
    EXPECT_FALSE(view.horizontalScrollBar()->isVisible());
    press(w, "Command1");
    press(w, "Command3");
  });
  pilot.then("frmNBalance", [](QWidget& w) {
    EXPECT_EQ(utf8(child<QPushButton>(w, "Command3").text()), "Print");
    press(w, "Command2");
  });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transfer");
  expectWalked(pilot);
}

}  // namespace
}  // namespace desktop::test
