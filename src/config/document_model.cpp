#include "config/document_model.h"

#include <algorithm>

#include "config/pm_test_table.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/system_setup.h"
#include "config/tables/test_control_table.h"
#include "config/tables/workload_tables.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using Children = std::vector<ElementModel>;

// The name of the option that an older name stands for: the other row of the same member.
std::vector<std::string_view> CurrentNames(const OptionRow& option,
                                           std::span<const OptionRow> options) {
  if (option.overwrite != Overwrite::kIfEmpty) return {};
  const auto row = std::ranges::find_if(options, [&option](const OptionRow& other) {
    return other.text == option.text && other.overwrite != Overwrite::kIfEmpty;
  });
  return {row->name};
}

ElementModel OptionElement(const OptionRow& option, std::span<const OptionRow> options) {
  ElementModel element{.name = option.name,
                       .content = Content::kOption,
                       .currents = CurrentNames(option, options),
                       .about = option.about,
                       .option = &option,
                       .repeats = option.list != nullptr && option.item.empty(),
                       .is_read = option.IsRead()};
  if (!option.item.empty()) {
    element.content = Content::kChildren;
    element.children = {
        {.name = option.item, .content = Content::kItem, .option = &option, .repeats = true}};
  }
  return element;
}

Children OptionElements(std::span<const OptionRow> options) {
  Children elements;
  for (const OptionRow& option : options) {
    if (option.flow != Flow::kResetOnly) elements.push_back(OptionElement(option, options));
  }
  return elements;
}

ElementModel Group(std::string_view name, Children children, std::string_view about = {}) {
  return {.name = name, .about = about, .children = std::move(children)};
}

ElementModel OptionGroup(std::string_view name, std::span<const OptionRow> options,
                         const ConfigRecord& record, std::string_view about = {}) {
  ElementModel group = Group(name, OptionElements(options), about);
  group.record = &record;
  return group;
}

// A group of sections in the tables, which has no row of its own.
struct GroupRow {
  std::string_view name;
  std::string_view about;
};

constexpr GroupRow kTestGroups[] = {
    {"CORE", "Tests of the cores."},      {"ICE", "Tests of the image-compute engine."},
    {"SYSTEM", "Tests of the system."},   {"GT", "Tests of graphics and media."},
    {"Device", "Tests of PCIe devices."}, {"IPU", "Tests of the imaging unit."},
    {"Vpu", "Tests of the vision unit."}, {"UNCORE", "Tests of the uncore."},
};
constexpr GroupRow kSystemGroups[] = {
    {"SYSTEM", "Settings of the system."},
    {"CORE", "Settings of the cores."},
    {"POWER", "Settings of the power limits."},
    {"UNCORE", "Settings of the uncore."},
};
constexpr GroupRow kWorkloadGroups[] = {
    {"IAPowerStress", "Workloads of the processor."},
    {"MemoryStress", "Workloads of caches and memory."},
    {"GtStress", "Workloads of the graphics."},
};

// Returns the group of that name among the elements, added if it is none yet.
ElementModel& Adopt(Children& groups, std::string_view name, std::span<const GroupRow> rows) {
  const auto found = std::ranges::find(groups, name, &ElementModel::name);
  if (found != groups.end()) return *found;
  const auto row = std::ranges::find(rows, name, &GroupRow::name);
  return groups.emplace_back(Group(name, {}, row == rows.end() ? "" : row->about));
}

// Adds the older name of an element that stands among the siblings. One older name may stand for
// two elements.
void AddOlder(Children& siblings, std::string_view older, std::string_view current) {
  if (older.empty()) return;
  const auto known = std::ranges::find(siblings, older, &ElementModel::name);
  if (known != siblings.end()) {
    known->currents.push_back(current);
    return;
  }
  ElementModel element = *std::ranges::find(siblings, current, &ElementModel::name);
  element.name = older;
  element.currents = {current};
  siblings.push_back(std::move(element));
}

