// The benchmark harness: what is measured, judged, printed and answered to the shell.

#include "bench/bench.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <stdexcept>

#include "bench/command.h"
#include "bench/memory.h"
#include "bench/table.h"

namespace {

using bench::Case;
using bench::Line;
using bench::Options;

Case fixed(const std::string& name, double limit, std::vector<Line> lines) {
  return {name, "at most " + std::to_string(static_cast<int>(limit)), limit, [lines](const Options&) { return lines; }};
}

struct Outcome {
  int status = 0;
  std::string out, err;
};

Outcome run(const bench::Registry& cases, const std::vector<std::string>& arguments) {
  std::ostringstream out, err;
  const int status = bench::runCommand(cases, arguments, out, err);
  return {status, out.str(), err.str()};
}

TEST(Bench, aRatioUpToTheLimitIsMet) {
  const auto results = bench::runCase(fixed("a", 3, {{"1 row", 3, 1}, {"2 rows", 3.01, 1}}), {});
  ASSERT_EQ(results.size(), 2u);
  EXPECT_TRUE(results[0].met());
  EXPECT_FALSE(results[1].met());
}

TEST(Bench, aLineMayHaveALimitOfItsOwn) {
  const auto results = bench::runCase(fixed("a", 3, {{"1 row", 5, 1, 5.0}}), {});
  EXPECT_TRUE(results.at(0).met());
}

TEST(Bench, withoutAFloorNothingIsMet) {
  const auto results = bench::runCase(fixed("a", 3, {{"1 row", 0, 0}}), {});
  EXPECT_TRUE(std::isinf(results.at(0).ratio()));
  EXPECT_FALSE(results.at(0).met());
}

TEST(Bench, aCaseThatMeasuresNothingFails) {
  EXPECT_THROW(bench::runCase(fixed("a", 3, {}), {}), std::logic_error);
}

TEST(Bench, theBestRoundCounts) {
  int calls = 0;
  Options options;
  options.rounds = 4;
  EXPECT_GE(bench::bestOf(options, [&] { ++calls; }), 0.0);
  EXPECT_EQ(calls, 4);
  options.quick = true;
  bench::bestOf(options, [&] { ++calls; });
  EXPECT_EQ(calls, 5);
}

TEST(Bench, casesStandInTheOrderOfTheirNamesAndNoNameTwice) {
  bench::Registry cases;
  cases.add(fixed("b", 1, {}));
  cases.add(fixed("a", 1, {}));
  ASSERT_EQ(cases.cases().size(), 2u);
  EXPECT_EQ(cases.cases()[0].name, "a");
  EXPECT_THROW(cases.add(fixed("b", 1, {})), std::logic_error);
}

TEST(Bench, thePeakOfACaseIsItsOwn) {
  constexpr std::size_t much = 64u << 20;
  Case hungry{"hungry", "", 1, [](const Options&) {
                std::vector<char> held(much, 'x');  // filled, so that the pages are really there
                return std::vector<Line>{{std::to_string(held.back()), 1, 1}};
              }};
  const auto before = bench::peakMemory();
  const auto results = bench::runCase(hungry, {});
  ASSERT_TRUE(before && results.at(0).peakBytes);
  EXPECT_GE(*results[0].peakBytes, static_cast<std::int64_t>(much));
  EXPECT_LT(*results[0].peakBytes, std::int64_t{16} << 30);
}

TEST(BenchTable, columnsAreAlignedAndUnitsReadable) {
  const std::vector<bench::Result> results{{"short", "at most 3", {"10 rows", 0.0021, 0.001}, 3, std::int64_t{5} << 20},
                                           {"a_longer_name", "at most 2", {"100000 rows", 12.5, 5}, 2, std::nullopt}};
  EXPECT_EQ(bench::table(results, true),
            "case                  size      ours    floor  ratio  target     met  peak memory\n"
            "short              10 rows    2.1 ms   1.0 ms   2.10  at most 3  yes      5.0 MiB\n"
            "a_longer_name  100000 rows  12.500 s  5.000 s   2.50  at most 2  no             -\n");
}

TEST(BenchCommand, allTargetsMetIsStatus0AndAMissedOne1) {
  bench::Registry cases;
  cases.add(fixed("good", 3, {{"1 row", 2, 1}}));
  EXPECT_EQ(run(cases, {}).status, 0);
  cases.add(fixed("slow", 3, {{"1 row", 4, 1}}));
  const Outcome all = run(cases, {});
  EXPECT_EQ(all.status, 1);
  EXPECT_NE(all.out.find("slow"), std::string::npos);
  EXPECT_EQ(run(cases, {"--filter", "good"}).status, 0);
}

TEST(BenchCommand, aQuickRunTellsTheCasesAndIsNotJudged) {
  bench::Registry cases;
  bool quick = false;
  cases.add({"slow", "at most 3", 3, [&](const Options& options) {
               quick = options.quick;
               return std::vector<Line>{{"1 row", 4, 1}};
             }});
  const Outcome done = run(cases, {"--quick"});
  EXPECT_EQ(done.status, 0);
  EXPECT_TRUE(quick);
  EXPECT_EQ(done.out.find(" no "), std::string::npos);
}

TEST(BenchCommand, aCaseThatFailsIsNamedAndTheOthersRun) {
  bench::Registry cases;
  cases.add({"broken", "", 1, [](const Options&) -> std::vector<Line> { throw std::runtime_error("no such table"); }});
  cases.add(fixed("good", 3, {{"1 row", 2, 1}}));
  const Outcome done = run(cases, {"--quick"});
  EXPECT_EQ(done.status, 1);
  EXPECT_EQ(done.err, "gljz_bench: broken: no such table\n");
  EXPECT_NE(done.out.find("good"), std::string::npos);
}

TEST(BenchCommand, theListRunsNothing) {
  bench::Registry cases;
  cases.add({"a", "at most 3", 3, [](const Options&) -> std::vector<Line> { throw std::runtime_error("ran"); }});
  const Outcome done = run(cases, {"--list"});
  EXPECT_EQ(done.status, 0);
  EXPECT_EQ(done.out, "a: at most 3\n");
}

TEST(BenchCommand, wrongUsageIsStatus2) {
  bench::Registry cases;
  cases.add(fixed("a", 3, {{"1 row", 2, 1}}));
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"--fast"}, {"--rounds", "0"}, {"--rounds"}, {"--filter"}, {"--filter", "zzz"}}) {
    EXPECT_EQ(run(cases, words).status, 2) << words[0];
  }
  EXPECT_EQ(run({}, {}).status, 2);
}

}  // namespace
