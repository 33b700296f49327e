#include "files.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "host/usage_error.h"

namespace cli {

using host::UsageError;

std::string readFile(const std::string& path) {
  if (path == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
  std::error_code failure;
  if (std::filesystem::is_directory(path, failure)) throw UsageError("file " + path + " is a folder");
  std::ifstream in(path, std::ios::binary);
  if (!in) throw UsageError("file " + path + " cannot be read");
  std::string text{std::istreambuf_iterator<char>(in), {}};
  if (in.bad()) throw UsageError("file " + path + " cannot be read");
  return text;
}

OutputFile::OutputFile(std::string path) : path_(std::move(path)) {
  if (!std::ofstream(path_, std::ios::binary | std::ios::app)) throw UsageError("file " + path_ + " cannot be written");
}

void OutputFile::write(const std::string& text) {
  std::ofstream out(path_, std::ios::binary | std::ios::trunc);
  out << text;
  out.flush();
  if (!out) throw std::runtime_error("file " + path_ + " cannot be written");
}

}  // namespace cli
