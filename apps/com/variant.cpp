#include "variant.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <optional>

#include "automation.h"
#include "windows/wide_text.h"

namespace com {
namespace {

using platform::DateTime;
using platform::Money;
using platform::RunTimeError;
using platform::Value;

// Days of an OLE date count from here.
const DateTime oleEpoch = DateTime::fromDate(1899, 12, 30);

[[noreturn]] void mismatch() {
  throw RunTimeError(RunTimeError::typeMismatch, "Type mismatch");
}

// The scaled integer of a decimal, when 64 bits hold it.
std::optional<std::int64_t> mantissa(const DECIMAL& d) {
  constexpr auto most = static_cast<ULONGLONG>(std::numeric_limits<std::int64_t>::max());
  if (d.Hi32 != 0 || d.Lo64 > most) return std::nullopt;
  const auto n = static_cast<std::int64_t>(d.Lo64);
  return d.sign == DECIMAL_NEG ? -n : n;
}

Value decimalValue(const DECIMAL& d) {
  constexpr std::array<std::int64_t, 5> powers = {1, 10, 100, 1000, 10000};
  constexpr std::size_t moneyScale = 4;
  if (auto n = mantissa(d)) {
    std::size_t scale = d.scale;
    for (; scale > 0 && *n % 10 == 0; --scale) *n /= 10;
    if (scale == 0) return Value(*n);
    std::int64_t units = 0;
    if (scale <= moneyScale && !__builtin_mul_overflow(*n, powers[moneyScale - scale], &units))
      return Value(Money::fromUnits(units));
  }
  double real = 0;
  DECIMAL copy = d;  // the function takes no constant
  if (FAILED(VarR8FromDec(&copy, &real))) mismatch();
  return Value(real);
}

Value arrayValue(SAFEARRAY* array) {
  VARTYPE type = VT_EMPTY;
  if (array == nullptr || FAILED(SafeArrayGetVartype(array, &type)) || type != VT_UI1 || SafeArrayGetDim(array) != 1)
    mismatch();
  LONG first = 0, last = -1;
  SafeArrayGetLBound(array, 1, &first);
  SafeArrayGetUBound(array, 1, &last);
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(array, &data))) mismatch();
  const auto* begin = static_cast<const std::uint8_t*>(data);
  platform::Bytes bytes(begin, begin + (last - first + 1));
  SafeArrayUnaccessData(array);
  return Value(std::move(bytes));
}

Value unsignedValue(ULONGLONG n) {
  if (n > static_cast<ULONGLONG>(std::numeric_limits<std::int64_t>::max()))
    throw RunTimeError(RunTimeError::overflow, "Overflow");
  return Value(static_cast<std::int64_t>(n));
}

}  // namespace

BSTR newText(std::string_view utf8) {
  const std::wstring text = windows::wide(utf8);
  BSTR result = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (result == nullptr) throw std::bad_alloc();
  return result;
}

std::string textOf(BSTR text) {
  return text == nullptr ? std::string() : windows::narrow({text, SysStringLen(text)});
}

Variant::Variant(const Value& value) : Variant() {
  switch (value.kind()) {
    case Value::Kind::null:
      v_.vt = VT_NULL;
      return;
    case Value::Kind::boolean:
      v_.vt = VT_BOOL;
      v_.boolVal = value.asBool() ? VARIANT_TRUE : VARIANT_FALSE;
      return;
    case Value::Kind::integer: {
      const std::int64_t n = value.asInteger();
      // Script languages know integers of 32 bits; a longer one goes as what they do know, if that holds it exactly.
      constexpr std::int64_t exactInDouble = std::int64_t{1} << 53;
      if (n >= std::numeric_limits<std::int32_t>::min() && n <= std::numeric_limits<std::int32_t>::max()) {
        v_.vt = VT_I4;
        v_.lVal = static_cast<LONG>(n);
      } else if (n >= -exactInDouble && n <= exactInDouble) {
        v_.vt = VT_R8;
        v_.dblVal = static_cast<double>(n);
      } else {
        VarDecFromI8(n, &v_.decVal);
        v_.vt = VT_DECIMAL;  // the call writes over it
      }
      return;
    }
    case Value::Kind::money:
      v_.vt = VT_CY;
      v_.cyVal.int64 = value.asMoney().units();
      return;
    case Value::Kind::real:
      v_.vt = VT_R8;
      v_.dblVal = value.asDouble();
      return;
    case Value::Kind::dateTime:
      v_.vt = VT_DATE;
      v_.date = oleDate(value.asDateTime());
      return;
    case Value::Kind::text:
      v_.bstrVal = newText(value.textOrEmpty());
      v_.vt = VT_BSTR;
      return;
    case Value::Kind::bytes:
      *this = bytes(value.asBytes());
      return;
  }
}

Variant::Variant(IDispatch* object) : Variant() {
  v_.vt = VT_DISPATCH;
  v_.pdispVal = object;
  if (object) object->AddRef();
}

Variant::Variant(const Variant& other) : Variant() {
  if (FAILED(VariantCopy(&v_, const_cast<VARIANT*>(&other.v_)))) throw std::bad_alloc();
}

Variant& Variant::operator=(Variant other) noexcept {
  std::swap(v_, other.v_);
  return *this;
}

Variant Variant::missing() {
  Variant v;
  v.v_.vt = VT_ERROR;
  v.v_.scode = DISP_E_PARAMNOTFOUND;
  return v;
}

