// frmJZSN, frmJZBG and frmNBalance as windows: the run inside its timer event, and what comes behind it.

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "com/windows/demo_windows.h"
#include "com/windows/modal_window.h"
#include "com/windows/wide_text.h"
#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "host/utf8_path.h"

namespace windows::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class RunWindowsTest : public DemoWindows {
protected:
  RunWindowsTest() {
    pilot_.then("frmTranCond", [](HWND w) { press(w, idCmdOk); });
  }
  // As the person names it: UTF-8.
  std::string fileOf(const std::string& name) const {
    return host::textOf(host::pathOf(folder_.text()) / host::pathOf(name));
  }
  static std::string read(const std::string& file) {
    std::ifstream in(host::pathOf(file), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
  }
};

TEST_F(RunWindowsTest, TheRunHappensInsideTheProgressWindowWhichStaysPainted) {
  HWND progress = nullptr;
  int inRun = 0;
  pilot_.then("frmJZSN", [&](HWND w) {
    ++inRun;  // an event that the run has let through, or the one before its timer
    progress = w;
    EXPECT_EQ(text(w), "结转上年余额");
    EXPECT_EQ(text(w, idLabel1), "结转上年之前的检查...");
    EXPECT_EQ(text(w, idLabel1 + 7), "结转其它表...");
    SendMessageW(w, WM_CLOSE, 0, 0);
    press(w, idCommand1);
    press(w, idCommand2);
    EXPECT_TRUE(IsWindowVisible(w)) << "nothing stops a run from its form";
  });
  pilot_.then("frmJZBG", [&](HWND w) {
    ASSERT_EQ(windows_.standing().size(), 2u);
    EXPECT_EQ(GetWindow(w, GW_OWNER), progress) << "the report stands on the form of the run";
    EXPECT_FALSE(IsWindowEnabled(progress));
    EXPECT_TRUE(IsWindowVisible(progress));
    EXPECT_EQ(text(progress, idLabel2), "Y");
    EXPECT_EQ(text(progress, idLabel2 + 7), "Y") << "it shows what has come until now";
    EXPECT_EQ(text(progress, idLabel3), gljz::frmJZSN().Label3());
    press(w, idCommand3);
  });
  const host::RunResult result = carry();
  EXPECT_TRUE(result.success);
  EXPECT_EQ(inRun, 1);
  ASSERT_EQ(result.steps.size(), 8u);
  EXPECT_EQ(result.steps[7].mark, "Y");
  EXPECT_GT(number("select count(*) from gl_accsum where iyear=2006 and mb<>0"), 0);
}

TEST_F(RunWindowsTest, TheReportShowsTheGridAndTheCounts) {
  pilot_.then("frmJZBG", [&](HWND w) {
    const gljz::FrmJZBG& form = gljz::frmJZBG();
    EXPECT_EQ(text(w), "结转报告");
    EXPECT_EQ(text(w, idLabel1), "正确结转科目数：");
    EXPECT_EQ(text(w, idLabel2), form.Label2.Caption);
    EXPECT_EQ(text(w, idLabel4), form.Label4.Caption);
    EXPECT_NE(text(w, idLabel2), "");
    ASSERT_EQ(rowCount(w, idGrid1), static_cast<int>(form.Grid1.rows.size()) - 1);
    ASSERT_EQ(columnCount(w, idGrid1), static_cast<int>(form.Grid1.rows[0].size()));
    for (int column = 0; column < columnCount(w, idGrid1); ++column) {
      const auto index = static_cast<std::size_t>(column);
      EXPECT_EQ(columnTitle(w, idGrid1, column), form.Grid1.rows[0][index]);
      EXPECT_GE(columnWidth(w, idGrid1, column), form.Grid1.columnWidths[index] * 96 / 1440);
    }
    for (int row = 0; row < rowCount(w, idGrid1); ++row)
      for (int column = 0; column < columnCount(w, idGrid1); ++column)
        EXPECT_EQ(cell(w, idGrid1, row, column),
                  form.Grid1.rows[static_cast<std::size_t>(row) + 1][static_cast<std::size_t>(column)]);
    press(w, idCommand3);
  });
  carry();
}

TEST_F(RunWindowsTest, AllWaysOutOfTheReportConfirmIt) {
  const std::vector<Pilot::Step> ways = {[](HWND w) { SendMessageW(w, WM_CLOSE, 0, 0); }, [](HWND) { type(VK_RETURN); },
                                         [](HWND) { type(VK_ESCAPE); }};
  for (const Pilot::Step& leave : ways) {
    pilot_.then("frmJZBG", leave);
    const host::RunResult result = carry();
    EXPECT_TRUE(result.success);
    EXPECT_FALSE(gljz::frmJZBG.isLoaded());
    pilot_.then("frmTranCond", [](HWND w) { press(w, idCmdOk); });
  }
  pilot_.then("frmJZBG", [](HWND w) { press(w, idCommand3); });
  carry();
}

TEST_F(RunWindowsTest, WhatWasLeftOutShowsOverTheReportAndIsHiddenByEveryWayOut) {
  int shown = 0;
  pilot_.then("frmJZBG", [&](HWND w) {
    for (int i = 0; i < 4; ++i) {
      press(w, idCommand1);
      EXPECT_TRUE(IsWindowVisible(w)) << "the report is still there";
      EXPECT_TRUE(IsWindowEnabled(w));
      EXPECT_TRUE(gljz::frmNBalance.isLoaded()) << "hidden, not destroyed";
      EXPECT_FALSE(gljz::frmNBalance().continueChosen);
    }
    press(w, idCommand3);
  });
  const std::vector<Pilot::Step> ways = {[](HWND w) { press(w, idCommand2); },
                                         [](HWND w) { SendMessageW(w, WM_CLOSE, 0, 0); }, [](HWND) { type(VK_ESCAPE); },
                                         [](HWND) { type(VK_RETURN); }};
  for (const Pilot::Step& leave : ways)
    pilot_.then("frmNBalance", [&shown, leave](HWND w) {
      ++shown;
      EXPECT_FALSE(isShown(w, idCommand1)) << "there is nothing to go on with";
      EXPECT_EQ(text(w), "无对应记录");
      EXPECT_EQ(text(w, idCommand2), "关闭");
      EXPECT_EQ(columnCount(w, idGrid1), 4);
      EXPECT_GT(rowCount(w, idGrid1), 0);
      leave(w);
    });
  carry();
  EXPECT_EQ(shown, 4);
}

TEST_F(RunWindowsTest, BothGridsPrintIntoTheFileThatThePersonNames) {
  pilot_.then("frmJZBG", [&](HWND w) {
    person_.file = folder_.file("report.txt");
    press(w, idCommand2);
    press(w, idCommand1);
    press(w, idCommand3);
  });
  pilot_.then("frmNBalance", [&](HWND w) {
    person_.file = fileOf("未结转 𠮷.txt");
    press(w, idCommand3);
    press(w, idCommand2);
  });
  const host::RunResult result = carry();
  EXPECT_THAT(person_.offered, ElementsAre("closing-report", "left-out"));
  EXPECT_THAT(person_.complaints, ElementsAre());
  EXPECT_EQ(result.prints.size(), 2u);
  EXPECT_THAT(read(folder_.file("report.txt")), HasSubstr("1001"));
  EXPECT_THAT(read(fileOf("未结转 𠮷.txt")), HasSubstr("1901"));
}

TEST_F(RunWindowsTest, WhoNamesNoFilePrintsNothing) {
  pilot_.then("frmJZBG", [&](HWND w) {
    press(w, idCommand2);
    person_.printers = true;
    press(w, idCommand2);
    press(w, idCommand3);
  });
  const host::RunResult result = carry();
  EXPECT_EQ(result.prints.size(), 0u);
  EXPECT_THAT(person_.complaints, ElementsAre());
}

TEST_F(RunWindowsTest, APrintThatFailsIsToldAndTheReportStays) {
  pilot_.then("frmJZBG", [&](HWND w) {
    person_.file = folder_.file("no-such-folder/report.txt");
    press(w, idCommand2);
    EXPECT_TRUE(IsWindowVisible(w));
    press(w, idCommand3);
  });
  EXPECT_TRUE(carry().success);
  ASSERT_EQ(person_.complaints.size(), 1u);
  EXPECT_THAT(person_.complaints[0], HasSubstr("no-such-folder"));
}

TEST_F(RunWindowsTest, AStopAtACheckLeavesNoWindow) {
  execute("TqData_001_2005", "update gl_mend set bflag=0 where iperiod=12 and iyear=2005");
  const host::RunResult result = carry();
  EXPECT_FALSE(result.success);
  EXPECT_FALSE(result.report);
}

// Windows of the program around: a button that carries forward, and its frame.
class OwnerTest : public RunWindowsTest {
protected:
  OwnerTest()
      : owner_(CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 300, 200, nullptr,
                               nullptr, nullptr, nullptr)) {
    SetActiveWindow(owner_);
  }
  ~OwnerTest() override { DestroyWindow(owner_); }
  HWND owner_;
};

