#include "vexor/config/writer.h"

#include <algorithm>
#include <cassert>
#include <new>

#include "config/file/xml_writer.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/sections.h"
#include "config/tables/system_setup.h"
#include "config/tables/test_control_table.h"
#include "config/texts/xml_characters.h"
#include "platform/platform.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

void WriteTagComment(XmlWriter& out, std::string_view opening, std::string_view name,
                     std::string_view hint) {
  out.Comment(std::string(opening).append(name).append(":").append(hint));
}

// `knob_hint` is the record's KnobHint, for hints of kind kRecord; an empty one writes no comment.
void WriteHint(XmlWriter& out, std::string_view name, const Hint& hint,
               std::string_view knob_hint = {}) {
  constexpr std::string_view kOptions = "Valid options for tag ";
  constexpr std::string_view kSingle = "Valid single option for tag ";
  switch (hint.kind) {
    case Hint::Kind::kNone:
      break;
    case Hint::Kind::kOptions:
      WriteTagComment(out, kOptions, name, hint.texts[0]);
      break;
    case Hint::Kind::kSingle:
      WriteTagComment(out, kSingle, name, hint.texts[0]);
      break;
    case Hint::Kind::kPlain:
      for (const std::string_view text : hint.texts) {
        if (!text.empty()) out.Comment(text);
      }
      break;
    case Hint::Kind::kRecord:
      if (!knob_hint.empty()) WriteTagComment(out, kOptions, name, knob_hint);
      break;
  }
}

void WriteTexts(XmlWriter& out, std::string_view name, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) out.TextElement(name, text);
}

std::string_view SwitchText(bool is_on) { return is_on ? "true" : "false"; }

void WriteOptions(XmlWriter& out, std::span<const OptionRow> options, const ConfigRecord& record,
                  std::string_view knob_hint = {}) {
  for (const OptionRow& option : options) {
    if (!option.IsWritten()) continue;
    WriteHint(out, option.name, option.hint, knob_hint);
    if (option.text != nullptr) {
      out.TextElement(option.name, record.*option.text);
      continue;
    }
    assert(option.list != nullptr);  // IsWellFormed: flags are never written
    if (option.item.empty()) {
      WriteTexts(out, option.name, record.*option.list);
    } else {
      out.Element(option.name, [&] { WriteTexts(out, option.item, record.*option.list); });
    }
  }
}

void WriteArguments(XmlWriter& out, std::span<const OptionRow> options,
                    const ConfigRecord& record) {
  for (const OptionRow& option : options) {
    assert(option.text != nullptr);  // the tables of tests with arguments have no lists
    const std::string& value = record.*option.text;
    const bool is_range = option.range_attribute && value.find('-') != std::string::npos;
    const char* const attribute = is_range ? "randVal" : "val";
    out.AttributeElement(kArgumentElement, {{"name", option.name}, {attribute, value}});
  }
}

// Writes a table with one element for each group; `write_row` writes the rows in it.
template <class Row, class WriteRow>
void WriteGroups(XmlWriter& out, std::span<const Row> rows, const WriteRow& write_row) {
  while (!rows.empty()) {
    const std::span<const Row> group = FirstGroup(rows);
    rows = rows.subspan(group.size());
    out.Element(group.front().group, [&] { std::ranges::for_each(group, write_row); });
  }
}

void WriteSwitches(XmlWriter& out, const _WL_CUSTOMERS_XMLCFG& control) {
  for (int id = kFirstAutoRunTest; id <= kLastAutoRunTest; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    out.TextElement(GetPMTestName(test), SwitchText(IsAutoRun(control, test)));
  }
}

void WritePmTest(XmlWriter& out, const PmTestRow& test, const _GLOBALPM_XMLCFG& pm) {
  const _PM_TEST_NODE& record = test.const_record(pm);
  out.Element(test.name, [&] {
    if (test.shape == PmTestRow::Shape::kArguments) {
      WriteArguments(out, test.options, record);
    } else {
      const std::string_view own_hint = record.KnobHint;
      WriteOptions(out, test.options, record, test.knob_hint.empty() ? own_hint : test.knob_hint);
    }
  });
}

void WriteGlobalPm(XmlWriter& out, const _GLOBALPM_XMLCFG& pm) {
  for (const HintedName& option : kPmTestHints) WriteHint(out, option.name, option.hint);
  WriteGroups(out, PmTests(), [&](const PmTestRow& test) { WritePmTest(out, test, pm); });
}

