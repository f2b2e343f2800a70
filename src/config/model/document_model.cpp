#include "config/model/document_model.h"

#include <algorithm>
#include <cassert>

#include "config/tables/custom_register_tables.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/sections.h"
#include "config/tables/system_setup.h"
#include "config/tables/test_control_table.h"
#include "config/tables/workload_tables.h"
#include "vocabulary/pm_test_names.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using Children = std::vector<ElementModel>;

// Returns the current name of an option with an older name: that of the other row of its member.
std::vector<std::string_view> CurrentNames(const OptionRow& option,
                                           std::span<const OptionRow> options) {
  if (option.overwrite != Overwrite::kIfEmpty) return {};
  const auto row = std::ranges::find_if(options, [&option](const OptionRow& other) {
    return other.text == option.text && other.overwrite != Overwrite::kIfEmpty;
  });
  assert(row != options.end());  // kIfEmpty is only used for a second row of a member
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

ElementModel MakeElement(std::string_view name, Children children, std::string_view about = {}) {
  return {.name = name, .about = about, .children = std::move(children)};
}

ElementModel MakeRecordElement(std::string_view name, std::span<const OptionRow> options,
                               const ConfigRecord& record, std::string_view about = {}) {
  ElementModel element = MakeElement(name, OptionElements(options), about);
  element.record = &record;
  return element;
}

// Returns the section's group of that name, which is appended to `groups` if it is missing.
ElementModel& GroupOf(Children& groups, Section section, std::string_view name) {
  const auto found = std::ranges::find(groups, name, &ElementModel::name);
  if (found != groups.end()) return *found;
  const auto* const row = std::ranges::find_if(kGroups, [&](const GroupRow& group) {
    return group.section == section && group.name == name;
  });
  assert(row != kGroups.end());  // AreGroupsInOrder
  return groups.emplace_back(MakeElement(row->name, {}, row->about));
}

// Adds the older name of an element to its siblings, as a copy of the element. One older name may
// stand for two elements.
void AddOlder(Children& siblings, std::string_view older, std::string_view current) {
  if (older.empty()) return;
  const auto known = std::ranges::find(siblings, older, &ElementModel::name);
  if (known != siblings.end()) {
    known->currents.push_back(current);
    return;
  }
  const auto original = std::ranges::find(siblings, current, &ElementModel::name);
  assert(original != siblings.end());
  ElementModel element = *original;
  element.name = older;
  element.currents = {current};
  siblings.push_back(std::move(element));
}

std::string_view AboutTest(VEXOR_PM_TEST_ID id) {
  const PmTestRow* const test = FindPmTest(id);
  return test != nullptr ? test->about : "Control of the run itself; it has no options.";
}

Children Switches() {
  Children switches;
  for (int id = kFirstAutoRunTest; id <= kLastAutoRunTest; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    switches.push_back(
        {.name = LongNameOf(test), .content = Content::kSwitch, .about = AboutTest(test)});
  }
  for (const PmTestRow& test : PmTests()) AddOlder(switches, test.older, test.name);
  return switches;
}

Children TestGroups(const _GLOBALPM_XMLCFG& pm) {
  Children groups;
  for (const PmTestRow& test : PmTests()) {
    ElementModel element =
        MakeRecordElement(test.name, test.options, test.const_record(pm), test.about);
    if (test.shape == PmTestRow::Shape::kArguments) element.content = Content::kArguments;
    GroupOf(groups, Section::kTests, test.group).children.push_back(std::move(element));
  }
  // In a second loop, so that older names follow all current ones.
  for (const PmTestRow& test : PmTests()) {
    AddOlder(GroupOf(groups, Section::kTests, test.group).children, test.older, test.name);
  }
  return groups;
}

Children SystemLists() {
  Children groups;
  for (const SystemListRow& row : kSystemLists) {
    ElementModel list = MakeElement(row.name, {}, row.about);
    list.list = &row;
    if (row.items == nullptr) {
      list.content = Content::kPairs;
    } else {
      list.children = {
          {.name = kListItem, .content = Content::kItem, .repeats = true, .list = &row}};
    }
    GroupOf(groups, Section::kSysConfiguration, row.group).children.push_back(std::move(list));
  }
  return groups;
}

Children CustomTables() {
  Children containers;
  for (const CustomTableRow& table : kCustomTables) {
    ElementModel item = MakeElement(table.item, OptionElements(table.options));
    item.repeats = true;
    containers.push_back(MakeElement(table.container, {std::move(item)}, table.about));
    containers.back().table = &table;
  }
  return containers;
}

Children Workloads(const _WORKLOADS_XMLCFG& workloads) {
  Children groups;
  for (const WorkloadRow& workload : kWorkloads) {
    Children& siblings = workload.group.empty()
                             ? groups
                             : GroupOf(groups, Section::kWorkloads, workload.group).children;
    siblings.push_back(MakeRecordElement(workload.name, workload.options,
                                         workload.const_record(workloads), workload.about));
  }
  return groups;
}

// Sets the contents of a section's element, except its subsections.
void FillSection(Section section, const FullRecords& records, ElementModel& element) {
  const _GLOBALCONFIG_XMLCFG& global = records.config.GlobalConfig;
  const auto fill_options = [&element](std::span<const OptionRow> options,
                                       const ConfigRecord& record) {
    element.children = OptionElements(options);
    element.record = &record;
  };
  switch (section) {
    case Section::kVersion:
      element.content = Content::kVersion;
      return;
    case Section::kLoopTracker:
      element.content = Content::kCounter;
      element.is_read = false;
      return;
    case Section::kAutoRun:
      element.children = Switches();
      return;
    case Section::kTestTraces:
      element.content = Content::kTraces;
      return;
    case Section::kWorkloadRunner:
      return fill_options(kWorkloadRunnerOptions, records.config.TestControl);
    case Section::kTests:
      element.children = TestGroups(records.config.GlobalPM);
      return;
    case Section::kOverwrites:
      return fill_options(kOverwriteOptions, global);
    case Section::kSettings:
      return fill_options(kSettingOptions, global);
    case Section::kSysConfiguration:
      element.children = SystemLists();
      return;
    case Section::kCustomConfiguration:
      element.children = CustomTables();
      return;
    case Section::kWorkloads:
      element.children = Workloads(records.workloads);
      return;
    case Section::kRoot:
    case Section::kTestControl:
    case Section::kGlobalConfiguration:
    case Section::kSystemSetup:
      return;
  }
}

ElementModel MakeSection(const SectionRow& row, const FullRecords& records) {
  ElementModel element{.name = row.name, .about = row.about};
  FillSection(row.section, records, element);
  ForEachSectionIn(row.section, [&](const SectionRow& child) {
    element.children.push_back(MakeSection(child, records));
  });
  ForEachSectionIn(row.section, [&](const SectionRow& child) {
    AddOlder(element.children, child.older, child.name);
  });
  return element;
}

}  // namespace

ElementModel MakeDocumentModel(const FullRecords& records) {
  return MakeSection(RowOf(Section::kRoot), records);
}

const ElementModel* FindChild(const ElementModel& parent, std::string_view name) {
  const auto child = std::ranges::find(parent.children, name, &ElementModel::name);
  return child == parent.children.end() ? nullptr : &*child;
}

}  // namespace vexor
