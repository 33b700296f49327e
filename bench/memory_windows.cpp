#include <windows.h>
// psapi.h needs the types of windows.h, so it comes second.
#include <psapi.h>

#include "bench/memory.h"

namespace bench {

void resetPeakMemory() {}  // the system keeps one peak for the whole life of a process

std::optional<std::int64_t> peakMemory() {
  PROCESS_MEMORY_COUNTERS counters{};
  if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) return std::nullopt;
  return static_cast<std::int64_t>(counters.PeakWorkingSetSize);
}

}  // namespace bench
