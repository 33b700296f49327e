#pragma once
// The forms of a run without a window: on a terminal, in a pipe, or silent.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/print/page_print.h"
#include "platform/forms.h"

namespace gljz {
class FrmJZBG;
class FrmJZSN;
class FrmNBalance;
class FrmSyKmSel;
class FrmTranCond;
class FrmTwo;
class FrmYeMxSel;
}  // namespace gljz

namespace host {

class Printing;
struct PrintOutcome;

struct Step {
  std::string text, mark;  // mark "Y" when the step is done
};

// Where progress is told. A terminal draws the list of steps, a pipe gets a line for each finished step.
class ProgressSink {
public:
  virtual ~ProgressSink() = default;
  // The list of steps, as the form begins with it, and a count of the rows that the run has written so far.
  virtual void began(const std::vector<std::string>& steps, std::function<std::int64_t()> rowsWritten) = 0;
  virtual void stepBegan(const std::string& text) = 0;
  virtual void stepDone(const std::string& text) = 0;
  virtual void caption(const std::string& text) = 0;
  virtual void paused() = 0;  // a dialog shows in between
  virtual void ended() = 0;
};

// Who answers the dialogs: a person, or what a person asked for beforehand. An operation returns when it has pressed
// one of the dialog's closing buttons; returning without that is the window's close box.
class DialogView {
public:
  virtual ~DialogView() = default;
  virtual void conditions(gljz::FrmTranCond& form) = 0;
  virtual void divideAccounts(gljz::FrmYeMxSel& form) = 0;
  virtual void chooseCleared(gljz::FrmSyKmSel& form) = 0;

  // The program was interrupted at the conditions and ends as soon as they have returned.
  virtual bool interrupted() const { return false; }
  // Shows the list of steps and fires the form's timer, which is the run.
  virtual void run(gljz::FrmJZSN& form);
  virtual void question(gljz::FrmTwo&) {}
  // The window system's part of a form host; see platform::FormHost.
  virtual void changed(const platform::Form&) {}
  virtual void doEvents() {}
  virtual void screenPointer(int /*shape*/) {}

  // The dialogs behind a run ask nothing; without a person they are closed as they come.
  virtual void closingReport(gljz::FrmJZBG&) {}
  virtual void leftOut(gljz::FrmNBalance&) {}
  // The print control asks for its file; empty: the operator left. dialog: the name of the form.
  virtual std::string printFile(const std::string& dialog);
  // Asked when there is no file; empty: the operator left.
  virtual CanvasMaker printer(const std::string& dialog);
  // The grid as the person has arranged it, its header row first; null: as the dialog has it.
  virtual const std::vector<std::vector<std::string>>* gridOnScreen(const std::string& /*dialog*/) { return nullptr; }
  virtual void printEnded(const PrintOutcome&) {}
};

// What the closing report showed: counts of right and wrong accounts, and its rows without the header row.
struct ClosingReport {
  std::string right, wrong;
  std::vector<std::vector<std::string>> rows;
};

struct FormAnswers {
  std::function<void()> conditions = {};  // takes the place of frmTranCond: leaves the parameter text in the run state
  ProgressSink* progress = nullptr;       // may be null
  std::string programFolder = {};
  DialogView* dialogs = nullptr;                   // may be null: the dialogs are closed at once
  Printing* printing = nullptr;                    // may be null: nothing is printed that nobody asks for
  std::function<std::int64_t()> rowsWritten = {};  // by the run so far
  // A person is about to answer the conditions; what the dialogs behind them store can be remembered here.
  std::function<void()> conditionsBegin = {};
  // The person has left them; interrupted: the program with them.
  std::function<void(bool interrupted)> conditionsLeft = {};
};

class FormHost final : public platform::FormHost {
public:
  explicit FormHost(FormAnswers answers) : answers_(std::move(answers)) {}

  // frmJZSN: its timer fires. The dialogs before a run are answered. The closing report is read and confirmed, every
  // other form is closed at once.
  void ShowModal(platform::Form& form) override;
  void Changed(platform::Form& form) override;
  void DoEvents() override {
    if (answers_.dialogs) answers_.dialogs->doEvents();
  }
  void ScreenPointer(int shape) override {
    if (answers_.dialogs) answers_.dialogs->screenPointer(shape);
  }
  std::string ProgramFolder() const override { return answers_.programFolder; }

  // The step list as frmJZSN left it; empty when it was never shown.
  const std::vector<Step>& steps() const { return steps_; }
  const std::vector<std::string>& shown() const { return shown_; }        // names, in order
  const std::optional<ClosingReport>& report() const { return report_; }  // nullopt when it was not shown
  // The conditions were left and there is no parameter text: not even that of an earlier run, with which the run would
  // go on.
  bool conditionsLeft() const { return conditionsLeft_; }
  // Whether the accounts of customers (or else suppliers) were divided.
  bool divided(bool customers) const { return customers ? dividedCustomers_ : dividedSuppliers_; }

private:
  void answerConditions(gljz::FrmTranCond& form);
  void run(gljz::FrmJZSN& form);
  void showReport(gljz::FrmJZBG& form);
  void showLeftOut(gljz::FrmNBalance& form);
  void follow(const platform::Form& form);

  FormAnswers answers_;
  std::vector<Step> steps_;
  std::vector<std::string> shown_;
  std::optional<ClosingReport> report_;
  std::string lastBegan_, lastCaption_;
  bool conditionsLeft_ = false, dividedCustomers_ = false, dividedSuppliers_ = false;
};

}  // namespace host
