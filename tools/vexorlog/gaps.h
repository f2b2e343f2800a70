// Finds times in which nothing was logged.
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
  bool is_restart = false;  // the first row after it starts a log again

  [[nodiscard]] vexor::LogTime Length() const { return after.time - before.time; }
};

struct Gaps {
  std::vector<Gap> gaps;
  vexor::LogTime limit = 0;  // a gap is longer than this, unless it ends with a restart
};

// Finds the gaps between rows. The rows are added in the order of a merge.
class GapFinder {
 public:
  // Without a limit, a gap is longer than a minute and than ten times the mean time between rows.
  explicit GapFinder(std::optional<vexor::LogTime> limit);

  void Add(const vexor::LogMerge& merge);
  Gaps Finish();

 private:
  std::optional<vexor::LogTime> given_limit_;
  Gaps found_;
  std::uint64_t rows_ = 0;
  vexor::LogTime first_ = vexor::kNoLogTime;
  vexor::LogTime last_ = vexor::kNoLogTime;
  std::set<std::size_t> starts_;  // the series that have started before
  Neighbour before_;
};

Json MakeGapsJson(const Gaps& found);

}  // namespace tools::vexorlog
