#pragma once
// Whether the cleared current-account items of the closing years cancel out, and the automatic clearing behind it.

#include "driver/check_outcome.h"

namespace gljz {

// Outside any transaction and any failure handler. A stop has set m_strMsg.
[[nodiscard]] CheckOutcome CheckCurrentAccounts();

}  // namespace gljz
