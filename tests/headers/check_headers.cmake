# Fails if vexor.h does not include every public header of the folder INCLUDE, or if a macro of the
# header SYSTEM changes a public header that is included after it: compares what the preprocessor of
# COMPILER makes of them with and without SYSTEM. FOLDER is for temporary files.
cmake_minimum_required(VERSION 3.25)

file(GLOB_RECURSE headers RELATIVE ${INCLUDE} ${INCLUDE}/vexor/*.h)
list(REMOVE_ITEM headers vexor/vexor.h)
set(standard)
foreach(header ${headers})
  file(STRINGS ${INCLUDE}/${header} lines REGEX "^#include <")
  list(APPEND standard ${lines})
endforeach()
list(REMOVE_DUPLICATES standard)
list(JOIN standard "\n" standard)

# Stores the preprocessed lines of the public headers, included after the headers of the standard
# library that they need and after the lines `others`.
function(preprocess others result)
  file(WRITE ${FOLDER}/preprocess.cpp
    "${standard}\n${others}\nbegin_of_vexor\n#include \"vexor/vexor.h\"\n")
  execute_process(COMMAND ${COMPILER} -std=c++20 -E -P -I ${INCLUDE} ${FOLDER}/preprocess.cpp
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "^.*\nbegin_of_vexor\n" "" text "${text}")
  string(REPLACE ";" "\\;" text "${text}")
  string(REGEX REPLACE "[][]" "." text "${text}")  # brackets would join the items of a list
  string(REGEX REPLACE "[\n ]*\n *" ";" text "${text}")
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

file(STRINGS ${INCLUDE}/vexor/vexor.h included REGEX "^#include \"")
list(TRANSFORM included REPLACE "^#include \"(.*)\"$" "\\1")
list(REMOVE_ITEM headers ${included})
if(headers)
  message(SEND_ERROR "vexor/vexor.h lacks: ${headers}")
endif()

preprocess("" alone)
preprocess("#include \"${SYSTEM}\"" after)
list(LENGTH alone count)
if(count LESS 500)
  message(FATAL_ERROR "only ${count} lines of public headers were found")
endif()
foreach(expected found IN ZIP_LISTS alone after)
  if(NOT "${expected}" STREQUAL "${found}")
    message(FATAL_ERROR "a macro of ${SYSTEM} changes\n  ${expected}\ninto\n  ${found}")
  endif()
endforeach()
