#pragma once
// Controls: makes the controls of a window, in the system's message font, and measures them.

#include <windows.h>

#include <string_view>

namespace gljz {
struct Button;
}  // namespace gljz

namespace windows {

class Controls {
public:
  explicit Controls(HWND parent);  // a window without controls
  ~Controls();
  Controls(const Controls&) = delete;
  Controls& operator=(const Controls&) = delete;

  // A child window. std::runtime_error when the window system has none left.
  HWND add(const wchar_t* windowClass, std::string_view text, DWORD style, int id, DWORD extendedStyle = 0);
  HWND addLabel(std::string_view text, int id, DWORD style = SS_LEFT);
  HWND addButton(const gljz::Button& state, int id);  // caption, state and tool tip
  void addTip(HWND control, std::string_view text);   // a text of several lines is one tip

  HFONT font() const { return font_; }
  // Pixels for a length that was thought of for 96 dots per inch.
  int scaled(int pixels) const { return MulDiv(pixels, dotsPerInch_, 96); }
  int pixelsOfTwips(int twips) const;  // a twip is 1/1440 inch; rounded
  int lineHeight() const { return lineHeight_; }
  int margin() const { return scaled(12); }
  int gap() const { return scaled(8); }
  int buttonHeight() const { return lineHeight_ + scaled(10); }
  int widthOf(std::wstring_view text) const;
  int widthOf(HWND control) const;              // of its text, on one line
  int heightOf(HWND control, int width) const;  // of its text, in as many lines as it needs
  int buttonWidth(HWND button) const;

private:
  HWND parent_;
  HFONT font_ = nullptr;
  HWND tips_ = nullptr;
  int dotsPerInch_ = 96, lineHeight_ = 16;
};

void place(HWND control, int x, int y, int width, int height);
std::wstring textOf(HWND control);
// Leaves a control alone that has the text already: a window that is told the same does not flicker.
void setText(HWND control, std::string_view text);
void showState(HWND button, const gljz::Button& state);
// A button takes a click: it is on the form and enabled.
bool takesClicks(HWND button);

}  // namespace windows
