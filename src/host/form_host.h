#pragma once
// The forms of a run without a window: on a terminal, in a pipe, or silent.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/forms.h"

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

struct FormAnswers {
  std::function<void()> conditions;  // answers frmTranCond: leaves the parameter text in the run state
  ProgressSink* progress = nullptr;  // may be null
  std::string programFolder;
};

class FormHost final : public platform::FormHost {
public:
  explicit FormHost(FormAnswers answers) : answers_(std::move(answers)) {}

  // frmJZSN: its timer fires. frmTranCond: the conditions are answered. Every other form is let through as if it had
  // been closed at once; its contents stay readable.
  void ShowModal(platform::Form& form) override;
  void Changed(platform::Form& form) override;
  void DoEvents() override {}
  void ScreenPointer(int) override {}
  std::string ProgramFolder() const override { return answers_.programFolder; }

  // The step list as frmJZSN left it; empty when it was never shown.
  const std::vector<Step>& steps() const { return steps_; }
  const std::vector<std::string>& shown() const { return shown_; }  // names, in order

private:
  void follow(const platform::Form& form);

  FormAnswers answers_;
  std::vector<Step> steps_;
  std::vector<std::string> shown_;
  std::string lastBegan_, lastCaption_;
};

}  // namespace host
