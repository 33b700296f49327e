#pragma once
// Variant: a VARIANT that is cleared when it goes, and the way between its values and the platform's.
//
// Texts are UTF-16 outside and UTF-8 inside. Amounts go as VT_CY, which counts in the same ten-thousandths. A date is
// carried to the nearest 1/300 second, the server's own unit.

#include <oaidl.h>
#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"
#include "pointer.h"

namespace com {

// A new BSTR; std::bad_alloc when there is no memory for it.
BSTR newText(std::string_view utf8);
std::string textOf(BSTR text);  // a null pointer is the empty text

class Variant {
public:
  Variant() { VariantInit(&v_); }
  explicit Variant(const platform::Value& value);
  explicit Variant(IDispatch* object);  // counts; null is a VT_DISPATCH without an object ("Nothing")
  Variant(const Variant& other);
  Variant(Variant&& other) noexcept : v_(other.v_) { VariantInit(&other.v_); }
  Variant& operator=(Variant other) noexcept;
  ~Variant() { VariantClear(&v_); }

  static Variant missing();  // what stands for an optional argument that is left out
  static Variant bytes(const platform::Bytes& bytes);
  static Variant list(const std::vector<platform::Value>& values);  // an array of variants, from 0

  VARIANT* get() { return &v_; }
  const VARIANT* get() const { return &v_; }
  VARIANT* receive();  // cleared, for a callee to write into
  void moveTo(VARIANT* target);

private:
  VARIANT v_;
};

// Behind all references: the variable or the value itself. Null for a reference to nothing.
const VARIANT* behindReferences(const VARIANT* v);

bool isMissing(const VARIANT* v);               // left out, or not there at all
bool isObject(const VARIANT* v);                // VT_DISPATCH or VT_UNKNOWN, also by reference; it may be null
Pointer<IDispatch> objectOf(const VARIANT* v);  // null for no object

// Empty, Null and a left out argument give Null. An object gives its default property. A decimal gives an integer or an
// amount when it is one exactly, else a double. RunTimeError 13 for what is no value (arrays other than bytes).
platform::Value valueOf(const VARIANT* v);
// As the platform converts: a number gives its plain text, a Boolean "True". Empty and Null give an empty text.
std::string textOf(const VARIANT* v);

double oleDate(platform::DateTime date);
platform::DateTime dateFromOle(double days);  // RunTimeError 6 outside the range of DateTime

}  // namespace com
