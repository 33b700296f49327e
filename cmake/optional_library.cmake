# gljz_optional(TARGET LIBRARY STEM MODULE...): of STEM.cpp and STEM_missing.cpp, which define the same functions, TARGET
# is built with the first where pkg-config knows the MODULEs, and with the second, which says that it is not there, where
# it does not. LIBRARY is the name in CMake's messages.
find_package(PkgConfig)

function(gljz_optional target library stem)
  set(found FALSE)
  # What pkg-config knows is this machine's, not the one that is built for.
  if(PKG_CONFIG_FOUND AND NOT CMAKE_CROSSCOMPILING)
    pkg_check_modules(${library} IMPORTED_TARGET ${ARGN})
    set(found ${${library}_FOUND})
  endif()
  if(found)
    target_link_libraries(${target} PRIVATE PkgConfig::${library})
    set(left_out ${stem}_missing.cpp)
  else()
    message(STATUS "${library} (${ARGN}) is not there: ${stem}_missing.cpp stands in")
    set(left_out ${stem}.cpp)
  endif()
  set_source_files_properties(${CMAKE_CURRENT_SOURCE_DIR}/${left_out} PROPERTIES HEADER_FILE_ONLY TRUE)
endfunction()
