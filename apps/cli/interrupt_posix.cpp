#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "interrupt.h"

namespace cli {
namespace {

// What ends a program that a person sits at: Ctrl-C, a closed window, a kill.
constexpr std::array<int, 3> held = {SIGINT, SIGHUP, SIGTERM};

// The handler writes into a pipe, so that a signal between the look at it and the wait for input is not missed.
volatile std::sig_atomic_t caught = 0;
int wakeRead = -1, wakeWrite = -1;
std::array<struct sigaction, held.size()> before;

extern "C" void remember(int signal) {
  const int error = errno;
  caught = signal;
  const char byte = 0;
  [[maybe_unused]] const auto written = write(wakeWrite, &byte, 1);
  errno = error;
}

}  // namespace

HeldInterrupt::HeldInterrupt() {
  int ends[2] = {-1, -1};
  if (pipe(ends) != 0) return;  // no file left: interrupts end the program as ever
  wakeRead = ends[0], wakeWrite = ends[1];
  for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
  fcntl(wakeWrite, F_SETFL, O_NONBLOCK);
  caught = 0;
  struct sigaction action {};
  action.sa_handler = remember;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < held.size(); ++i) sigaction(held[i], &action, &before[i]);
}

HeldInterrupt::~HeldInterrupt() {
  if (wakeRead < 0) return;
  for (std::size_t i = 0; i < held.size(); ++i) sigaction(held[i], &before[i], nullptr);
  close(wakeRead);
  close(wakeWrite);
  wakeRead = wakeWrite = -1;
  if (caught != 0) std::raise(caught);
}

bool HeldInterrupt::waitForInput() {
  while (!interrupted() && wakeRead >= 0) {
    pollfd ready[] = {{STDIN_FILENO, POLLIN, 0}, {wakeRead, POLLIN, 0}};
    if (poll(ready, 2, -1) < 0 && errno != EINTR) break;
    if (ready[0].revents != 0) break;
  }
  return !interrupted();
}

bool HeldInterrupt::interrupted() const {
  return caught != 0;
}

void HeldInterrupt::end() {
  const int signal = caught != 0 ? caught : SIGINT;
  std::signal(signal, SIG_DFL);
  std::raise(signal);
  std::_Exit(128 + signal);  // the signal is blocked
}

}  // namespace cli
