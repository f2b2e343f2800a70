#include "vexor/config/writer.h"

#include <algorithm>
#include <new>

#include "config/pm_test_table.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/system_setup.h"
#include "config/tables/test_control_table.h"
#include "config/xml_characters.h"
#include "config/xml_writer.h"
#include "platform/platform.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

void WriteTagComment(XmlWriter& out, std::string_view opening, std::string_view name,
                     std::string_view hint) {
  out.Comment(std::string(opening).append(name).append(":").append(hint));
}

// `knob_hint` is the text of a hint that the record holds; none is written for an empty one.
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

std::string_view TextOf(bool flag) { return flag ? "true" : "false"; }

void WriteOptions(XmlWriter& out, std::span<const OptionRow> options, const ConfigRecord& record,
                  std::string_view knob_hint = {}) {
  for (const OptionRow& option : options) {
    if (!option.IsWritten()) continue;
    WriteHint(out, option.name, option.hint, knob_hint);
    if (option.text != nullptr) {
      out.TextElement(option.name, record.*option.text);
    } else if (option.item.empty()) {
      WriteTexts(out, option.name, record.*option.list);
    } else {
      out.Element(option.name, [&] { WriteTexts(out, option.item, record.*option.list); });
    }
  }
}

void WriteArguments(XmlWriter& out, std::span<const OptionRow> options,
                    const ConfigRecord& record) {
  for (const OptionRow& option : options) {
    const std::string& value = record.*option.text;
    const bool is_range = option.range_attribute && value.find('-') != std::string::npos;
    const char* const attribute = is_range ? "randVal" : "val";
    out.AttributeElement("arg", {{"name", option.name}, {attribute, value}});
  }
}

// Writes the groups of a table, each with what `write_row` writes for its rows.
template <class Row, class WriteRow>
void WriteGroups(XmlWriter& out, std::span<const Row> rows, const WriteRow& write_row) {
  while (!rows.empty()) {
    const std::span<const Row> group = FirstGroup(rows);
    rows = rows.subspan(group.size());
    out.Element(group.front().group, [&] { std::ranges::for_each(group, write_row); });
  }
}

void WriteTestControl(XmlWriter& out, const _WL_CUSTOMERS_XMLCFG& control) {
  out.Element("AutoRunCfg", [&] {
    for (int id = kFirstAutoRunTest; id <= kLastAutoRunTest; ++id) {
      const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
      out.TextElement(GetPMTestName(test), TextOf(IsAutoRun(control, test)));
    }
  });
  out.Element("TestTraceCfg", [&] { WriteTexts(out, "Name", control.TestTraceCfg); });
  out.Element("WorkloadCfg", [&] { WriteOptions(out, kWorkloadRunnerOptions, control); });
}

void WritePmTest(XmlWriter& out, const PmTestRow& test, const _GLOBALPM_XMLCFG& pm) {
  const _PM_TEST_NODE& record = test.look(pm);
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

// Writes the values in their order. Of the names that always stand, one without a value is written
// empty, and so unread, where their own order puts it.
void WritePairs(XmlWriter& out, const NamedValues& pairs, std::span<const OptionRow> always) {
  using Pair = NamedValues::value_type;
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
      WriteTexts(out, "ITEM", cfg.*row.items);
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

void WriteGlobalConfig(XmlWriter& out, const _GLOBALCONFIG_XMLCFG& cfg) {
  out.Element("SystemSetup", [&] {
    out.Element("OverwriteCfg", [&] { WriteOptions(out, kOverwriteOptions, cfg); });
    out.Element("SETTING", [&] { WriteOptions(out, kSettingOptions, cfg); });
  });
  out.Element("SysConfiguration", [&] {
    WriteGroups(out, std::span<const SystemListRow>(kSystemLists),
                [&](const SystemListRow& row) { WriteSystemList(out, row, cfg); });
  });
  out.Element("CustomConfiguration", [&] {
    for (const CustomTableRow& table : kCustomTables) {
      WriteCustomTable(out, table, cfg.CustomConfiguration);
    }
  });
}

// The caller's record holds the hints that the file shows.
void SetKnobHints(_GLOBALPM_XMLCFG& pm) {
  for (const PmTestRow& test : PmTests()) {
    if (test.knob_hint.empty()) continue;
    test.record(pm).KnobHint = test.knob_hint;
  }
}

}  // namespace

std::string FormatXMLConfig(const _XML_FULL_CFG& cfg) {
  XmlWriter out;
  out.Element("VEXOR", [&] {
    out.TextElement("Version", GetVersionText());
    out.TextElement("LoopTracker", std::to_string(cfg.GlobalConfig.LoopTracker));
    out.Element("TEST_CONTROL_CFG", [&] { WriteTestControl(out, cfg.TestControl); });
    out.Element("GLOBALPM", [&] { WriteGlobalPm(out, cfg.GlobalPM); });
    out.Element("GLOBALCONFIGURATION", [&] { WriteGlobalConfig(out, cfg.GlobalConfig); });
  });
  return std::move(out).TakeDocument();
}

}  // namespace vexor

bool WriteXMLConfig(const char* path, _XML_FULL_CFG& cfg, bool writeDefaults) {
  if (path == nullptr) return false;
  try {
    const std::string target = path;  // a text of the record itself would not outlive the reset
    if (writeDefaults) ResetVexorXmlConfiguration(cfg);
    vexor::SetKnobHints(cfg.GlobalPM);
    return !vexor::ReplaceFileContent(target, vexor::FormatXMLConfig(cfg));
  } catch (const std::bad_alloc&) {
    return false;
  }
}
