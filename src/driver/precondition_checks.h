#pragma once
// Whether a carry-forward may run, and how current-account items are to be carried. The first half of ExecJZ.

#include "driver/check_outcome.h"

namespace gljz {

// Runs outside any transaction and any failure handler, writes no table, and sets m_strInitYear, the three modes and
// the presence of current accounts. Some stops leave m_strMsg empty: the entries then report success.
[[nodiscard]] CheckOutcome CheckPreconditions();

}  // namespace gljz
