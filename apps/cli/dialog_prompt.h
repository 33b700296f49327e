#pragma once
// The dialogs before a run, asked line by line on a terminal.

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "host/form_host.h"
#include "host/messages.h"
#include "interrupt.h"

namespace gljz {
class DoubleList;
struct Button;
}  // namespace gljz

namespace cli {

class DialogPrompt final : public host::DialogView {
public:
  // in has to be standard input, a terminal. language: of the words beside the forms' own.
  DialogPrompt(std::istream& in, std::ostream& out, const std::string& language)
      : in_(in), out_(out), messages_(language) {}

  // Numbers toggle switches, letters press the selection buttons; an empty line confirms; q, the end of the input or an
  // interrupt leaves. From here until a confirmation an interrupt is held: endIfInterrupted() lets it through.
  void conditions(gljz::FrmTranCond& form) override;
  // Numbers move entries to the other list; an empty line or the end of the input confirms.
  void divideAccounts(gljz::FrmYeMxSel& form) override;
  void chooseCleared(gljz::FrmSyKmSel& form) override;
  // p prints into a file, n shows the records without a counterpart; an empty line or the end of the input closes.
  void closingReport(gljz::FrmJZBG& form) override;
  void leftOut(gljz::FrmNBalance& form) override;
  std::string printFile(const std::string& dialog) override;
  void printEnded(const host::PrintOutcome& outcome) override;

  bool interrupted() const override { return held_ && held_->interrupted(); }
  // Once what the conditions stored has been put back. Returns when nobody has interrupted.
  void endIfInterrupted();

private:
  std::string text(const char* key, const std::vector<platform::Value>& arguments = {}) const;
  void sayWhyDisabled(const gljz::FrmTranCond& form, const gljz::Button& button, const char* enabledBy);
  std::optional<std::string> answer(const std::string& question);
  void show(const gljz::FrmTranCond& form);
  void show(const gljz::DoubleList& list, const std::string& leftTitle, const std::string& rightTitle);
  void move(gljz::DoubleList& list, const std::string& words);
  void complain(const std::string& word);
  void press(const std::function<void()>& button);

  std::istream& in_;
  std::ostream& out_;
  host::Messages messages_;
  std::optional<HeldInterrupt> held_;
};

}  // namespace cli
