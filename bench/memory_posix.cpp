#include <sys/resource.h>

#include <fstream>
#include <string>

#include "bench/memory.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace bench {

void resetPeakMemory() {
#if defined(__GLIBC__)
  malloc_trim(0);  // what earlier cases have freed is no memory of the next one
#endif
  // Linux: 5 sets the high-water mark back to what is held now. Elsewhere the file is missing and nothing happens.
  std::ofstream("/proc/self/clear_refs") << "5\n";
}

std::optional<std::int64_t> peakMemory() {
  constexpr std::int64_t bytesPerKibibyte = 1024;
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    std::int64_t kibibytes = 0;
    if (word == "VmHWM:" && status >> kibibytes) return kibibytes * bytesPerKibibyte;
  }
  rusage usage{};  // never goes down, so only the first choice shows a case's own peak
  if (getrusage(RUSAGE_SELF, &usage) != 0) return std::nullopt;
  return static_cast<std::int64_t>(usage.ru_maxrss) * bytesPerKibibyte;
}

}  // namespace bench
