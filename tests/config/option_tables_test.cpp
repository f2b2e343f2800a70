// Tests the option tables against the records: every member has a row, and reset, reader and
// checker follow the rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <map>
#include <regex>

#include "config/config_files.h"
#include "config/file/option_reader.h"
#include "config/tables/common_node.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/system_setup.h"
#include "config/tables/test_control_table.h"
#include "config/tables/workload_tables.h"
#include "source_dir.h"
#include "vexor/config/check.h"

namespace vexor {
namespace {

struct Member {
  std::string type;
  std::string name;
  std::size_t offset;
};

// The layout of a record, as declared in its public header.
struct Layout {
  std::vector<Member> inherited;
  std::vector<Member> own;
  std::size_t end = 0;  // of the last member; members of derived records follow
  std::size_t alignment = 1;

  [[nodiscard]] std::size_t Size() const { return (end + alignment - 1) / alignment * alignment; }
};

using Layouts = std::map<std::string, Layout>;

struct Extent {
  std::size_t size;
  std::size_t alignment;
};

template <class Type>
constexpr Extent kExtent = {sizeof(Type), alignof(Type)};

Extent ExtentOf(const std::string& type, const Layouts& records) {
  static const std::map<std::string_view, Extent> plain = {
      {"bool", kExtent<bool>},
      {"std::int32_t", kExtent<std::int32_t>},
      {"std::uint64_t", kExtent<std::uint64_t>},
      {"std::string", kExtent<std::string>},
      {"std::array<bool, 32>", kExtent<std::array<bool, 32>>},
      {"vexor::NamedValues", kExtent<NamedValues>},
  };
  if (type.starts_with("std::vector<")) return kExtent<std::vector<std::string>>;
  const auto found = plain.find(type);
  if (found != plain.end()) return found->second;
  const auto record = records.find(type);
  EXPECT_NE(record, records.end()) << "the test does not know the type " << type;
  return record == records.end() ? Extent{0, 1} : Extent{record->second.Size(), alignof(void*)};
}

void ReadHeader(const std::string& name, Layouts& records) {
  static const std::regex begin(R"(struct (\w+)(?: : ([\w:]+))? \{)");
  static const std::regex member(R"(  ([^={]*) (\w+)(?: = .*|\{\})?; *(?://.*)?)");
  std::ifstream header(VEXOR_SOURCE_DIR "/include/vexor/config/" + name);
  Layout* record = nullptr;
  std::smatch match;
  for (std::string line; std::getline(header, line);) {
    if (std::regex_match(line, match, begin)) {
      record = &records[match[1]];
      const Layout base = records[match[2]];  // empty where none was read
      *record = base;
      record->inherited.insert(record->inherited.end(), base.own.begin(), base.own.end());
      record->own.clear();
    } else if (line == "};") {
      record = nullptr;
    } else if (record != nullptr && !line.starts_with("  //")) {
      ASSERT_TRUE(std::regex_match(line, match, member)) << name << ": " << line;
      const auto [size, alignment] = ExtentOf(match[1], records);
      const std::size_t offset = (record->end + alignment - 1) / alignment * alignment;
      record->own.push_back({match[1], match[2], offset});
      record->end = offset + size;
      record->alignment = std::max(record->alignment, alignment);
    }
  }
}

std::size_t Distance(const void* record, const void* member) {
  return static_cast<std::size_t>(static_cast<const char*>(member) -
                                  static_cast<const char*>(record));
}

// The names of the rows that set a record's members, by the members' offsets.
using Homes = std::multimap<std::size_t, std::string>;

void AddRows(Homes& homes, const ConfigRecord& record, std::span<const OptionRow> rows) {
  for (const OptionRow& row : rows) {
    if (row.overwrite != Overwrite::kAlways)
      continue;  // another name for the member of another row
    const void* const home = row.text != nullptr   ? static_cast<const void*>(&(record.*row.text))
                             : row.flag != nullptr ? &(record.*row.flag)
                                                   : static_cast<const void*>(&(record.*row.list));
    homes.emplace(Distance(&record, home), row.name);
  }
}

Homes HomesOf(const ConfigRecord& record, std::span<const OptionRow> rows) {
  Homes homes;
  AddRows(homes, record, rows);
  return homes;
}

// Normalises a name: members cannot have hyphens.
std::string Plain(std::string_view name) {
  std::string plain;
  for (const char c : name) {
    if (c != '-' && c != '_') plain += static_cast<char>(std::tolower(c));
  }
  return plain;
}

// Members that have no row on purpose.
constexpr std::string_view kNoOptions[] = {
    "_PM_TEST_NODE::SpareNumber",           // a number, set by the reset
    "_PCIE_DEVICE_CFG::FromLegacyElement",  // tells which element was read
    "_ITEM::Spare",                         // always empty
    "_ITEM::ItemText",                      // all of the item's texts
    "_GFX_WORKLOAD_CFG::Name",              // the workload's own
    "_WORKLOADS_XMLCFG::SpareWord",         // never touched
    "_WL_CUSTOMERS_XMLCFG::Switch1",        // kept for the application, as the next one
    "_WL_CUSTOMERS_XMLCFG::Switch2",
    "_WL_CUSTOMERS_XMLCFG::AutoRunCfg",  // one element a test
    "_WL_CUSTOMERS_XMLCFG::Enable1",     // kept for the application, as the next one
    "_WL_CUSTOMERS_XMLCFG::Enable2",
    "_WL_CUSTOMERS_XMLCFG::TestTraceCfg",         // a list of its own form
    "_GLOBALCONFIG_XMLCFG::Version",              // the file's
    "_GLOBALCONFIG_XMLCFG::VersionMatch",         // says how a reading ended
    "_GLOBALCONFIG_XMLCFG::CustomConfiguration",  // the register items
    "_GLOBALCONFIG_XMLCFG::Spare1",               // never touched
    "_GLOBALCONFIG_XMLCFG::OverwriteCfg",         // all of the element's texts, as the next one
    "_GLOBALCONFIG_XMLCFG::SETTING",
    "_GLOBALCONFIG_XMLCFG::SpareWord",    // never touched
    "_GLOBALCONFIG_XMLCFG::LoopTracker",  // counts readings
};

// Expects that each of the record's own members has a row of the same name.
void ExpectFilled(const std::string& record, const Layout& layout, const Homes& homes) {
  std::vector<Member> members = layout.inherited;
  members.insert(members.end(), layout.own.begin(), layout.own.end());
  for (const auto& [offset, name] : homes) {
    const auto member = std::ranges::find(members, offset, &Member::offset);
    ASSERT_NE(member, members.end()) << record << ": " << name;
    EXPECT_EQ(Plain(name), Plain(member->name)) << record;
  }
  for (const Member& member : layout.own) {
    const std::string full = record + "::" + member.name;
    const bool is_none = std::ranges::any_of(
        kNoOptions, [&full](std::string_view name) { return full.ends_with(name); });
    if (homes.contains(member.offset) != is_none) continue;
    ADD_FAILURE() << full
                  << (is_none ? ": a row fills it" : ": no row of the option tables fills it");
  }
}

// Expects that each member of a record of records has a row, and that their members have rows.
template <class Section>
void ExpectSectionsFilled(const std::string& name, const Layouts& layouts, const auto& rows) {
  const Section section;
  Homes homes;
  for (const auto& row : rows)
    homes.emplace(Distance(&section, &row.const_record(section)), row.name);
  const Layout& layout = layouts.at(name);
  EXPECT_EQ(layout.Size(), sizeof(Section)) << name;
  ExpectFilled(name, layout, homes);
  for (const auto& row : rows) {
    const auto member = std::ranges::find(
        layout.own, Distance(&section, &row.const_record(section)), &Member::offset);
    SCOPED_TRACE(row.name);
    ExpectFilled(member->type, layouts.at(member->type),
                 HomesOf(row.const_record(section), row.options));
  }
}

// An option needs a member and a row; this fails if the row is missing.
TEST(OptionTables, EveryMemberHasARow) {
  Layouts layouts;
  for (const char* const header :
       {"custom_registers.h", "global_config.h", "pm_tests.h", "test_control.h", "workloads.h"}) {
    ReadHeader(header, layouts);
  }
  ExpectFilled("_PM_TEST_NODE", layouts.at("_PM_TEST_NODE"),
               HomesOf(_PM_TEST_NODE(), common::kAllFields));
  ExpectSectionsFilled<_GLOBALPM_XMLCFG>("_GLOBALPM_XMLCFG", layouts, PmTests());
  ExpectSectionsFilled<_WORKLOADS_XMLCFG>("_WORKLOADS_XMLCFG", layouts, kWorkloads);

  const _WL_CUSTOMERS_XMLCFG control;
  const Layout& control_layout = layouts.at("_WL_CUSTOMERS_XMLCFG");
  EXPECT_EQ(control_layout.Size(), sizeof control);
  ExpectFilled("_WL_CUSTOMERS_XMLCFG", control_layout, HomesOf(control, kWorkloadRunnerOptions));

  const _GLOBALCONFIG_XMLCFG global;
  const Layout& global_layout = layouts.at("_GLOBALCONFIG_XMLCFG");
  EXPECT_EQ(global_layout.Size(), sizeof global);
  Homes homes = HomesOf(global, kOverwriteOptions);
  AddRows(homes, global, kSettingOptions);
  for (const SystemListRow& list : kSystemLists) {
    const void* const home = list.items != nullptr
                                 ? static_cast<const void*>(&(global.*list.items))
                                 : static_cast<const void*>(&(global.*list.pairs));
    const std::string group = list.group == "SYSTEM" ? "" : std::string(list.group);
    homes.emplace(Distance(&global, home), group + std::string(list.name));
  }
  ExpectFilled("_GLOBALCONFIG_XMLCFG", global_layout, homes);

  const Layout& custom_layout = layouts.at("_CUSTOM_XMLCFG");
  EXPECT_EQ(custom_layout.Size(), sizeof(_CUSTOM_XMLCFG));
  for (const Member& list : custom_layout.own) {
    const auto table = std::ranges::find(kCustomTables, Plain(list.name),
                                         [](const auto& row) { return Plain(row.container); });
    ASSERT_NE(table, std::end(kCustomTables)) << list.name << ": no row of the custom tables";
    const std::string item = list.type.substr(12, list.type.size() - 13);
    _CUSTOM_XMLCFG custom;
    ExpectFilled(item, layouts.at(item), HomesOf(table->list.append(custom), table->options));
  }
}

TEST(OptionTables, ResetSetsEveryKindOfMember) {
  _CPU_WORKLOAD_CFG workload;
  workload.AutoRun = true;
  workload.PkgAffinity = "1";
  ResetOptions(workloads::kCpu, workload);
  EXPECT_FALSE(workload.AutoRun);
  EXPECT_EQ(workload.PkgAffinity, "");
}

TEST(OptionTables, CommonFieldsOutsideATestsRowsKeepTheirValue) {
  for (const PmTestRow& test : PmTests()) {
    _XML_FULL_CFG cfg;
    ConfigRecord& record = test.record(cfg.GlobalPM);
    for (const OptionRow& field : common::kAllFields) record.*field.text = "kept";
    const std::string element = Wrapped(std::string(test.name), "");
    EXPECT_TRUE(
        ReadInto(cfg, Document(Wrapped("GLOBALPM", Wrapped(std::string(test.group), element))))
            .read);
    for (const OptionRow& field : common::kAllFields) {
      const bool is_read = field.name == "AllOptions" ||
                           std::ranges::any_of(test.options, [&field](const OptionRow& option) {
                             return option.text == field.text && option.IsRead();
                           });
      EXPECT_EQ(record.*field.text == "kept", !is_read) << test.name << "/" << field.name;
    }
  }
}

// Invalid for every grammar that has a check.
constexpr const char* kBadText = "no such text!";

std::string BadElement(const PmTestRow& test, const OptionRow& option) {
  const std::string name(option.name);
  if (test.shape == PmTestRow::Shape::kArguments) {
    return "<arg name='" + name + "' val='" + kBadText + "'/>";
  }
  return Wrapped(name,
                 option.item.empty() ? kBadText : Wrapped(std::string(option.item), kBadText));
}

TEST(OptionTables, EachOptionIsCheckedByItsGrammar) {
  for (const PmTestRow& test : PmTests()) {
    std::string elements;
    std::vector<std::string> expected;
    for (const OptionRow& option : test.options) {
      if (option.flow == Flow::kResetOnly) continue;
      elements += BadElement(test, option);
      if (option.syntax == Syntax::kFreeText || option.syntax == Syntax::kKnobs) continue;
      std::string& path = expected.emplace_back("GLOBALPM/");
      path.append(test.group).append("/").append(test.name).append("/").append(option.name);
      if (!option.item.empty()) path.append("/").append(option.item).append("[1]");
    }
    const std::string section = Wrapped(std::string(test.name), elements);
    std::vector<std::string> found;
    for (const Finding& finding : CheckXMLConfigText(
             Document(Wrapped("GLOBALPM", Wrapped(std::string(test.group), section))))) {
      if (finding.severity == Severity::kError) found.push_back(finding.path);
    }
    EXPECT_EQ(found, expected);
  }
}

}  // namespace
}  // namespace vexor
