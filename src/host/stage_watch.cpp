#include "host/stage_watch.h"

#include "host/settings_watch.h"
#include "verify/opening_balance_sql.h"

namespace host {

void StageWatch::statement(Role role, std::string_view text, const std::string& step) {
  if (role != Role::newYear) return;
  if (text == gljz::opening_balance_sql::dropWorkTable.text)
    own_ = Own{verification, step};
  else if (SettingsWatch::beginsStage(text) || SettingsWatch::copiedTable(text))
    own_ = Own{settingsTables, step};
}

std::string_view StageWatch::stage(const std::string& step) {
  if (own_ && own_->step != step) own_.reset();
  if (own_) return own_->name;
  return step.empty() ? preparation : std::string_view(step);
}

}  // namespace host
