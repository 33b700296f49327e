# Qt 6 for the desktop program: required when GLJZ_DESKTOP is ON, used where it is found when AUTO. GLJZ_HAS_DESKTOP says
# whether the program is built. It is looked for here, and not where it is used, so that programs and tests see its
# targets.
set(GLJZ_DESKTOP "OFF" CACHE STRING "The desktop program: ON, OFF, or AUTO for where Qt 6 is found")
set(GLJZ_HAS_DESKTOP FALSE)

# What is found is this machine's, not the one that is built for; the fuzz targets have no windows.
if(NOT GLJZ_DESKTOP STREQUAL "OFF" AND NOT CMAKE_CROSSCOMPILING AND NOT GLJZ_FUZZ)
  find_package(Qt6 6.4 QUIET COMPONENTS Widgets PrintSupport Test)
  set(GLJZ_HAS_DESKTOP ${Qt6_FOUND})
  if(NOT Qt6_FOUND AND GLJZ_DESKTOP STREQUAL "ON")
    message(FATAL_ERROR "GLJZ_DESKTOP is ON, and Qt 6 (Widgets, PrintSupport, Test) was not found")
  elseif(NOT Qt6_FOUND)
    message(STATUS "Qt 6 is not there: no desktop program")
  endif()
endif()
