// The skeleton of a configuration file: its sections and groups, in the order of a written file.
// Reader, writer, checker, description and schema take element names from here. The contents of the
// sections are in the other tables of this folder.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexor {

// In the order of kSections.
enum class Section : std::uint8_t {
  kRoot,
  kVersion,
  kLoopTracker,
  kTestControl,
  kAutoRun,
  kTestTraces,
  kWorkloadRunner,
  kTests,
  kGlobalConfiguration,
  kSystemSetup,
  kOverwrites,
  kSettings,
  kSysConfiguration,
  kCustomConfiguration,
  kWorkloads,
};

struct SectionRow {
  Section section;
  Section parent;
  std::string_view name;
  std::string_view older = {};  // former name, read if `name` is absent
  std::string_view about = {};  // one sentence
};

// An element of a section that groups tests, lists or workloads.
struct GroupRow {
  Section section;
  std::string_view name;
  std::string_view about;
};

// clang-format off
inline constexpr auto kSections = std::to_array<SectionRow>({
    {.section = Section::kRoot, .parent = Section::kRoot, .name = "VEXOR",
     .about = "The configuration of a run."},
    {.section = Section::kVersion, .parent = Section::kRoot, .name = "Version",
     .about = "Version of the tool that the file was written for."},
    {.section = Section::kLoopTracker, .parent = Section::kRoot, .name = "LoopTracker",
     .about = "Loop counter of the writer."},
    {.section = Section::kTestControl, .parent = Section::kRoot, .name = "TEST_CONTROL_CFG",
     .about = "Which tests run, and how."},
    {.section = Section::kAutoRun, .parent = Section::kTestControl, .name = "AutoRunCfg",
     .about = "The tests to run."},
    {.section = Section::kTestTraces, .parent = Section::kTestControl, .name = "TestTraceCfg",
     .about = "Trace entries; their element names do not matter."},
    {.section = Section::kWorkloadRunner, .parent = Section::kTestControl, .name = "WorkloadCfg",
     .older = "SETTING", .about = "Settings of the workload runner."},
    {.section = Section::kTests, .parent = Section::kRoot, .name = "GLOBALPM",
     .about = "The options of the tests."},
    {.section = Section::kGlobalConfiguration, .parent = Section::kRoot,
     .name = "GLOBALCONFIGURATION", .about = "Settings of the whole run."},
    {.section = Section::kSystemSetup, .parent = Section::kGlobalConfiguration,
     .name = "SystemSetup", .about = "The platform, the log and the flow of the run."},
    {.section = Section::kOverwrites, .parent = Section::kSystemSetup, .name = "OverwriteCfg",
     .about = "Values that replace the detected ones."},
    {.section = Section::kSettings, .parent = Section::kSystemSetup, .name = "SETTING",
     .about = "Settings of the run."},
    {.section = Section::kSysConfiguration, .parent = Section::kGlobalConfiguration,
     .name = "SysConfiguration", .about = "Settings of the domains."},
    {.section = Section::kCustomConfiguration, .parent = Section::kGlobalConfiguration,
     .name = "CustomConfiguration",
     .about = "Register writes applied before testing."},
    {.section = Section::kWorkloads, .parent = Section::kRoot, .name = "WORKLOADS",
     .about = "Stress workloads that run alongside the tests."},
});

inline constexpr auto kGroups = std::to_array<GroupRow>({
    {Section::kTests, "CORE", "Tests of the cores."},
    {Section::kTests, "ICE", "Tests of the image-compute engine."},
    {Section::kTests, "SYSTEM", "Sleep-state and PECI tests of the system."},
    {Section::kTests, "GT", "Tests of graphics and media."},
    {Section::kTests, "Device", "Tests of PCIe devices."},
    {Section::kTests, "IPU", "Tests of the imaging unit."},
    {Section::kTests, "Vpu", "Tests of the vision unit."},
    {Section::kTests, "UNCORE", "Tests of the uncore."},
    {Section::kSysConfiguration, "SYSTEM", "Settings of the system."},
    {Section::kSysConfiguration, "CORE", "Settings of the cores."},
    {Section::kSysConfiguration, "POWER", "Settings of the power limits."},
    {Section::kSysConfiguration, "UNCORE", "Settings of the uncore."},
    {Section::kWorkloads, "IAPowerStress", "Workloads that stress the cores."},
    {Section::kWorkloads, "MemoryStress", "Workloads that stress caches and memory."},
    {Section::kWorkloads, "GtStress", "Workloads that stress graphics."},
});
// clang-format on

// Names of repeated elements.
inline constexpr std::string_view kTraceEntry = "Name";  // as written; any name is read
inline constexpr std::string_view kListItem = "ITEM";    // in a list under "SysConfiguration"
inline constexpr std::string_view kArgumentElement =
    "arg";  // in a test whose options are arguments

// RowOf indexes the table by the enumerator. Parents come before their children, so that the
// recursion from a section to its parents ends at the root.
consteval bool AreSectionsInOrder() {
  for (std::size_t i = 0; i < kSections.size(); ++i) {
    if (kSections[i].section != static_cast<Section>(i)) return false;
    if (i > 0 && kSections[i].parent >= kSections[i].section) return false;
  }
  return true;
}
static_assert(AreSectionsInOrder());

constexpr const SectionRow& RowOf(Section section) {
  assert(static_cast<std::size_t>(section) < kSections.size());
  return kSections[static_cast<std::size_t>(section)];
}

constexpr std::string_view NameOf(Section section) { return RowOf(section).name; }

// Calls `visit` for each direct subsection, in the order of a written file.
template <class Visit>
constexpr void ForEachSectionIn(Section parent, Visit visit) {
  for (const SectionRow& row : kSections) {
    if (row.parent == parent && row.section != Section::kRoot) visit(row);
  }
}

// Returns whether the rows of each group are contiguous and the groups in the order of kGroups,
// which is the order of a written file. Rows directly in the section, without a group, may be
// anywhere.
template <class Rows>
consteval bool AreGroupsInOrder(const Rows& rows, Section section) {
  std::size_t group = 0;
  for (const auto& row : rows) {
    if (row.group.empty()) continue;
    while (group < kGroups.size() &&
           (kGroups[group].section != section || kGroups[group].name != row.group)) {
      ++group;
    }
  }
  return group < kGroups.size();
}

}  // namespace vexor
