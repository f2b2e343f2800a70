# Warnings, sanitizers and coverage for every target of this project.

add_library(vexor_checks INTERFACE)
target_compile_options(vexor_checks INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
  -Woverloaded-virtual -Wformat=2
  # Optimising for Windows, gcc 12 sees null dereferences inside vectors of strings.
  $<$<NOT:$<BOOL:${MINGW}>>:-Wnull-dereference>
  # gcc 12 sees overlapping copies in the concatenation of a literal and a string (its PR 105329).
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)

if(VEXOR_SANITIZE)
  # Inlining under the sanitizers makes gcc see null dereferences and uninitialised values that
  # cannot happen.
  target_compile_options(vexor_checks INTERFACE
    -fsanitize=${VEXOR_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:GNU>:-Wno-null-dereference -Wno-maybe-uninitialized>)
  target_link_options(vexor_checks INTERFACE -fsanitize=${VEXOR_SANITIZE})
endif()

if(VEXOR_COVERAGE)
  target_compile_options(vexor_checks INTERFACE
    --coverage -fprofile-update=atomic -O0 -fno-inline)
  target_link_options(vexor_checks INTERFACE --coverage)
endif()
