// Benchmarks in pairs: the library and a loop written by hand for the same inputs.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "ratio_reporter.h"

namespace vexor {

// Adds a pair: every input by the library and by hand. A pair that does not agree is not measured.
template <class Input, class Library, class ByHand>
void AddPair(const std::string& subject, const std::vector<Input>& inputs, Library library,
             ByHand by_hand) {
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    if (!(library(inputs[i]) == by_hand(inputs[i]))) {
      std::cerr << subject << ": the results for input " << i << " differ\n";
      std::exit(1);
    }
  }
  const auto add = [&](const char* name, auto function) {
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
    benchmark::RegisterBenchmark((subject + name).c_str(), run)->MinTime(0.05)->Repetitions(5);
  };
  add("/library", library);
  add("/by_hand", by_hand);
}

template <class Library, class ByHand>
void AddTextPair(const std::string& subject, const std::vector<std::string>& texts, Library library,
                 ByHand by_hand) {
  AddPair(subject, texts, library, by_hand);
}

// Runs what was added and reports it; the program's exit code.
inline int RunPairs() {
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}

}  // namespace vexor
