#include "controls.h"

#include <commctrl.h>

#include <stdexcept>
#include <string>

#include "common_controls.h"
#include "dialogs/controls.h"
#include "wide_text.h"

namespace windows {
namespace {

constexpr int twipsPerInch = 1440;

// The parent's device with the controls' font, for a measurement.
class Ruler {
public:
  Ruler(HWND window, HFONT font) : window_(window), device_(GetDC(window)), before_(SelectObject(device_, font)) {}
  ~Ruler() {
    SelectObject(device_, before_);
    ReleaseDC(window_, device_);
  }
  Ruler(const Ruler&) = delete;
  Ruler& operator=(const Ruler&) = delete;
  operator HDC() const { return device_; }

private:
  HWND window_;
  HDC device_;
  HGDIOBJ before_;
};

HFONT messageFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return nullptr;
  return CreateFontIndirectW(&metrics.lfMessageFont);
}

}  // namespace

Controls::Controls(HWND parent) : parent_(parent), font_(messageFont()) {
  const Ruler ruler(parent, font_);
  dotsPerInch_ = GetDeviceCaps(ruler, LOGPIXELSX);
  TEXTMETRICW metrics{};
  if (GetTextMetricsW(ruler, &metrics)) lineHeight_ = metrics.tmHeight;
}

// The controls go with their parent.
Controls::~Controls() {
  if (tips_ && IsWindow(tips_)) DestroyWindow(tips_);
  if (font_) DeleteObject(font_);
}

HWND Controls::add(const wchar_t* windowClass, std::string_view text, DWORD style, int id, DWORD extendedStyle) {
  const HWND control =
      CreateWindowExW(extendedStyle, windowClass, wide(text).c_str(), WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
                      parent_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ownModule(), nullptr);
  if (!control) throw std::runtime_error("a control of a window cannot be made");
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
  return control;
}

// An ampersand of a label is one: what labels show comes from the ledger, too.
HWND Controls::addLabel(std::string_view text, int id, DWORD style) {
  return add(L"STATIC", text, SS_NOPREFIX | style, id);
}

HWND Controls::addButton(const gljz::Button& state, int id) {
  const HWND button = add(L"BUTTON", state.Caption, WS_TABSTOP | BS_PUSHBUTTON, id);
  if (!state.ToolTipText.empty()) addTip(button, state.ToolTipText);
  showState(button, state);
  return button;
}

void Controls::addTip(HWND control, std::string_view text) {
  if (!tips_) {
    tips_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, parent_, nullptr, ownModule(), nullptr);
    if (!tips_) return;  // a window without tool tips is still that window
    SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, scaled(400));
  }
  std::wstring tip = wide(text);
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;  // the size that every version of the controls knows
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = parent_;
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = tip.data();
  SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

int Controls::pixelsOfTwips(int twips) const {
  return MulDiv(twips, dotsPerInch_, twipsPerInch);
}

int Controls::widthOf(std::wstring_view text) const {
  SIZE size{};
  GetTextExtentPoint32W(Ruler(parent_, font_), text.data(), static_cast<int>(text.size()), &size);
  return size.cx;
}

int Controls::widthOf(HWND control) const {
  return widthOf(textOf(control));
}

int Controls::heightOf(HWND control, int width) const {
  const std::wstring text = textOf(control);
  RECT room{0, 0, width, 0};
  DrawTextW(Ruler(parent_, font_), text.c_str(), -1, &room, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
  return room.bottom;
}

int Controls::buttonWidth(HWND button) const {
  return std::max(scaled(80), widthOf(button) + scaled(24));
}

void place(HWND control, int x, int y, int width, int height) {
  SetWindowPos(control, nullptr, x, y, std::max(0, width), std::max(0, height), SWP_NOZORDER | SWP_NOACTIVATE);
}

std::wstring textOf(HWND control) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)), L'\0');
  const int length = GetWindowTextW(control, text.data(), static_cast<int>(text.size()) + 1);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

void setText(HWND control, std::string_view text) {
  const std::wstring wanted = wide(text);
  if (textOf(control) != wanted) SetWindowTextW(control, wanted.c_str());
}

void showState(HWND button, const gljz::Button& state) {
  setText(button, state.Caption);
  if ((IsWindowEnabled(button) != FALSE) != state.Enabled) EnableWindow(button, state.Enabled);
  ShowWindow(button, state.Visible ? SW_SHOWNA : SW_HIDE);
}

bool takesClicks(HWND button) {
  return IsWindowEnabled(button) && (GetWindowLongPtrW(button, GWL_STYLE) & WS_VISIBLE) != 0;
}

}  // namespace windows
