#pragma once
// SettingsWatch: how far the stage of the settings tables came, read off its statements.
//
// The stage swallows whatever fails in it, so that a table in the middle of the list takes all behind it with it and
// nobody says so. The list is the system's, in its order.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/stage_watch.h"

namespace host {

class SettingsWatch {
public:
  // What the stage asks first: whether the new year has transfer definitions.
  static bool beginsStage(std::string_view statement);
  // The table whose copy begins with this statement.
  static std::optional<std::string_view> copiedTable(std::string_view statement);

  // failuresSoFar: of the run, before this statement.
  void statement(Role role, std::string_view text, std::size_t failuresSoFar);
  void selectionWasEmpty(Role role, std::string_view text);
  void ended();  // the stage asked for the component behind its tables

  std::size_t failuresBefore() const { return failuresBefore_; }
  // The text that tells that the stage did not come to its end: the table that it broke off at, and those that it did
  // not reach; nullopt when it came to its end or was never begun. A table that the new year keeps is not missed.
  std::optional<std::string> brokeOff() const;

private:
  bool began_ = false, ended_ = false;
  std::size_t failuresBefore_ = 0;
  std::vector<std::string_view> empty_;  // tables that the new year has no rows of
  std::string_view last_;                // whose copy began last; empty: none has
};

}  // namespace host
