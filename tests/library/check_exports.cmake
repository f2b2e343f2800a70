# Compares the names that the shared library LIBRARY exports with those in the file LIST and fails
# where they differ, naming the command RENEW; without RENEW it writes LIST. NM and OBJDUMP are the
# target's, CXXFILT turns symbols into names.
cmake_minimum_required(VERSION 3.25)

if(LIBRARY MATCHES "\\.dll$")
  set(command ${OBJDUMP} --private-headers ${LIBRARY})
  set(line "^\t\\[ *[0-9]+\\] ([A-Za-z_].*)$")
else()
  set(command ${NM} --dynamic --defined-only ${LIBRARY})
  set(line "^[0-9a-f]+ [A-Za-z] (.+)$")
endif()
execute_process(COMMAND ${command} COMMAND ${CXXFILT} OUTPUT_VARIABLE exports
  COMMAND_ERROR_IS_FATAL ANY)
# The names of the standard library's types that people know.
string(REPLACE "std::basic_string_view<char, std::char_traits<char> >" "std::string_view"
  exports "${exports}")
string(REPLACE "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
  "std::string" exports "${exports}")
string(REPLACE "\n" ";" exports "${exports}")
list(FILTER exports INCLUDE REGEX "${line}")
list(TRANSFORM exports REPLACE "${line}" "\\1")
list(REMOVE_DUPLICATES exports)  # several constructors, and destructors, have one name
list(SORT exports)
list(LENGTH exports count)

if(NOT DEFINED RENEW)
  list(JOIN exports "\n" text)
  file(WRITE ${LIST} "${text}\n")
  message(STATUS "${LIST}: ${count} names")
  return()
endif()

file(STRINGS ${LIST} listed)
set(more ${exports})
list(REMOVE_ITEM more ${listed})
set(fewer ${listed})
list(REMOVE_ITEM fewer ${exports})
if(more OR fewer)
  list(TRANSFORM more PREPEND "\n  + ")
  list(TRANSFORM fewer PREPEND "\n  - ")
  message(FATAL_ERROR "${LIBRARY} exports (+) what is not in ${LIST}, or does not export (-) what is:"
    ${more} ${fewer} "\nWhere that is meant, renew the list:\n  ${RENEW}")
endif()
message(STATUS "${count} names exported")
