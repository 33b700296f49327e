// The test program of the golden files has one switch more than the others: --rewrite-golden.

#include <gtest/gtest.h>

#include <string_view>

#include "golden/golden_file.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  for (int i = 1; i < argc; ++i)
    if (std::string_view(argv[i]) == "--rewrite-golden") golden::rewriting = true;
  return RUN_ALL_TESTS();
}
