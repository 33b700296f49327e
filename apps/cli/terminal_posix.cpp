#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>

#include "terminal.h"

namespace cli {

void prepareTerminal() {
  std::signal(SIGPIPE, SIG_IGN);
}

bool inputIsTerminal() {
  return isatty(STDIN_FILENO) != 0;
}

bool errorIsTerminal() {
  return isatty(STDERR_FILENO) != 0;
}

std::size_t errorWidth() {
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
  return 80;
}

std::vector<std::string> programWords(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

}  // namespace cli
