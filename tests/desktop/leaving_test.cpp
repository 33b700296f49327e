// What a person leaves - dialogs, questions for files and printers - and what the Enter key does in each dialog.

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QTest>

#include "core/mdu_jz.h"
#include "core/run_state.h"
#include "demo_desktop.h"
#include "desktop/grid_view.h"
#include "desktop/selection_windows.h"
#include "dialogs/frm_sy_km_sel.h"

namespace desktop::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class DesktopLeaving : public DemoDesktop {
protected:
  static void enter(QWidget& window) {
    QWidget* focus = window.focusWidget();
    QTest::keyClick(focus ? focus : &window, Qt::Key_Return);
  }
  static void escape(QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }

  // A Transfer whose report is answered by the step.
  void transferWith(Autopilot& pilot, Autopilot::Step answer) {
    pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
    pilot.then("frmJZBG", std::move(answer));
    pilot.then("result", [](QWidget& w) { press(w, "close"); });
    press(start(), "transfer");
    expectWalked(pilot);
  }
};

TEST_F(DesktopLeaving, TheClearedAccountsAreGivenUpWithTheirWindow) {
  Autopilot pilot;
  pilot.then("frmTranCond", [&](QWidget& w) {
    for (const bool byKey : {false, true}) {
      pilot.then("frmSyKmSel", [byKey](QWidget& selection) {
        press(selection, "moveAllRight");
        EXPECT_GT(entries(selection, "right").size(), 0u);
        if (byKey)
          escape(selection);
        else
          selection.close();
      });
      press(w, "cmdSyKmSel");
      EXPECT_FALSE(gljz::frmSyKmSel.isLoaded()) << "the choice goes with the form";
      EXPECT_TRUE(w.isVisible());
    }
    press(w, "cmdCancel");
  });
  press(start(), "transfer");
  expectWalked(pilot);
}

TEST_F(DesktopLeaving, EscapeDoesNotStoreTheDivisionOfAccounts) {
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) {
    tick(w, "GL*CusMXJZ");
    press(w, "cmdCustomerTran");
    press(w, "cmdCancel");
  });
  pilot.then("frmYeMxSel", [this](QWidget& w) {
    press(w, "moveAllRight");
    escape(w);
    EXPECT_TRUE(w.isVisible()) << "the form has no button that gives up";
    EXPECT_EQ(number("select count(*) from GL_YeMxSel where iCusSupType=1"), 0);
    enter(w);
    EXPECT_FALSE(w.isVisible()) << "Enter confirms";
    EXPECT_GT(number("select count(*) from GL_YeMxSel where iCusSupType=1 and iYeMxType=2"), 0);
  });
  press(start(), "transfer");
  expectWalked(pilot);
}

TEST_F(DesktopLeaving, TheReportIsLeftByItsCloseBoxAndByEscape) {
  for (const bool byKey : {false, true}) {
    Autopilot pilot;
    transferWith(pilot, [byKey](QWidget& w) {
      if (byKey)
        escape(w);
      else
        w.close();
    });
    ASSERT_TRUE(start().lastResult());
    EXPECT_TRUE(start().lastResult()->success);
    EXPECT_TRUE(start().lastResult()->report);
  }
}

TEST_F(DesktopLeaving, ALeftFileOrPrintDialogPrintsNothingAndComplainsOfNothing) {
  for (const bool printers : {false, true}) {
    person_.printerFile = printers ? folder_.file("printer.pdf") : std::string();
    person_.leavesPrinter = true;
    Autopilot pilot;
    transferWith(pilot, [](QWidget& w) {
      press(w, "command2");
      EXPECT_TRUE(w.isVisible());
      press(w, "export");
      EXPECT_TRUE(w.isVisible());
      press(w, "Command3");
    });
    EXPECT_EQ(start().lastResult()->prints.size(), 0u);
    EXPECT_FALSE(QFile::exists(shown(folder_.file("printer.pdf"))));
  }
  EXPECT_THAT(person_.proposed, ElementsAre("closing-report.pdf", "closing-report.csv", "closing-report.csv"));
}

TEST_F(DesktopLeaving, APrinterThatCannotBeOpenedIsToldInTheLanguageOfTheWindow) {
  person_.printerFile = folder_.file("no-such-folder/printer.ps");
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZBG", [](QWidget& w) {
    press(w, "command2");
    press(w, "Command3");
  });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transfer");
  ASSERT_EQ(person_.complaints.size(), 1u);
  EXPECT_THAT(person_.complaints[0], HasSubstr("无法打开打印机。"));
}

TEST_F(DesktopLeaving, ALeftQuestionForAFolderOrAFileChangesNothing) {
  press(start(), "browse");
  EXPECT_EQ(utf8(child<QLineEdit>(start(), "folder").text()), serverFolder());
  EXPECT_TRUE(start().ready());
  Autopilot pilot;
  pilot.then("parameters", [](QWidget& w) {
    press(w, "save");
    escape(w);
  });
  press(start(), "preview");
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZBG", [](QWidget& w) { press(w, "Command3"); });
  pilot.then("result", [](QWidget& w) {
    press(w, "save");
    EXPECT_TRUE(w.isVisible());
    escape(w);
  });
  press(start(), "transfer");
  expectWalked(pilot);
  EXPECT_THAT(person_.proposed, ElementsAre("parameters.xml", "gljz-001-2006.html"));
}

TEST_F(DesktopLeaving, TransGLGivesThePointerBack) {
  Autopilot pilot;
  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdCancel"); });
  press(start(), "transGL");
  EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "after a cancelled one";
  EXPECT_FALSE(start().lastResult());
  EXPECT_EQ(textOf(start(), "outcome"), "已取消，没有结转任何数据。");

  pilot.then("frmTranCond", [](QWidget& w) { press(w, "cmdOk"); });
  pilot.then("frmJZBG", [](QWidget& w) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "the report waits for a person";
    press(w, "Command1");
    press(w, "Command3");
  });
  pilot.then("frmNBalance", [](QWidget& w) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    press(w, "Command2");
  });
  pilot.then("result", [](QWidget& w) { press(w, "close"); });
  press(start(), "transGL");
  expectWalked(pilot);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(start().lastResult()->success);
}

TEST_F(DesktopLeaving, EnterPressesTheDefaultButtonOfEveryDialog) {
  Autopilot pilot;
  pilot.then("parameters", enter);
  press(start(), "preview");
  pilot.then("frmTranCond", [](QWidget& w) {
    press(w, "cmdSyKmSel");
    EXPECT_TRUE(gljz::frmSyKmSel.isLoaded()) << "confirmed: the choice is kept";
    enter(w);
    EXPECT_FALSE(w.isVisible());
  });
  pilot.then("frmSyKmSel", enter);
  pilot.then("frmJZBG", [](QWidget& w) {
    press(w, "Command1");
    EXPECT_TRUE(w.isVisible()) << "Enter closed the window on top of it alone";
    enter(w);
    EXPECT_FALSE(w.isVisible());
  });
  pilot.then("frmNBalance", enter);
  pilot.then("result", enter);
  enter(start());
  expectWalked(pilot);
  EXPECT_TRUE(start().lastResult()->success);
}

}  // namespace
}  // namespace desktop::test
