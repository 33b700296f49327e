// frmTranCond, frmYeMxSel and frmSyKmSel as windows, in front of a real carry-forward.

#include <gmock/gmock.h>

#include <array>

#include "com/windows/demo_windows.h"
#include "com/windows/wide_text.h"
#include "dialogs/frm_tran_cond.h"

// after windows.h
#include <commctrl.h>

namespace windows::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using ConditionsWindowTest = DemoWindows;
using SelectionWindowsTest = DemoWindows;

int lineOf(const std::string& key) {
  return static_cast<int>(gljz::frmTranCond().indexOf(key).value());
}

TEST_F(ConditionsWindowTest, ListsTheSwitchesAsTheModelHasThem) {
  pilot_.then("frmTranCond", [&](HWND w) {
    const gljz::FrmTranCond& form = gljz::frmTranCond();
    EXPECT_EQ(text(w), "上年结转条件");
    EXPECT_EQ(text(w, idCmdOk), "确定");
    EXPECT_EQ(text(w, idCmdCancel), "取消");
    EXPECT_EQ(text(w, idCmdCustomerTran), form.cmdCustomerTran.Caption);
    ASSERT_EQ(rowCount(w, idLvCond), static_cast<int>(form.lvCond.size()));
    ASSERT_GT(form.lvCond.size(), 10u);
    for (const auto& item : form.lvCond) {
      EXPECT_EQ(cell(w, idLvCond, lineOf(item.key), 1), item.text);
      EXPECT_EQ(cell(w, idLvCond, lineOf(item.key), 2), item.partner);
      EXPECT_EQ(isTicked(w, item.key), item.checked) << item.key;
    }
    const LONG_PTR style = GetWindowLongPtrW(control(w, idLvCond), GWL_STYLE);
    EXPECT_NE(style & LVS_NOCOLUMNHEADER, 0) << "headers do not show";
    EXPECT_NE(ListView_GetExtendedListViewStyle(control(w, idLvCond)) & LVS_EX_FULLROWSELECT, 0u);
    press(w, idCmdCancel);
  });
  carry();
}

