# Writes C++ that holds files as texts:
#   cmake -D OUTPUT=parts.cpp -P embed.cmake -- NAME=FILE...
set(code "#include \"report_parts.h\"\n\nnamespace tools::vexorlog {\n")
set(is_part FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
  set(argument "${CMAKE_ARGV${i}}")
  if(is_part AND argument MATCHES "^([A-Za-z]+)=(.+)$")
    set(name ${CMAKE_MATCH_1})
    file(READ "${CMAKE_MATCH_2}" bytes HEX)
    string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
    string(APPEND code
      "\nstatic constexpr char ${name}Bytes[] = {${bytes}'\\0'};\n"
      "const std::string_view ${name}(${name}Bytes, sizeof(${name}Bytes) - 1);\n")
  elseif(argument STREQUAL "--")
    set(is_part TRUE)
  endif()
endforeach()
file(WRITE "${OUTPUT}" "${code}\n}  // namespace tools::vexorlog\n")
