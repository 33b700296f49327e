#pragma once
// Whether there is somebody to show a window to.

namespace windows {

// False in a service and wherever else the process's window station cannot be seen, or no window can be made. A window
// that waits for a person would wait for ever there. The one place where this is decided.
bool desktopIsThere();

}  // namespace windows
