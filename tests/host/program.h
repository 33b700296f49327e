#pragma once
// Runs the program as a person would, and other programs that read what it wrote, and keeps what they said. No shell
// stands between: arguments arrive letter for letter.
//
//   const Answer a = gljz({"sql", "--server", server, "-q", "select 1 as a"});
//   const Answer text = runProgram({"pdftotext", "-layout", file, "-"});

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "host/temporary_folder.h"
#include "host/utf8_path.h"

namespace host::test {

struct Answer {
  int code = -1;
  std::string out, err;
  // Standard error without its last line end.
  std::string line() const { return err.ends_with('\n') ? err.substr(0, err.size() - 1) : err; }
};

inline std::string contentOf(const std::string& path) {
  std::ifstream in(pathOf(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Runs a program to its end. words: its file, or a name for which the system's search path is looked through, and its
// arguments; UTF-8. input goes to standard input, and all three standard handles are files. The code is the program's
// own; 127 when it cannot be started, 128 and the number of the signal that ended it on systems that have signals.
Answer runProgram(const std::vector<std::string>& words, const std::string& input = "");

inline Answer gljz(std::vector<std::string> words, const std::string& input = "") {
  words.insert(words.begin(), GLJZ_PROGRAM);
  return runProgram(words, input);
}

// What an answer of "--format csv" says, without the mark that stands at the head of a file.
inline std::string csv(const Answer& a) {
  return a.out.rfind("\xEF\xBB\xBF", 0) == 0 ? a.out.substr(3) : a.out;
}

}  // namespace host::test
