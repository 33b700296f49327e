#pragma once
// Pilot: a person for the modal windows. A modal window keeps the call that opened it waiting, so whoever presses its
// buttons has to have been told before; the pilot acts from a timer of the thread, as messages do.
//
//   Pilot pilot(windows);
//   pilot.then("frmTranCond", [](HWND w) { press(w, idCmdOk); });
//   pilot.then("frmJZBG", [](HWND w) { press(w, idCommand3); });
//   host::carryForward(options);
//   pilot.left();      // names that never came

#include <windows.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "com/windows/control_ids.h"
#include "com/windows/dialog_windows.h"

namespace windows::test {

class Pilot {
public:
  explicit Pilot(DialogWindows& windows);  // one at a time
  ~Pilot();
  Pilot(const Pilot&) = delete;
  Pilot& operator=(const Pilot&) = delete;

  // Each step waits for the window of that form on top and is then done once. Steps go in order.
  using Step = std::function<void(HWND window)>;
  void then(const std::string& form, Step step);
  std::vector<std::string> left() const;
  // Steps that threw, and windows that were closed because no step came for them.
  const std::vector<std::string>& failures() const { return failures_; }

private:
  static void CALLBACK tick(HWND window, UINT message, UINT_PTR id, DWORD time);
  void look();

  struct Waiting {
    std::string form;
    Step step;
  };
  DialogWindows& windows_;
  std::deque<Waiting> steps_;
  std::vector<std::string> failures_;
  UINT_PTR timer_;
  int waited_ = 0;  // milliseconds
};

// std::logic_error for a control that is not there.
HWND control(HWND window, int id);
std::string text(HWND window);
std::string text(HWND window, int id);
bool isEnabled(HWND window, int id);
bool isShown(HWND window, int id);
// A click; std::logic_error when the button is hidden or disabled.
void press(HWND window, int id);
// A key for the control that has the focus, which the window's loop will read.
void type(WPARAM virtualKey);

// The lines of a list box.
std::vector<std::string> entries(HWND window, int id);
void select(HWND window, int id, const std::vector<int>& rows);
// Cells of a list view, and its header.
std::string cell(HWND window, int id, int row, int column);
std::string columnTitle(HWND window, int id, int column);
int rowCount(HWND window, int id);
int columnCount(HWND window, int id);
int columnWidth(HWND window, int id, int column);
int columnSide(HWND window, int id, int column);  // LVCFMT_LEFT, LVCFMT_RIGHT, LVCFMT_CENTER
// The tick of a line of the conditions, by its key.
bool isTicked(HWND window, const std::string& key);
void tick(HWND window, const std::string& key, bool checked = true);

// 0x00RRGGBB, rows from the top.
struct Picture {
  int width = 0, height = 0;
  std::vector<std::uint32_t> pixels;

  std::uint32_t at(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
};
// The inside of a control as it draws itself, on a screen or not.
Picture drawingOf(HWND control);
// The window with its frame as it stands on the screen; black without one.
Picture photographOf(HWND window);

}  // namespace windows::test
