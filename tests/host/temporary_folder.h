#pragma once
// A folder that goes away with the test.

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/utf8_path.h"

namespace host::test {

class TemporaryFolder {
public:
  TemporaryFolder() {
    static std::atomic<int> number{0};
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    path_ = std::filesystem::temp_directory_path() /
            ("gljz-host-" + std::to_string(ticks) + "-" + std::to_string(++number));
    std::filesystem::create_directories(path_);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string text() const { return textOf(path_); }
  std::string file(const std::string& name) const { return textOf(path_ / pathOf(name)); }
  std::string write(const std::string& name, const std::string& content) const {
    std::ofstream(path_ / pathOf(name), std::ios::binary) << content;
    return file(name);
  }

private:
  std::filesystem::path path_;
};

}  // namespace host::test
