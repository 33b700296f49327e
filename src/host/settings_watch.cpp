#include "host/settings_watch.h"

#include <algorithm>
#include <array>

#include "core/run_state.h"
#include "settings/other_tables_sql.h"

namespace host {
namespace {

namespace sql = gljz::other_tables_sql;

// As the stage copies them. The new year may keep the first three; the first table of all, the transfer definitions,
// is no copy.
constexpr std::string_view definitions = "GL_bautotran";
constexpr std::size_t guarded = 3;
constexpr std::array<std::string_view, 14> tables = {
    "GL_bmulti",          "GL_btext",          "GL_cvprintinfset",   "GL_mcodeauth", "GL_mcodeused",
    "GL_mitemused",       "GL_mybooktype",     "GL_myoutput",        "GL_DzDwSet",   "GL_MRReport_Main",
    "GL_MRShowItem_Main", "GL_MRReportOption", "GL_MRColumnDic_Set", "GL_PRN_Format"};

}  // namespace

bool SettingsWatch::beginsStage(std::string_view statement) {
  static const std::string first = sql::selectAll(std::string(definitions));
  return statement == first;
}

std::optional<std::string_view> SettingsWatch::copiedTable(std::string_view statement) {
  static const std::string head = sql::deleteAll("");
  if (!statement.starts_with(head)) return std::nullopt;
  const auto found = std::find(tables.begin(), tables.end(), statement.substr(head.size()));
  return found == tables.end() ? std::nullopt : std::optional(*found);
}

void SettingsWatch::statement(Role role, std::string_view text, std::size_t failuresSoFar) {
  if (role != Role::newYear) return;
  if (beginsStage(text)) {
    *this = {};
    began_ = true;
    failuresBefore_ = failuresSoFar;
  } else if (const auto table = copiedTable(text); table && began_) {
    last_ = *table;
  }
}

void SettingsWatch::selectionWasEmpty(Role role, std::string_view text) {
  if (role != Role::newYear || !began_ || !last_.empty()) return;
  static const std::string head = sql::selectAll("");
  if (!text.starts_with(head)) return;
  for (std::size_t i = 0; i < guarded; ++i)
    if (text.substr(head.size()) == tables[i]) empty_.push_back(tables[i]);
}

void SettingsWatch::ended() {
  ended_ = true;
}

std::optional<std::string> SettingsWatch::brokeOff() const {
  if (!began_ || ended_) return std::nullopt;
  const auto last = std::find(tables.begin(), tables.end(), last_);
  std::string missed;
  for (auto table = last == tables.end() ? tables.begin() : last + 1; table != tables.end(); ++table) {
    const bool kept = table - tables.begin() < static_cast<std::ptrdiff_t>(guarded) && gljz::run.m_bCoverData != 1 &&
                      std::find(empty_.begin(), empty_.end(), *table) == empty_.end();
    if (!kept) missed += (missed.empty() ? "" : ", ") + std::string(*table);
  }
  return "the settings tables were not carried to the end: broke off at " +
         std::string(last == tables.end() ? definitions : last_) + ", not reached: " + (missed.empty() ? "-" : missed);
}

}  // namespace host
