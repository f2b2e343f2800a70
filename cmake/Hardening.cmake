# Hardens the binaries for Linux, and keeps the path of the build folder out of them. Debug builds are
# not hardened, and neither are builds with sanitizers, which detect more.
#
#   stack protector, stack clash protection   a frame that overflows ends the process
#   _FORTIFY_SOURCE                           so does a C library call that overruns its buffer
#   control-flow protection (CET)             indirect jumps and returns go where they may
#   PIE, RELRO, BIND_NOW                      code lies anywhere, tables of addresses are read-only
#   prefix map                                the same bytes, whatever folder the build is in
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

option(VEXOR_HARDEN "Harden optimised builds for Linux" ${PROJECT_IS_TOP_LEVEL})

if(NOT VEXOR_HARDEN OR NOT CMAKE_SYSTEM_NAME STREQUAL Linux OR VEXOR_SANITIZE OR VEXOR_COVERAGE)
  return()
endif()

check_pie_supported(LANGUAGES CXX)
check_cxx_compiler_flag(-fcf-protection=full VEXOR_HAS_CF_PROTECTION)  # x86 alone
set(hardening
  -fstack-protector-strong
  -fstack-clash-protection
  -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3
  $<$<BOOL:${VEXOR_HAS_CF_PROTECTION}>:-fcf-protection=full>
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
  -ffile-prefix-map=${PROJECT_BINARY_DIR}=./build)
target_compile_options(vexor_checks INTERFACE "$<$<NOT:$<CONFIG:Debug>>:${hardening}>")
target_link_options(vexor_checks INTERFACE
  $<$<NOT:$<CONFIG:Debug>>:LINKER:-z,relro,-z,now,-z,noexecstack>)
