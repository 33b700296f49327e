#include "com/windows/pilot.h"

#include <windows.h>
// after it
#include <commctrl.h>

#include <array>
#include <stdexcept>

#include "com/windows/controls.h"
#include "com/windows/modal_window.h"
#include "com/windows/wide_text.h"
#include "dialogs/dialog.h"
#include "dialogs/frm_tran_cond.h"

namespace windows::test {
namespace {

constexpr int lookEvery = 15, patience = 10000;  // milliseconds

Pilot* current = nullptr;

int lineOf(const std::string& key) {
  const auto index = gljz::frmTranCond().indexOf(key);
  if (!index) throw std::logic_error(key + " is not offered");
  return static_cast<int>(*index);
}

LVCOLUMNW columnOf(HWND window, int id, int column, std::array<wchar_t, 200>& title) {
  LVCOLUMNW asked{};
  asked.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH;
  asked.pszText = title.data();
  asked.cchTextMax = static_cast<int>(title.size());
  if (!SendMessageW(control(window, id), LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&asked)))
    throw std::logic_error("the list has no column " + std::to_string(column));
  return asked;
}

// What `into` draws on a device of the rectangle's size.
Picture draw(const RECT& size, const std::function<void(HDC)>& into) {
  Picture picture;
  picture.width = static_cast<int>(size.right - size.left);
  picture.height = static_cast<int>(size.bottom - size.top);
  BITMAPINFO format{};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = picture.width;
  format.bmiHeader.biHeight = -picture.height;  // from the top
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  const HDC device = CreateCompatibleDC(nullptr);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(device, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!bitmap) throw std::runtime_error("there is no room for a picture");
  const HGDIOBJ before = SelectObject(device, bitmap);
  into(device);
  GdiFlush();
  const auto* pixels = static_cast<const std::uint32_t*>(bits);
  picture.pixels.assign(pixels, pixels + picture.width * picture.height);
  for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
  SelectObject(device, before);
  DeleteObject(bitmap);
  DeleteDC(device);
  return picture;
}

}  // namespace

Pilot::Pilot(DialogWindows& windows) : windows_(windows), timer_(SetTimer(nullptr, 0, lookEvery, &Pilot::tick)) {
  current = this;
}

Pilot::~Pilot() {
  KillTimer(nullptr, timer_);
  current = nullptr;
}

void Pilot::then(const std::string& form, Step step) {
  steps_.push_back({form, std::move(step)});
  waited_ = 0;
}

std::vector<std::string> Pilot::left() const {
  std::vector<std::string> names;
  for (const Waiting& step : steps_) names.push_back(step.form);
  return names;
}

void CALLBACK Pilot::tick(HWND, UINT, UINT_PTR, DWORD) {
  if (current) current->look();
}

void Pilot::look() {
  if (windows_.standing().empty()) return;
  const ModalWindow& top = *windows_.standing().back();
  const HWND window = top.handle();
  if (!IsWindowVisible(window)) return;
  const std::string name(top.form().Name());
  if (!steps_.empty() && steps_.front().form == name) {
    const Step step = std::move(steps_.front().step);
    steps_.pop_front();
    waited_ = 0;
    try {
      step(window);  // may open the next window and return when it has gone
    } catch (const std::exception& e) {
      failures_.push_back(name + ": " + e.what());
      SendMessageW(window, WM_CLOSE, 0, 0);
    }
    return;
  }
  // A run needs its time; every other window waits for somebody.
  if (name == "frmJZSN" || (waited_ += lookEvery) < patience) return;
  waited_ = 0;
  failures_.push_back(name + ": nobody closed it");
  SendMessageW(window, WM_CLOSE, 0, 0);
}

HWND control(HWND window, int id) {
  const HWND found = GetDlgItem(window, id);
  if (!found) throw std::logic_error(text(window) + " has no control " + std::to_string(id));
  return found;
}

std::string text(HWND window) {
  return narrow(textOf(window));
}

std::string text(HWND window, int id) {
  return text(control(window, id));
}

bool isEnabled(HWND window, int id) {
  return IsWindowEnabled(control(window, id)) != FALSE;
}

bool isShown(HWND window, int id) {
  return IsWindowVisible(control(window, id)) != FALSE;
}

void press(HWND window, int id) {
  if (!isShown(window, id) || !isEnabled(window, id))
    throw std::logic_error(text(window) + ": the button " + text(window, id) + " takes no click");
  SendMessageW(control(window, id), BM_CLICK, 0, 0);
}

void type(WPARAM virtualKey) {
  const HWND focus = GetFocus();
  if (!focus) throw std::logic_error("nothing has the focus");
  PostMessageW(focus, WM_KEYDOWN, virtualKey, 1);
  PostMessageW(focus, WM_KEYUP, virtualKey, static_cast<LPARAM>(0xC0000001));
}

std::vector<std::string> entries(HWND window, int id) {
  const HWND list = control(window, id);
  std::vector<std::string> lines;
  const LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    std::wstring line(static_cast<std::size_t>(SendMessageW(list, LB_GETTEXTLEN, static_cast<WPARAM>(i), 0)), L'\0');
    SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(line.data()));
    lines.push_back(narrow(line));
  }
  return lines;
}

void select(HWND window, int id, const std::vector<int>& rows) {
  const HWND list = control(window, id);
  SendMessageW(list, LB_SETSEL, FALSE, -1);
  for (const int row : rows) SendMessageW(list, LB_SETSEL, TRUE, row);
}

std::string cell(HWND window, int id, int row, int column) {
  std::array<wchar_t, 500> found{};
  LVITEMW asked{};
  asked.iSubItem = column;
  asked.pszText = found.data();
  asked.cchTextMax = static_cast<int>(found.size());
  SendMessageW(control(window, id), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&asked));
  return narrow(asked.pszText);
}

std::string columnTitle(HWND window, int id, int column) {
  std::array<wchar_t, 200> title{};
  return narrow(columnOf(window, id, column, title).pszText);
}

int rowCount(HWND window, int id) {
  return ListView_GetItemCount(control(window, id));
}

int columnCount(HWND window, int id) {
  return Header_GetItemCount(ListView_GetHeader(control(window, id)));
}

int columnWidth(HWND window, int id, int column) {
  return ListView_GetColumnWidth(control(window, id), column);
}

int columnSide(HWND window, int id, int column) {
  std::array<wchar_t, 200> title{};
  return columnOf(window, id, column, title).fmt & LVCFMT_JUSTIFYMASK;
}

bool isTicked(HWND window, const std::string& key) {
  return ListView_GetCheckState(control(window, idLvCond), lineOf(key)) != 0;
}

void tick(HWND window, const std::string& key, bool checked) {
  ListView_SetCheckState(control(window, idLvCond), lineOf(key), checked);
}

Picture drawingOf(HWND control) {
  RECT inner{};
  GetClientRect(control, &inner);
  return draw(inner, [&](HDC device) {
    SendMessageW(control, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(device), PRF_CLIENT | PRF_ERASEBKGND);
  });
}

Picture photographOf(HWND window) {
  RECT outer{};
  GetWindowRect(window, &outer);
  return draw(outer, [&](HDC device) {
    const HDC screen = GetDC(nullptr);
    BitBlt(device, 0, 0, static_cast<int>(outer.right - outer.left), static_cast<int>(outer.bottom - outer.top), screen,
           static_cast<int>(outer.left), static_cast<int>(outer.top), SRCCOPY);
    ReleaseDC(nullptr, screen);
  });
}

}  // namespace windows::test
