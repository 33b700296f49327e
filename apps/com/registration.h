#pragma once
// The component's entries in the registry: classes, program ids, type library.

#include <windows.h>

namespace com {

// Either everything is registered or, after a failure, nothing. Needs the rights that writing the machine's classes
// needs; without them the answer is the registry's own.
HRESULT registerServer();
// Entries that are missing are no failure.
HRESULT unregisterServer();

}  // namespace com
