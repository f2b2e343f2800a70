// Reports each benchmark beside its reference of the same run.
//
// Benchmarks are registered in pairs: "subject/..." and right behind it the reference for that
// subject. Of repetitions the fastest counts: what disturbs a run only makes it slower.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace vexor {

class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override {
    PrintBasicContext(&GetErrorStream(), context);
    return true;
  }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration && !run.error_occurred) Remember(run);
    }
  }

  void Finalize() override {
    std::printf("%-32s %14s %14s %7s\n", "", "measured", "reference", "ratio");
    for (std::size_t i = 0; i + 1 < times_.size(); i += 2) {
      const Time& measured = times_[i];
      const Time& reference = times_[i + 1];
      std::printf("%-32s %11.1f ns %11.1f ns %7.2f\n", measured.name.c_str(), measured.nanoseconds,
                  reference.nanoseconds, measured.nanoseconds / reference.nanoseconds);
    }
  }

 private:
  struct Time {
    std::string name;
    double nanoseconds;
  };

  void Remember(const Run& run) {
    const std::string& name = run.run_name.function_name;
    const double nanoseconds = run.cpu_accumulated_time * 1e9 / static_cast<double>(run.iterations);
    const auto known =
        std::ranges::find_if(times_, [&](const Time& time) { return time.name == name; });
    if (known == times_.end()) {
      times_.push_back({name, nanoseconds});
    } else {
      known->nanoseconds = std::min(known->nanoseconds, nanoseconds);
    }
  }

  std::vector<Time> times_;
};

}  // namespace vexor
