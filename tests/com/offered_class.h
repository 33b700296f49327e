#pragma once
// OfferedClass: a class of this process that is created by a program id, while the object lives.
//
//   const OfferedClass<Sibling> sibling(siblingId, L"TsGFJZ.clsGFJZ");

#include <objbase.h>
#include <windows.h>

#include <array>
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
    RegSetKeyValueW(HKEY_CLASSES_ROOT, (programId_ + L"\\CLSID").c_str(), nullptr, REG_SZ, text.data(),
                    static_cast<DWORD>(static_cast<std::size_t>(length) * sizeof(wchar_t)));
    CoRegisterClassObject(id, &factory_, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
  }
  ~OfferedClass() {
    CoRevokeClassObject(cookie_);
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

  std::wstring programId_;
  Factory factory_;
  DWORD cookie_ = 0;
};

}  // namespace com::test
