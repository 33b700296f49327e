#include "dispatch_object.h"

#include <algorithm>

namespace com {
namespace {

bool sameName(const wchar_t* a, const wchar_t* b) {
  return CompareStringOrdinal(a, -1, b, -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

std::atomic<long> livingObjects{0};

HRESULT DispatchObject::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch)) {
    *object = static_cast<IDispatch*>(this);
  } else if (IsEqualIID(id, IID_ISupportErrorInfo)) {
    *object = static_cast<ISupportErrorInfo*>(this);
  } else {
    *object = interfaceOf(id);
  }
  if (*object == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG DispatchObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT DispatchObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT DispatchObject::GetTypeInfo(UINT, LCID, ITypeInfo** information) {
  if (information == nullptr) return E_POINTER;
  *information = nullptr;
  return DISP_E_BADINDEX;
}

HRESULT DispatchObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return idsOfNames(shapes(), names, count, ids);
}

HRESULT DispatchObject::Invoke(DISPID id, REFIID interfaceId, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                               EXCEPINFO* failure, UINT* wrongArgument) {
  const Pointer<DispatchObject> alive = adopt((AddRef(), this));  // whatever the member lets go
  return invokeMember(shapes(), id, interfaceId, flags, parameters, result, failure, wrongArgument,
                      [this](std::size_t member, const Invocation& call) { return answer(member, call); });
}

// The first name is the member's, the others are names of its parameters.
HRESULT idsOfNames(const std::vector<MemberShape>& members, LPOLESTR* names, UINT count, DISPID* ids) {
  if (names == nullptr || ids == nullptr) return E_POINTER;
  if (count == 0) return S_OK;
  std::fill(ids, ids + count, DISPID_UNKNOWN);
  const auto member =
      std::find_if(members.begin(), members.end(), [&](const MemberShape& m) { return sameName(m.name, *names); });
  if (member == members.end()) return DISP_E_UNKNOWNNAME;
  ids[0] = member->id;
  HRESULT code = S_OK;
  for (UINT i = 1; i < count; ++i) {
    const auto& parameters = member->parameters;
    const auto parameter =
        std::find_if(parameters.begin(), parameters.end(), [&](const wchar_t* p) { return sameName(p, names[i]); });
    if (parameter == parameters.end())
      code = DISP_E_UNKNOWNNAME;
    else
      ids[i] = static_cast<DISPID>(parameter - parameters.begin());
  }
  return code;
}

HRESULT invokeMember(const std::vector<MemberShape>& members, DISPID id, REFIID interfaceId, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* failure, UINT* wrongArgument,
                     const std::function<Variant(std::size_t member, const Invocation& call)>& answer) {
  if (!IsEqualIID(interfaceId, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (wrongArgument != nullptr) *wrongArgument = 0;
  if (result != nullptr) VariantInit(result);
  const auto member = std::find_if(members.begin(), members.end(),
                                   [&](const MemberShape& m) { return m.id == id && (m.kinds & flags) != 0; });
  if (member == members.end()) return DISP_E_MEMBERNOTFOUND;
  try {
    Invocation call;
    static const DISPPARAMS none{};
    if (const HRESULT code = call.take(*member, flags, parameters ? *parameters : none); FAILED(code)) return code;
    Variant given = answer(static_cast<std::size_t>(member - members.begin()), call);
    if (result != nullptr) given.moveTo(result);
    return S_OK;
  } catch (...) {
    return reportCurrent(failure);
  }
}

}  // namespace com