TEST_F(ConditionsWindowTest, ColumnsAreAsWideAsTheirTwips) {
  pilot_.then("frmTranCond", [&](HWND w) {
    const HDC screen = GetDC(nullptr);
    const int perInch = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    ASSERT_EQ(perInch, 96) << "the numbers below are those of such a screen";
    EXPECT_EQ(columnWidth(w, idLvCond, 0), 20);  // 300 twips
    EXPECT_LE(columnWidth(w, idLvCond, 1), 867);
    EXPECT_EQ(columnWidth(w, idLvCond, 2), 0);  // 1: it does not show
    SetWindowPos(w, nullptr, 0, 0, 1000, 500, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(columnWidth(w, idLvCond, 1), 867);  // 13000, rounded: a window with that room
    press(w, idCmdCancel);
  });
  carry();
}

// The tool tip of a button; empty when it has none.
std::string tipOf(HWND window, int id) {
  HWND tips = nullptr;
  while ((tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
    if (GetWindow(tips, GW_OWNER) != window) continue;
    std::array<wchar_t, 200> found{};
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.hwnd = window;
    tool.uId = reinterpret_cast<UINT_PTR>(control(window, id));
    tool.lpszText = found.data();
    SendMessageW(tips, TTM_GETTEXTW, found.size(), reinterpret_cast<LPARAM>(&tool));
    return narrow(found.data());
  }
  return {};
}

TEST_F(ConditionsWindowTest, TheSelectionButtonsHaveTheirCaptionAsToolTip) {
  pilot_.then("frmTranCond", [&](HWND w) {
    for (const int id : {idCmdCustomerTran, idCmdSupTran, idCmdSyKmSel}) {
      EXPECT_NE(text(w, id), "");
      EXPECT_EQ(tipOf(w, id), text(w, id));
    }
    EXPECT_EQ(tipOf(w, idCmdOk), "");
    press(w, idCmdCancel);
  });
  carry();
}

TEST_F(ConditionsWindowTest, ATickTurnsItsPartnerAndEnablesItsButton) {
  pilot_.then("frmTranCond", [&](HWND w) {
    EXPECT_FALSE(isEnabled(w, idCmdCustomerTran));
    EXPECT_FALSE(isEnabled(w, idCmdSupTran));
    EXPECT_TRUE(isEnabled(w, idCmdSyKmSel));
    EXPECT_TRUE(isTicked(w, "GL*CusYEJZ"));
    tick(w, "GL*CusMXJZ");
    EXPECT_FALSE(isTicked(w, "GL*CusYEJZ"));
    EXPECT_TRUE(isEnabled(w, idCmdCustomerTran));
    tick(w, "GL*CusYEJZ");
    EXPECT_FALSE(isTicked(w, "GL*CusMXJZ"));
    EXPECT_FALSE(isEnabled(w, idCmdCustomerTran));
    tick(w, "GL*SupMXJZ");
    EXPECT_TRUE(isEnabled(w, idCmdSupTran));
    tick(w, "GL*Clear", false);
    EXPECT_FALSE(isEnabled(w, idCmdSyKmSel));
    press(w, idCmdCancel);
  });
  carry();
}

TEST_F(ConditionsWindowTest, ASwitchThatCannotBeClearedStaysTicked) {
  pilot_.then("frmTranCond", [&](HWND w) {
    tick(w, "GL*OpeningInput", false);
    EXPECT_TRUE(isTicked(w, "GL*OpeningInput"));
    EXPECT_TRUE(gljz::frmTranCond().lvCond[static_cast<std::size_t>(lineOf("GL*OpeningInput"))].checked);
    press(w, idCmdCancel);
  });
  carry();
}

TEST_F(ConditionsWindowTest, ADisabledButtonTakesNoClick) {
  pilot_.then("frmTranCond", [&](HWND w) {
    SendMessageW(w, WM_COMMAND, MAKEWPARAM(idCmdCustomerTran, BN_CLICKED),
                 reinterpret_cast<LPARAM>(control(w, idCmdCustomerTran)));
    EXPECT_EQ(windows_.standing().size(), 1u) << "no dialog came";
    press(w, idCmdCancel);
  });
  carry();
}

TEST_F(ConditionsWindowTest, TheSpaceBarTicksTheLineWithTheFocus) {
  const std::string key = "GL*CusMXJZ";
  pilot_.then("frmTranCond", [&](HWND w) {
    ASSERT_EQ(GetFocus(), control(w, idLvCond)) << "the list has the focus at first";
    ListView_SetItemState(control(w, idLvCond), lineOf(key), LVIS_FOCUSED, LVIS_FOCUSED);
    type(VK_SPACE);
  });
  pilot_.then("frmTranCond", [&](HWND w) {
    EXPECT_TRUE(isTicked(w, key));
    EXPECT_TRUE(isEnabled(w, idCmdCustomerTran));
    press(w, idCmdCancel);
  });
  carry();
}

TEST_F(ConditionsWindowTest, TheTabKeyGoesRoundTheControlsThatTakeInput) {
  std::vector<int> visited;
  for (int i = 0; i < 4; ++i)
    pilot_.then("frmTranCond", [&](HWND) {
      visited.push_back(GetDlgCtrlID(GetFocus()));
      type(VK_TAB);
    });
  pilot_.then("frmTranCond", [&](HWND w) {
    visited.push_back(GetDlgCtrlID(GetFocus()));
    press(w, idCmdCancel);
  });
  carry();
  EXPECT_THAT(visited, ElementsAre(idLvCond, idCmdSyKmSel, idCmdOk, idCmdCancel, idLvCond));
}

TEST_F(ConditionsWindowTest, TheEnterKeyConfirms) {
  pilot_.then("frmTranCond", [&](HWND w) {
    tick(w, "GL*PersonMXJZ");
    type(VK_RETURN);
  });
  pilot_.then("frmJZBG", [](HWND w) { press(w, idCommand3); });
  const host::RunResult result = carry();
  EXPECT_TRUE(result.success);
  EXPECT_THAT(result.parameters, HasSubstr("ID=\"GL*PersonMXJZ\" Check=\"True\""));
}

TEST_F(ConditionsWindowTest, EscapeTheCloseBoxAndTheButtonLeaveWithoutCarrying) {
  const std::string balances = "select count(*) from gl_accsum where iyear=2006 and mb<>0";
  const std::int64_t before = number(balances);
  const std::vector<Pilot::Step> ways = {[](HWND) { type(VK_ESCAPE); }, [](HWND w) { SendMessageW(w, WM_CLOSE, 0, 0); },
                                         [](HWND w) { press(w, idCmdCancel); }};
  for (const Pilot::Step& leave : ways) {
    pilot_.then("frmTranCond", leave);
    const host::RunResult result = carry();
    EXPECT_FALSE(result.report);
    EXPECT_EQ(result.parameters, "");
  }
  EXPECT_EQ(number(balances), before);
}

TEST_F(ConditionsWindowTest, TheFirstLineStandsOnItsOwnGround) {
  pilot_.then("frmTranCond", [&](HWND w) {
    const HWND list = control(w, idLvCond);
    EXPECT_EQ(gljz::frmTranCond().lvCond[0].backColour, 0xE8E8E8u);
    ASSERT_EQ(ListView_GetTopIndex(list), 0) << "the list begins with its first line";
    const Picture drawn = drawingOf(list);
    const auto ground = [&](int line) {
      RECT row{};
      ListView_GetItemRect(list, line, &row, LVIR_BOUNDS);
      return drawn.at(drawn.width / 2, static_cast<int>(row.top) + 1);
    };
    EXPECT_EQ(ground(0), 0xE8E8E8u);
    EXPECT_EQ(ground(1), 0xFFFFFFu);
    press(w, idCmdCancel);
  });
  carry();
}

TEST_F(SelectionWindowsTest, BothDecideWhatIsCarried) {
  std::vector<std::string> offered;
  pilot_.then("frmTranCond", [](HWND w) {
    tick(w, "GL*CusMXJZ");
    press(w, idCmdCustomerTran);
    EXPECT_TRUE(IsWindowVisible(w)) << "the conditions are still there";
    press(w, idCmdSyKmSel);
    press(w, idCmdOk);
  });
  pilot_.then("frmYeMxSel", [&](HWND w) {
    EXPECT_EQ(text(w), "总账系统");
    EXPECT_EQ(text(w, idLeftTitle), "按余额结转科目：");
    EXPECT_EQ(text(w, idRightTitle), "按明细结转科目：");
    EXPECT_THAT(text(w, idLblNote), HasSubstr("\r\n\r\n"));
    offered = entries(w, idLeftList);
    ASSERT_GE(offered.size(), 3u);
    press(w, idMoveRight);
    EXPECT_EQ(entries(w, idLeftList), offered) << "nothing is selected";
    select(w, idLeftList, {0, 2});
    press(w, idMoveRight);
    EXPECT_THAT(entries(w, idRightList), ElementsAre(offered[0], offered[2]));
    select(w, idRightList, {0});
    press(w, idMoveLeft);
    EXPECT_EQ(entries(w, idLeftList).back(), offered[0]) << "a moved entry is the last one";
    press(w, idMoveAllRight);
    EXPECT_THAT(entries(w, idLeftList), IsEmpty());
    press(w, idMoveAllLeft);
    EXPECT_THAT(entries(w, idRightList), IsEmpty());
    press(w, idCmdRefresh);
    EXPECT_EQ(entries(w, idLeftList), offered);
    select(w, idLeftList, {1});
    SendMessageW(w, WM_COMMAND, MAKEWPARAM(idLeftList, LBN_DBLCLK), reinterpret_cast<LPARAM>(control(w, idLeftList)));
    EXPECT_THAT(entries(w, idRightList), ElementsAre(offered[1]));
    SendMessageW(w, WM_CLOSE, 0, 0);  // the close box confirms
  });
  pilot_.then("frmSyKmSel", [](HWND w) {
    EXPECT_EQ(text(w, idLabel3), "    此操作自动将选中损益科目及下级科目借贷方金额及余额在新的会计年度全部清零。");
    EXPECT_GT(entries(w, idLeftList).size(), 0u);
    press(w, idMoveAllRight);
    press(w, idCmdOk);
  });
  pilot_.then("frmJZBG", [](HWND w) { press(w, idCommand3); });
  carry();
  const std::string code = offered[1].substr(0, offered[1].find(' '));
  const std::string byDetail = "select count(*) from GL_YeMxSel where iCusSupType=1 and iYeMxType=2";
  EXPECT_EQ(number(byDetail), 1);
  EXPECT_EQ(number(byDetail + " and ccode='" + code + "'"), 1);
}

TEST_F(SelectionWindowsTest, TheArrowTowardsTheOtherListMovesWhatIsSelected) {
  std::vector<std::string> offered;
  pilot_.then("frmTranCond", [](HWND w) {
    tick(w, "GL*SupMXJZ");
    press(w, idCmdSupTran);
    press(w, idCmdCancel);
  });
  pilot_.then("frmYeMxSel", [&](HWND w) {
    offered = entries(w, idLeftList);
    ASSERT_GE(offered.size(), 2u);
    ASSERT_EQ(GetFocus(), control(w, idLeftList));
    select(w, idLeftList, {0});
    type(VK_RIGHT);
    type(VK_RIGHT);  // the place of the moved one stays selected
  });
  pilot_.then("frmYeMxSel", [&](HWND w) {
    EXPECT_THAT(entries(w, idRightList), ElementsAre(offered[0], offered[1]));
    SetFocus(control(w, idRightList));
    select(w, idRightList, {1});
    type(VK_LEFT);
  });
  pilot_.then("frmYeMxSel", [&](HWND w) {
    EXPECT_THAT(entries(w, idRightList), ElementsAre(offered[0]));
    type(VK_RETURN);
  });
  carry();
}

TEST_F(SelectionWindowsTest, ClosingTheChoiceOfClearedAccountsForgetsIt) {
  std::vector<std::string> before, again;
  pilot_.then("frmTranCond", [](HWND w) {
    press(w, idCmdSyKmSel);
    press(w, idCmdSyKmSel);
    press(w, idCmdCancel);
  });
  pilot_.then("frmSyKmSel", [&](HWND w) {
    before = entries(w, idLeftList);
    press(w, idMoveAllRight);
    SendMessageW(w, WM_CLOSE, 0, 0);
  });
  pilot_.then("frmSyKmSel", [&](HWND w) {
    again = entries(w, idLeftList);
    EXPECT_THAT(entries(w, idRightList), IsEmpty());
    press(w, idCmdOk);
  });
  carry();
  EXPECT_EQ(again, before);
}

TEST_F(SelectionWindowsTest, AFailureLeavesByEveryWindowThatStands) {
  execute("TqData_001_2006", "drop table GL_YeMxSel");
  pilot_.then("frmTranCond", [](HWND w) {
    tick(w, "GL*CusMXJZ");
    press(w, idCmdCustomerTran);
  });
  const host::RunResult result = carry();
  ASSERT_TRUE(result.uncaught) << "nobody in the dialog answers the failure";
  EXPECT_THAT(*result.uncaught, HasSubstr("GL_YeMxSel"));
}

TEST_F(SelectionWindowsTest, EveryDialogSpeaksTheLanguageOfTheRun) {
  options_.language = "en-US";
  pilot_.then("frmTranCond", [](HWND w) {
    tick(w, "GL*CusMXJZ");
    press(w, idCmdCustomerTran);
    press(w, idCmdOk);
  });
  pilot_.then("frmYeMxSel", [](HWND w) {
    EXPECT_EQ(text(w, idFrame1), "Choose how customer accounts are carried");
    EXPECT_EQ(text(w, idCmdRefresh), "Choose anew");
    press(w, idCmdOk);
  });
  pilot_.then("frmJZSN", [](HWND w) { EXPECT_EQ(text(w, idLabel1 + 1), "Account totals..."); });
  pilot_.then("frmJZBG", [](HWND w) {
    EXPECT_EQ(text(w), "Carry-forward report");
    EXPECT_EQ(text(w, idCommand3), "Confirm");
    press(w, idCommand1);
    press(w, idCommand3);
  });
  pilot_.then("frmNBalance", [](HWND w) {
    EXPECT_EQ(text(w, idCommand3), "Print");
    press(w, idCommand2);
  });
  carry();
}

}  // namespace
}  // namespace windows::test
