#include "gljz_object.h"

#include <memory>

#include "TqGLJZ.h"
#include "adapters.h"
#include "component.h"
#include "component_process.h"
#include "core/cls_gljz.h"
#include "dispatch_object.h"

namespace com {
namespace {

// Ids of the type library, and the places of the members in the table below.
enum Member : std::size_t { memberServices, memberLogin, memberStartJz, memberTransfer, memberTransGL, memberMessage };

const std::vector<MemberShape>& lateMembers() {
  static const std::vector<MemberShape> members = {
      {L"ZwPubCls", 1, property, {}, 0},
      {L"m_loginCls", 2, property, {}, 0},
      {L"StartJz", 3, method, {}, 0},
      {L"Transfer",
       4,
       method,
       {L"cAccID", L"cLastYear", L"cCurrentYear", L"cParameterInfo", L"oLogin", L"cErrMsg", L"oView"},
       7},
      {L"TransGL",
       5,
       method,
       {L"cLastYear", L"cCurrentYear", L"oLogin", L"cErrMsg", L"sLastyeardb", L"sThisyeardb", L"slastAccid",
        L"scurAccid"},
       6},
      {L"getTransferMsg", 6, method, {L"strMsg"}, 1},
  };
  return members;
}

VARIANT_BOOL boolOf(bool value) {
  return value ? VARIANT_TRUE : VARIANT_FALSE;
}

// Calls the one and then, whether it failed or not, the other: what a failing entry has put into its texts by reference
// is the caller's all the same.
template <class Run, class WriteBack>
bool thenWriteBack(const Run& run, const WriteBack& writeBack) {
  bool result = false;
  try {
    const RunUnderWay underWay;
    result = run();
  } catch (...) {
    writeBack();
    throw;
  }
  writeBack();
  return result;
}

// A text by reference of a call by slot. A null pointer is one that is left out.
std::string read(BSTR* slot) {
  return slot ? textOf(*slot) : std::string();
}

void write(BSTR* slot, const std::string& text) {
  BSTR replacement = newText(text);
  SysFreeString(*slot);
  *slot = replacement;
}

class GljzObject final : public _clsGLJZ, public ISupportErrorInfo {
public:
  GljzObject() {
    prepareProcess();
    gljz_ = std::make_unique<gljz::clsGLJZ>();
    beginRunState();
    ++livingObjects;
  }
  GljzObject(const GljzObject&) = delete;
  GljzObject& operator=(const GljzObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch) || IsEqualIID(id, IID__clsGLJZ))
      *object = static_cast<_clsGLJZ*>(this);
    else if (IsEqualIID(id, IID_ISupportErrorInfo))
      *object = static_cast<ISupportErrorInfo*>(this);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
    return IsEqualIID(id, IID__clsGLJZ) ? S_OK : S_FALSE;
  }

