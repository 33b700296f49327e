#pragma once
// Files that are named on the command line.

#include <string>

namespace cli {

// The whole file; "-" is standard input. UsageError when it cannot be read.
std::string readFile(const std::string& path);

// A file that is written at the end of a run: that it can be is found out at the beginning.
class OutputFile {
public:
  explicit OutputFile(std::string path);  // UsageError when it cannot be written
  void write(const std::string& text);    // std::runtime_error when that fails

private:
  std::string path_;
};

}  // namespace cli
