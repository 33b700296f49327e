#pragma once
// The commands. Each takes the words behind its name and returns the exit code; host::UsageError is exit code 2.

#include <string>
#include <vector>

namespace cli {

using Words = std::vector<std::string>;

int runDemo(const Words& words);
int runAccount(const Words& words);
int runSql(const Words& words);
int runTransfer(const Words& words);
int runTransGL(const Words& words);
int runGenerate(const Words& words);

}  // namespace cli
