// Measures the library and other ways to do the same work, in one run:
//
//   vexor_bench [--benchmark_filter=REGEX]
//
// The repetitions of all benchmarks are interleaved, so that a slow phase of the machine affects
// all of them.
#include <vector>

#include "comparison.h"
#include "works.h"

int main(int argc, char** argv) {
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  std::vector<char*> arguments = {argv[0], interleave.data()};
  for (int i = 1; i < argc; ++i) arguments.push_back(argv[i]);
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
  vexor::AddReading();
  vexor::AddWriting();
  vexor::AddUtilities();
  vexor::AddSyntaxes();
  vexor::TableReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
}
