#pragma once
// ModalWindow: a window over one dialog of the system. It shows the model and raises its events; when an event
// procedure hides the form, the window goes.
//
//   ConditionsWindow(context, form).showModal();
//
// Windows are made, shown and destroyed on the thread that calls, and its messages run while one of them stands.

#include <windows.h>

#include <exception>
#include <functional>
#include <map>
#include <optional>

#include "common_controls.h"
#include "controls.h"

namespace gljz {
class Dialog;
}  // namespace gljz
namespace host {
class Messages;
}  // namespace host

namespace windows {

class Ask;

// What all windows of a run share.
struct WindowContext {
  HWND owner;                   // null: the window stands on its own
  const host::Messages& words;  // what the windows say themselves
  const int& screenPointer;     // 0 default, 11 hourglass; it goes before a form's own
  Ask& ask;
};

class ModalWindow {
public:
  virtual ~ModalWindow();
  ModalWindow(const ModalWindow&) = delete;
  ModalWindow& operator=(const ModalWindow&) = delete;

  // Shows the window until the form is hidden or the window is closed; what a close box means is the form's. The
  // thread's other windows take no input until then. A failure of an event procedure ends the window and leaves from
  // here: it belongs to whoever asked for the dialog. When the program is told to quit, the window closes and the word
  // is passed on.
  void showModal();

  HWND handle() const { return window_; }
  const gljz::Dialog& form() const { return form_; }
  virtual void changed();  // the form says that it has

protected:
  enum class Frame { fixed, resizable };
  ModalWindow(const WindowContext& context, const gljz::Dialog& form, std::string_view caption, Frame frame);

  const WindowContext& context() const { return context_; }
  Controls& controls() { return controls_; }
  const Controls& controls() const { return controls_; }

  // Runs an event procedure of the form, then `refresh`.
  void call(const std::function<void()>& procedure);
  void end();
  virtual void refresh() {}
  // Escape and the close box. By default the window goes, as closed by its box.
  virtual void closeBox() { end(); }
  // What a failure in an event procedure does; the default ends the window.
  virtual void failed(std::exception_ptr failure);

  // Inner size, pixels: when the window opens, and below which it cannot be made smaller.
  virtual SIZE preferredSize() const = 0;
  virtual SIZE smallestSize() const { return preferredSize(); }
  virtual void arrange(int width, int height) = 0;  // the controls within that inner size
  virtual HWND firstFocus() const = 0;
  virtual void opened() {}  // on the screen, its messages about to run

  // Messages that a window may want; nothing or false: it does not.
  virtual std::optional<LRESULT> notified(NMHDR&) { return std::nullopt; }
  virtual bool listSays(int /*id*/, int /*notification*/) { return false; }
  virtual bool listKey(HWND /*list*/, WORD /*key*/) { return false; }
  virtual std::optional<COLORREF> inkOf(int /*id*/) const { return std::nullopt; }
  virtual int pointer() const { return 0; }  // of the form: 0 default, 11 hourglass
  virtual void timer() {}

  HWND addButton(const gljz::Button& state, int id, std::function<void()> procedure);
  void onClick(int id, std::function<void()> procedure) { clicks_[id] = std::move(procedure); }
  void makeDefault(int id);                        // the Enter key's
  void makeCancel(int id) { cancelButton_ = id; }  // the Escape key's
  // Buttons side by side at their own widths, their bottom line the margin's; hidden ones take no room. Returns the
  // width that they take.
  int placeButtons(std::initializer_list<HWND> buttons, int y, int x) const;
  int placeButtonsRight(std::initializer_list<HWND> buttons, int y, int right) const;
  int buttonsWidth(std::initializer_list<HWND> buttons) const;

private:
  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l);
  std::optional<INT_PTR> received(UINT message, WPARAM w, LPARAM l);
  INT_PTR answer(LRESULT result) const;  // to messages whose result the dialog manager passes on
  bool command(WPARAM w);
  bool showPointer() const;
  void open();
  void loop();
  SIZE outerSize(SIZE inner) const;

  const WindowContext context_;
  const gljz::Dialog& form_;
  HWND window_ = nullptr;
  std::optional<CommonControls> themed_;  // while controls are made
  Controls controls_;
  std::map<int, std::function<void()>> clicks_;
  int cancelButton_ = 0;
  bool ended_ = false;
  std::exception_ptr failure_;
};

// Lets the messages that wait for this thread run, those of `window` as a dialog's. A word to quit stays for the loop
// around.
void letMessagesRun(HWND window);
// Only what has to be painted: for a run without a window of its own, whose program must not be entered anew by a
// click while it waits for the call to return.
void letPaintingRun();

}  // namespace windows
