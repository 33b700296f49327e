#pragma once
// The forms of a run without a window: on a terminal, in a pipe, or silent.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/forms.h"

namespace gljz {
class FrmJZBG;
class FrmSyKmSel;
class FrmTranCond;
class FrmYeMxSel;
}  // namespace gljz

namespace host {

struct Step {
  std::string text, mark;  // mark "Y" when the step is done
};

// Where progress is told. A terminal draws one live line, a pipe gets a line for each finished step.
class ProgressSink {
public:
  virtual ~ProgressSink() = default;
  virtual void stepBegan(const std::string& text) = 0;
  virtual void stepDone(const std::string& text) = 0;
  virtual void caption(const std::string& text) = 0;
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
};

// What the closing report showed: counts of right and wrong accounts, and its rows without the header row.
struct ClosingReport {
  std::string right, wrong;
  std::vector<std::vector<std::string>> rows;
};

struct FormAnswers {
  std::function<void()> conditions;  // takes the place of frmTranCond: leaves the parameter text in the run state
  ProgressSink* progress = nullptr;  // may be null
  std::string programFolder;
  DialogView* dialogs = nullptr;  // may be null: the dialogs are closed at once
};

class FormHost final : public platform::FormHost {
public:
  explicit FormHost(FormAnswers answers) : answers_(std::move(answers)) {}

  // frmJZSN: its timer fires. The dialogs before a run are answered. The closing report is read and confirmed, every
  // other form is closed at once.
  void ShowModal(platform::Form& form) override;
  void Changed(platform::Form& form) override;
  void DoEvents() override {}
  void ScreenPointer(int) override {}
  std::string ProgramFolder() const override { return answers_.programFolder; }

  // The step list as frmJZSN left it; empty when it was never shown.
  const std::vector<Step>& steps() const { return steps_; }
  const std::vector<std::string>& shown() const { return shown_; }        // names, in order
  const std::optional<ClosingReport>& report() const { return report_; }  // nullopt when it was not shown

private:
  void answerConditions(gljz::FrmTranCond& form);
  void readReport(gljz::FrmJZBG& form);
  void follow(const platform::Form& form);

  FormAnswers answers_;
  std::vector<Step> steps_;
  std::vector<std::string> shown_;
  std::optional<ClosingReport> report_;
  std::string lastBegan_, lastCaption_;
};

}  // namespace host