Variant Variant::bytes(const platform::Bytes& bytes) {
  Variant v;
  SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (array == nullptr) throw std::bad_alloc();
  v.v_.vt = VT_ARRAY | VT_UI1;
  v.v_.parray = array;
  void* data = nullptr;
  if (!bytes.empty() && SUCCEEDED(SafeArrayAccessData(array, &data))) {
    std::memcpy(data, bytes.data(), bytes.size());
    SafeArrayUnaccessData(array);
  }
  return v;
}

Variant Variant::list(const std::vector<Value>& values) {
  Variant v;
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
  if (array == nullptr) throw std::bad_alloc();
  v.v_.vt = VT_ARRAY | VT_VARIANT;
  v.v_.parray = array;
  for (std::size_t i = 0; i < values.size(); ++i) {
    LONG index = static_cast<LONG>(i);
    Variant value(values[i]);
    if (FAILED(SafeArrayPutElement(array, &index, value.get()))) throw std::bad_alloc();
  }
  return v;
}

VARIANT* Variant::receive() {
  VariantClear(&v_);
  return &v_;
}

void Variant::moveTo(VARIANT* target) {
  *target = v_;
  VariantInit(&v_);
}

const VARIANT* behindReferences(const VARIANT* v) {
  while (v != nullptr && v->vt == (VT_BYREF | VT_VARIANT)) v = v->pvarVal;
  return v;
}

bool isMissing(const VARIANT* v) {
  v = behindReferences(v);
  return v == nullptr || (v->vt == VT_ERROR && v->scode == DISP_E_PARAMNOTFOUND);
}

bool isObject(const VARIANT* v) {
  v = behindReferences(v);
  const auto type = v == nullptr ? VT_EMPTY : v->vt & ~VT_BYREF;
  return type == VT_DISPATCH || type == VT_UNKNOWN;
}

Pointer<IDispatch> objectOf(const VARIANT* v) {
  v = behindReferences(v);
  if (v == nullptr) return nullptr;
  switch (v->vt) {
    case VT_DISPATCH:
      return share(v->pdispVal);
    case VT_UNKNOWN:
      return query<IDispatch>(v->punkVal);
    case VT_BYREF | VT_DISPATCH:
      return share(*v->ppdispVal);
    case VT_BYREF | VT_UNKNOWN:
      return query<IDispatch>(*v->ppunkVal);
    default:
      return nullptr;
  }
}

Value valueOf(const VARIANT* v) {
  if (isMissing(v)) return {};
  v = behindReferences(v);
  if (isObject(v)) {
    const Pointer<IDispatch> object = objectOf(v);
    if (!object) throw RunTimeError(RunTimeError::objectNotSet, "Object variable not set");
    const Variant value = Automation(object).defaultProperty();
    if (isObject(value.get())) mismatch();
    return valueOf(value.get());
  }
  Variant direct;  // what a reference of any other kind points to
  if ((v->vt & VT_BYREF) != 0) {
    if (FAILED(VariantCopyInd(direct.get(), const_cast<VARIANT*>(v)))) mismatch();
    v = direct.get();
  }
  if ((v->vt & VT_ARRAY) != 0) return arrayValue(v->parray);
  switch (v->vt) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_BOOL:
      return Value(v->boolVal != VARIANT_FALSE);
    case VT_I1:
      return Value(std::int64_t{static_cast<signed char>(v->cVal)});
    case VT_UI1:
      return Value(std::int64_t{v->bVal});
    case VT_I2:
      return Value(std::int64_t{v->iVal});
    case VT_UI2:
      return Value(std::int64_t{v->uiVal});
    case VT_I4:
      return Value(std::int64_t{v->lVal});
    case VT_UI4:
      return Value(std::int64_t{v->ulVal});
    case VT_INT:
      return Value(std::int64_t{v->intVal});
    case VT_UINT:
      return Value(std::int64_t{v->uintVal});
    case VT_I8:
      return Value(std::int64_t{v->llVal});
    case VT_UI8:
      return unsignedValue(v->ullVal);
    case VT_R4:
      return Value(double{v->fltVal});
    case VT_R8:
      return Value(v->dblVal);
    case VT_CY:
      return Value(Money::fromUnits(v->cyVal.int64));
    case VT_DECIMAL:
      return decimalValue(v->decVal);
    case VT_DATE:
      return Value(dateFromOle(v->date));
    case VT_BSTR:
      return Value(textOf(v->bstrVal));
    default:
      mismatch();
  }
}

std::string textOf(const VARIANT* v) {
  return valueOf(v).displayText();
}

// Before the epoch the fraction of a day still counts forward: -1.25 is 06:00 of the day before it.
double oleDate(DateTime date) {
  const std::int64_t ticks = date.ticks() - oleEpoch.ticks();
  std::int64_t days = ticks / DateTime::ticksPerDay, rest = ticks % DateTime::ticksPerDay;
  if (rest < 0) {
    rest += DateTime::ticksPerDay;
    --days;
  }
  const double fraction = static_cast<double>(rest) / static_cast<double>(DateTime::ticksPerDay);
  return days < 0 ? static_cast<double>(days) - fraction : static_cast<double>(days) + fraction;
}

DateTime dateFromOle(double days) {
  constexpr double first = -53690, beyond = 2958466;  // 1753-01-01 and 10000-01-01
  if (!(days >= first - 1 && days < beyond)) throw RunTimeError(RunTimeError::overflow, "Overflow");
  const double whole = std::trunc(days);
  const double fraction = std::abs(days - whole);
  const auto ticks = static_cast<std::int64_t>(whole) * DateTime::ticksPerDay +
                     std::llround(fraction * static_cast<double>(DateTime::ticksPerDay));
  return DateTime::fromTicks(oleEpoch.ticks() + ticks);
}

}  // namespace com
