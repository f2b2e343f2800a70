// Reading a configuration against bare parsing of the same file, in one run.
#include <benchmark/benchmark.h>
#include <tinyxml2.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "vexor/config/reader.h"

namespace {

// The lab's configuration with its register items and setting items repeated up to a size.
std::string MakeConfiguration(std::size_t size) {
  std::ifstream file(VEXOR_SOURCE_DIR "/examples/lab.xml", std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  std::string lab = text.str();
  const auto repeat = [&lab](const std::string& opener, const std::string& item,
                             std::size_t bytes) {
    std::string items;
    while (items.size() < bytes) items += item;
    lab.insert(lab.find(opener) + opener.size(), items);
  };
  if (size <= lab.size()) return lab;
  const std::size_t missing = size - lab.size();
  repeat(
      "<MSR_CFG>",
      "\n        <MSR>\n          <Address>0x1FC</Address>\n          <AndMask>0xFFFFFFFFFFFFFFFD"
      "</AndMask>\n          <OrMask>0x2</OrMask>\n          <Pkg>All</Pkg>\n"
      "          <Module>All</Module>\n          <CORE>All</CORE>\n        </MSR>",
      missing / 3);
  repeat("<CONFIG>", "\n          <ITEM>0; RAPL_Pkg_Power_Limit2; Enable</ITEM>", missing / 3);
  repeat("<PCIe-Link>", "\n        <ConfigState>0:1C:0 L0s-and-L1</ConfigState>", missing / 3);
  return lab;
}

std::string WriteConfiguration(std::size_t size) {
  const auto path = std::filesystem::temp_directory_path() /
                    ("vexor_read_bench_" + std::to_string(size) + ".xml");
  std::ofstream(path, std::ios::binary) << MakeConfiguration(size);
  return path.string();
}

double Seconds(const auto& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The two are timed in turn, so that a machine that slows down slows both. The counter is the
// median of the pairs' ratios.
void ReadAgainstParse(benchmark::State& state) {
  const std::string path = WriteConfiguration(static_cast<std::size_t>(state.range(0)));
  VexorConfigParser parser;
  std::vector<double> ratios;
  for (auto _ : state) {
    const double parse = Seconds([&path] {
      tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
      benchmark::DoNotOptimize(document.LoadFile(path.c_str()));
    });
    _XML_FULL_CFG cfg;
    ResetVexorXmlConfiguration(cfg);
    const double read = Seconds([&] {
      if (!parser.ReadXMLPar(path, &cfg, true, true)) state.SkipWithError("not read");
    });
    state.SetIterationTime(read);
    ratios.push_back(read / parse);
  }
  std::ranges::nth_element(ratios, ratios.begin() + static_cast<std::ptrdiff_t>(ratios.size() / 2));
  state.counters["ratio_to_parse"] = ratios[ratios.size() / 2];
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(std::filesystem::file_size(path)));
  std::filesystem::remove(path);
}

BENCHMARK(ReadAgainstParse)
    ->Arg(0)
    ->Arg(1 << 20)
    ->Arg(20 << 20)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->MinTime(2);

}  // namespace

BENCHMARK_MAIN();
