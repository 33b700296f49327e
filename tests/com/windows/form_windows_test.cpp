// FormWindows as the system meets it, and the windows over models that no run has filled.

#include "com/windows/form_windows.h"

#include <gmock/gmock.h>

#include <chrono>
#include <fstream>
#include <iterator>

#include "com/windows/demo_windows.h"
#include "com/windows/wide_text.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "dialogs/frm_two.h"
#include "host/program_folder.h"
#include "host/services.h"
#include "host/utf8_path.h"
#include "platform/surroundings.h"

// after windows.h
#include <commctrl.h>

namespace windows::test {
namespace {

using testing::ElementsAre;

class FormWindowsTest : public testing::Test {
protected:
  FormWindowsTest() {
    surroundings_.forms = &forms_;
    platform::setSurroundings(&surroundings_);
  }
  ~FormWindowsTest() override {
    EXPECT_THAT(pilot_.left(), ElementsAre());
    EXPECT_THAT(pilot_.failures(), ElementsAre());
    platform::setSurroundings(nullptr);
  }
  static FormWindows::Settings settings(Ask* ask, bool showWindows) {
    return {"C:/program", [] { return std::string("en-US"); }, showWindows, nullptr, ask};
  }

  Person person_;
  FormWindows forms_{settings(&person_, true)};
  Pilot pilot_{*forms_.dialogs()};
  platform::Surroundings surroundings_;
};

TEST_F(FormWindowsTest, AQuestionGivesTheNumberOfThePressedButton) {
  const auto answerOf = [&](const Pilot::Step& step) {
    gljz::FrmTwo form;
    form.lblNote.Caption = "one\r\n\r\ntwo";
    form.lblNote.ToolTipText = form.lblNote.Caption;
    form.Command1.Caption = "first";
    pilot_.then("frmTwo", step);
    form.ShowModal();
    EXPECT_FALSE(form.visible());
    return static_cast<int>(form.answer);
  };
  EXPECT_EQ(answerOf([](HWND w) {
              EXPECT_EQ(text(w, idLblNote), "one\r\n\r\ntwo");
              EXPECT_EQ(text(w, idCommand1), "first");
              press(w, idCommand1);
            }),
            1);
  EXPECT_EQ(answerOf([](HWND w) { press(w, idCommand2); }), 2);
  EXPECT_EQ(answerOf([](HWND) { type(VK_RETURN); }), 1) << "the default button";
  EXPECT_EQ(answerOf([](HWND w) { SendMessageW(w, WM_CLOSE, 0, 0); }), 0) << "closing answers nothing";
  EXPECT_EQ(answerOf([](HWND) { type(VK_ESCAPE); }), 0);
}

TEST_F(FormWindowsTest, GivesTheFolderOfTheProgram) {
  EXPECT_EQ(forms_.ProgramFolder(), "C:/program");
}

TEST_F(FormWindowsTest, TheProgressWindowFollowsColoursMarksCaptionAndPointer) {
  gljz::FrmJZSN form;  // nobody has loaded it: its timer is off, and no run begins
  const auto inkOf = [](HWND w, int id) {
    const HDC device = GetDC(w);
    SendMessageW(w, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(device), reinterpret_cast<LPARAM>(control(w, id)));
    const COLORREF ink = GetTextColor(device);
    ReleaseDC(w, device);
    return ink;
  };
  const auto pointerIsHourglass = [](HWND w) {
    SendMessageW(w, WM_SETCURSOR, reinterpret_cast<WPARAM>(w), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    return GetCursor() == LoadCursorW(nullptr, IDC_WAIT);
  };
  pilot_.then("frmJZSN", [&](HWND w) {
    EXPECT_EQ(inkOf(w, idLabel1), RGB(0, 0, 0));
    EXPECT_EQ(text(w, idLabel2), "");
    EXPECT_FALSE(pointerIsHourglass(w));
    form.colourStep(0, gljz::red);
    form.markStep(1);
    form.setLabel3("1131 & 国内应收款");
    constexpr int hourglass = 11;
    form.setMousePointer(hourglass);
    Sleep(60);  // a repaint for each change would be too many
    forms_.DoEvents();
    EXPECT_EQ(inkOf(w, idLabel1), RGB(255, 0, 0));
    EXPECT_EQ(inkOf(w, idLabel1 + 1), RGB(0, 0, 0));
    EXPECT_EQ(text(w, idLabel2 + 1), "Y");
    EXPECT_EQ(text(w, idLabel3), "1131 & 国内应收款");
    EXPECT_TRUE(pointerIsHourglass(w));
    form.setMousePointer(0);
    forms_.ScreenPointer(hourglass);
    EXPECT_TRUE(pointerIsHourglass(w)) << "the screen's pointer goes before the form's";
    forms_.ScreenPointer(0);
    form.Hide();
  });
  form.ShowModal();
}

class GridTest : public FormWindowsTest {
protected:
  void show(const Pilot::Step& look) {
    pilot_.then("frmNBalance", [look](HWND w) {
      look(w);
      press(w, idCommand2);
    });
    form_.ShowModal();
  }
  gljz::FrmNBalance form_;
};

TEST_F(GridTest, ColumnsAreAsWideAsTheirTwipsAndWiderWhereTheirTextsNeedIt) {
  form_.Grid1.rows = {{"a", "b", "c"}, {"1", "2", "a text that needs more room than eight hundred twips"}};
  form_.Grid1.columnWidths = {800, 2200, 800};
  show([](HWND w) {
    EXPECT_EQ(columnWidth(w, idGrid1, 0), 53);
    EXPECT_EQ(columnWidth(w, idGrid1, 1), 147);
    EXPECT_GT(columnWidth(w, idGrid1, 2), 200);
    EXPECT_LE(columnWidth(w, idGrid1, 2), 420);
  });
}

TEST_F(GridTest, EveryColumnStandsOnItsSide) {
  form_.Grid1.rows = {{"a", "b", "c", "d"}, {"1", "2", "3", "4"}};
  form_.Grid1.alignments = {gljz::Alignment::right, gljz::Alignment::left, gljz::Alignment::centred};
  show([](HWND w) {
    ASSERT_EQ(columnCount(w, idGrid1), 4);
    EXPECT_EQ(columnTitle(w, idGrid1, 0), "a");
    EXPECT_EQ(cell(w, idGrid1, 0, 0), "1");
    EXPECT_EQ(columnSide(w, idGrid1, 0), LVCFMT_RIGHT);
    EXPECT_EQ(columnSide(w, idGrid1, 1), LVCFMT_LEFT);
    EXPECT_EQ(columnSide(w, idGrid1, 2), LVCFMT_CENTER);
    EXPECT_EQ(columnSide(w, idGrid1, 3), LVCFMT_LEFT);
  });
}

TEST_F(GridTest, EveryOtherRowStandsOnTheShade) {
  form_.Grid1.rows = {{"a"}, {"1"}, {"2"}, {"3"}};
  form_.Grid1.shadeColour = platform::rgb(247, 237, 236);
  show([](HWND w) {
    const HWND list = control(w, idGrid1);
    ListView_SetItemState(list, -1, 0, LVIS_FOCUSED | LVIS_SELECTED);
    const Picture drawn = drawingOf(list);
    const auto ground = [&](int line) {
      RECT row{};
      ListView_GetItemRect(list, line, &row, LVIR_BOUNDS);
      return drawn.at(static_cast<int>(row.right) - 4, static_cast<int>(row.top + row.bottom) / 2);
    };
    EXPECT_EQ(ground(0), 0xFFFFFFu);
    EXPECT_EQ(ground(1), 0xF7EDECu);
    EXPECT_EQ(ground(2), 0xFFFFFFu);
  });
}

TEST_F(GridTest, ShortRowsAndAnEmptyGridShowAsTheyAre) {
  form_.Grid1.rows = {{"a", "b"}, {"1"}};
  show([](HWND w) {
    EXPECT_EQ(cell(w, idGrid1, 0, 0), "1");
    EXPECT_EQ(cell(w, idGrid1, 0, 1), "");
  });
  form_.Grid1.rows.clear();
  show([](HWND w) {
    EXPECT_EQ(rowCount(w, idGrid1), 0);
    press(w, idCommand3);
    EXPECT_EQ(columnCount(w, idGrid1), 0);
  });
  EXPECT_THAT(person_.offered, ElementsAre()) << "a grid without rows does not print";
}

TEST_F(GridTest, AHundredThousandRowsAreThereAtOnce) {
  constexpr int count = 100'000;
  form_.Grid1.rows.assign(1, {"code", "name", "why"});
  for (int i = 0; i < count; ++i)
    form_.Grid1.rows.push_back({std::to_string(i), "科目 " + std::to_string(i), "新年度没有此科目"});
  const auto start = std::chrono::steady_clock::now();
  show([&](HWND w) {
    const std::chrono::duration<double> opened = std::chrono::steady_clock::now() - start;
    RecordProperty("milliseconds", static_cast<int>(opened.count() * 1000));
    EXPECT_LT(opened.count(), 2);
    EXPECT_EQ(rowCount(w, idGrid1), count);
    const HWND list = control(w, idGrid1);
    ListView_EnsureVisible(list, count - 1, FALSE);
    UpdateWindow(list);
    EXPECT_GT(ListView_GetTopIndex(list), count - 100);
    EXPECT_EQ(cell(w, idGrid1, count - 1, 1), "科目 99999");
    EXPECT_EQ(cell(w, idGrid1, 54321, 0), "54321");
  });
}

TEST_F(GridTest, AFailureOfAButtonIsToldAndTheDialogStays) {
  form_.Grid1.rows = {{"a"}, {"1"}};
  show([&](HWND w) {
    press(w, idCommand3);  // there are no services to print with
    EXPECT_TRUE(IsWindowVisible(w));
    EXPECT_EQ(person_.complaints.size(), 1u);
  });
}

TEST_F(FormWindowsTest, APrintReadsTheTablesOfTheRunsServices) {
  const host::ProgramFolder layouts;
  const host::test::TemporaryFolder folder;
  gljz::run.m_pubCls = host::makeServices(
      {{}, nullptr, std::make_shared<host::Messages>("zh-CN"), "zh-CN", "", folder.file("format.db")});
  platform::FormatDatabase& tables = gljz::run.m_pubCls->FormatDb();
  const auto fill = [&tables](const std::string& table, int columns, const std::string& text) {
    std::string list;
    for (int i = 1; i <= columns; ++i) list += (i > 1 ? ",P" : "P") + std::to_string(i) + " String";
    tables.Execute("CREATE TABLE " + table + " (" + list + ")");
    const auto rows = tables.OpenTable(table);
    rows->AddNew();
    rows->SetField("P1", platform::Value(text));
    rows->Update();
  };
  fill("Head", 7, "青石商贸");
  fill("Foot", 6, "");
  const std::vector<std::vector<std::string>> grid = {{"科目"}, {"1001"}};
  platform::PrintControl::Job job;
  job.formatDatabase = "a database that only its own client can open";
  job.headLayout = layouts.file("glrep/zh-CN/dzerru.rep");
  job.headTable = "Head";
  job.footLayout = layouts.file("glrep/zh-CN/dzerrd.rep");
  job.footTable = "Foot";
  job.grid = &grid;
  person_.file = folder.file("print.txt");
  EXPECT_EQ(forms_.print().Print(job), 0);
  EXPECT_THAT(person_.complaints, ElementsAre());
  std::ifstream in(host::pathOf(person_.file), std::ios::binary);
  const std::string printed{std::istreambuf_iterator<char>(in), {}};
  EXPECT_THAT(printed, testing::HasSubstr("青石商贸"));
  EXPECT_THAT(printed, testing::HasSubstr("1001"));
  gljz::run.m_pubCls = nullptr;
}

TEST_F(FormWindowsTest, WithoutAWindowOnlyPaintingRuns) {
  const HWND owner = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 100, 100, nullptr,
                                     nullptr, nullptr, nullptr);
  UpdateWindow(owner);
  InvalidateRect(owner, nullptr, TRUE);
  PostMessageW(owner, WM_LBUTTONDOWN, MK_LBUTTON, 0);
  forms_.DoEvents();
  EXPECT_FALSE(GetUpdateRect(owner, nullptr, FALSE)) << "it has been painted";
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, owner, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE)) << "the click still waits";
  DestroyWindow(owner);
}