  // ---- by name: the component's own table, which needs no registered type library

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** information) override {
    if (information == nullptr) return E_POINTER;
    *information = nullptr;
    return index == 0 ? typeInformation(IID__clsGLJZ, information) : DISP_E_BADINDEX;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    return idsOfNames(lateMembers(), names, count, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID interfaceId, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* failure, UINT* wrongArgument) override {
    const Pointer<GljzObject> alive = adopt((AddRef(), this));
    return invokeMember(lateMembers(), id, interfaceId, flags, parameters, result, failure, wrongArgument,
                        [this](std::size_t member, const Invocation& call) { return answer(member, call); });
  }

  // ---- by slot

  HRESULT STDMETHODCALLTYPE get_ZwPubCls(IDispatch** services) override { return give(services_, services); }
  HRESULT STDMETHODCALLTYPE putref_ZwPubCls(IDispatch* services) override {
    return guarded([&] { setServices(share(services)); });
  }
  HRESULT STDMETHODCALLTYPE get_m_loginCls(IDispatch** login) override { return give(login_, login); }
  HRESULT STDMETHODCALLTYPE putref_m_loginCls(IDispatch* login) override {
    return guarded([&] { setLogin(share(login)); });
  }
  HRESULT STDMETHODCALLTYPE StartJz(VARIANT_BOOL* reachedItsEnd) override {
    if (reachedItsEnd == nullptr) return E_POINTER;
    *reachedItsEnd = VARIANT_FALSE;
    return guarded([&] { *reachedItsEnd = boolOf(startJz()); });
  }
  HRESULT STDMETHODCALLTYPE Transfer(BSTR* cAccID, BSTR* cLastYear, BSTR* cCurrentYear, BSTR* cParameterInfo,
                                     IDispatch* oLogin, BSTR* cErrMsg, IDispatch*,
                                     VARIANT_BOOL* nothingReported) override {
    if (!cAccID || !cLastYear || !cCurrentYear || !cParameterInfo || !cErrMsg || !nothingReported) return E_POINTER;
    *nothingReported = VARIANT_FALSE;
    return guarded([&] {
      std::string parameters = read(cParameterInfo), message = read(cErrMsg);
      *nothingReported = boolOf(thenWriteBack(
          [&] {
            return gljz_->Transfer(read(cAccID), read(cLastYear), read(cCurrentYear), parameters,
                                   loginOf(share(oLogin)), message, nullptr);
          },
          [&] {
            write(cParameterInfo, parameters);
            write(cErrMsg, message);
          }));
    });
  }
  HRESULT STDMETHODCALLTYPE TransGL(BSTR* cLastYear, BSTR* cCurrentYear, IDispatch* oLogin, BSTR* cErrMsg,
                                    BSTR* sLastyeardb, BSTR* sThisyeardb, BSTR* slastAccid, BSTR* scurAccid,
                                    VARIANT_BOOL* nothingReported) override {
    if (!cLastYear || !cCurrentYear || !cErrMsg || !sLastyeardb || !sThisyeardb || !nothingReported) return E_POINTER;
    *nothingReported = VARIANT_FALSE;
    return guarded([&] {
      std::string message = read(cErrMsg);
      *nothingReported = boolOf(thenWriteBack(
          [&] {
            return gljz_->TransGL(read(cLastYear), read(cCurrentYear), loginOf(share(oLogin)), message,
                                  read(sLastyeardb), read(sThisyeardb), read(slastAccid), read(scurAccid));
          },
          [&] { write(cErrMsg, message); }));
    });
  }
  HRESULT STDMETHODCALLTYPE getTransferMsg(BSTR* strMsg, VARIANT_BOOL* reachedItsEnd) override {
    if (!strMsg || !reachedItsEnd) return E_POINTER;
    return guarded([&] {
      std::string message;
      *reachedItsEnd = boolOf(gljz_->getTransferMsg(message));
      write(strMsg, message);
    });
  }

private:
  ~GljzObject() { --livingObjects; }

  HRESULT guarded(const std::function<void()>& run) noexcept {
    try {
      const Pointer<GljzObject> alive = adopt((AddRef(), this));  // a host may let go of it while a dialog stands
      run();
      return S_OK;
    } catch (...) {
      return reportCurrent(IID__clsGLJZ);
    }
  }
  static HRESULT give(const Pointer<IDispatch>& object, IDispatch** target) {
    if (target == nullptr) return E_POINTER;
    *target = Pointer<IDispatch>(object).release();
    return S_OK;
  }
  void setServices(Pointer<IDispatch> services) {
    gljz_->ZwPubCls = servicesOf(services);
    services_ = std::move(services);
  }
  void setLogin(Pointer<IDispatch> login) {
    gljz_->m_loginCls = loginOf(login);
    login_ = std::move(login);
  }

  bool startJz() {
    const RunUnderWay underWay;
    return gljz_->StartJz();
  }

  Variant answer(std::size_t member, const Invocation& call) {
    switch (member) {
      case memberServices:
        if (!call.writes()) return Variant(services_.get());
        setServices(Invocation::objectArgument(call.newValue()));
        return {};
      case memberLogin:
        if (!call.writes()) return Variant(login_.get());
        setLogin(Invocation::objectArgument(call.newValue()));
        return {};
      case memberStartJz:
        return Variant(platform::Value(startJz()));
      case memberTransfer:
        return transferByName(call);
      case memberTransGL:
        return transGLByName(call);
      default: {
        std::string message;
        const bool reachedItsEnd = gljz_->getTransferMsg(message);
        call.setText(0, message);
        return Variant(platform::Value(reachedItsEnd));
      }
    }
  }
  Variant transferByName(const Invocation& call) {
    enum : std::size_t { cAccID, cLastYear, cCurrentYear, cParameterInfo, oLogin, cErrMsg };
    std::string parameters = call.text(cParameterInfo), message = call.text(cErrMsg);
    const bool nothingReported = thenWriteBack(
        [&] {
          return gljz_->Transfer(call.text(cAccID), call.text(cLastYear), call.text(cCurrentYear), parameters,
                                 loginOf(call.object(oLogin)), message, nullptr);
        },
        [&] {
          call.setText(cParameterInfo, parameters);
          call.setText(cErrMsg, message);
        });
    return Variant(platform::Value(nothingReported));
  }
  Variant transGLByName(const Invocation& call) {
    enum : std::size_t { cLastYear, cCurrentYear, oLogin, cErrMsg, sLastyeardb, sThisyeardb, slastAccid, scurAccid };
    std::string message = call.text(cErrMsg);
    const bool nothingReported = thenWriteBack(
        [&] {
          return gljz_->TransGL(call.text(cLastYear), call.text(cCurrentYear), loginOf(call.object(oLogin)), message,
                                call.text(sLastyeardb), call.text(sThisyeardb), call.text(slastAccid),
                                call.text(scurAccid));
        },
        [&] { call.setText(cErrMsg, message); });
    return Variant(platform::Value(nothingReported));
  }

  std::atomic<ULONG> references_{1};
  std::unique_ptr<gljz::clsGLJZ> gljz_;
  Pointer<IDispatch> services_, login_;
};

}  // namespace

Pointer<IDispatch> newGljzObject() {
  return adopt<IDispatch>(new GljzObject);
}

}  // namespace com
