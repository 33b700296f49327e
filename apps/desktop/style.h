#pragma once
// How the windows look: fonts that have Chinese, one palette, one style sheet, and the measures that all windows share.

#include <QColor>
#include <string>

#include "platform/forms.h"

class QApplication;
class QLabel;
class QPushButton;
class QVBoxLayout;
class QString;
class QWidget;

namespace desktop {

// Pixels.
inline constexpr int windowMargin = 16, smallGap = 6, gap = 10, largeGap = 16;

inline constexpr QColor good{0x1B, 0x7F, 0x4B}, bad{0xB4, 0x23, 0x18}, attention{0x9A, 0x5B, 0x00},
    quiet{0x5F, 0x6B, 0x7A};

// Number of the shape that a form's mouse pointer has while it works.
inline constexpr int hourglassPointer = 11;

void applyStyle(QApplication& application);
// Which regional forms of the characters come first.
void applyFonts(QApplication& application, const std::string& language);
// What the toolkit says itself - in its dialogs for files and printers, on "Yes" and "Cancel" - in the language. Where
// its translations are not installed it stays with English.
void applyToolkitTexts(QApplication& application, const std::string& language);

// The wait pointer for as long as something blocks the windows.
class WaitPointer {
public:
  WaitPointer();
  ~WaitPointer();
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;
};

inline QColor colour(platform::Colour c) {
  return QColor(static_cast<int>(c & 0xFF), static_cast<int>(c >> 8 & 0xFF), static_cast<int>(c >> 16 & 0xFF));
}
// On this window's screen.
int pixelsOfTwips(int twips, const QWidget& widget);

// The layout of a dialog: one column within its margins.
QVBoxLayout* newColumn(QWidget& window);
// The button that a window is about.
void makePrimary(QPushButton& button);
QLabel* heading(const QString& text, QWidget* parent);
void colourText(QWidget& widget, const QColor& colour);

}  // namespace desktop
