#pragma once

namespace gljz {

// What a check of ExecJZ decides.
enum class CheckOutcome {
  goOn,
  stop,        // to the exit steps
  leaveAtOnce  // past the exit steps
};

}  // namespace gljz
