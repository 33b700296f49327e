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

QString withEnding(const QString& file, const QString& proposed, const QString& filters, const QString& chosen) {
  const QStringList all = filters.split(";;");
  const QString wanted = endingOf(chosen.isEmpty() ? all.front() : chosen);
  const auto ends = [&](const QString& ending) { return file.endsWith(ending, Qt::CaseInsensitive); };
  if (wanted.isEmpty() || ends(wanted)) return file;
  const bool filterUntouched = wanted == endingOf(all.front());
  for (const QString& filter : all) {
    const QString ending = endingOf(filter);
    if (ending.isEmpty() || !ends(ending)) continue;
    const bool typed = !proposed.endsWith(ending, Qt::CaseInsensitive);
    return typed && filterUntouched ? file : file.chopped(ending.size()) + wanted;
  }
  return file + wanted;
}

std::string Ask::saveFile(QWidget* parent, const QString& title, const QString& name, const QString& filters) {
  QString path = QDir::home().filePath(name);
  while (true) {
    QString chosen;
    path = fileDialog(parent, title, path, filters, chosen);
    if (path.isEmpty()) return {};
    path = withEnding(path, name, filters, chosen);
    if (!QFileInfo::exists(path) || mayReplace(parent, title, path)) return utf8(path);
  }
}

QString Ask::fileDialog(QWidget* parent, const QString& title, const QString& path, const QString& filters,
                        QString& chosen) {
  return QFileDialog::getSaveFileName(parent, title, path, filters, &chosen, QFileDialog::DontConfirmOverwrite);
}

// In the toolkit's own words, as its file dialog asks.
bool Ask::mayReplace(QWidget* parent, const QString& title, const QString& file) {
  const QString text =
      QFileDialog::tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(file).fileName());
  return QMessageBox::warning(parent, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) ==
         QMessageBox::Yes;
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
