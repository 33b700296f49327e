#include "dialog_windows.h"

#include <QApplication>
#include <QPrinter>

#include "ask.h"
#include "conditions_window.h"
#include "host/print/page_canvas.h"
#include "host/printing.h"
#include "printer_canvas.h"
#include "progress_window.h"
#include "report_windows.h"
#include "selection_windows.h"
#include "style.h"
#include "texts.h"

namespace desktop {
namespace {

// Names a window for the time that it is on the screen.
template <class Window>
class Shown {
public:
  Shown(Window*& place, Window& window) : place_(place) { place_ = &window; }
  ~Shown() { place_ = nullptr; }
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;

private:
  Window*& place_;
};

QString fileNameOf(const std::string& dialog) {
  return dialog == "frmNBalance" ? "left-out" : "closing-report";
}

}  // namespace

// A person works in a dialog of a run that has set the hourglass for the whole screen.
class DialogWindows::OrdinaryPointer {
public:
  explicit OrdinaryPointer(DialogWindows& windows) : windows_(windows), shape_(windows.pointer_) {
    windows_.screenPointer(0);
  }
  ~OrdinaryPointer() { windows_.screenPointer(shape_); }
  OrdinaryPointer(const OrdinaryPointer&) = delete;
  OrdinaryPointer& operator=(const OrdinaryPointer&) = delete;

private:
  DialogWindows& windows_;
  int shape_;
};

QWidget* DialogWindows::top() const {
  QWidget* modal = QApplication::activeModalWidget();
  return modal ? modal : parent_;
}

void DialogWindows::conditions(gljz::FrmTranCond& form) {
  ConditionsWindow window(top(), form);
  window.showModal();
  cancelled_ = !window.confirmed();
}

void DialogWindows::divideAccounts(gljz::FrmYeMxSel& form) {
  DivisionWindow(top(), form, texts_).showModal();
}

void DialogWindows::chooseCleared(gljz::FrmSyKmSel& form) {
  ClearingWindow(top(), form, texts_).showModal();
}

void DialogWindows::question(gljz::FrmTwo& form) {
  QuestionWindow(top(), form, texts_).showModal();
}

void DialogWindows::run(gljz::FrmJZSN& form) {
  ProgressWindow window(top(), form, texts_, rowsWritten_);
  const Shown<ProgressWindow> onScreen(progress_, window);
  window.showModal();
}

void DialogWindows::closingReport(gljz::FrmJZBG& form) {
  if (progress_) progress_->paintNow();
  const OrdinaryPointer pointer(*this);
  const gljz::Grid* leftOutGrid = gljz::frmNBalance.isLoaded() ? &gljz::frmNBalance().Grid1 : nullptr;
  ReportWindow window(top(), form, leftOutGrid, texts_);
  const Shown<ReportWindow> onScreen(report_, window);
  window.showModal();
}

void DialogWindows::leftOut(gljz::FrmNBalance& form) {
  if (progress_) progress_->paintNow();
  const OrdinaryPointer pointer(*this);
  LeftOutWindow window(top(), form, texts_);
  const Shown<LeftOutWindow> onScreen(leftOut_, window);
  window.showModal();
}

void DialogWindows::changed(const platform::Form& form) {
  if (progress_ && form.Name() == "frmJZSN") progress_->changed();
}

void DialogWindows::doEvents() {
  if (progress_) progress_->doEvents();
}

void DialogWindows::screenPointer(int shape) {
  if (pointer_ != 0) QApplication::restoreOverrideCursor();
  pointer_ = shape;
  if (pointer_ != 0) QApplication::setOverrideCursor(shape == hourglassPointer ? Qt::WaitCursor : Qt::ArrowCursor);
}

// A machine without a printer prints into a file; the print dialog of the others has the file among its printers.
std::string DialogWindows::printFile(const std::string& dialog) {
  printer_ = nullptr;
  const QString title = texts_("Print");
  if (!ask().hasPrinters()) {
    const QString filters = host::PagePrint::canPrint(".pdf") ? "PDF (*.pdf);;TXT (*.txt)" : "TXT (*.txt)";
    const QString ending = host::PagePrint::canPrint(".pdf") ? ".pdf" : ".txt";
    return ask().saveFile(top(), title, fileNameOf(dialog) + ending, filters);
  }
  printer_ = ask().printer(top(), title);
  if (!printer_ || printer_->outputFileName().isEmpty()) return {};
  const std::string file = utf8(printer_->outputFileName());
  return host::PagePrint::canPrint(file) ? file : std::string();
}

host::CanvasMaker DialogWindows::printer(const std::string&) {
  if (!printer_) return {};
  return [printer = printer_, &texts = texts_](const host::CanvasSettings& settings) {
    return newPrinterCanvas(printer, settings, texts);
  };
}

const GridModel::Rows* DialogWindows::gridOnScreen(const std::string& dialog) {
  if (dialog == "frmNBalance" && leftOut_)
    printed_ = leftOut_->rowsOnScreen();
  else if (dialog == "frmJZBG" && report_)
    printed_ = report_->rowsOnScreen();
  else
    return nullptr;
  return &printed_;
}

void DialogWindows::printEnded(const host::PrintOutcome& outcome) {
  if (!outcome.failure.empty()) ask().complain(top(), texts_("Print"), shown(outcome.failure));
}

}  // namespace desktop
