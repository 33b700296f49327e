#pragma once
// The largest amount of memory that the process has held, as the operating system counts it.

#include <cstdint>
#include <optional>

namespace bench {

// Begins counting anew, so that a case does not show the peak of the one before it. Where the system cannot do that the
// peak stays that of the whole process.
void resetPeakMemory();

// Bytes held at the peak (resident, shared pages included); nothing when the system does not tell.
std::optional<std::int64_t> peakMemory();

}  // namespace bench
