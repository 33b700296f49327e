#include "double_list_view.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "control_ids.h"
#include "controls.h"
#include "dialogs/controls.h"
#include "host/messages.h"
#include "wide_text.h"

namespace windows {

using gljz::DoubleList;

namespace {

struct Move {
  int id;
  const char *sign, *tip;
};
constexpr Move moves[] = {{idMoveRight, ">", "List.Right"},
                          {idMoveAllRight, ">>", "List.AllRight"},
                          {idMoveLeft, "<", "List.Left"},
                          {idMoveAllLeft, "<<", "List.AllLeft"}};

std::wstring entryOf(HWND list, int index) {
  const LRESULT length = SendMessageW(list, LB_GETTEXTLEN, static_cast<WPARAM>(index), 0);
  if (length == LB_ERR) return {};
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
  return text;
}

bool holds(HWND list, const DoubleList::Entries& entries) {
  if (static_cast<std::size_t>(SendMessageW(list, LB_GETCOUNT, 0, 0)) != entries.size()) return false;
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (entryOf(list, static_cast<int>(i)) != wide(entries[i])) return false;
  return true;
}

}  // namespace

// In the order of the Tab key, which is that of the screen.
DoubleListView::DoubleListView(Controls& controls, DoubleList& list, const std::string& leftTitle,
                               const std::string& rightTitle, const host::Messages& words)
    : controls_(controls), list_(list) {
  leftTitle_ = controls_.addLabel(leftTitle, idLeftTitle);
  left_ = addList(idLeftList);
  for (std::size_t i = 0; i < std::size(moves); ++i) {
    gljz::Button state{moves[i].sign};
    state.ToolTipText = words.text(std::string("Gljz.Host.Desktop.") + moves[i].tip);
    buttons_[i] = controls_.addButton(state, moves[i].id);
  }
  rightTitle_ = controls_.addLabel(rightTitle, idRightTitle);
  right_ = addList(idRightList);
}

HWND DoubleListView::addList(int id) {
  return controls_.add(L"LISTBOX", "",
                       WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_EXTENDEDSEL | LBS_WANTKEYBOARDINPUT |
                           LBS_NOINTEGRALHEIGHT,
                       id, WS_EX_CLIENTEDGE);
}

void DoubleListView::refresh() {
  fill(left_, list_.left());
  fill(right_, list_.right());
}

void DoubleListView::fill(HWND list, const DoubleList::Entries& entries) {
  if (holds(list, entries)) return;
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, LB_RESETCONTENT, 0, 0);
  int widest = 0;
  for (const std::string& entry : entries) {
    const std::wstring text = wide(entry);
    SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    widest = std::max(widest, controls_.widthOf(text));
  }
  SendMessageW(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest + controls_.scaled(8)), 0);
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
}

std::function<void()> DoubleListView::moveFrom(HWND list) {
  if (list == left_) return [this] { moveSelected(left_, &DoubleList::moveRight); };
  return [this] { moveSelected(right_, &DoubleList::moveLeft); };
}

std::function<void()> DoubleListView::click(int id, int notification) {
  const bool isList = id == idLeftList || id == idRightList;
  if (isList && notification == LBN_DBLCLK) return moveFrom(id == idLeftList ? left_ : right_);
  if (isList || notification != BN_CLICKED) return {};
  switch (id) {
    case idMoveRight:
      return moveFrom(left_);
    case idMoveLeft:
      return moveFrom(right_);
    case idMoveAllRight:
      return [this] { list_.moveAllRight(); };
    case idMoveAllLeft:
      return [this] { list_.moveAllLeft(); };
    default:
      return {};
  }
}

std::function<void()> DoubleListView::key(HWND list, WORD key) {
  if (list == left_ && key == VK_RIGHT) return moveFrom(left_);
  if (list == right_ && key == VK_LEFT) return moveFrom(right_);
  return {};
}

// From the top, so that they stand on the other side in the order in which they stood here. The place of the first one
// stays selected: the next key press moves the next entry.
void DoubleListView::moveSelected(HWND from, void (DoubleList::*step)(std::size_t)) {
  const LRESULT count = SendMessageW(from, LB_GETSELCOUNT, 0, 0);
  if (count <= 0) return;
  std::vector<int> rows(static_cast<std::size_t>(count));
  SendMessageW(from, LB_GETSELITEMS, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(rows.data()));
  std::sort(rows.begin(), rows.end());
  for (std::size_t moved = 0; moved < rows.size(); ++moved)
    (list_.*step)(static_cast<std::size_t>(rows[moved]) - moved);
  refresh();
  const LRESULT left = SendMessageW(from, LB_GETCOUNT, 0, 0);
  if (left <= 0) return;
  const WPARAM next = static_cast<WPARAM>(std::min<LRESULT>(rows.front(), left - 1));
  SendMessageW(from, LB_SETSEL, TRUE, static_cast<LPARAM>(next));
  SendMessageW(from, LB_SETCARETINDEX, next, FALSE);
}

SIZE DoubleListView::smallestSize() const {
  const int list = std::max({controls_.scaled(170), controls_.widthOf(leftTitle_), controls_.widthOf(rightTitle_)});
  const int moving = controls_.scaled(44) + 2 * controls_.gap();
  const int height = 4 * controls_.buttonHeight() + 5 * controls_.gap();
  return {2 * list + moving, controls_.lineHeight() + controls_.gap() + height};
}

void DoubleListView::arrange(int x, int y, int width, int height) {
  const int moving = controls_.scaled(44), gap = controls_.gap(), line = controls_.lineHeight();
  const int list = (width - moving - 2 * gap) / 2, top = y + line + gap / 2, tall = height - line - gap / 2;
  place(leftTitle_, x, y, list, line);
  place(left_, x, top, list, tall);
  place(rightTitle_, x + width - list, y, list, line);
  place(right_, x + width - list, top, list, tall);
  const int count = static_cast<int>(std::size(buttons_));
  int at = top + (tall - count * controls_.buttonHeight() - (count - 1) * gap) / 2;
  for (const HWND button : buttons_) {
    place(button, x + list + gap, at, moving, controls_.buttonHeight());
    at += controls_.buttonHeight() + gap;
  }
}

}  // namespace windows
