#include <windows.h>

#include <atomic>

#include "interrupt.h"

namespace cli {
namespace {

constexpr UINT endedByControlC = 0xC000013A;

std::atomic<bool> caught{false};

// Runs on a thread of its own. A read of the console that Ctrl-C breaks off ends as the end of the input does.
BOOL WINAPI remember(DWORD) {
  caught = true;
  return TRUE;
}

}  // namespace

HeldInterrupt::HeldInterrupt() {
  caught = false;
  SetConsoleCtrlHandler(remember, TRUE);
}

HeldInterrupt::~HeldInterrupt() {
  SetConsoleCtrlHandler(remember, FALSE);
  if (caught) ExitProcess(endedByControlC);
}

// The console cannot be asked for a whole line; the reading itself is broken off.
bool HeldInterrupt::waitForInput() {
  return !interrupted();
}

bool HeldInterrupt::interrupted() const {
  return caught;
}

void HeldInterrupt::end() {
  ExitProcess(endedByControlC);
}

}  // namespace cli
