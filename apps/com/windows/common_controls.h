#pragma once
// The window system's common controls, in their themed version when this module's manifest asks for it, whatever the
// program around it has asked for.

#include <windows.h>

namespace windows {

// The DLL or program that this code stands in.
HINSTANCE ownModule();

// While it lives, controls that its thread makes are those of the manifest (resource 2 of the module, see
// common_controls.manifest). A module without one gets the program's. Lives must nest.
class CommonControls {
public:
  CommonControls();
  ~CommonControls();
  CommonControls(const CommonControls&) = delete;
  CommonControls& operator=(const CommonControls&) = delete;

private:
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

}  // namespace windows
