#include "dialog_windows.h"

#include "conditions_window.h"
#include "host/messages.h"
#include "host/printing.h"
#include "printer_canvas.h"
#include "progress_window.h"
#include "report_windows.h"
#include "selection_windows.h"

namespace windows {
namespace {

constexpr int hourglassPointer = 11;

std::string fileNameOf(const std::string& dialog) {
  return dialog == "frmNBalance" ? "left-out" : "closing-report";
}

// The place of something for the time that it stands.
template <class Undo>
class Finally {
public:
  explicit Finally(Undo undo) : undo_(std::move(undo)) {}
  ~Finally() { undo_(); }
  Finally(const Finally&) = delete;
  Finally& operator=(const Finally&) = delete;

private:
  Undo undo_;
};

}  // namespace

HWND DialogWindows::top() const {
  if (!standing_.empty()) return standing_.back()->handle();
  return settings_.owner ? settings_.owner : GetActiveWindow();
}

template <class Window, class Form>
void DialogWindows::show(Form& form, Window** place) {
  if (progress_) progress_->paint();
  const host::Messages words(language());
  Window window({top(), words, screenPointer_, ask()}, form);
  standing_.push_back(&window);
  if (place) *place = &window;
  const Finally gone([&] {
    standing_.pop_back();
    if (place) *place = nullptr;
  });
  window.showModal();
}

void DialogWindows::conditions(gljz::FrmTranCond& form) {
  show<ConditionsWindow>(form);
}

void DialogWindows::divideAccounts(gljz::FrmYeMxSel& form) {
  show<DivisionWindow>(form);
}

void DialogWindows::chooseCleared(gljz::FrmSyKmSel& form) {
  show<ClearingWindow>(form);
}

void DialogWindows::run(gljz::FrmJZSN& form) {
  show<ProgressWindow>(form, &progress_);
  // A host that is about to end closes the window before its timer can fire. The run that the caller asked for is owed
  // all the same, or it would be told of a success that never was.
  if (form.Timer1_Enabled()) form.Timer1_Timer();
}

void DialogWindows::question(gljz::FrmTwo& form) {
  show<QuestionWindow>(form);
}

void DialogWindows::closingReport(gljz::FrmJZBG& form) {
  show<ReportWindow>(form);
}

void DialogWindows::leftOut(gljz::FrmNBalance& form) {
  show<LeftOutWindow>(form);
}

void DialogWindows::changed(const platform::Form& form) {
  for (ModalWindow* window : standing_)
    if (&window->form() == &form) window->changed();
}

void DialogWindows::doEvents() {
  if (progress_)
    progress_->doEvents();
  else
    letPaintingRun();
}

void DialogWindows::screenPointer(int shape) {
  screenPointer_ = shape;
  SetCursor(LoadCursorW(nullptr, shape == hourglassPointer ? IDC_WAIT : IDC_ARROW));
}

std::string DialogWindows::printFile(const std::string& dialog) {
  printer_ = nullptr;
  if (!ask().hasPrinters())
    return ask().printFile(top(), host::Messages(language()).text("Gljz.Host.Desktop.Print"), fileNameOf(dialog));
  printer_ = ask().printer(top());
  return {};
}

host::CanvasMaker DialogWindows::printer(const std::string&) {
  if (!printer_) return {};
  return [printer = printer_](const host::CanvasSettings& settings) { return newPrinterCanvas(printer, settings); };
}

void DialogWindows::printEnded(const host::PrintOutcome& outcome) {
  printer_ = nullptr;
  if (outcome.failure.empty()) return;
  ask().complain(top(), host::Messages(language()).text("Gljz.Host.Desktop.Print"), outcome.failure);
}

}  // namespace windows
