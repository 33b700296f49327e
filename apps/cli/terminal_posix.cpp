#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "terminal.h"

namespace cli {

void prepareTerminal() {
  std::signal(SIGPIPE, SIG_IGN);
}

bool inputIsTerminal() {
  return isatty(STDIN_FILENO) != 0;
}

bool outputIsTerminal() {
  return isatty(STDOUT_FILENO) != 0;
}

bool outputIsFile() {
  struct stat status {};
  return fstat(STDOUT_FILENO, &status) == 0 && S_ISREG(status.st_mode);
}

bool errorIsTerminal() {
  return isatty(STDERR_FILENO) != 0;
}

std::size_t outputWidth() {
  winsize size{};
  if (!outputIsTerminal()) return 0;
  return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

std::size_t errorWidth() {
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
  return 80;
}

std::size_t errorHeight() {
  winsize size{};
  return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row > 0 ? size.ws_row : 24;
}

bool errorTakesEscapes() {
  const char* kind = std::getenv("TERM");
  return errorIsTerminal() && kind != nullptr && std::string_view(kind) != "dumb" && *kind != '\0';
}

bool errorTakesColours() {
  const char* none = std::getenv("NO_COLOR");
  return errorTakesEscapes() && (none == nullptr || *none == '\0');
}

std::optional<std::string> askSecret(const std::string& question) {
  termios shown{};
  if (tcgetattr(STDIN_FILENO, &shown) != 0) return std::nullopt;
  termios hidden = shown;
  hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  std::fputs(question.c_str(), stderr);
  std::fflush(stderr);
  tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
  std::string line;
  const bool read = static_cast<bool>(std::getline(std::cin, line));
  tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
  std::fputs("\n", stderr);
  if (!read) return std::nullopt;
  return line;
}

std::vector<std::string> programWords(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

}  // namespace cli
