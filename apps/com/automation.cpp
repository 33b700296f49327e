#include "automation.h"

#include <algorithm>

#include "failure.h"
#include "windows/wide_text.h"

namespace com {
namespace {

using platform::RunTimeError;

// A text or a date does not depend on what language Windows speaks.
constexpr LCID neutral = LOCALE_INVARIANT;

// A function of a script, which is an object like any other.
bool isFunction(const Variant& v) {
  const Pointer<IDispatch> object = objectOf(v.get());
  if (!object || !query<IDispatchEx>(object.get())) return false;
  const Automation members(object);
  return members.has(L"apply") && members.has(L"call");
}

}  // namespace

Automation::Automation(Pointer<IDispatch> object)
    : object_(std::move(object)), extended_(query<IDispatchEx>(object_.get())) {}

std::optional<DISPID> Automation::find(const wchar_t* name) const {
  if (const auto known = ids_.find(std::wstring_view(name)); known != ids_.end()) return known->second;
  DISPID found = DISPID_UNKNOWN;
  HRESULT code = E_FAIL;
  if (extended_) {
    BSTR text = SysAllocString(name);
    code = extended_->GetDispID(text, fdexNameCaseInsensitive, &found);
    if (FAILED(code)) code = extended_->GetDispID(text, fdexNameCaseSensitive, &found);
    SysFreeString(text);
  }
  if (FAILED(code)) {
    auto* text = const_cast<LPOLESTR>(name);
    code = object_->GetIDsOfNames(IID_NULL, &text, 1, neutral, &found);
  }
  if (FAILED(code)) return std::nullopt;
  ids_.emplace(name, found);
  return found;
}

DISPID Automation::id(const wchar_t* name) const {
  if (const auto found = find(name)) return *found;
  throw RunTimeError(noSuchMember, "The object has no member " + windows::narrow(name));
}

bool Automation::has(const wchar_t* name) const {
  return find(name).has_value();
}

HRESULT Automation::invoke(DISPID id, WORD kind, const Arguments& arguments, bool typed, Variant& result,
                           EXCEPINFO& failure) const {
  // The last argument comes first. What is passed by value is lent: the variants of the arguments own it.
  std::vector<VARIANT> passed(arguments.size());
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const Argument& argument = arguments[i];
    VARIANT& slot = passed[arguments.size() - 1 - i];
    if (argument.variable_ == nullptr) {
      slot = *argument.value_.get();
      continue;
    }
    VARIANT* variable = argument.variable_->get();
    VariantInit(&slot);
    if (typed && variable->vt == VT_BSTR) {
      slot.vt = VT_BYREF | VT_BSTR;
      slot.pbstrVal = &variable->bstrVal;
    } else if (typed && variable->vt == VT_DISPATCH) {
      slot.vt = VT_BYREF | VT_DISPATCH;
      slot.ppdispVal = &variable->pdispVal;
    } else {
      slot.vt = VT_BYREF | VT_VARIANT;
      slot.pvarVal = variable;
    }
  }
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
  const bool writes = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  if (writes) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  VARIANT* answer = writes ? nullptr : result.receive();
  failure = {};
  if (extended_) return extended_->InvokeEx(id, neutral, kind, &parameters, answer, &failure, nullptr);
  UINT wrong = 0;
  return object_->Invoke(id, IID_NULL, neutral, kind, &parameters, answer, &failure, &wrong);
}

Variant Automation::callById(DISPID id, const std::string& what, const Arguments& arguments) const {
  Variant result;
  EXCEPINFO failure{};
  HRESULT code = DISP_E_MEMBERNOTFOUND;
  // A plain property of a script's object is none that could be called, and reading a function gives the function: so
  // it is read first, and called when that gave nothing to use.
  if (extended_ && arguments.empty()) {
    code = invoke(id, DISPATCH_PROPERTYGET, arguments, false, result, failure);
    if (SUCCEEDED(code) && isFunction(result)) code = DISP_E_MEMBERNOTFOUND;
  }
  if (code == DISP_E_MEMBERNOTFOUND) {
    // Objects of scripts take variables by reference, those with a type library what it says.
    const bool typedFirst = !extended_;
    const bool references =
        std::any_of(arguments.begin(), arguments.end(), [](const Argument& a) { return a.variable_ != nullptr; });
    constexpr WORD callOrRead = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    code = invoke(id, callOrRead, arguments, typedFirst, result, failure);
    if (references && code == DISP_E_TYPEMISMATCH)
      code = invoke(id, callOrRead, arguments, !typedFirst, result, failure);
  }
  if (FAILED(code)) throwAnswered(code, &failure, what);
  return result;
}

void Automation::putById(DISPID id, const std::string& what, const Argument& value, WORD kind) const {
  Variant none;
  EXCEPINFO failure{};
  HRESULT code = invoke(id, kind, {value}, true, none, failure);
  if (kind == DISPATCH_PROPERTYPUTREF && FAILED(code) && code != DISP_E_EXCEPTION)
    code = invoke(id, DISPATCH_PROPERTYPUT, {value}, true, none, failure);
  if (FAILED(code)) throwAnswered(code, &failure, what);
}

Variant Automation::call(const wchar_t* name, const Arguments& arguments) const {
  return callById(id(name), windows::narrow(name), arguments);
}

void Automation::put(const wchar_t* name, const platform::Value& value) const {
  putById(id(name), windows::narrow(name), Argument(value), DISPATCH_PROPERTYPUT);
}

void Automation::putObject(const wchar_t* name, IDispatch* object) const {
  putById(id(name), windows::narrow(name), Argument::object(object), DISPATCH_PROPERTYPUTREF);
}

Variant Automation::defaultProperty(const Arguments& arguments) const {
  return callById(DISPID_VALUE, "the default property", arguments);
}

void Automation::putDefault(const platform::Value& value) const {
  putById(DISPID_VALUE, "the default property", Argument(value), DISPATCH_PROPERTYPUT);
}

}  // namespace com
