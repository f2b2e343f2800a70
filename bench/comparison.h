// Benchmarks of the library and of peers that do the same work on the same inputs.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "table.h"

namespace vexor {

// A peer: another way to do the same work.
template <class Function>
struct Peer {
  const char* name;
  Function function;
};
template <class Function>
Peer(const char*, Function) -> Peer<Function>;

// Adds the work under "WORK/WHO"; the first of a work's benchmarks is the library's.
template <class Input, class Function>
void AddWork(const std::string& work, const std::string& who, const std::vector<Input>& inputs,
             Function function) {
  const auto run = [inputs, function](benchmark::State& state) {
    for (auto _ : state) {
      for (const Input& input : inputs) {
        const Input* unknown = &input;
        benchmark::DoNotOptimize(unknown);
        auto result = function(*unknown);
        benchmark::DoNotOptimize(result);
      }
    }
  };
  benchmark::RegisterBenchmark((work + '/' + who).c_str(), run)->MinTime(0.05)->Repetitions(9);
}

// Adds the library and its peers, each for every input. A peer with other results is not measured.
template <class Input, class Library, class... Functions>
void AddComparison(const std::string& work, const std::vector<Input>& inputs, Library library,
                   const Peer<Functions>&... peers) {
  const auto check = [&](const auto& peer) {
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      if (library(inputs[i]) == peer.function(inputs[i])) continue;
      std::cerr << work << ": the result for input " << i << " is not that of " << peer.name
                << '\n';
      std::exit(1);
    }
  };
  (check(peers), ...);
  AddWork(work, "library", inputs, library);
  (AddWork(work, peers.name, inputs, peers.function), ...);
}

// Compares the library with a hand-written loop, and with peers.
template <class Library, class ByHand, class... Functions>
void AddTextPair(const std::string& work, const std::vector<std::string>& texts, Library library,
                 ByHand by_hand, const Peer<Functions>&... peers) {
  AddComparison(work, texts, library, Peer{"loop by hand", by_hand}, peers...);
}

// Compares one call with sixteen times the data with sixteen calls.
template <class Input, class Library>
void AddGrowth(const std::string& work, const Input& once, const Input& sixteen_fold,
               Library library) {
  AddWork(work + ", 16 times the size", "library", std::vector<Input>{sixteen_fold}, library);
  AddWork(work + ", 16 times the size", "16 times the call", std::vector<Input>(16, once), library);
}

// Prints a row for every benchmark of a work but the first, which is the library's. Uses the
// fastest of the repetitions: disturbances only make a run slower.
class TableReporter : public benchmark::BenchmarkReporter {
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
    std::ranges::sort(times_, {}, &Time::order);
    PrintHeading();
    for (const Time& their : times_) {
      const auto own = std::ranges::find(times_, their.work, &Time::work);
      if (their.order == own->order) continue;
      PrintRow(their.work, their.who, own->nanoseconds, their.nanoseconds,
               own->nanoseconds / their.nanoseconds);
    }
  }

 private:
  struct Time {
    std::string work;
    std::string who;
    std::int64_t order;  // in which they were added
    double nanoseconds;
  };

  void Remember(const Run& run) {
    const std::string& name = run.run_name.function_name;
    const std::size_t slash = name.find_last_of('/');
    const Time time = {name.substr(0, slash), name.substr(slash + 1), run.family_index,
                       run.cpu_accumulated_time * 1e9 / static_cast<double>(run.iterations)};
    const auto known = std::ranges::find(times_, time.order, &Time::order);
    if (known == times_.end()) {
      times_.push_back(time);
    } else {
      known->nanoseconds = std::min(known->nanoseconds, time.nanoseconds);
    }
  }

  std::vector<Time> times_;
};

}  // namespace vexor
