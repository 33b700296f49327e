// The entries of the DLL.

#include "component.h"

#include <initguid.h>

#include <new>

#include "TqGLJZ.h"
#include "component_process.h"
#include "dispatch_object.h"
#include "gljz_object.h"
#include "reference_host.h"
#include "registration.h"

namespace com {
namespace {

HINSTANCE instance = nullptr;
std::atomic<long> serverLocks{0};

using Maker = Pointer<IDispatch> (*)();

// One for each class of the component; it lives as long as the DLL, which stays while a host holds it.
class ClassFactory final : public IClassFactory {
public:
  explicit ClassFactory(Maker make) : make_(make) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory);
    *object = known ? static_cast<IClassFactory*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++serverLocks) + 1; }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--serverLocks) + 1; }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    try {
      return make_()->QueryInterface(id, object);
    } catch (...) {
      return reportCurrent(IID_IClassFactory);
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    serverLocks += lock ? 1 : -1;
    return S_OK;
  }

private:
  Maker make_;
};

}  // namespace

HINSTANCE ownInstance() {
  return instance;
}

std::wstring ownFile() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(instance, name.data(), static_cast<DWORD>(name.size()));
    if (length < name.size()) {
      name.resize(length);
      return name;
    }
    name.resize(name.size() * 2);
  }
}

HRESULT typeInformation(REFGUID id, ITypeInfo** information) {
  Pointer<ITypeLib> library;
  const HRESULT code = LoadTypeLibEx(ownFile().c_str(), REGKIND_NONE, library.receive());
  return FAILED(code) ? code : library->GetTypeInfoOfGuid(id, information);
}

}  // namespace com

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* reserved) {
  if (reason == DLL_PROCESS_ATTACH) {
    com::instance = module;
    DisableThreadLibraryCalls(module);
  }
  // At the end of the process other modules are gone already: what the run still holds must not be released.
  if (reason == DLL_PROCESS_DETACH && reserved != nullptr) com::abandonRun();
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** object) {
  static com::ClassFactory gljz(com::newGljzObject), host(com::newReferenceHost);
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (IsEqualCLSID(classId, CLSID_clsGLJZ)) return gljz.QueryInterface(id, object);
  if (IsEqualCLSID(classId, CLSID_ReferenceHost)) return host.QueryInterface(id, object);
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  const bool idle = com::livingObjects == 0 && com::serverLocks == 0 && !com::runStateBegan();
  return idle ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return com::registerServer();
}

STDAPI DllUnregisterServer() {
  return com::unregisterServer();
}

}  // extern "C"
