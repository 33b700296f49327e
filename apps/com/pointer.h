#pragma once
// Pointer: a counted reference to a COM object.
//
//   Pointer<IDispatch> object = adopt(raw);   // takes over the count that the callee has added
//   Pointer<IDispatch> other = share(raw);    // adds a count of its own

#include <oaidl.h>
#include <objbase.h>
#include <oleauto.h>
#include <windows.h>

#include <utility>

namespace com {

template <class I>
class Pointer {
public:
  Pointer() = default;
  Pointer(std::nullptr_t) {}
  Pointer(const Pointer& other) : object_(other.object_) {
    if (object_) object_->AddRef();
  }
  Pointer(Pointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Pointer& operator=(Pointer other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Pointer() {
    if (object_) object_->Release();
  }

  I* get() const { return object_; }
  I* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  // Where a callee writes an object that it has counted for the caller; what stood here goes.
  I** receive() {
    *this = nullptr;
    return &object_;
  }
  I* release() { return std::exchange(object_, nullptr); }

  static Pointer adopt(I* object) {
    Pointer p;
    p.object_ = object;
    return p;
  }

private:
  I* object_ = nullptr;
};

template <class I>
Pointer<I> adopt(I* object) {
  return Pointer<I>::adopt(object);
}

template <class I>
Pointer<I> share(I* object) {
  if (object) object->AddRef();
  return Pointer<I>::adopt(object);
}

// The same object by another of its interfaces; null when it does not have it.
template <class To, class From>
Pointer<To> query(From* object, REFIID id = __uuidof(To)) {
  void* found = nullptr;
  if (object == nullptr || FAILED(object->QueryInterface(id, &found))) return nullptr;
  return Pointer<To>::adopt(static_cast<To*>(found));
}

}  // namespace com
