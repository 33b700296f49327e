#include "desktop_station.h"

#include <windows.h>

namespace windows {
namespace {

bool stationIsVisible() {
  const HWINSTA station = GetProcessWindowStation();
  USEROBJECTFLAGS flags{};
  DWORD needed = 0;
  if (!station || !GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof flags, &needed)) return false;
  return (flags.dwFlags & WSF_VISIBLE) != 0;
}

// A visible station may still have no screen behind it, as where the display driver does not start.
bool windowsCanBeMade() {
  if (!GetThreadDesktop(GetCurrentThreadId()) || !GetDesktopWindow()) return false;
  const HWND trial = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  if (!trial) return false;
  DestroyWindow(trial);
  return true;
}

}  // namespace

bool desktopIsThere() {
  return stationIsVisible() && windowsCanBeMade();
}

}  // namespace windows
