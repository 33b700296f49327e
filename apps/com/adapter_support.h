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
