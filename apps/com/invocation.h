#pragma once
// Invocation: one late-bound call of a member of ours, with its arguments in their order.

#include <oaidl.h>
#include <windows.h>

#include <string>
#include <vector>

#include "platform/value.h"
#include "variant.h"

namespace com {

// A member of an object of ours that is called by name.
struct MemberShape {
  const wchar_t* name;
  DISPID id;
  WORD kinds;  // DISPATCH_METHOD, DISPATCH_PROPERTYGET, ...
  std::vector<const wchar_t*> parameters;
  std::size_t required;  // arguments that may not be left out
};

class Invocation {
public:
  // Puts positional and named arguments in order. An HRESULT in place of an exception: DISP_E_BADPARAMCOUNT,
  // DISP_E_PARAMNOTOPTIONAL, DISP_E_PARAMNOTFOUND.
  HRESULT take(const MemberShape& member, WORD flags, const DISPPARAMS& parameters);

  bool writes() const { return newValue_ != nullptr; }  // a property is set
  VARIANT* newValue() const { return newValue_; }

  // Whether an optional argument was given. A variable that nothing has been assigned to (a script's undefined) is not.
  bool has(std::size_t i) const { return !isMissing(at(i)) && behindReferences(at(i))->vt != VT_EMPTY; }
  VARIANT* at(std::size_t i) const { return i < arguments_.size() ? arguments_[i] : nullptr; }
  // RunTimeError 13 for what cannot be read so. A text that is left out is empty.
  std::string text(std::size_t i) const { return textOf(at(i)); }
  int integer(std::size_t i) const;
  bool boolean(std::size_t i) const { return valueOf(at(i)).asBool(); }
  platform::Value value(std::size_t i) const { return valueOf(at(i)); }
  // Null for Nothing, Empty and Null; RunTimeError 13 for what is neither these nor an object.
  Pointer<IDispatch> object(std::size_t i) const { return objectArgument(at(i)); }
  static Pointer<IDispatch> objectArgument(const VARIANT* v);

  // Writes a text back into an argument by reference, a VT_BSTR or a variable; does nothing for one by value.
  void setText(std::size_t i, const std::string& text) const;
  void setObject(std::size_t i, IDispatch* object) const;

private:
  std::vector<VARIANT*> arguments_;
  VARIANT* newValue_ = nullptr;
};

}  // namespace com
