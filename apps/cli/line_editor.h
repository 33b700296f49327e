#pragma once
// One line from a person at a terminal, with editing and history where the machine has them.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

class LineEditor {
public:
  enum class End {
    line,     // Enter
    dropped,  // Ctrl-C: what stood in the line is gone
    closed,   // Ctrl-D in an empty line, or the end of the input
  };
  virtual ~LineEditor() = default;
  // The line comes without its end; a recalled entry may bring several at once.
  virtual End read(const std::string& prompt, std::string& line) = 0;
  // From now on the arrows find this too.
  virtual void remember(const std::string& entry) = 0;
};

// What could stand in place of the last word of a line: whole words.
using Completer = std::function<std::vector<std::string>(std::string_view word)>;

std::unique_ptr<LineEditor> makeLineEditor(const std::vector<std::string>& history, Completer completer);

}  // namespace cli
