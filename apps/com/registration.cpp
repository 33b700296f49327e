#include "registration.h"

#include <array>
#include <string>

#include "TqGLJZ.h"
#include "component.h"
#include "pointer.h"

namespace com {
namespace {

struct Class {
  const CLSID& id;
  const wchar_t *programId, *title;
};
const std::array<Class, 2> classes = {
    {{CLSID_clsGLJZ, L"TqGLJZ.clsGLJZ", L"Year-end carry-forward"},
     {CLSID_ReferenceHost, L"TqGLJZ.ReferenceHost", L"Reference host of the year-end carry-forward"}}};
constexpr WORD majorVersion = 1, minorVersion = 0;

std::wstring text(REFGUID id) {
  std::array<wchar_t, 40> buffer{};
  StringFromGUID2(id, buffer.data(), static_cast<int>(buffer.size()));
  return buffer.data();
}

// The first failure of several steps is the answer.
class Steps {
public:
  // An empty name is the key's own value.
  void set(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    if (failed_ != ERROR_SUCCESS) return;
    failed_ = RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, value.c_str(),
                              static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  }
  void remove(const std::wstring& key) {
    const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
    if (failed_ == ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) failed_ = status;
  }
  HRESULT result() const { return HRESULT_FROM_WIN32(static_cast<DWORD>(failed_)); }

private:
  LSTATUS failed_ = ERROR_SUCCESS;
};

HRESULT registerClasses(const std::wstring& file) {
  Steps steps;
  for (const Class& c : classes) {
    const std::wstring key = L"CLSID\\" + text(c.id), programId = c.programId;
    steps.set(key, L"", c.title);
    steps.set(key + L"\\InprocServer32", L"", file);
    steps.set(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    steps.set(key + L"\\ProgID", L"", programId);
    steps.set(key + L"\\TypeLib", L"", text(LIBID_TqGLJZ));
    steps.set(key + L"\\Version", L"", std::to_wstring(majorVersion) + L"." + std::to_wstring(minorVersion));
    steps.set(key + L"\\Programmable", L"", L"");
    steps.set(programId, L"", c.title);
    steps.set(programId + L"\\CLSID", L"", text(c.id));
  }
  return steps.result();
}

}  // namespace

HRESULT registerServer() {
  const std::wstring file = ownFile();
  Pointer<ITypeLib> library;
  HRESULT code = LoadTypeLibEx(file.c_str(), REGKIND_REGISTER, library.receive());
  if (SUCCEEDED(code)) code = registerClasses(file);
  if (FAILED(code)) unregisterServer();
  return code;
}

HRESULT unregisterServer() {
  Steps steps;
  for (const Class& c : classes) {
    steps.remove(L"CLSID\\" + text(c.id));
    steps.remove(c.programId);
  }
  // What a system answers for a library that is not registered differs; so it is asked first.
  BSTR path = nullptr;
  HRESULT library = S_OK;
  if (SUCCEEDED(QueryPathOfRegTypeLib(LIBID_TqGLJZ, majorVersion, minorVersion, LOCALE_NEUTRAL, &path)))
    library = UnRegisterTypeLib(LIBID_TqGLJZ, majorVersion, minorVersion, LOCALE_NEUTRAL, SYS_WIN64);
  SysFreeString(path);
  const HRESULT code = steps.result();
  return FAILED(code) ? code : library;
}

}  // namespace com
