#include "common_controls.h"

#include <commctrl.h>

namespace windows {
namespace {

constexpr int manifestOfModule = 2;

// Made once. It is not released: when the module goes at the process's end, so does it, and before that a window may
// still need it.
HANDLE context() {
  static const HANDLE made = [] {
    ACTCTXW wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    wanted.hModule = ownModule();
    wanted.lpResourceName = MAKEINTRESOURCEW(manifestOfModule);
    return CreateActCtxW(&wanted);
  }();
  return made;
}

}  // namespace

HINSTANCE ownModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&ownModule), &module);
  return module;
}

CommonControls::CommonControls() {
  active_ = context() != INVALID_HANDLE_VALUE && ActivateActCtx(context(), &cookie_);
  INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
}

CommonControls::~CommonControls() {
  if (active_) DeactivateActCtx(0, cookie_);
}

}  // namespace windows
