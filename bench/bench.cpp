#include "bench/bench.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <stdexcept>

#include "bench/memory.h"

namespace bench {

void Registry::add(Case added) {
  const auto place = std::lower_bound(cases_.begin(), cases_.end(), added,
                                      [](const Case& a, const Case& b) { return a.name < b.name; });
  if (place != cases_.end() && place->name == added.name) {
    throw std::logic_error("two benchmark cases are called " + added.name);
  }
  cases_.insert(place, std::move(added));
}

Registry& registry() {
  static Registry all;  // made at first use: registrations of other files may run before this file's variables exist
  return all;
}

double seconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double bestOf(const Options& options, const std::function<void()>& work) {
  const int rounds = options.quick ? 1 : std::max(1, options.rounds);
  double best = std::numeric_limits<double>::infinity();
  for (int i = 0; i < rounds; ++i) best = std::min(best, seconds(work));
  return best;
}

double Result::ratio() const {
  return line.floor > 0 ? line.ours / line.floor : std::numeric_limits<double>::infinity();
}

std::vector<Result> runCase(const Case& chosen, const Options& options) {
  resetPeakMemory();
  const std::vector<Line> lines = chosen.run(options);
  if (lines.empty()) throw std::logic_error("the case has measured nothing");
  const auto peak = peakMemory();
  std::vector<Result> results;
  for (const Line& line : lines) {
    results.push_back({chosen.name, chosen.target, line, line.limit.value_or(chosen.limit), peak});
  }
  return results;
}

}  // namespace bench
