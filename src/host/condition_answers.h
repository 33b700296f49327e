#pragma once
// The dialogs before a run, answered from what a person asked for beforehand. What the dialogs would not let a person
// do is refused.

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/form_host.h"

namespace gljz {
class DoubleList;
struct Button;
}  // namespace gljz

namespace host {

// The accounts of a double list that shall stand on the right.
struct AccountChoice {
  bool all = false;
  std::vector<std::string> codes;  // when not all; none when empty

  // "all", "none" or codes with commas between. UsageError that begins with `option` for anything else.
  static AccountChoice parse(const std::string& option, const std::string& text);
};

struct ConditionChoices {
  std::vector<std::pair<std::string, bool>> checks;  // key and tick, in the order in which they were asked for
  // Which customer and supplier accounts are carried by detail; the button is not pressed without one.
  std::optional<AccountChoice> customerDetail, supplierDetail;
  std::optional<AccountChoice> clear;  // which profit-and-loss accounts are cleared in the new year

  bool any() const { return !checks.empty() || customerDetail || supplierDetail || clear; }
};

// Ticks, presses the selection buttons that choices are there for, confirms. UsageError, before a dialog has stored
// anything, for a switch that is not offered or cannot be cleared, a button that is disabled, and an account that is on
// neither list.
class ConditionAnswers final : public DialogView {
public:
  explicit ConditionAnswers(const ConditionChoices& choices) : choices_(choices) {}

  void conditions(gljz::FrmTranCond& form) override;
  void divideAccounts(gljz::FrmYeMxSel& form) override;
  void chooseCleared(gljz::FrmSyKmSel& form) override;

private:
  void tick(gljz::FrmTranCond& form) const;

  const ConditionChoices& choices_;
};

}  // namespace host
