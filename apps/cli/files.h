#pragma once
// Files that are named on the command line.

#include <string>

namespace cli {

// The whole file; "-" is standard input. UsageError when it cannot be read.
std::string readFile(const std::string& path);

// A file that is written at the end of a run: that it can be is found out at the beginning. UsageError when not. A file
// that was not there is not there afterwards.
void requireWritable(const std::string& path);

}  // namespace cli