TEST_F(OwnerTest, TakesNoInputWhileADialogStandsAndIsActiveAgainBehindIt) {
  pilot_.then("frmJZSN", [&](HWND w) {
    EXPECT_EQ(GetWindow(w, GW_OWNER), owner_);
    EXPECT_FALSE(IsWindowEnabled(owner_));
  });
  pilot_.then("frmJZBG", [&](HWND w) {
    EXPECT_FALSE(IsWindowEnabled(owner_));
    press(w, idCommand3);
    EXPECT_FALSE(IsWindowEnabled(owner_)) << "the form of the run still stands";
  });
  ASSERT_TRUE(IsWindowEnabled(owner_));
  carry();
  EXPECT_TRUE(IsWindowEnabled(owner_));
  EXPECT_EQ(GetActiveWindow(), owner_);
}

TEST_F(OwnerTest, AProgramThatIsToldToQuitIsToldSoBehindTheDialog) {
  Pilot& pilot = pilot_;
  pilot.then("frmJZBG", [](HWND) { PostQuitMessage(7); });
  const host::RunResult result = carry();
  EXPECT_TRUE(result.success) << "what was carried is carried";
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7u);
}

// A program that is told to quit before the run has begun: its progress window goes before the timer can fire.
using QuitTest = DemoWindows;

TEST_F(QuitTest, ARunThatIsOwedIsCarriedWithoutAWindow) {
  pilot_.then("frmTranCond", [](HWND w) {
    press(w, idCmdOk);
    PostQuitMessage(7);
  });
  const host::RunResult result = carry();
  EXPECT_TRUE(result.success);
  EXPECT_GT(number("select count(*) from gl_accsum where iyear=2006 and mb<>0"), 0);
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7u);
}

TEST_F(QuitTest, TheConditionsAreLeft) {
  pilot_.then("frmTranCond", [](HWND) { PostQuitMessage(7); });
  const host::RunResult result = carry();
  EXPECT_FALSE(result.success);
  EXPECT_EQ(number("select count(*) from gl_accsum where iyear=2006 and mb<>0"), 0);
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

}  // namespace
}  // namespace windows::test
