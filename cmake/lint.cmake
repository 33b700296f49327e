# A wrong include is a build failure: lint_layers is part of every full build and of every program, and looks again only
# when a source has changed.
file(GLOB_RECURSE gljz_layered CONFIGURE_DEPENDS
     ${CMAKE_SOURCE_DIR}/src/*.cpp ${CMAKE_SOURCE_DIR}/src/*.h ${CMAKE_SOURCE_DIR}/apps/*.cpp ${CMAKE_SOURCE_DIR}/apps/*.h)
set(gljz_layers_stamp ${CMAKE_BINARY_DIR}/lint_layers.stamp)
add_custom_command(OUTPUT ${gljz_layers_stamp}
                   COMMAND ${PYTHON3} ${CMAKE_SOURCE_DIR}/tools/lint layers
                   COMMAND ${CMAKE_COMMAND} -E touch ${gljz_layers_stamp}
                   DEPENDS ${gljz_layered} ${CMAKE_SOURCE_DIR}/tools/lint
                   COMMENT "Checking who includes what"
                   VERBATIM)
add_custom_target(lint_layers ALL DEPENDS ${gljz_layers_stamp})
