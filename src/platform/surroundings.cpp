#include "platform/surroundings.h"

#include "platform/run_time_error.h"

namespace platform {
namespace {

Surroundings* current = nullptr;

}  // namespace

Surroundings& surroundings() {
  if (current == nullptr) throw RunTimeError(RunTimeError::objectNotSet, "Object not set: no surroundings");
  return *current;
}

void setSurroundings(Surroundings* s) {
  current = s;
}

}  // namespace platform
