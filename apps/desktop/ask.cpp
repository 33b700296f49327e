#include "ask.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QUrl>

#include "texts.h"

namespace desktop {
namespace {

Ask& windowSystem() {
  static Ask ask;
  return ask;
}
Ask* current = nullptr;

// The first ending of a filter as "PDF (*.pdf)".
QString endingOf(const QString& filter) {
  const auto match = QRegularExpression(R"(\*(\.\w+))").match(filter);
  return match.hasMatch() ? match.captured(1) : QString();
}

}  // namespace

std::string Ask::saveFile(QWidget* parent, const QString& title, const QString& name, const QString& filters) {
  QString chosen;
  QString file = QFileDialog::getSaveFileName(parent, title, QDir::home().filePath(name), filters, &chosen);
  if (!file.isEmpty() && QFileInfo(file).suffix().isEmpty()) file += endingOf(chosen);
  return utf8(file);
}

std::string Ask::folder(QWidget* parent, const QString& title, const QString& from) {
  return utf8(QFileDialog::getExistingDirectory(parent, title, from));
}

std::unique_ptr<QPrinter> Ask::printer(QWidget* parent, const QString& title) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  QPrintDialog dialog(printer.get(), parent);
  dialog.setWindowTitle(title);
  dialog.setOptions(QAbstractPrintDialog::PrintToFile);
  return dialog.exec() == QDialog::Accepted ? std::move(printer) : nullptr;
}

bool Ask::hasPrinters() {
  return !QPrinterInfo::availablePrinterNames().isEmpty();
}

void Ask::complain(QWidget* parent, const QString& title, const QString& text) {
  QMessageBox::warning(parent, title, text);
}

bool Ask::open(const QString& file) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

Ask& ask() {
  return current ? *current : windowSystem();
}

void setAsk(Ask* other) {
  current = other;
}

}  // namespace desktop
