#pragma once
// Automation: an object of another component or of a script, called by the names of its members.
//
//   Automation connection(object);
//   connection.call(L"ConnectionOpen", {text("Provider=...")});
//   bool open = connection.get(L"State").asInteger() == 1;
//
// IDispatchEx is used where the object has it, IDispatch elsewhere. The id of a member is looked up at its first call
// and kept. Names are found without regard to case where the object does so. Failures are RunTimeError: what the callee
// raised, with its description; 438 for a member that it does not have.

#include <dispex.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/value.h"
#include "pointer.h"
#include "variant.h"

namespace com {

inline constexpr int noSuchMember = 438, argumentMissing = 449, wrongArgumentCount = 450;

// One argument of a call, by value or by reference to a variable of the caller.
class Argument {
public:
  Argument(const platform::Value& value) : value_(value) {}
  Argument(Variant value) : value_(std::move(value)) {}
  static Argument object(IDispatch* object) { return Argument(Variant(object)); }
  static Argument leftOut() { return Argument(Variant::missing()); }
  // The callee may change what is in the variable, a text or an object. It has to live until the call has returned.
  static Argument reference(Variant& variable) {
    Argument a{Variant()};
    a.variable_ = &variable;
    return a;
  }

private:
  friend class Automation;
  Variant value_;
  Variant* variable_ = nullptr;
};
using Arguments = std::vector<Argument>;

class Automation {
public:
  // object is not null.
  explicit Automation(Pointer<IDispatch> object);

  IDispatch* object() const { return object_.get(); }
  bool has(const wchar_t* name) const;

  // A method, or a property that is read; objects of scripts do not always tell the two apart.
  Variant call(const wchar_t* name, const Arguments& arguments = {}) const;
  platform::Value get(const wchar_t* name) const { return valueOf(call(name).get()); }
  void put(const wchar_t* name, const platform::Value& value) const;
  void putObject(const wchar_t* name, IDispatch* object) const;
  // With arguments: a property of an index, as Fields("ccode") is.
  Variant defaultProperty(const Arguments& arguments = {}) const;
  void putDefault(const platform::Value& value) const;

private:
  DISPID id(const wchar_t* name) const;
  std::optional<DISPID> find(const wchar_t* name) const;
  // Arguments by reference go typed (VT_BSTR) or as variables (VT_VARIANT); not every object takes both.
  HRESULT invoke(DISPID id, WORD kind, const Arguments& arguments, bool typed, Variant& result,
                 EXCEPINFO& failure) const;
  Variant callById(DISPID id, const std::string& what, const Arguments& arguments) const;
  void putById(DISPID id, const std::string& what, const Argument& value, WORD kind) const;

  Pointer<IDispatch> object_;
  Pointer<IDispatchEx> extended_;
  mutable std::map<std::wstring, DISPID, std::less<>> ids_;
};

}  // namespace com
