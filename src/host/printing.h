#pragma once
// Printing: what is printed of the two closing dialogs, into which files, and what came of it.
//
//   Printing printing("zh-CN", {"report.pdf", ""}, nullptr);
//   surroundings.print = printing.control();
//   printing.closingReport(form);       // presses the dialog's own button
//   printing.outcomes();                // {{"frmJZBG", "report.pdf", ""}}
//
// A print that fails is told and loses nothing of the run.

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "host/print/page_print.h"

namespace gljz {
class FrmJZBG;
class FrmNBalance;
}  // namespace gljz

namespace host {

class DialogView;

// Files of the prints that are asked for beforehand; empty: none.
struct PrintWishes {
  std::string report;   // the closing report
  std::string leftOut;  // the records without a counterpart

  bool any() const { return !report.empty() || !leftOut.empty(); }
};

struct PrintOutcome {
  std::string dialog;                 // "frmJZBG", "frmNBalance"
  std::string file;                   // empty: it went to a printer
  std::string failure;                // empty: it was printed
  std::size_t unknownCharacters = 0;  // for which no font is installed
};

class Printing {
public:
  // person chooses the files of prints that are not wished for beforehand; may be null.
  Printing(const std::string& language, PrintWishes wishes, DialogView* person);

  platform::PrintControl* control() { return &control_; }
  // See PagePrint.
  void readTablesOf(platform::FormatDatabase* database) { pages_.readTablesOf(database); }
  // The wished prints, with the dialogs shown.
  void closingReport(gljz::FrmJZBG& form);
  // Whether the dialog was opened for a wished print, which is then done.
  bool leftOut(gljz::FrmNBalance& form);

  const std::vector<PrintOutcome>& outcomes() const { return outcomes_; }

private:
  // The control of every print: asks for the file, keeps what came of it.
  class Control final : public platform::PrintControl {
  public:
    explicit Control(Printing& printing) : printing_(printing) {}
    int Print(const Job& job) override { return printing_.print(job); }

  private:
    Printing& printing_;
  };

  int print(const platform::PrintControl::Job& job);
  void press(const std::string& dialog, const std::string& file, const std::function<void()>& button);

  PrintWishes wishes_;
  DialogView* person_;
  PagePrint pages_;
  Control control_{*this};
  std::string file_;  // of the wished print that is under way
  bool openedForPrint_ = false;
  std::vector<PrintOutcome> outcomes_;
};

}  // namespace host