TEST(FormWindowsWithoutADesktop, AnswersTheDialogsAsTheyStand) {
  FormWindows forms({"C:/program", {}, false, nullptr, nullptr});
  EXPECT_EQ(forms.dialogs(), nullptr);
  platform::Surroundings surroundings;
  surroundings.forms = &forms;
  platform::setSurroundings(&surroundings);
  gljz::FrmTwo question;
  question.ShowModal();
  EXPECT_EQ(question.answer, 0);
  gljz::FrmNBalance leftOut;
  leftOut.ShowModal();
  EXPECT_FALSE(leftOut.visible());
  constexpr int operatorLeft = 1003;
  EXPECT_EQ(forms.print().Print({}), operatorLeft);
  platform::setSurroundings(nullptr);
}

TEST(DesktopStation, IsThereOnTheVisibleStationOnly) {
  EXPECT_TRUE(desktopIsThere());
  const HWINSTA visible = GetProcessWindowStation();
  const HWINSTA hidden = CreateWindowStationW(L"gljz-test", 0, GENERIC_ALL, nullptr);
  ASSERT_NE(hidden, nullptr);
  ASSERT_TRUE(SetProcessWindowStation(hidden));
  EXPECT_FALSE(desktopIsThere()) << "a service's station";
  ASSERT_TRUE(SetProcessWindowStation(visible));
  CloseWindowStation(hidden);
  EXPECT_TRUE(desktopIsThere());
}

TEST(WideText, IsLosslessBothWays) {
  for (const std::string text : {"", "abc", "结转上年余额", "\xF0\xA0\xAE\xB7\xF0\x9F\x98\x80", "a\xC3\xA9"})
    EXPECT_EQ(narrow(wide(text)), text);
  EXPECT_EQ(wide("\xF0\xA0\xAE\xB7"), L"\xD842\xDFB7");
  EXPECT_EQ(wide(std::string("a\0b", 3)).size(), 3u);
  EXPECT_EQ(wide("\xFF"), L"\xFFFD");
}

}  // namespace
}  // namespace windows::test
