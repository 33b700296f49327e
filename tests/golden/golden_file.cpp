#include "golden/golden_file.h"

#include <algorithm>
#include <fstream>

namespace golden {

bool rewriting = false;
const char* const advice =
    "If the new text is meant: test_golden --rewrite-golden writes the golden files anew, and the review reads their "
    "diff.";

File read(const std::filesystem::path& path) {
  File file;
  std::ifstream in(path, std::ios::binary);
  std::string line;
  const auto wrong = [&](int number, const std::string& what) {
    throw std::runtime_error(path.filename().string() + ":" + std::to_string(number) + ": " + what);
  };
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.starts_with("=== ")) {
      file.entries.push_back({line.substr(4), {}, {}, number});
      continue;
    }
    if (file.entries.empty()) {
      file.comment += line + '\n';
      continue;
    }
    Entry& e = file.entries.back();
    if (e.sections.empty() && !line.starts_with("--- "))
      e.statement += line + '\n';
    else
      e.sections += line + '\n';
  }
  for (Entry& e : file.entries) {
    std::string& last = e.sections.empty() ? e.statement : e.sections;
    while (last.ends_with("\n\n")) last.pop_back();
    if (!e.statement.empty()) e.statement.pop_back();
    if (e.statement.empty()) wrong(e.line, "an entry without a statement");
  }
  return file;
}

void write(const std::filesystem::path& path, const File& file) {
  std::ofstream out(path, std::ios::binary);
  out << file.comment;
  for (std::size_t i = 0; i < file.entries.size(); ++i) {
    const Entry& e = file.entries[i];
    if (i > 0) out << '\n';
    out << "=== " << e.name << '\n' << e.statement << '\n' << e.sections;
  }
  out.flush();
  if (!out) throw std::runtime_error(path.string() + " cannot be written");
}

std::filesystem::path folder() {
  return std::filesystem::path(GLJZ_SOURCE_DIR) / "tests" / "golden";
}

std::vector<std::string> names() {
  std::vector<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(folder()))
    if (entry.path().extension() == ".golden") found.push_back(entry.path().filename().string());
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace golden
