#include "relay.h"

#include <algorithm>

#include "windows/wide_text.h"

namespace com::test {

void Relay::answer(const std::wstring& member, Variant value) {
  answers_[member] = std::move(value);
}

int Relay::heard(const std::string& beginning) const {
  return static_cast<int>(std::count_if(heard_.begin(), heard_.end(),
                                        [&](const std::string& call) { return call.starts_with(beginning); }));
}

HRESULT Relay::QueryInterface(REFIID id, void** object) {
  if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IDispatch)) {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  *object = this;
  AddRef();
  return S_OK;
}

ULONG Relay::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT Relay::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT Relay::GetTypeInfo(UINT, LCID, ITypeInfo** information) {
  *information = nullptr;
  return DISP_E_BADINDEX;
}

HRESULT Relay::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
  const std::wstring name = names[0];
  DISPID behind = DISPID_UNKNOWN;
  LPOLESTR asked = names[0];
  if (!answers_.contains(name) && FAILED(behind_->GetIDsOfNames(IID_NULL, &asked, 1, locale, &behind)))
    return DISP_E_UNKNOWNNAME;
  std::fill_n(ids, count, DISPID_UNKNOWN);
  const auto known = std::find(names_.begin(), names_.end(), name);
  ids[0] = static_cast<DISPID>(known - names_.begin());
  if (known == names_.end()) names_.push_back(name);
  return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT Relay::Invoke(DISPID id, REFIID, LCID locale, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* failure, UINT* wrong) {
  if (id < 0 || static_cast<std::size_t>(id) >= names_.size()) return DISP_E_MEMBERNOTFOUND;
  std::wstring name = names_[static_cast<std::size_t>(id)];
  std::string call = windows::narrow(name);
  if (parameters->cArgs > 0) {
    const VARIANT& first = parameters->rgvarg[parameters->cArgs - 1];
    if (first.vt == VT_BSTR) call += " " + textOf(first.bstrVal);
  }
  heard_.push_back(call);
  if (const auto answer = answers_.find(name); answer != answers_.end())
    return result == nullptr ? S_OK : VariantCopy(result, answer->second.get());
  LPOLESTR asked = name.data();
  DISPID behind = DISPID_UNKNOWN;
  const HRESULT code = behind_->GetIDsOfNames(IID_NULL, &asked, 1, locale, &behind);
  if (FAILED(code)) return code;
  return behind_->Invoke(behind, IID_NULL, locale, kind, parameters, result, failure, wrong);
}

}  // namespace com::test
