#pragma once
// The command line of the benchmark program.

#include <iosfwd>
#include <string>
#include <vector>

#include "bench/bench.h"

namespace bench {

// Runs the cases of a registry as the arguments (without the program's name) say and prints the table to out; a case
// that fails is told on err, and the others run on.
//
//   --quick           tiny sizes; the results are not judged
//   --filter TEXT     only cases whose name contains TEXT
//   --rounds N        how often a measurement is repeated, the best counts (default 3)
//   --full            also the sizes that take minutes
//   --divide N        sizes N times smaller, for a profiler; the cases that know it
//   --list            names and targets, nothing runs
//
// Exit status: 0 all targets met (or --quick and no case failed), 1 a target missed or a case failed, 2 wrong usage or
// no case of that name.
int runCommand(const Registry& cases, const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace bench
