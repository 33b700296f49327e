#include "files.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <system_error>

#include "host/usage_error.h"
#include "host/utf8_path.h"

namespace cli {

using host::UsageError;

std::string readFile(const std::string& path) {
  if (path == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
  std::error_code failure;
  if (std::filesystem::is_directory(host::pathOf(path), failure)) throw UsageError("file " + path + " is a folder");
  std::ifstream in(host::pathOf(path), std::ios::binary);
  if (!in) throw UsageError("file " + path + " cannot be read");
  std::string text{std::istreambuf_iterator<char>(in), {}};
  if (in.bad()) throw UsageError("file " + path + " cannot be read");
  return text;
}

void requireWritable(const std::string& path) {
  std::error_code failure;
  const bool there = std::filesystem::exists(host::pathOf(path), failure);
  if (!std::ofstream(host::pathOf(path), std::ios::binary | std::ios::app))
    throw UsageError("file " + path + " cannot be written");
  if (!there) std::filesystem::remove(host::pathOf(path), failure);
}

}  // namespace cli
