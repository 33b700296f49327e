#pragma once
// The SQL of the dialect's test files, block by block.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace corpus {

struct Block {
  std::string file;
  int line = 0;           // of the head, from 1
  bool succeeds = false;  // statement ok, query
  std::string sql;
};

inline std::filesystem::path folder() {
  return std::filesystem::path(GLJZ_SOURCE_DIR) / "tests" / "dialect";
}

inline std::vector<Block> readFile(const std::filesystem::path& path) {
  std::vector<Block> blocks;
  std::ifstream file(path);
  std::string line;
  bool inside = false, inSql = false;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.empty()) {
      inside = inSql = false;
    } else if (!inside) {
      if (line[0] == '#') continue;
      inside = true;
      const bool ok = line.starts_with("statement ok") || line.starts_with("query");
      inSql = ok || line.starts_with("statement error");
      if (inSql) blocks.push_back({path.filename().string(), number, ok, {}});
    } else if (line == "----") {
      inSql = false;
    } else if (inSql) {
      std::string& sql = blocks.back().sql;
      if (!sql.empty()) sql += '\n';
      sql += line;
    }
  }
  return blocks;
}

// Batches of a script, with GO on a line of its own between them.
inline std::vector<Block> readScript(const std::filesystem::path& path) {
  std::vector<Block> blocks;
  std::ifstream file(path);
  std::string line, sql;
  int number = 1;
  const auto flush = [&] {
    if (!sql.empty()) blocks.push_back({path.filename().string(), number, true, sql});
    sql.clear();
  };
  for (; std::getline(file, line); ++number) {
    if (line == "GO")
      flush();
    else
      sql += line + '\n';
  }
  flush();
  return blocks;
}

// Empty where the folder holds no corpus.
inline std::vector<Block> read() {
  std::vector<Block> all;
  std::vector<std::filesystem::path> paths;
  std::error_code none;
  for (const auto& entry : std::filesystem::directory_iterator(folder(), none)) paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  for (const auto& path : paths) {
    std::vector<Block> blocks;
    if (path.extension() == ".test") blocks = readFile(path);
    if (path.extension() == ".sql") blocks = readScript(path);
    all.insert(all.end(), blocks.begin(), blocks.end());
  }
  return all;
}

}  // namespace corpus
