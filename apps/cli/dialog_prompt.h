#pragma once
// The dialogs before a run, asked line by line on a terminal.

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "host/form_host.h"

namespace gljz {
class DoubleList;
}  // namespace gljz

namespace cli {

class DialogPrompt final : public host::DialogView {
public:
  DialogPrompt(std::istream& in, std::ostream& out) : in_(in), out_(out) {}

  // Numbers toggle switches, letters press the selection buttons; an empty line confirms, q or the end of the input
  // leaves.
  void conditions(gljz::FrmTranCond& form) override;
  // Numbers move entries to the other list; an empty line or the end of the input confirms.
  void divideAccounts(gljz::FrmYeMxSel& form) override;
  void chooseCleared(gljz::FrmSyKmSel& form) override;
  // p prints into a file, n shows the records without a counterpart; an empty line or the end of the input closes.
  void closingReport(gljz::FrmJZBG& form) override;
  void leftOut(gljz::FrmNBalance& form) override;
  std::string printFile(const std::string& dialog) override;
  void printEnded(const host::PrintOutcome& outcome) override;

private:
  std::optional<std::string> answer(const std::string& question);
  void show(const gljz::FrmTranCond& form);
  void show(const gljz::DoubleList& list, const std::string& leftTitle, const std::string& rightTitle);
  void move(gljz::DoubleList& list, const std::string& words);
  void complain(const std::string& word);
  void press(const std::function<void()>& button);

  std::istream& in_;
  std::ostream& out_;
};

}  // namespace cli
