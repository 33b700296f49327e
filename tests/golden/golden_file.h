#pragma once
// The golden files: what each statement becomes on its way, as text that a review compares.
//
//   === <name>
//   the statement, as many lines as it has
//   --- typed
//   the bound tree
//   --- SQLite
//   the emitted text, folded, and one line for each of its parameters
//
// A batch of several statements has both sections once for each. Lines in front of the first entry are a comment.

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace golden {

struct Entry {
  std::string name, statement;
  std::string sections;  // from the first "--- " line on, with a line feed at its end
  int line = 0;          // of the entry's first line in its file
};

struct File {
  std::string comment;
  std::vector<Entry> entries;
};

// A missing file reads as an empty one. Throws std::runtime_error "file:line: what" for text that is no golden file.
File read(const std::filesystem::path& path);
void write(const std::filesystem::path& path, const File& file);

// Where the golden files stand.
std::filesystem::path folder();
// The golden files that are there, by name, sorted.
std::vector<std::string> names();

// Set by the switch --rewrite-golden: the tests then write what they would have compared.
extern bool rewriting;
// What a failure says about the way out.
extern const char* const advice;

}  // namespace golden
