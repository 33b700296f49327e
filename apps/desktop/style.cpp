#include "style.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFont>
#include <QLabel>
#include <QLibraryInfo>
#include <QPalette>
#include <QPushButton>
#include <QStyle>
#include <QStyleFactory>
#include <QTranslator>

namespace desktop {
namespace {

// What the palette cannot say.
const char* sheet = R"(
QLabel[role="heading"] { font-weight: bold; }
QLabel[role="title"] { font-size: 15pt; font-weight: bold; }
QLabel[role="quiet"] { color: #5f6b7a; }
QFrame[role="panel"] { background: #ffffff; border: 1px solid #d8dee6; border-radius: 6px; }
QFrame[role="line"] { background: #d8dee6; border: none; max-height: 1px; min-height: 1px; }
QPushButton { padding: 5px 14px; min-height: 18px; border: 1px solid #b8c2cf; border-radius: 4px; background: #ffffff; }
QPushButton:hover { background: #f1f5fa; }
QPushButton:pressed { background: #e1e8f1; }
QPushButton:focus { border: 1px solid #1f5fa8; }
QPushButton:disabled { color: #9aa5b1; background: #f4f6f8; border-color: #dde3ea; }
QPushButton[primary="true"] { background: #1f5fa8; color: #ffffff; border-color: #1a5292; }
QPushButton[primary="true"]:hover { background: #2a6cb8; }
QPushButton[primary="true"]:pressed { background: #184b86; }
QPushButton[primary="true"]:focus { border: 2px solid #0b2f59; padding: 4px 13px; }
QPushButton[primary="true"]:disabled { background: #a9bfd8; border-color: #a9bfd8; color: #f2f6fa; }
QPushButton[segment="true"] { border-radius: 0; padding: 4px 12px; margin-left: -1px; }
QPushButton[segment="true"]:checked { background: #dbe7f5; border-color: #1f5fa8; color: #123f73; }
QLineEdit { padding: 4px 6px; min-height: 18px; border: 1px solid #b8c2cf; border-radius: 4px; background: #ffffff; }
QLineEdit:focus { border: 1px solid #1f5fa8; }
QLineEdit:disabled { background: #f4f6f8; color: #9aa5b1; }
QListWidget, QTableView[framed="true"], QPlainTextEdit { border: 1px solid #c9d2dc; border-radius: 4px; background: #ffffff; }
QHeaderView::section { background: #cdd0d7; color: #1c2733; border: none; border-right: 1px solid #e6e9ee;
  padding: 5px 6px; font-weight: bold; }
QTabWidget::pane { border: 1px solid #d8dee6; background: #ffffff; }
QProgressBar { border: none; background: #e4e9ef; border-radius: 3px; max-height: 6px; min-height: 6px; }
QProgressBar::chunk { background: #1f5fa8; border-radius: 3px; }
QToolTip { color: #1c2733; background: #fffbe8; border: 1px solid #d8cfa0; padding: 3px; }
)";

QPalette lightPalette() {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(0xF4, 0xF6, 0xF9));
  palette.setColor(QPalette::WindowText, QColor(0x1C, 0x27, 0x33));
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::AlternateBase, QColor(247, 237, 236));
  palette.setColor(QPalette::Text, QColor(0x1C, 0x27, 0x33));
  palette.setColor(QPalette::Button, QColor(0xEE, 0xF1, 0xF5));
  palette.setColor(QPalette::ButtonText, QColor(0x1C, 0x27, 0x33));
  palette.setColor(QPalette::Highlight, QColor(0xCF, 0xE0, 0xF3));
  palette.setColor(QPalette::HighlightedText, QColor(0x10, 0x23, 0x3A));
  palette.setColor(QPalette::PlaceholderText, QColor(0x8A, 0x95, 0xA2));
  palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x9A, 0xA5, 0xB1));
  palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0x9A, 0xA5, 0xB1));
  palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(0x9A, 0xA5, 0xB1));
  return palette;
}

}  // namespace

void applyStyle(QApplication& application) {
  application.setStyle(QStyleFactory::create("Fusion"));
  application.setPalette(lightPalette());
  application.setStyleSheet(sheet);
}

void applyFonts(QApplication& application, const std::string& language) {
  const bool traditional = language == "zh-TW";
  QFont font;
  font.setFamilies({"WenQuanYi Micro Hei", traditional ? "Noto Sans CJK TC" : "Noto Sans CJK SC",
                    traditional ? "Microsoft JhengHei UI" : "Microsoft YaHei UI", "Noto Sans", "DejaVu Sans"});
  font.setPointSizeF(10);
  application.setFont(font);
}

void applyToolkitTexts(QApplication& application, const std::string& language) {
  static QTranslator toolkit;
  QCoreApplication::removeTranslator(&toolkit);
  const QString name = language == "zh-CN" ? "qtbase_zh_CN" : language == "zh-TW" ? "qtbase_zh_TW" : "";
  if (name.isEmpty() || !toolkit.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) return;
  application.installTranslator(&toolkit);
}

WaitPointer::WaitPointer() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitPointer::~WaitPointer() {
  QApplication::restoreOverrideCursor();
}

int pixelsOfTwips(int twips, const QWidget& widget) {
  constexpr int twipsPerInch = 1440;
  return twips * widget.logicalDpiX() / twipsPerInch;
}

QVBoxLayout* newColumn(QWidget& window) {
  auto* column = new QVBoxLayout(&window);
  column->setContentsMargins(windowMargin, windowMargin, windowMargin, windowMargin);
  column->setSpacing(gap);
  return column;
}

void makePrimary(QPushButton& button) {
  button.setProperty("primary", true);
  button.setDefault(true);
  button.style()->unpolish(&button);  // it may have got its look without the property
  button.style()->polish(&button);
}

QLabel* heading(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setProperty("role", "heading");
  return label;
}

void colourText(QWidget& widget, const QColor& colour) {
  QPalette palette = widget.palette();
  palette.setColor(QPalette::WindowText, colour);
  widget.setPalette(palette);
}

}  // namespace desktop
