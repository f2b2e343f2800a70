# Warnings, sanitizers and coverage for every target of this project.

add_library(vexor_checks INTERFACE)
if(MSVC)  # Microsoft's compiler, or clang in its place
  if(VEXOR_SANITIZE OR VEXOR_COVERAGE)
    message(FATAL_ERROR "VEXOR_SANITIZE and VEXOR_COVERAGE need gcc or clang")
  endif()
  target_compile_options(vexor_checks INTERFACE /W4 /permissive- /utf-8 /Zc:__cplusplus)
  # Allows std::getenv and std::fopen, which Microsoft's compiler warns of.
  target_compile_definitions(vexor_checks INTERFACE _CRT_SECURE_NO_WARNINGS)
  return()
endif()
target_compile_options(vexor_checks INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
  -Woverloaded-virtual -Wformat=2
  # When optimising, gcc 12 warns of null dereferences inside vectors of strings that cannot happen.
  $<$<CXX_COMPILER_ID:Clang>:-Wnull-dereference>
  # gcc 12 wrongly warns of overlapping copies when a literal and a string are concatenated
  # (PR 105329).
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
  # clang warns of a deprecated function that gcc 12's std::stable_sort uses.
  $<$<AND:$<CXX_COMPILER_ID:Clang>,$<VERSION_GREATER_EQUAL:$<CXX_COMPILER_VERSION>,15>>:-Wno-deprecated-declarations>)

if(VEXOR_SANITIZE)
  # Inlining under the sanitizers makes gcc warn of uninitialised values that cannot happen.
  target_compile_options(vexor_checks INTERFACE
    -fsanitize=${VEXOR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(vexor_checks INTERFACE -fsanitize=${VEXOR_SANITIZE})
endif()

if(VEXOR_COVERAGE)
  target_compile_options(vexor_checks INTERFACE
    --coverage -fprofile-update=atomic -O0 -fno-inline)
  target_link_options(vexor_checks INTERFACE --coverage)
endif()
