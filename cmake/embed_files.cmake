# Turns data files into one generated source, so that the installed program needs no files beside it.
#
# gljz_embed(TARGET)  embeds every file of <source>/data, <source>/schema and <source>/glrep into TARGET.
#   data/messages/zh-CN.json is found as "messages/zh-CN.json", schema/x.sql as "schema/x.sql".
# Run as a script (cmake -P) it writes the source: -DOUTPUT=... -DROOT=... -DLIST=<file with one path a line>.

if(CMAKE_SCRIPT_MODE_FILE)
  file(STRINGS "${LIST}" paths)
  set(rows "")
  set(text "// Generated from data/, schema/ and glrep/.\n#include \"host/resources.h\"\n\nnamespace host {\nnamespace {\n\n")
  set(index 0)
  foreach(path IN LISTS paths)
    file(READ "${ROOT}/${path}" content)
    string(REGEX REPLACE "^data/" "" name "${path}")
    # Literals of moderate length, one behind the other: compilers limit a single one. They part at the end of a line, since
    # some compilers take half a character for a mistake.
    set(literals "")
    string(LENGTH "${content}" length)
    set(at 0)
    while(at LESS length)
      string(SUBSTRING "${content}" ${at} 8000 piece)
      string(FIND "${piece}" "\n" line_end REVERSE)
      if(line_end GREATER_EQUAL 0)
        math(EXPR taken "${line_end} + 1")
        string(SUBSTRING "${piece}" 0 ${taken} piece)
      else()
        string(LENGTH "${piece}" taken)  # the last line, without an end
        if(taken EQUAL 8000)
          message(FATAL_ERROR "${path}: a line of more than 8000 bytes cannot be embedded")
        endif()
      endif()
      string(APPEND literals "R\"gljz(${piece})gljz\"\n")
      math(EXPR at "${at} + ${taken}")
    endwhile()
    if(length EQUAL 0)
      set(literals "\"\"")
    endif()
    string(APPEND text "constexpr char file${index}[] =\n${literals};\n")
    string(APPEND rows "    {\"${name}\", {file${index}, sizeof file${index} - 1}},\n")
    math(EXPR index "${index} + 1")
  endforeach()
  string(APPEND text "}  // namespace\n\nconst std::vector<Resource>& resources() {\n"
                     "  static const std::vector<Resource> all{\n${rows}  };\n  return all;\n}\n\n}  // namespace host\n")
  file(WRITE "${OUTPUT}" "${text}")
  return()
endif()

function(gljz_embed target)
  set(root ${CMAKE_SOURCE_DIR})
  file(GLOB_RECURSE found CONFIGURE_DEPENDS RELATIVE ${root} ${root}/data/*.json ${root}/data/*.sql ${root}/data/*.xml
       ${root}/data/*.css ${root}/data/*.js ${root}/schema/*.sql ${root}/glrep/*.rep)
  list(SORT found)
  set(list ${CMAKE_CURRENT_BINARY_DIR}/embedded_files.txt)
  string(REPLACE ";" "\n" lines "${found}")
  file(GENERATE OUTPUT ${list} CONTENT "${lines}\n")
  set(output ${CMAKE_CURRENT_BINARY_DIR}/resources_data.cpp)
  list(TRANSFORM found PREPEND ${root}/ OUTPUT_VARIABLE inputs)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${output} -DROOT=${root} -DLIST=${list} -P ${root}/cmake/embed_files.cmake
    DEPENDS ${inputs} ${list} ${root}/cmake/embed_files.cmake
    VERBATIM)
  target_sources(${target} PRIVATE ${output})
endfunction()
