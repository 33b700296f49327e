#pragma once
// Parent accounts of gl_accsum, rebuilt from their last-level accounts: an account is a child when its code begins with
// the parent's, at every level at once.

#include <cstdint>

#include "platform/database.h"

namespace gljz {

// Amounts and foreign amounts are signed by their direction, summed, and split into magnitude and direction again;
// quantities and movements are summed as they stand. One connection throughout: it owns the work table.
void RollUpAccSum(platform::Connection& connection, std::int32_t year);

}  // namespace gljz