ElementModel TestControl(const _WL_CUSTOMERS_XMLCFG& control) {
  Children switches;
  const auto add_switch = [&switches](std::string_view name, std::string_view about) {
    switches.push_back({.name = name, .content = Content::kSwitch, .about = about});
  };
  for (const PmTestRow& test : PmTests()) add_switch(test.name, test.about);
  add_switch("TestControl", "Control of the run itself; it has no options.");
  for (const PmTestRow& test : PmTests()) AddOlder(switches, test.older, test.name);
  Children sections;
  sections.push_back(Group("AutoRunCfg", std::move(switches), "The tests that run."));
  sections.push_back({.name = "TestTraceCfg",
                      .content = Content::kTraces,
                      .about = "What is traced: entries under any element names."});
  sections.push_back(OptionGroup("WorkloadCfg", kWorkloadRunnerOptions, control,
                                 "How the workload runner behaves."));
  AddOlder(sections, "SETTING", "WorkloadCfg");
  return Group("TEST_CONTROL_CFG", std::move(sections), "Which tests run, and how.");
}

ElementModel PmTestGroups(const _GLOBALPM_XMLCFG& pm) {
  Children groups;
  for (const PmTestRow& test : PmTests()) {
    ElementModel element = OptionGroup(test.name, test.options, test.look(pm), test.about);
    if (test.shape == PmTestRow::Shape::kArguments) element.content = Content::kArguments;
    Adopt(groups, test.group, kTestGroups).children.push_back(std::move(element));
  }
  for (const PmTestRow& test : PmTests()) {
    AddOlder(Adopt(groups, test.group, kTestGroups).children, test.older, test.name);
  }
  return Group("GLOBALPM", std::move(groups), "The options of the tests.");
}

ElementModel SystemLists() {
  Children groups;
  for (const SystemListRow& row : kSystemLists) {
    ElementModel list = Group(row.name, {}, row.about);
    list.list = &row;
    if (row.items == nullptr) {
      list.content = Content::kPairs;
    } else {
      list.children = {{.name = "ITEM", .content = Content::kItem, .repeats = true, .list = &row}};
    }
    Adopt(groups, row.group, kSystemGroups).children.push_back(std::move(list));
  }
  return Group("SysConfiguration", std::move(groups), "Settings of the domains.");
}

ElementModel CustomTables() {
  Children containers;
  for (const CustomTableRow& table : kCustomTables) {
    ElementModel item = Group(table.item, OptionElements(table.options));
    item.repeats = true;
    containers.push_back(Group(table.container, {std::move(item)}, table.about));
    containers.back().table = &table;
  }
  return Group("CustomConfiguration", std::move(containers),
               "Register writes that are applied before testing.");
}

ElementModel GlobalConfiguration(const _GLOBALCONFIG_XMLCFG& cfg) {
  ElementModel setup = Group("SystemSetup",
                             {OptionGroup("OverwriteCfg", kOverwriteOptions, cfg,
                                          "Bases to use in place of the detected ones."),
                              OptionGroup("SETTING", kSettingOptions, cfg, "Settings of the run.")},
                             "The platform, the log and the flow of the run.");
  return Group("GLOBALCONFIGURATION", {std::move(setup), SystemLists(), CustomTables()},
               "Settings of the whole run.");
}

ElementModel Workloads(const _WORKLOADS_XMLCFG& workloads) {
  Children groups;
  for (const WorkloadRow& workload : kWorkloads) {
    ElementModel element =
        OptionGroup(workload.name, workload.options, workload.look(workloads), workload.about);
    Children& siblings =
        workload.group.empty() ? groups : Adopt(groups, workload.group, kWorkloadGroups).children;
    siblings.push_back(std::move(element));
  }
  return Group("WORKLOADS", std::move(groups), "Stress workloads that run beside the tests.");
}

}  // namespace

ElementModel MakeDocumentModel(const FullRecords& records) {
  Children sections;
  sections.push_back({.name = "Version",
                      .content = Content::kVersion,
                      .about = "Version of the tool that the file was written for."});
  sections.push_back({.name = "LoopTracker",
                      .content = Content::kCounter,
                      .about = "Loop counter of the writer.",
                      .is_read = false});
  sections.push_back(TestControl(records.config.TestControl));
  sections.push_back(PmTestGroups(records.config.GlobalPM));
  sections.push_back(GlobalConfiguration(records.config.GlobalConfig));
  sections.push_back(Workloads(records.workloads));
  return Group("VEXOR", std::move(sections));
}

const ElementModel* FindChild(const ElementModel& parent, std::string_view name) {
  const auto child = std::ranges::find(parent.children, name, &ElementModel::name);
  return child == parent.children.end() ? nullptr : &*child;
}

}  // namespace vexor
