#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "host/terminal_session.h"

namespace host::test {

TerminalSession::TerminalSession(const std::vector<std::string>& words, const TemporaryFolder& home, int columns,
                                 bool colours) {
  winsize size{};
  size.ws_row = 40;
  size.ws_col = static_cast<unsigned short>(columns);
  process_ = forkpty(&terminal_, nullptr, nullptr, &size);
  if (process_ == 0) {
    setenv("HOME", home.text().c_str(), 1);
    setenv("XDG_STATE_HOME", home.file("state").c_str(), 1);
    setenv("TERM", "xterm", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    if (colours)
      unsetenv("NO_COLOR");
    else
      setenv("NO_COLOR", "1", 1);
    std::vector<std::string> all{GLJZ_PROGRAM};
    all.insert(all.end(), words.begin(), words.end());
    std::vector<char*> arguments;
    for (std::string& word : all) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execv(GLJZ_PROGRAM, arguments.data());
    _exit(127);
  }
  EXPECT_GT(process_, 0) << "there is no terminal to lend";
}

TerminalSession::~TerminalSession() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  if (terminal_ >= 0) close(terminal_);
}

bool TerminalSession::readMore(int milliseconds) {
  pollfd p{terminal_, POLLIN, 0};
  if (poll(&p, 1, milliseconds) <= 0) return true;
  char buffer[4096];
  const ssize_t n = read(terminal_, buffer, sizeof buffer);
  if (n <= 0) {
    ended_ = true;  // the program has closed its end
    return false;
  }
  shown_.append(buffer, static_cast<std::size_t>(n));
  return true;
}

bool TerminalSession::expectWithin(const std::string& text, int milliseconds) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  for (bool open = true;; open = readMore(20)) {
    const std::size_t at = shown_.find(text, seen_);
    if (at != std::string::npos) {
      part_ = shown_.substr(seen_, at + text.size() - seen_);
      seen_ = at + text.size();
      return true;
    }
    if (!open || std::chrono::steady_clock::now() >= until) return false;
  }
}

std::string TerminalSession::expect(const std::string& text) {
  if (expectWithin(text, 30'000)) return part_;
  ADD_FAILURE() << "the terminal does not show \"" << text << "\"; it shows\n" << shown_;
  return "";
}

void TerminalSession::send(const std::string& keys) {
  for (std::size_t at = 0; at < keys.size() && !ended_;) {
    const ssize_t n = write(terminal_, keys.data() + at, keys.size() - at);
    if (n <= 0) return;  // the program has gone, which the next expectation tells
    at += static_cast<std::size_t>(n);
  }
}

int TerminalSession::finish() {
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (std::chrono::steady_clock::now() < until) {
    if (!readMore(100)) break;
  }
  int status = 0;
  if (waitpid(process_, &status, WNOHANG) == 0) {
    usleep(500'000);  // closing the terminal and ending are two steps
    if (waitpid(process_, &status, WNOHANG) == 0) {
      ADD_FAILURE() << "the program does not end; it shows\n" << shown_;
      return -1;
    }
  }
  process_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace host::test
