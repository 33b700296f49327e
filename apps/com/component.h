#pragma once
// The DLL itself: where it is, and its type library.

#include <oaidl.h>
#include <windows.h>

#include <string>

namespace com {

HINSTANCE ownInstance();
std::wstring ownFile();
// Of the type library that stands in the DLL, which need not be registered for it.
HRESULT typeInformation(REFGUID id, ITypeInfo** information);

}  // namespace com
