// Fills records from a source of values, and compares them with records that were written and read.
#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/tables/custom_register_tables.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/system_setup.h"
#include "config/tables/test_control_table.h"
#include "util/text.h"
#include "vexor/config/full_config.h"

namespace vexor {

// Fills records. The source provides numbers with Below(bound) and texts with Text().
template <class Source>
class RecordFiller {
 public:
  explicit RecordFiller(Source& source) : source_(source) {}

  void Fill(_XML_FULL_CFG& cfg) {
    for (bool& flag : cfg.TestControl.AutoRunCfg) flag = source_.Below(2) == 0;
    Fill(cfg.TestControl.TestTraceCfg, "CSTATES_Core_Con:");
    Fill(kWorkloadRunnerOptions, cfg.TestControl);
    for (const PmTestRow& test : PmTests()) Fill(test.options, test.record(cfg.GlobalPM));
    for (const SystemListRow& row : kSystemLists) {
      if (row.items != nullptr) Fill(cfg.GlobalConfig.*row.items);
      if (row.pairs != nullptr) Fill(cfg.GlobalConfig.*row.pairs);
    }
    for (const CustomTableRow& table : kCustomTables) {
      for (std::size_t i = source_.Below(3); i > 0; --i) {
        Fill(table.options, table.list.append(cfg.GlobalConfig.CustomConfiguration));
      }
    }
    Fill(kOverwriteOptions, cfg.GlobalConfig);
    Fill(kSettingOptions, cfg.GlobalConfig);
    cfg.GlobalConfig.Host_IP_Config = "10.1.2.3";
  }

 private:
  void Fill(std::vector<std::string>& texts, const std::string& opening = "") {
    texts.resize(source_.Below(4));
    for (std::string& text : texts) text = opening + source_.Text();
  }

  void Fill(NamedValues& pairs) {
    const char* const names[] = {"x", "x.-9", "Power_Scheme", "Battery_Simulation", ":_",
                                 "é", "9",    "a b"};
    pairs.resize(source_.Below(6));
    for (auto& pair : pairs) pair = {names[source_.Below(std::size(names))], source_.Text()};
  }

  void Fill(std::span<const OptionRow> options, ConfigRecord& record) {
    for (const OptionRow& option : options) {
      if (option.list != nullptr) Fill(record.*option.list);
      if (option.text == nullptr) continue;
      record.*option.text = source_.Text();
      // An empty text would be replaced by the fallback or the adjustment.
      if (!option.fallback.empty() || option.adjust.run != nullptr) record.*option.text += "x";
    }
  }

  Source& source_;
};

// Returns what an attribute preserves of a text.
inline std::string Carried(const std::string& text) {
  std::string carried;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && text[i + 1] == '\n') continue;
    const char c = text[i] == '\r' ? '\n' : text[i];
    if (c == '\n' || c == '\t' || static_cast<unsigned char>(c) >= ' ') carried += c;
  }
  return carried;
}

inline std::string CarriedByElement(const std::string& text) {
  return std::string(TrimSpace(Carried(text)));
}

inline std::vector<std::string> Carried(const std::vector<std::string>& texts) {
  std::vector<std::string> carried(texts.size());
  std::ranges::transform(texts, carried.begin(), CarriedByElement);
  std::erase(carried, "");
  return carried;
}

inline NamedValues Carried(const NamedValues& pairs) {
  NamedValues carried;
  for (const auto& [name, value] : pairs) {
    const std::string text = CarriedByElement(value);
    if (name != "9" && name != "a b" && !text.empty()) carried.emplace_back(name, text);
  }
  return carried;
}

// Returns what reading a written option returns.
inline std::string ReadBack(const OptionRow& option, const std::string& written,
                            PmTestRow::Shape shape) {
  if (!option.IsWritten()) return "";
  if (shape == PmTestRow::Shape::kElements) return CarriedByElement(written);
  const bool is_lost = option.range_attribute && written.find('-') != std::string::npos;
  return is_lost ? "" : Carried(written);
}

// Finds differences between records that were written and those that were read back.
class CarryCheck {
 public:
  // Returns the names of the differing members, one per line; empty if there are none.
  static std::string Find(const _XML_FULL_CFG& written, const _XML_FULL_CFG& read) {
    CarryCheck check;
    check.Compare(written, read);
    return check.places_;
  }

 private:
  void Compare(const _XML_FULL_CFG& written, const _XML_FULL_CFG& read) {
    const _GLOBALCONFIG_XMLCFG& from = written.GlobalConfig;
    const _GLOBALCONFIG_XMLCFG& to = read.GlobalConfig;
    Hold(read.TestControl.AutoRunCfg == written.TestControl.AutoRunCfg, "AutoRunCfg");
    Hold(read.TestControl.TestTraceCfg == Carried(written.TestControl.TestTraceCfg), "traces");
    Options(kWorkloadRunnerOptions, written.TestControl, read.TestControl, "WorkloadCfg");
    for (const PmTestRow& test : PmTests()) {
      Options(test.options, test.const_record(written.GlobalPM), test.const_record(read.GlobalPM),
              test.name, test.shape);
    }
    for (const SystemListRow& row : kSystemLists) {
      if (row.items != nullptr) Hold(to.*row.items == Carried(from.*row.items), row.name);
      if (row.pairs != nullptr) Hold(to.*row.pairs == Carried(from.*row.pairs), row.name);
    }
    for (const CustomTableRow& table : kCustomTables) Registers(table, from, to);
    Options(kOverwriteOptions, from, to, "OverwriteCfg");
    Options(kSettingOptions, from, to, "SETTING");
  }

  void Registers(const CustomTableRow& table, const _GLOBALCONFIG_XMLCFG& from,
                 const _GLOBALCONFIG_XMLCFG& to) {
    const std::size_t size = table.list.size(to.CustomConfiguration);
    if (!Hold(size == table.list.size(from.CustomConfiguration), table.container)) return;
    for (std::size_t i = 0; i < size; ++i) {
      Options(table.options, table.list.at(from.CustomConfiguration, i),
              table.list.at(to.CustomConfiguration, i), table.container);
    }
  }

  void Options(std::span<const OptionRow> options, const ConfigRecord& written,
               const ConfigRecord& read, std::string_view place,
               PmTestRow::Shape shape = PmTestRow::Shape::kElements) {
    for (const OptionRow& option : options) {
      if (option.list != nullptr) {
        const auto expected = Carried(written.*option.list);
        Hold(read.*option.list == (option.IsRead() ? expected : std::vector<std::string>()), place,
             option.name);
        continue;
      }
      const bool is_home_of_another = std::ranges::any_of(options, [&](const OptionRow& other) {
        return &other != &option && other.text == option.text && other.IsWritten();
      });
      const bool is_derived = !option.IsWritten() && option.adjust.run != nullptr;
      if (!option.IsRead() || is_home_of_another || is_derived) continue;
      Hold(read.*option.text == ReadBack(option, written.*option.text, shape), place, option.name);
    }
  }

  bool Hold(bool holds, std::string_view place, std::string_view option = {}) {
    if (!holds) places_.append(place).append("/").append(option).append("\n");
    return holds;
  }

  std::string places_;
};

}  // namespace vexor
