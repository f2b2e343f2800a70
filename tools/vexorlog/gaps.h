// Times in which nothing was logged.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "json.h"
#include "logs.h"

namespace tools::vexorlog {

// A row before or after a gap.
struct Neighbour {
  vexor::LogTime time = vexor::kNoLogTime;
  std::string test;
  std::string note;
  std::string path;
  std::uint64_t line = 0;
};

struct Gap {
  Neighbour before;
  Neighbour after;
  bool is_restart = false;  // the first row after it opens a log anew

  [[nodiscard]] vexor::LogTime Length() const { return after.time - before.time; }
};

struct Gaps {
  std::vector<Gap> gaps;
  vexor::LogTime limit = 0;  // a silence is longer, unless a restart ends it
};

// Finds the gaps of rows that are given in the order of a merge.
class GapFinder {
 public:
  // Without a limit, a gap is longer than ten times the mean distance of two rows, and a minute.
  explicit GapFinder(std::optional<vexor::LogTime> limit);

  void Add(const vexor::LogMerge& merge);
  Gaps Finish();

 private:
  std::optional<vexor::LogTime> given_limit_;
  Gaps found_;
  std::uint64_t rows_ = 0;
  vexor::LogTime first_ = vexor::kNoLogTime;
  vexor::LogTime last_ = vexor::kNoLogTime;
  std::set<std::size_t> starts_;  // the series that have begun
  Neighbour before_;
};

Json MakeGapsJson(const Gaps& found);

}  // namespace tools::vexorlog
