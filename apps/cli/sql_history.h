#pragma once
// What was typed at `gljz sql`, kept in a file from one day to the next.
//
// The file is $XDG_STATE_HOME/gljz/sql_history, where that is not set ~/.local/state/gljz/sql_history, and on Windows
// %LOCALAPPDATA%\gljz\sql_history: one entry a line, its own line ends as \n. Several terminals may add to it.

#include <filesystem>
#include <string>
#include <vector>

namespace cli {

class SqlHistory {
public:
  SqlHistory();  // reads what is there, the last 1000 entries
  const std::vector<std::string>& entries() const { return entries_; }
  // Adds one entry to the file at once, unless it is the one before it again.
  void add(const std::string& entry);
  // Why the file cannot be kept, empty when it can.
  const std::string& trouble() const { return trouble_; }

private:
  std::filesystem::path file_;  // empty: nowhere to keep it
  std::vector<std::string> entries_;
  std::string trouble_;
};

}  // namespace cli