// Writes the values in their order. Values of `always` that are absent are written as empty
// elements, which readers ignore: after the value that precedes them in `always`, or first.
void WritePairs(XmlWriter& out, const NamedValues& pairs, std::span<const OptionRow> always) {
  using Pair = NamedValues::value_type;
  // Writes the absent values at the front of `always`, up to the first that is present.
  const auto write_absent = [&] {
    for (; !always.empty(); always = always.subspan(1)) {
      const OptionRow& due = always.front();
      if (std::ranges::find(pairs, due.name, &Pair::first) != pairs.end()) return;
      WriteHint(out, due.name, due.hint);
      out.TextElement(due.name, "");
    }
  };
  write_absent();
  for (const auto& [name, value] : pairs) {
    const auto known = std::ranges::find(always, name, &OptionRow::name);
    if (known != always.end()) WriteHint(out, name, known->hint);
    // Names come from the application; others would make the file unreadable.
    if (IsXmlName(name)) out.TextElement(name, value);
    if (!always.empty() && name == always.front().name) {
      always = always.subspan(1);
      write_absent();
    }
  }
}

void WriteSystemList(XmlWriter& out, const SystemListRow& row, const _GLOBALCONFIG_XMLCFG& cfg) {
  out.Element(row.name, [&] {
    WriteHint(out, row.name, row.hint);
    if (row.items != nullptr) {
      WriteTexts(out, kListItem, cfg.*row.items);
    } else {
      WritePairs(out, cfg.*row.pairs,
                 row.are_always_written ? row.values : std::span<const OptionRow>());
    }
  });
}

void WriteCustomTable(XmlWriter& out, const CustomTableRow& table, const _CUSTOM_XMLCFG& cfg) {
  out.Element(table.container, [&] {
    for (std::size_t i = 0; i < table.list.size(cfg); ++i) {
      out.Element(table.item, [&] { WriteOptions(out, table.options, table.list.at(cfg, i)); });
    }
  });
}

void WriteCustomTables(XmlWriter& out, const _CUSTOM_XMLCFG& cfg) {
  for (const CustomTableRow& table : kCustomTables) WriteCustomTable(out, table, cfg);
}

// Writes the contents of a section except its subsections.
void WriteContent(XmlWriter& out, Section section, const _XML_FULL_CFG& cfg) {
  const _GLOBALCONFIG_XMLCFG& global = cfg.GlobalConfig;
  switch (section) {
    case Section::kAutoRun:
      return WriteSwitches(out, cfg.TestControl);
    case Section::kTestTraces:
      return WriteTexts(out, kTraceEntry, cfg.TestControl.TestTraceCfg);
    case Section::kWorkloadRunner:
      return WriteOptions(out, kWorkloadRunnerOptions, cfg.TestControl);
    case Section::kTests:
      return WriteGlobalPm(out, cfg.GlobalPM);
    case Section::kOverwrites:
      return WriteOptions(out, kOverwriteOptions, global);
    case Section::kSettings:
      return WriteOptions(out, kSettingOptions, global);
    case Section::kSysConfiguration:
      return WriteGroups(out, std::span<const SystemListRow>(kSystemLists),
                         [&](const SystemListRow& row) { WriteSystemList(out, row, global); });
    case Section::kCustomConfiguration:
      return WriteCustomTables(out, global.CustomConfiguration);
    case Section::kRoot:
    case Section::kVersion:
    case Section::kLoopTracker:
    case Section::kTestControl:
    case Section::kGlobalConfiguration:
    case Section::kSystemSetup:
    case Section::kWorkloads:
      return;
  }
}

// Workloads are never written.
void WriteSection(XmlWriter& out, const SectionRow& row, const _XML_FULL_CFG& cfg) {
  if (row.section == Section::kWorkloads) return;
  if (row.section == Section::kVersion) return out.TextElement(row.name, GetVersionText());
  if (row.section == Section::kLoopTracker) {
    return out.TextElement(row.name, std::to_string(cfg.GlobalConfig.LoopTracker));
  }
  out.Element(row.name, [&] {
    WriteContent(out, row.section, cfg);
    ForEachSectionIn(row.section, [&](const SectionRow& child) { WriteSection(out, child, cfg); });
  });
}

// Callers see the hints of the written file in their record, too.
void SetKnobHints(_GLOBALPM_XMLCFG& pm) {
  for (const PmTestRow& test : PmTests()) {
    if (test.knob_hint.empty()) continue;
    test.record(pm).KnobHint = test.knob_hint;
  }
}

}  // namespace

std::string FormatXMLConfig(const _XML_FULL_CFG& cfg) {
  XmlWriter out;
  WriteSection(out, RowOf(Section::kRoot), cfg);
  return std::move(out).Release();
}

}  // namespace vexor

using namespace vexor;

bool WriteXMLConfig(const char* path, _XML_FULL_CFG& cfg, bool writeDefaults) {
  if (path == nullptr) return false;
  try {
    const std::string target = path;  // `path` may point into the record, which the reset changes
    if (writeDefaults) ResetVexorXmlConfiguration(cfg);
    SetKnobHints(cfg.GlobalPM);
    return !ReplaceFileContent(target, FormatXMLConfig(cfg));
  } catch (const std::bad_alloc&) {
    return false;
  }
}
