#include "modal_window.h"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

#include "dialogs/controls.h"
#include "dialogs/dialog.h"
#include "wide_text.h"

namespace windows {
namespace {

constexpr int hourglassPointer = 11;
constexpr INT_PTR keyIsDone = -2, keyIsTheLists = -1;  // answers to WM_VKEYTOITEM

// A dialog without controls: they are made at their measured size. No window class of its own has to be registered,
// and none is left behind when the module is unloaded.
struct EmptyDialog {
  DLGTEMPLATE head{};
  WORD menu = 0, windowClass = 0, title = 0;
};

HWND makeDialog(HWND owner, bool resizable, DLGPROC procedure) {
  alignas(DWORD) EmptyDialog dialog;
  dialog.head.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_NOFAILCREATE;
  dialog.head.style |= resizable ? WS_THICKFRAME | WS_MAXIMIZEBOX : DS_MODALFRAME;
  // Without an owner nothing else would bring the window back to the front.
  dialog.head.dwExtendedStyle = owner ? 0 : WS_EX_APPWINDOW;
  const HWND window = CreateDialogIndirectParamW(ownModule(), &dialog.head, owner, procedure, 0);
  if (!window) throw std::runtime_error("a window cannot be made");
  return window;
}

// The windows that a person could reach on this thread, out of reach while this lives.
class OthersDisabled {
public:
  explicit OthersDisabled(HWND except) : except_(except) {
    EnumThreadWindows(GetCurrentThreadId(), &OthersDisabled::disable, reinterpret_cast<LPARAM>(this));
  }
  ~OthersDisabled() {
    for (const HWND window : disabled_)
      if (IsWindow(window)) EnableWindow(window, TRUE);
  }
  OthersDisabled(const OthersDisabled&) = delete;
  OthersDisabled& operator=(const OthersDisabled&) = delete;

private:
  static BOOL CALLBACK disable(HWND window, LPARAM parameter) {
    auto& self = *reinterpret_cast<OthersDisabled*>(parameter);
    if (window == self.except_ || !IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
    self.disabled_.push_back(window);
    EnableWindow(window, FALSE);
    return TRUE;
  }

  HWND except_;
  std::vector<HWND> disabled_;
};

// Over its owner, or in the middle of the screen that the person works on, and never beyond that screen's edges.
void centre(HWND window, HWND owner, SIZE size) {
  RECT around{};
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor);
  const RECT& screen = monitor.rcWork;
  if (!owner || !IsWindowVisible(owner) || IsIconic(owner) || !GetWindowRect(owner, &around)) around = screen;
  const LONG width = std::min<LONG>(size.cx, screen.right - screen.left);
  const LONG height = std::min<LONG>(size.cy, screen.bottom - screen.top);
  const LONG x = std::clamp<LONG>((around.left + around.right - width) / 2, screen.left, screen.right - width);
  const LONG y = std::clamp<LONG>((around.top + around.bottom - height) / 2, screen.top, screen.bottom - height);
  SetWindowPos(window, nullptr, static_cast<int>(x), static_cast<int>(y), static_cast<int>(width),
               static_cast<int>(height), SWP_NOZORDER | SWP_NOACTIVATE);
}

void dispatch(HWND window, MSG& message) {
  if (window && IsDialogMessageW(window, &message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

bool isShown(HWND control) {
  return (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0;
}

}  // namespace

ModalWindow::ModalWindow(const WindowContext& context, const gljz::Dialog& form, std::string_view caption, Frame frame)
    : context_(context),
      form_(form),
      window_(makeDialog(context.owner, frame == Frame::resizable, &ModalWindow::procedure)),
      themed_(std::in_place),
      controls_(window_) {
  SetWindowLongPtrW(window_, DWLP_USER, reinterpret_cast<LONG_PTR>(this));
  SetWindowTextW(window_, wide(caption).c_str());
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(controls_.font()), FALSE);
}

ModalWindow::~ModalWindow() {
  SetWindowLongPtrW(window_, DWLP_USER, 0);  // what is left of it has no object to go to
  DestroyWindow(window_);
}

void ModalWindow::showModal() {
  themed_.reset();
  open();
  {
    const OthersDisabled modal(window_);
    opened();
    loop();
    // The others come back before the window goes, or the window system would activate another program's.
  }
  SetWindowPos(window_, nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  if (context_.owner && GetActiveWindow() == window_) SetActiveWindow(context_.owner);
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void ModalWindow::open() {
  refresh();
  centre(window_, context_.owner, outerSize(preferredSize()));
  RECT inner{};
  GetClientRect(window_, &inner);
  arrange(inner.right, inner.bottom);
  // Not ShowWindow, whose first call in a process obeys whoever started it.
  SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_SHOWWINDOW | SWP_NOMOVE | SWP_NOSIZE);
  if (!context_.owner) SetForegroundWindow(window_);
  SetFocus(firstFocus());
  UpdateWindow(window_);
}

void ModalWindow::loop() {
  MSG message{};
  while (!ended_) {
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
    if (got <= 0) return;
    dispatch(window_, message);
  }
}

void ModalWindow::end() {
  ended_ = true;
  PostMessageW(window_, WM_NULL, 0, 0);  // the loop looks again, whoever has sent the message that ended it
}

void ModalWindow::changed() {
  if (!form_.visible()) end();
}

// No failure may pass through the window system's own code.
void ModalWindow::call(const std::function<void()>& procedure) {
  try {
    procedure();
  } catch (...) {
    failed(std::current_exception());
    return;
  }
  if (form_.visible())
    refresh();
  else
    end();
}

void ModalWindow::failed(std::exception_ptr failure) {
  failure_ = std::move(failure);
  end();
}

HWND ModalWindow::addButton(const gljz::Button& state, int id, std::function<void()> procedure) {
  onClick(id, std::move(procedure));
  return controls_.addButton(state, id);
}

void ModalWindow::makeDefault(int id) {
  SendMessageW(window_, DM_SETDEFID, static_cast<WPARAM>(id), 0);
  SendDlgItemMessageW(window_, id, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
}

int ModalWindow::buttonsWidth(std::initializer_list<HWND> buttons) const {
  int width = 0;
  for (const HWND button : buttons)
    if (isShown(button)) width += (width > 0 ? controls_.gap() : 0) + controls_.buttonWidth(button);
  return width;
}

int ModalWindow::placeButtons(std::initializer_list<HWND> buttons, int y, int x) const {
  const int start = x;
  for (const HWND button : buttons) {
    if (!isShown(button)) continue;
    const int width = controls_.buttonWidth(button);
    place(button, x, y, width, controls_.buttonHeight());
    x += width + controls_.gap();
  }
  return x - start;
}

int ModalWindow::placeButtonsRight(std::initializer_list<HWND> buttons, int y, int right) const {
  return placeButtons(buttons, y, right - buttonsWidth(buttons));
}

SIZE ModalWindow::outerSize(SIZE inner) const {
  RECT rect{0, 0, inner.cx, inner.cy};
  AdjustWindowRectEx(&rect, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)));
  return {rect.right - rect.left, rect.bottom - rect.top};
}

INT_PTR CALLBACK ModalWindow::procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  auto* self = reinterpret_cast<ModalWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  if (!self) return FALSE;  // the window is being made, or its object goes
  try {
    return self->received(message, w, l).value_or(FALSE);
  } catch (...) {
    self->failure_ = std::current_exception();
    self->end();
    return TRUE;
  }
}

INT_PTR ModalWindow::answer(LRESULT result) const {
  SetWindowLongPtrW(window_, DWLP_MSGRESULT, result);
  return TRUE;
}

std::optional<INT_PTR> ModalWindow::received(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_COMMAND:
      return command(w);
    case WM_CLOSE:
      closeBox();
      return TRUE;
    case WM_NOTIFY:
      if (const auto result = notified(*reinterpret_cast<NMHDR*>(l))) return answer(*result);
      return std::nullopt;
    case WM_VKEYTOITEM:
      return listKey(reinterpret_cast<HWND>(l), LOWORD(w)) ? keyIsDone : keyIsTheLists;
    case WM_TIMER:
      timer();
      return TRUE;
    case WM_SIZE:
      if (w == SIZE_MINIMIZED || !IsWindowVisible(window_)) return TRUE;
      arrange(LOWORD(l), HIWORD(l));
      InvalidateRect(window_, nullptr, TRUE);  // a frame around other controls leaves its old edges inside
      return TRUE;
    case WM_GETMINMAXINFO: {
      const SIZE smallest = outerSize(smallestSize());
      reinterpret_cast<MINMAXINFO*>(l)->ptMinTrackSize = {smallest.cx, smallest.cy};
      return TRUE;
    }
    case WM_CTLCOLORSTATIC:
      if (const auto ink = inkOf(GetDlgCtrlID(reinterpret_cast<HWND>(l)))) {
        const auto device = reinterpret_cast<HDC>(w);
        SetTextColor(device, *ink);
        SetBkColor(device, GetSysColor(COLOR_3DFACE));
        return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_3DFACE));
      }
      return std::nullopt;
    case WM_SETCURSOR:
      if (LOWORD(l) == HTCLIENT && showPointer()) return answer(TRUE);
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

bool ModalWindow::command(WPARAM w) {
  const int id = LOWORD(w), notification = HIWORD(w);
  if (id == IDCANCEL) {
    const HWND button = cancelButton_ ? GetDlgItem(window_, cancelButton_) : nullptr;
    if (button)
      SendMessageW(window_, WM_COMMAND, static_cast<WPARAM>(cancelButton_), reinterpret_cast<LPARAM>(button));
    else
      closeBox();
    return true;
  }
  const auto click = clicks_.find(id);
  if (click == clicks_.end()) return listSays(id, notification);
  if (notification == BN_CLICKED && takesClicks(GetDlgItem(window_, id))) call(click->second);
  return true;
}

bool ModalWindow::showPointer() const {
  const int shape = context_.screenPointer != 0 ? context_.screenPointer : pointer();
  if (shape == 0) return false;
  SetCursor(LoadCursorW(nullptr, shape == hourglassPointer ? IDC_WAIT : IDC_ARROW));
  return true;
}

void letMessagesRun(HWND window) {
  // A window that asks to be painted again and again must not keep the run for itself.
  constexpr int most = 200;
  MSG message{};
  for (int i = 0; i < most && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    dispatch(window, message);
  }
}

void letPaintingRun() {
  constexpr int most = 50;
  MSG message{};
  for (int i = 0; i < most && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE); ++i) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    DispatchMessageW(&message);
  }
}

}  // namespace windows
