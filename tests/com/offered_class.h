#pragma once
// OfferedClass: a class of this process that is created by a program id, while the object lives. What the registry had
// under that id is there again behind it. std::runtime_error when the class cannot be offered.
//
//   const OfferedClass<Sibling> sibling(siblingId, L"TsGFJZ.clsGFJZ");

#include <objbase.h>
#include <windows.h>

#include <array>
#include <optional>
#include <stdexcept>
#include <string>

#include "dispatch_object.h"
#include "pointer.h"

namespace com::test {

template <class T>
class OfferedClass {
public:
  OfferedClass(const CLSID& id, std::wstring programId) : programId_(std::move(programId)) {
    std::array<wchar_t, 40> text{};
    const int length = StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    readBefore();
    if (!writeClass({text.data(), static_cast<std::size_t>(length - 1)}) ||
        FAILED(CoRegisterClassObject(id, &factory_, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_)))
      throw std::runtime_error("a class of the test cannot be offered");
  }
  ~OfferedClass() {
    CoRevokeClassObject(cookie_);
    if (before_)
      writeClass(*before_);
    else if (idWasThere_)
      RegDeleteKeyW(HKEY_CLASSES_ROOT, classKey().c_str());
    else
      RegDeleteTreeW(HKEY_CLASSES_ROOT, programId_.c_str());
  }
  OfferedClass(const OfferedClass&) = delete;
  OfferedClass& operator=(const OfferedClass&) = delete;

private:
  class Factory final : public IClassFactory {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
      if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IClassFactory)) return E_NOINTERFACE;
      *object = this;
      return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
      return adopt<DispatchObject>(new T)->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
  };

  std::wstring classKey() const { return programId_ + L"\\CLSID"; }
  bool writeClass(const std::wstring& value) const {
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, classKey().c_str(), nullptr, REG_SZ, value.c_str(),
                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
  }
  void readBefore() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, programId_.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    idWasThere_ = true;
    RegCloseKey(key);
    std::array<wchar_t, 64> value{};
    DWORD size = sizeof value;
    if (RegGetValueW(HKEY_CLASSES_ROOT, classKey().c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value.data(), &size) ==
        ERROR_SUCCESS)
      before_ = value.data();
  }

  std::wstring programId_;
  std::optional<std::wstring> before_;  // the class that had the id
  bool idWasThere_ = false;
  Factory factory_;
  DWORD cookie_ = 0;
};

}  // namespace com::test
