// The rows of the benchmarks' table: the time of the library, the time of a peer for the same work,
// both in nanoseconds, and their ratio, which is below 1 if the library is faster.
#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace vexor {

inline std::string FormatTime(double nanoseconds) {
  const char* unit = "ns";
  for (const char* larger : {"us", "ms", "s"}) {
    if (nanoseconds < 10000) break;
    nanoseconds /= 1000;
    unit = larger;
  }
  std::array<char, 32> text = {};
  std::snprintf(text.data(), text.size(), "%.*f %s", nanoseconds < 100 ? 1 : 0, nanoseconds, unit);
  return text.data();
}

inline void PrintHeading() {
  std::printf("%-42s %10s  %-28s %10s %6s\n", "work", "time", "against", "time", "ratio");
}

inline void PrintRow(const std::string& work, const std::string& against, double nanoseconds,
                     double their_nanoseconds, double ratio) {
  std::printf("%-42s %10s  %-28s %10s %6.2f\n", work.c_str(), FormatTime(nanoseconds).c_str(),
              against.c_str(), FormatTime(their_nanoseconds).c_str(), ratio);
  std::fflush(stdout);
}

}  // namespace vexor
