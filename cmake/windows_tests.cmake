# The tests of the build for Windows. Every program is one test, run by Wine (tools/wine) in the prefix of the build
# folder. The framework is built from Debian's sources of it.
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(library gtest gtest_main gmock gmock_main)
  target_compile_options(${library} PRIVATE -w)  # the warnings are its authors'
  if(NOT TARGET GTest::${library})
    add_library(GTest::${library} ALIAS ${library})
  endif()
endforeach()

# gljz_windows_test(NAME [arguments...]): the program of that name is a test. It sees the checkout as its drive Z.
function(gljz_windows_test program)
  add_test(NAME windows.${program} COMMAND ${program} ${ARGN} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
  set_tests_properties(windows.${program} PROPERTIES TIMEOUT 600 ENVIRONMENT GLJZ_WINE_PREFIX=${CMAKE_BINARY_DIR}/wine)
endfunction()

# gljz_windows_test_in_parts(NAME COUNT): the same as COUNT tests, each of which runs its share of the program's tests, so
# that they run beside each other. A file under Wine costs many times what it costs on Linux.
function(gljz_windows_test_in_parts program count)
  math(EXPR last "${count} - 1")
  foreach(part RANGE ${last})
    set(name windows.${program}.${part})
    add_test(NAME ${name} COMMAND ${program} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
    set_tests_properties(${name} PROPERTIES TIMEOUT 1200 COST 100 ENVIRONMENT
      "GLJZ_WINE_PREFIX=${CMAKE_BINARY_DIR}/wine;GTEST_TOTAL_SHARDS=${count};GTEST_SHARD_INDEX=${part}")
  endforeach()
endfunction()

# gljz_windows_tests(FOLDER [PARTS COUNT] layer...): the tests of a folder that are not for POSIX alone.
function(gljz_windows_tests folder)
  cmake_parse_arguments(T "" "PARTS" "" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  gljz_keep_own_system(sources)
  add_executable(test_${folder} ${sources})
  target_link_libraries(test_${folder} PRIVATE ${T_UNPARSED_ARGUMENTS} GTest::gtest_main GTest::gmock)
  target_include_directories(test_${folder} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(test_${folder} PRIVATE GLJZ_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  if(T_PARTS)
    gljz_windows_test_in_parts(test_${folder} ${T_PARTS})
  else()
    gljz_windows_test(test_${folder})
  endif()
endfunction()

gljz_windows_tests(platform platform xml)
gljz_windows_tests(core system xml)
# The cross compiler puts one constant of a header now into writable, now into read-only memory, and the linker does not
# see that these are one. Only the list of all statements, which tests alone ask for, brings both together.
target_link_options(test_core PRIVATE -Wl,--allow-multiple-definition)
gljz_windows_tests(tsql tsql)
gljz_windows_tests(embedded embedded SQLite::SQLite3)
gljz_windows_tests(dialect embedded SQLite::SQLite3)
gljz_windows_tests(golden host SQLite::SQLite3)
target_sources(test_golden PRIVATE dialect/corpus.cpp)
gljz_windows_tests(system PARTS 2 host)
gljz_windows_tests(host host)
target_compile_definitions(test_host PRIVATE GLJZ_PROGRAM="$<TARGET_FILE:gljz>")
add_dependencies(test_host gljz)
add_subdirectory(com)

# Wine's ODBC driver manager hands over to the one of this machine, and that to its driver for PostgreSQL.
file(GLOB odbc_sources CONFIGURE_DEPENDS odbc/*.cpp)
gljz_keep_own_system(odbc_sources)
add_executable(test_odbc ${odbc_sources})
target_link_libraries(test_odbc PRIVATE odbc postgres_server GTest::gtest_main GTest::gmock)
target_include_directories(test_odbc PRIVATE ${CMAKE_SOURCE_DIR}/tests)
add_test(NAME windows.test_odbc COMMAND ${GLJZ_LINUX_WITH_POSTGRES} ${CMAKE_SOURCE_DIR}/tools/wine $<TARGET_FILE:test_odbc>
         WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
set_tests_properties(windows.test_odbc PROPERTIES TIMEOUT 300 ENVIRONMENT GLJZ_WINE_PREFIX=${CMAKE_BINARY_DIR}/wine)
