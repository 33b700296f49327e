#pragma once
// FailureHandler: the one failure handler of a run. It swallows the first failure of a step, shows nothing, and
// execution goes on behind that step; it is then off for good, so that a second failure goes to the caller.

#include "platform/run_time_error.h"

namespace gljz {

class FailureHandler {
public:
  void switchOn() { on_ = true; }

  template <class Step>
  void step(Step&& work) {
    if (!on_) {
      work();
      return;
    }
    try {
      work();
    } catch (const platform::RunTimeError& failure) {
      handle(failure);
    }
  }

private:
  void handle(const platform::RunTimeError& failure);

  bool on_ = false;
};

}  // namespace gljz
