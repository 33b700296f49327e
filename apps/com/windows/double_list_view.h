#pragma once
// DoubleListView: a DoubleList in a window, with its move buttons.

#include <windows.h>

#include <functional>
#include <string>

#include "dialogs/double_list.h"

namespace host {
class Messages;
}  // namespace host

namespace windows {

class Controls;

class DoubleListView {
public:
  // Makes the controls. words: tool tips of the move buttons.
  DoubleListView(Controls& controls, gljz::DoubleList& list, const std::string& leftTitle,
                 const std::string& rightTitle, const host::Messages& words);

  void refresh();  // the list has been changed
  HWND firstFocus() const { return left_; }
  SIZE smallestSize() const;
  void arrange(int x, int y, int width, int height);

  // What a control's message does to the list; none: nothing. The window runs it and refreshes.
  std::function<void()> click(int id, int notification);
  // The arrow towards the other list moves what is selected.
  std::function<void()> key(HWND list, WORD key);

private:
  HWND addList(int id);
  void fill(HWND list, const gljz::DoubleList::Entries& entries);
  void moveSelected(HWND from, void (gljz::DoubleList::*step)(std::size_t));
  std::function<void()> moveFrom(HWND list);

  Controls& controls_;
  gljz::DoubleList& list_;
  HWND leftTitle_, left_, right_, rightTitle_;
  HWND buttons_[4];
};

}  // namespace windows
