#pragma once
// Relay: an object of the host's own in front of another one. It answers what it was told to, passes every other call
// on and remembers them all. The component sees an automation object like any other: it has to call it by name.
//
//   const Pointer<Relay> login = adopt(new Relay(server.login()));
//   login->answer(L"LoginConnText", Variant(Value("Database=...")));

#include <map>
#include <string>
#include <vector>

#include "pointer.h"
#include "variant.h"

namespace com::test {

class Relay final : public IDispatch {
public:
  explicit Relay(Pointer<IDispatch> behind) : behind_(std::move(behind)) {}
  Relay(const Relay&) = delete;
  Relay& operator=(const Relay&) = delete;

  // The member gives this from now on, whatever it is called with.
  void answer(const std::wstring& member, Variant value);

  // In their order: the member, and its first argument where that is a text.
  const std::vector<std::string>& heard() const { return heard_; }
  // The calls that begin so.
  int heard(const std::string& beginning) const;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** information) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* failure, UINT* wrong) override;

private:
  ~Relay() = default;

  ULONG references_ = 1;
  Pointer<IDispatch> behind_;
  std::vector<std::wstring> names_;  // an id is a place in here
  std::map<std::wstring, Variant> answers_;
  std::vector<std::string> heard_;
};

inline Pointer<IDispatch> dispatchOf(const Pointer<Relay>& relay) {
  return share<IDispatch>(relay.get());
}

}  // namespace com::test
