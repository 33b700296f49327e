// All tests of the windows; or, with --pictures FOLDER, a picture of each of them.

#include <gtest/gtest.h>

#include <cstdio>
#include <exception>
#include <string_view>

#include "com/windows/desktop_station.h"
#include "com/windows/pictures.h"

int main(int argc, char** argv) {
  if (!windows::desktopIsThere()) {
    std::fprintf(stderr,
                 "No window can be made here. For Wine without a screen, tools/wine --set-up makes a prefix.\n");
    return 1;
  }
  if (argc == 3 && std::string_view(argv[1]) == "--pictures") {
    try {
      windows::test::takePictures(argv[2]);
      return 0;
    } catch (const std::exception& e) {
      std::fprintf(stderr, "pictures: %s\n", e.what());
      return 1;
    }
  }
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
