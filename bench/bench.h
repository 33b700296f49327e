#pragma once
// The benchmark harness: cases that measure the program against a floor in the same run.
//
//   namespace {
//   std::vector<bench::Line> insertRows(const bench::Options& options) {
//     const int rows = options.quick ? 100 : 100'000;
//     const double ours = bench::bestOf(options, [&] { ... });   // seconds
//     const double floor = bench::bestOf(options, [&] { ... });  // the same rows straight into SQLite
//     return {{std::to_string(rows) + " rows", ours, floor}};
//   }
//   const bench::Registration registered{{"insert_rows", "at most 3 times the floor", 3.0, insertRows}};
//   }  // namespace
//
// A case stands in a file bench/cases_<subject>.cpp and registers itself before main. Seconds differ from machine to
// machine, so what is judged and quoted is the ratio. Cases run one after the other on one thread.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Options {
  bool quick = false;  // tiny sizes, one round: proves that the code still runs, measures nothing
  bool full = false;   // also the sizes that take minutes
  int rounds = 3;      // how often bestOf repeats; 1 when quick
  int divisor = 1;     // sizes become so many times smaller where a case knows it: under a profiler

  // A size for measuring, or the one for a quick run.
  int size(int measured, int quickly) const { return quick ? quickly : measured / divisor; }
};

// What a case has measured at one size. For growth, floor is what the smaller size leads to expect: 10 times the time
// for 10 times the rows.
struct Line {
  std::string size;  // "100000 rows"
  double ours = 0;
  double floor = 0;
  // Of this line alone; the case's limit when absent.
  std::optional<double> limit = std::nullopt;
  enum class Unit { seconds, bytes } unit = Unit::seconds;  // of ours and floor
};

struct Case {
  std::string name;    // lower_case, unique
  std::string target;  // the aim in words, as the table shows it
  double limit = 0;    // the aim as a number: met when ours / floor is not above it
  std::function<std::vector<Line>(const Options&)> run;
};

// All cases, in the order of their names. A name that is registered twice is a std::logic_error.
class Registry {
public:
  void add(Case added);
  const std::vector<Case>& cases() const { return cases_; }

private:
  std::vector<Case> cases_;
};

// The registry that Registration fills and the program runs.
Registry& registry();

struct Registration {
  explicit Registration(Case added) { registry().add(std::move(added)); }
};

// Wall-clock seconds of one call.
double seconds(const std::function<void()>& work);
// The shortest of options.rounds calls (of one call when quick): the one least disturbed by the machine's other work.
double bestOf(const Options& options, const std::function<void()>& work);

// One row of the result table.
struct Result {
  std::string name;
  std::string target;
  Line line;
  double limit = 0;
  std::optional<std::int64_t> peakBytes;  // of the whole case, see memory.h

  // Infinite when there is no floor to measure against.
  double ratio() const;
  bool met() const { return ratio() <= limit; }
};

// Runs one case. A failure of the case passes through; a case without a line is a std::logic_error, because it has
// measured nothing.
std::vector<Result> runCase(const Case& chosen, const Options& options);

}  // namespace bench
