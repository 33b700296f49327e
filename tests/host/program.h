#pragma once
// Runs the program as a person would, and keeps what it said.

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "host/temporary_folder.h"

namespace host::test {

struct Answer {
  int code = -1;
  std::string out, err;
  // Standard error without its last line end.
  std::string line() const { return err.ends_with('\n') ? err.substr(0, err.size() - 1) : err; }
};

inline std::string shellQuoted(const std::string& word) {
  std::string out = "'";
  for (const char c : word) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return out + "'";
}

inline std::string contentOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// words: a list of arguments. input goes to standard input.
inline Answer gljz(const std::vector<std::string>& words, const std::string& input = "") {
  const TemporaryFolder folder;
  folder.write("in", input);
  std::string command = shellQuoted(GLJZ_PROGRAM);
  for (const std::string& word : words) command += " " + shellQuoted(word);
  command += " <" + shellQuoted(folder.file("in")) + " >" + shellQuoted(folder.file("out")) + " 2>" +
             shellQuoted(folder.file("err"));
  const int status = std::system(command.c_str());
  return {status >= 256 ? status / 256 : status, contentOf(folder.file("out")), contentOf(folder.file("err"))};
}

// What an answer of "--format csv" says, without the mark that stands at the head of a file.
inline std::string csv(const Answer& a) {
  return a.out.rfind("\xEF\xBB\xBF", 0) == 0 ? a.out.substr(3) : a.out;
}

}  // namespace host::test
