# Writes a header with the source revision and the time of the build. Run as a script:
#   cmake -DSOURCE=<source folder> -DOUTPUT=<header> -P BuildStamp.cmake
# The date is that of SOURCE_DATE_EPOCH if the environment sets it (CMake's TIMESTAMP sees to that).
execute_process(
  COMMAND git -C ${SOURCE} rev-parse --verify --short=8 HEAD
  OUTPUT_VARIABLE revision RESULT_VARIABLE failed ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
if(failed)
  set(revision 0)  # a copy of the sources without their history
endif()
string(SUBSTRING "${revision}" 0 8 hash)
string(TIMESTAMP date "%Y-%m-%d" UTC)
string(TIMESTAMP time "%H:%M:%S UTC" UTC)
file(WRITE ${OUTPUT} "#pragma once

namespace vexor {
inline constexpr unsigned kBuildHash = 0x${hash};
inline constexpr char kBuildDate[] = \"${date}\";
inline constexpr char kBuildTime[] = \"${time}\";
}  // namespace vexor
")
