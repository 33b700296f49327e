#include "sql_history.h"

#include <cstdlib>
#include <fstream>

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kept = 1000;

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

fs::path historyFile() {
  // A relative folder is not what the variable is for.
  if (const fs::path state = variable("XDG_STATE_HOME"); state.is_absolute()) return state / "gljz" / "sql_history";
  if (const fs::path local = variable("LOCALAPPDATA"); local.is_absolute()) return local / "gljz" / "sql_history";
  if (const fs::path home = variable("HOME"); home.is_absolute())
    return home / ".local" / "state" / "gljz" / "sql_history";
  return {};
}

std::string escaped(const std::string& entry) {
  std::string out;
  for (const char c : entry) {
    if (c == '\\')
      out += "\\\\";
    else if (c == '\n')
      out += "\\n";
    else
      out += c;
  }
  return out;
}

std::string unescaped(const std::string& line) {
  std::string out;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '\\' || i + 1 == line.size())
      out += line[i];
    else
      out += line[++i] == 'n' ? '\n' : line[i];
  }
  return out;
}

}  // namespace

SqlHistory::SqlHistory() : file_(historyFile()) {
  std::ifstream in(file_, std::ios::binary);
  std::size_t lines = 0;
  for (std::string line; std::getline(in, line); ++lines)
    if (!line.empty()) entries_.push_back(unescaped(line));
  if (entries_.size() > kept) entries_.erase(entries_.begin(), entries_.end() - kept);
  if (lines <= 2 * kept) return;
  // Now and then the file is made short again; beside it and then in its place, so that it is never half there.
  const fs::path shorter = file_.string() + ".new";
  std::ofstream out(shorter, std::ios::binary);
  for (const std::string& e : entries_) out << escaped(e) << '\n';
  out.close();
  std::error_code failed;
  if (out) fs::rename(shorter, file_, failed);
}

void SqlHistory::add(const std::string& entry) {
  if (entry.empty() || (!entries_.empty() && entries_.back() == entry)) return;
  entries_.push_back(entry);
  if (file_.empty() || !trouble_.empty()) return;
  std::error_code failed;
  if (!fs::exists(file_, failed)) {
    fs::create_directories(file_.parent_path(), failed);
    std::ofstream(file_, std::ios::binary | std::ios::app).close();
    // Statements may hold what is nobody else's business.
    fs::permissions(file_, fs::perms::owner_read | fs::perms::owner_write, failed);
  }
  std::ofstream out(file_, std::ios::binary | std::ios::app);
  out << escaped(entry) << '\n';
  out.close();
  if (!out) trouble_ = "the history is not kept: " + file_.string() + " cannot be written";
}

}  // namespace cli
