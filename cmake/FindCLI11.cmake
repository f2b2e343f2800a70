# Finds CLI11, a header-only library. Debian has a CMake package of it for the machine itself, but
# not for cross-builds.
include(FindPackageHandleStandardArgs)

find_path(CLI11_INCLUDE_DIR CLI/CLI.hpp)
mark_as_advanced(CLI11_INCLUDE_DIR)
find_package_handle_standard_args(CLI11 REQUIRED_VARS CLI11_INCLUDE_DIR)

if(CLI11_FOUND AND NOT TARGET CLI11::CLI11)
  add_library(CLI11::CLI11 INTERFACE IMPORTED)
  set_target_properties(CLI11::CLI11 PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${CLI11_INCLUDE_DIR}")
endif()
