#include <iostream>

#include "bench/command.h"

int main(int argc, char** argv) {
  return bench::runCommand(bench::registry(), {argv + 1, argv + argc}, std::cout, std::cerr);
}
