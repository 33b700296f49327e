#pragma once
// The entries of the DLL, as the tools that register components call them.

#include <objbase.h>
#include <windows.h>

#include <stdexcept>
#include <string>

namespace com::test {

// The checkout is the drive on which the program was started.
inline std::wstring componentFile() {
  const std::string name = GLJZ_COMPONENT;
  std::wstring file(L"Z:");
  for (const char c : name) file += c == '/' ? L'\\' : static_cast<wchar_t>(c);
  return file;
}

class ComponentEntries {
public:
  ComponentEntries() : library_(LoadLibraryW(componentFile().c_str())) {
    if (library_ == nullptr) throw std::runtime_error("the component cannot be loaded");
  }
  ~ComponentEntries() { FreeLibrary(library_); }
  ComponentEntries(const ComponentEntries&) = delete;
  ComponentEntries& operator=(const ComponentEntries&) = delete;

  HRESULT registerServer() const { return call("DllRegisterServer"); }
  HRESULT unregisterServer() const { return call("DllUnregisterServer"); }
  HRESULT canUnloadNow() const { return call("DllCanUnloadNow"); }
  HMODULE module() const { return library_; }

private:
  HRESULT call(const char* name) const {
    using Entry = HRESULT(WINAPI*)();
    const auto entry = reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
    return entry ? entry() : E_NOTIMPL;
  }

  HMODULE library_;
};

}  // namespace com::test
