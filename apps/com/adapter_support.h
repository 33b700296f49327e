#pragma once
// What the adapters share.

#include <memory>

#include "automation.h"
#include "native.h"

namespace com {

// An adapter tells the object that it adapts.
class Adapted {
public:
  virtual ~Adapted() = default;
  virtual IDispatch* object() const = 0;
};

// What a member answered, as the platform reads it: nothing assigned (VT_EMPTY, a script's function that never set its
// result) is False and 0. Null and texts that say neither are failures, as everywhere.
inline platform::Value assigned(const Variant& answer, const platform::Value& nothing) {
  const VARIANT* v = behindReferences(answer.get());
  return v == nullptr || v->vt == VT_EMPTY ? nothing : valueOf(v);
}
inline bool boolOf(const Variant& answer) {
  return assigned(answer, platform::Value(false)).asBool();
}
inline std::int64_t integerOf(const Variant& answer) {
  return assigned(answer, platform::Value(0)).asInteger();
}

// Two references stand for the same object when their IUnknown is the same.
bool sameObject(IUnknown* a, IUnknown* b);

// The adapter that was made last for an object, as long as it is alive.
template <class I, class Adapter>
class LastAdapter {
public:
  std::shared_ptr<I> of(const Pointer<IDispatch>& object) {
    auto known = last_.lock();
    if (known && sameObject(known->object(), object.get())) return known;
    auto made = std::make_shared<Adapter>(object);
    last_ = made;
    return made;
  }

private:
  std::weak_ptr<Adapter> last_;
};

}  // namespace com
