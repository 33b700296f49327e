// The line editor without a library for it: the terminal's own editing, no history.

#include <cstdio>
#include <iostream>

#include "line_editor.h"

namespace cli {
namespace {

class PlainLines final : public LineEditor {
public:
  End read(const std::string& prompt, std::string& line) override {
    std::fputs(prompt.c_str(), stderr);
    std::fflush(stderr);
    if (!std::getline(std::cin, line)) return End::closed;
    if (line.ends_with('\r')) line.pop_back();
    return End::line;
  }
  void remember(const std::string&) override {}
};

}  // namespace

std::unique_ptr<LineEditor> makeLineEditor(const std::vector<std::string>&, Completer) {
  return std::make_unique<PlainLines>();
}

}  // namespace cli
