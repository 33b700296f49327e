#pragma once
// StageWatch: what the journal calls the stage of a statement.
//
// The run names its steps in m_strFuncDesc, but not all of them: before the entry has named anything there is no text,
// and the settings tables and the verification after the commit run under the text of the step before them. A failure
// among them would stand under a stage that has long ended. They are known by their statements and get names of the
// journal's own, in English as everything that the journal says itself; report_model.h tells them in a language.

#include <optional>
#include <string>
#include <string_view>

namespace host {

enum class Role { newYear, closingYear, privateConnection };

class StageWatch {
public:
  static constexpr std::string_view preparation = "Preparation";
  static constexpr std::string_view settingsTables = "Settings tables";
  static constexpr std::string_view verification = "Verification of the opening balances";

  // Before each statement: may begin a stage of the journal's own, which lasts until the run names another step.
  void statement(Role role, std::string_view text, const std::string& step);
  // The stage now, while the run names this step.
  std::string_view stage(const std::string& step);

private:
  struct Own {
    std::string_view name;
    std::string step;  // that the run names meanwhile
  };
  std::optional<Own> own_;
};

}  // namespace host
