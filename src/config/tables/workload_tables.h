// The options of the stress workloads.
#pragma once

#include "config/tables/option_table.h"
#include "config/tables/sections.h"
#include "vexor/config/workloads.h"

namespace vexor {

// The record types share no base with the common members, so the shared rows are templates.
namespace workloads {

template <class Record>
constexpr OptionOf<Record> AutoRun() {
  return {.name = "AutoRun",
          .flag = &Record::AutoRun,
          .syntax = Syntax::kBoolean,
          .about = "Whether the workload runs."};
}
template <class Record>
constexpr OptionOf<Record> Time(std::string_view name, std::string Record::*home,
                                std::string_view about) {
  return {.name = name, .text = home, .syntax = Syntax::kDuration, .about = about};
}
template <class Record>
constexpr OptionOf<Record> StartDelay() {
  return Time("StartDelayTime", &Record::StartDelayTime, "Delay before the workload starts.");
}
template <class Record>
constexpr OptionOf<Record> Duration() {
  return Time("Duration", &Record::Duration, "How long the workload runs.");
}
template <class Record>
constexpr OptionOf<Record> IdleTime() {
  return Time("IdleTime", &Record::IdleTime, "Pause between two rounds of the workload.");
}
template <class Record>
constexpr OptionOf<Record> LogLevel() {
  return {.name = "Log_Level",
          .text = &Record::Log_Level,
          .syntax = Syntax::kLogLevel,
          .about = "Least severe level that the workload logs."};
}
template <class Record>
constexpr OptionOf<Record> Packages() {
  return {.name = "PkgAffinity",
          .text = &Record::PkgAffinity,
          .syntax = Syntax::kPkgAffinity,
          .about = "Packages that run the workload."};
}
template <class Record>
constexpr OptionOf<Record> Modules() {
  return {.name = "ModuleAffinity",
          .text = &Record::ModuleAffinity,
          .syntax = Syntax::kUnitAffinity,
          .about = "Modules that run the workload."};
}
template <class Record>
constexpr OptionOf<Record> Cores() {
  return {.name = "CoreAffinity",
          .text = &Record::CoreAffinity,
          .syntax = Syntax::kUnitAffinity,
          .about = "Cores that run the workload."};
}
template <class Record>
constexpr OptionOf<Record> Number(std::string_view name, std::string Record::*home,
                                  std::string_view about) {
  return {.name = name, .text = home, .syntax = Syntax::kCount, .about = about};
}

// Workloads are never written to a file.
template <class Record, std::size_t kCount>
consteval OptionTable<Record, kCount> NeverWritten(OptionTable<Record, kCount> rows) {
  for (auto& row : rows) row.flow = Flow::kReadOnly;
  return rows;
}

inline constexpr auto kCpu = Finish(NeverWritten(Options<_CPU_WORKLOAD_CFG>({
    AutoRun<_CPU_WORKLOAD_CFG>(),
    Packages<_CPU_WORKLOAD_CFG>(),
    Modules<_CPU_WORKLOAD_CFG>(),
    Cores<_CPU_WORKLOAD_CFG>(),
    StartDelay<_CPU_WORKLOAD_CFG>(),
    Duration<_CPU_WORKLOAD_CFG>(),
    LogLevel<_CPU_WORKLOAD_CFG>(),
})));

// clang-format off
inline constexpr auto kMemory = Finish(NeverWritten(Options<_MEMORY_WORKLOAD_CFG>({
    AutoRun<_MEMORY_WORKLOAD_CFG>(),
    {.name = "Algorithm", .text = &_MEMORY_WORKLOAD_CFG::Algorithm,
     .about = "Memory access pattern."},
    Packages<_MEMORY_WORKLOAD_CFG>(),
    Modules<_MEMORY_WORKLOAD_CFG>(),
    Cores<_MEMORY_WORKLOAD_CFG>(),
    Duration<_MEMORY_WORKLOAD_CFG>(),
    IdleTime<_MEMORY_WORKLOAD_CFG>(),
    StartDelay<_MEMORY_WORKLOAD_CFG>(),
    Number(
        "DataSizeInDW",
        &_MEMORY_WORKLOAD_CFG::DataSizeInDW,
        "Size of the data, in 32-bit words."),
    Number("Producers", &_MEMORY_WORKLOAD_CFG::Producers, "Number of writer threads."),
    Number("Consumers", &_MEMORY_WORKLOAD_CFG::Consumers, "Number of reader threads."),
    LogLevel<_MEMORY_WORKLOAD_CFG>(),
})));

inline constexpr auto kCopyCompare = Finish(NeverWritten(Options<_COPY_COMPARE_CFG>({
    Duration<_COPY_COMPARE_CFG>(),
    IdleTime<_COPY_COMPARE_CFG>(),
    StartDelay<_COPY_COMPARE_CFG>(),
    {.name = "Source", .text = &_COPY_COMPARE_CFG::Source, .about = "Folder to copy from."},
    {.name = "CopyTo", .text = &_COPY_COMPARE_CFG::CopyTo, .about = "Folder to copy to."},
    Number("Cycle", &_COPY_COMPARE_CFG::Cycle, "Number of copies."),
    Number("DataSizeMB", &_COPY_COMPARE_CFG::DataSizeMB, "Size of the data, in megabytes."),
    Number("Thread", &_COPY_COMPARE_CFG::Thread, "Number of threads."),
    LogLevel<_COPY_COMPARE_CFG>(),
})));
// clang-format on

inline constexpr auto kGraphics = Finish(NeverWritten(Options<_GFX_WORKLOAD_CFG>({
    AutoRun<_GFX_WORKLOAD_CFG>(),
    IdleTime<_GFX_WORKLOAD_CFG>(),
    StartDelay<_GFX_WORKLOAD_CFG>(),
    Duration<_GFX_WORKLOAD_CFG>(),
    LogLevel<_GFX_WORKLOAD_CFG>(),
})));

}  // namespace workloads

struct WorkloadRow : RecordRow<_WORKLOADS_XMLCFG> {
  // Graphics workloads: the member for the workload's name. If the group element is present, the
  // reader sets the name and clears AutoRun even if the workload's own element is absent.
  std::string ConfigRecord::*name_home = nullptr;
};

template <auto kRecord>
constexpr WorkloadRow Workload(std::string_view group, std::string_view name,
                               std::string_view about, std::span<const OptionRow> options,
                               std::string ConfigRecord::*name_home = nullptr) {
  return {{.group = group,
           .name = name,
           .older = {},
           .about = about,
           .options = options,
           .record = RecordAt<kRecord>,
           .const_record = ConstRecordAt<kRecord>},
          name_home};
}

inline constexpr auto kGraphicsName =
    static_cast<std::string ConfigRecord::*>(&_GFX_WORKLOAD_CFG::Name);

// The workloads, in the order of a file.
inline constexpr WorkloadRow kWorkloads[] = {
    Workload<&_WORKLOADS_XMLCFG::SSE2>(
        "IAPowerStress", "SSE2", "Vector operations with SSE2 instructions.", workloads::kCpu),
    Workload<&_WORKLOADS_XMLCFG::AVX128>("IAPowerStress", "AVX128", "128-bit vector operations.",
                                         workloads::kCpu),
    Workload<&_WORKLOADS_XMLCFG::AVX128Lite>("IAPowerStress", "AVX128Lite",
                                             "Light 128-bit vector operations.", workloads::kCpu),
    Workload<&_WORKLOADS_XMLCFG::AVX256>("IAPowerStress", "AVX256", "256-bit vector operations.",
                                         workloads::kCpu),
    Workload<&_WORKLOADS_XMLCFG::AVX256Lite>("IAPowerStress", "AVX256Lite",
                                             "Light 256-bit vector operations.", workloads::kCpu),
    Workload<&_WORKLOADS_XMLCFG::AVX512>("IAPowerStress", "AVX512", "512-bit vector operations.",
                                         workloads::kCpu),
    Workload<&_WORKLOADS_XMLCFG::AVX512Lite>("IAPowerStress", "AVX512Lite",
                                             "Light 512-bit vector operations.", workloads::kCpu),
    Workload<&_WORKLOADS_XMLCFG::DGEMM>("IAPowerStress", "DGEMM",
                                        "Double-precision matrix products.", workloads::kCpu),
    Workload<&_WORKLOADS_XMLCFG::AVX512_VNNI>(
        "IAPowerStress", "AVX512-VNNI", "Vector operations of neural networks.", workloads::kCpu),
    Workload<&_WORKLOADS_XMLCFG::L1>(
        "MemoryStress", "L1", "Accesses that stay in the first-level cache.", workloads::kMemory),
    Workload<&_WORKLOADS_XMLCFG::L2>(
        "MemoryStress", "L2", "Accesses that stay in the second-level cache.", workloads::kMemory),
    Workload<&_WORKLOADS_XMLCFG::L3>(
        "MemoryStress", "L3", "Accesses that stay in the third-level cache.", workloads::kMemory),
    Workload<&_WORKLOADS_XMLCFG::DRAM>("MemoryStress", "DRAM", "Accesses that reach the memory.",
                                       workloads::kMemory),
    Workload<&_WORKLOADS_XMLCFG::ProCon>("MemoryStress", "ProCon",
                                         "Threads that write data and threads that read it.",
                                         workloads::kMemory),
    Workload<&_WORKLOADS_XMLCFG::Splits>("MemoryStress", "Splits",
                                         "Accesses that cross cache lines.", workloads::kMemory),
    Workload<&_WORKLOADS_XMLCFG::CopyCompare>(
        "", "CopyCompare", "Copies files and compares the copies.", workloads::kCopyCompare),
    Workload<&_WORKLOADS_XMLCFG::BouncingBall>("GtStress", "BouncingBall", "A graphics scene.",
                                               workloads::kGraphics, kGraphicsName),
    Workload<&_WORKLOADS_XMLCFG::Media3DPTV>("GtStress", "Media3DPTV",
                                             "Media and graphics together.", workloads::kGraphics,
                                             kGraphicsName),
};
static_assert(AreGroupsInOrder(kWorkloads, Section::kWorkloads));

}  // namespace vexor
