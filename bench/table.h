#pragma once
// The result table as text.

#include <string>
#include <vector>

#include "bench/bench.h"

namespace bench {

// One line a result under a line of headings: case, size, ours, floor, ratio, target, met, peak memory. Columns are
// aligned by character; each line ends with a line feed. Judged: whether "met" says yes and no, or "-" because the
// sizes were too small to mean anything.
std::string table(const std::vector<Result>& results, bool judged);

// "1.234 s", "12.3 ms", "4.5 us"
std::string secondsText(double seconds);
// "12.5 MiB"; "-" for nothing
std::string memoryText(const std::optional<std::int64_t>& bytes);

}  // namespace bench
