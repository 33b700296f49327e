#include "invocation.h"

#include <algorithm>
#include <limits>

namespace com {

using platform::RunTimeError;

HRESULT Invocation::take(const MemberShape& member, WORD flags, const DISPPARAMS& parameters) {
  UINT count = parameters.cArgs, named = parameters.cNamedArgs;
  if (named > count || (count > 0 && parameters.rgvarg == nullptr)) return E_INVALIDARG;
  VARIANTARG* first = parameters.rgvarg;
  const DISPID* names = parameters.rgdispidNamedArgs;
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
    // The new value is the first of all. It should be named so; some callers leave that out.
    if (count == 0) return DISP_E_BADPARAMCOUNT;
    newValue_ = first;
    if (named > 0 && names[0] == DISPID_PROPERTYPUT) {
      ++names;
      --named;
    }
    ++first;
    --count;
  }
  if (count > member.parameters.size()) return DISP_E_BADPARAMCOUNT;
  arguments_.assign(member.parameters.size(), nullptr);
  // Named ones stand in front, the positional ones behind them from the last to the first.
  for (UINT i = 0; i < named; ++i) {
    if (names[i] < 0 || static_cast<std::size_t>(names[i]) >= arguments_.size()) return DISP_E_PARAMNOTFOUND;
    arguments_[static_cast<std::size_t>(names[i])] = first + i;
  }
  for (UINT i = 0; i < count - named; ++i) {
    VARIANT*& place = arguments_[i];
    if (place != nullptr) return DISP_E_PARAMNOTFOUND;  // given twice
    place = first + (count - 1 - i);
  }
  for (std::size_t i = 0; i < member.required; ++i)
    if (isMissing(arguments_[i])) return count < member.required ? DISP_E_BADPARAMCOUNT : DISP_E_PARAMNOTOPTIONAL;
  return S_OK;
}

int Invocation::integer(std::size_t i) const {
  const std::int64_t n = value(i).asInteger();
  if (n < std::numeric_limits<int>::min() || n > std::numeric_limits<int>::max())
    throw RunTimeError(RunTimeError::overflow, "Overflow");
  return static_cast<int>(n);
}

Pointer<IDispatch> Invocation::objectArgument(const VARIANT* v) {
  if (isMissing(v) || isObject(v)) return objectOf(v);
  if (!valueOf(v).isNull()) throw RunTimeError(RunTimeError::typeMismatch, "Type mismatch: an object is expected");
  return nullptr;
}

void Invocation::setText(std::size_t i, const std::string& text) const {
  VARIANT* v = at(i);
  while (v != nullptr && v->vt == (VT_BYREF | VT_VARIANT)) {
    VARIANT* variable = v->pvarVal;
    if (variable != nullptr && (variable->vt & VT_BYREF) == 0) {
      Variant replacement{platform::Value(text)};
      VariantClear(variable);
      replacement.moveTo(variable);
      return;
    }
    v = variable;
  }
  if (v == nullptr || v->vt != (VT_BYREF | VT_BSTR)) return;
  BSTR replacement = newText(text);
  SysFreeString(*v->pbstrVal);
  *v->pbstrVal = replacement;
}

void Invocation::setObject(std::size_t i, IDispatch* object) const {
  VARIANT* v = at(i);
  while (v != nullptr && v->vt == (VT_BYREF | VT_VARIANT)) {
    VARIANT* variable = v->pvarVal;
    if (variable != nullptr && (variable->vt & VT_BYREF) == 0) {
      Variant replacement(object);
      VariantClear(variable);
      replacement.moveTo(variable);
      return;
    }
    v = variable;
  }
  if (v == nullptr || v->vt != (VT_BYREF | VT_DISPATCH)) return;
  if (object) object->AddRef();
  if (*v->ppdispVal) (*v->ppdispVal)->Release();
  *v->ppdispVal = object;
}

}  // namespace com
