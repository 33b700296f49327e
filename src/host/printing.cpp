#include "host/printing.h"

#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_nbalance.h"
#include "host/form_host.h"
#include "platform/run_time_error.h"

namespace host {

Printing::Printing(const std::string& language, PrintWishes wishes, DialogView* person)
    : wishes_(std::move(wishes)), person_(person), pages_(language) {}

void Printing::closingReport(gljz::FrmJZBG& form) {
  if (!wishes_.report.empty()) press("frmJZBG", wishes_.report, [&] { form.command2_Click(); });
  // The button shows the other dialog, which comes back as leftOut.
  openedForPrint_ = !wishes_.leftOut.empty();
  if (openedForPrint_) form.Command1_Click();
  openedForPrint_ = false;
}

bool Printing::leftOut(gljz::FrmNBalance& form) {
  if (openedForPrint_) press("frmNBalance", wishes_.leftOut, [&] { form.Command3_Click(); });
  return openedForPrint_;
}

void Printing::press(const std::string& dialog, const std::string& file, const std::function<void()>& button) {
  file_ = file;
  try {
    button();
  } catch (const platform::RunTimeError& e) {
    // Nothing answers a failure in a dialog's button, and nothing of the run depends on it.
    outcomes_.push_back({dialog, file, e.what(), 0});
  }
  file_.clear();
}

int Printing::print(const platform::PrintControl::Job& job) {
  const std::string dialog(job.owner ? job.owner->Name() : std::string_view());
  const std::string file = !file_.empty() ? file_ : person_ ? person_->printFile(dialog) : std::string();
  pages_.printTo(file);
  pages_.printOn(file.empty() && person_ ? person_->printer(dialog) : CanvasMaker());
  platform::PrintControl::Job shown = job;
  if (const auto* rows = person_ ? person_->gridOnScreen(dialog) : nullptr) shown.grid = rows;
  const int error = pages_.Print(shown);
  if (error == PagePrint::operatorLeft) return error;
  outcomes_.push_back({dialog, file, pages_.failure(), pages_.unknownCharacters()});
  if (person_) person_->printEnded(outcomes_.back());
  return error;
}

}  // namespace host
