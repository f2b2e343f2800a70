// Records of random texts, written and read again: what the rows say is what a file carries.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "config/config_files.h"
#include "config/pm_test_table.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/system_setup.h"
#include "config/tables/test_control_table.h"
#include "platform/test_disk.h"
#include "temporary_folder.h"
#include "util/text.h"
#include "vexor/config/writer.h"

namespace vexor {
namespace {

class Writing {
 public:
  explicit Writing(unsigned seed) : random_(seed) {}

  std::size_t Below(std::size_t bound) { return random_() % bound; }

  std::string Text() {
    using std::operator""sv;
    constexpr std::string_view kPieces[] = {"a",
                                            "B=1;",
                                            "-",
                                            "]]>",
                                            "&",
                                            "&amp;",
                                            "&#65;",
                                            "<b/>",
                                            "\"",
                                            "'",
                                            "\r",
                                            "\n",
                                            "\t",
                                            " ",
                                            "  \n",
                                            "\x01",
                                            "\x1f\x0b",
                                            "\xff\x80\xb5",
                                            "\xef\xbb\xbf",
                                            "\0"sv};
    std::string text;
    for (std::size_t i = Below(7); i > 0; --i) text += kPieces[Below(std::size(kPieces))];
    return text;
  }

  void Fill(std::vector<std::string>& texts, const std::string& opening = "") {
    texts.resize(Below(4));
    for (std::string& text : texts) text = opening + Text();
  }

  void Fill(NamedValues& pairs) {
    const char* const names[] = {"x", "x.-9", "Power_Scheme", "Battery_Simulation", ":_",
                                 "é", "9",    "a b"};
    pairs.resize(Below(6));
    for (auto& pair : pairs) pair = {names[Below(std::size(names))], Text()};
  }

  void Fill(std::span<const OptionRow> options, ConfigRecord& record) {
    for (const OptionRow& option : options) {
      if (option.list != nullptr) Fill(record.*option.list);
      if (option.text == nullptr) continue;
      record.*option.text = Text();
      // An empty one would read as something else.
      if (!option.fallback.empty() || option.settle != nullptr) record.*option.text += "x";
    }
  }

 private:
  std::mt19937 random_;
};

_XML_FULL_CFG RandomRecord(unsigned seed) {
  Writing writing(seed);
  _XML_FULL_CFG cfg;
  for (bool& flag : cfg.TestControl.AutoRunCfg) flag = writing.Below(2) == 0;
  writing.Fill(cfg.TestControl.TestTraceCfg, "CSTATES_Core_Con:");
  writing.Fill(kWorkloadRunnerOptions, cfg.TestControl);
  for (const PmTestRow& test : PmTests()) writing.Fill(test.options, test.record(cfg.GlobalPM));
  for (const SystemListRow& row : kSystemLists) {
    if (row.items != nullptr) writing.Fill(cfg.GlobalConfig.*row.items);
    if (row.pairs != nullptr) writing.Fill(cfg.GlobalConfig.*row.pairs);
  }
  for (const CustomTableRow& table : kCustomTables) {
    for (std::size_t i = writing.Below(3); i > 0; --i) {
      writing.Fill(table.options, table.list.append(cfg.GlobalConfig.CustomConfiguration));
    }
  }
  writing.Fill(kOverwriteOptions, cfg.GlobalConfig);
  writing.Fill(kSettingOptions, cfg.GlobalConfig);
  cfg.GlobalConfig.Host_IP_Config = "10.1.2.3";
  return cfg;
}

// The text as an attribute carries it.
std::string Carried(const std::string& text) {
  std::string carried;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && text[i + 1] == '\n') continue;
    const char c = text[i] == '\r' ? '\n' : text[i];
    if (c == '\n' || c == '\t' || static_cast<unsigned char>(c) >= ' ') carried += c;
  }
  return carried;
}

std::string CarriedByElement(const std::string& text) {
  return std::string(TrimSpace(Carried(text)));
}

std::vector<std::string> Carried(const std::vector<std::string>& texts) {
  std::vector<std::string> carried(texts.size());
  std::ranges::transform(texts, carried.begin(), CarriedByElement);
  std::erase(carried, "");
  return carried;
}

NamedValues Carried(const NamedValues& pairs) {
  NamedValues carried;
  for (const auto& [name, value] : pairs) {
    const std::string text = CarriedByElement(value);
    if (name != "9" && name != "a b" && !text.empty()) carried.emplace_back(name, text);
  }
  return carried;
}

// What reading gives an option's text.
std::string ReadBack(const OptionRow& option, const std::string& written, PmTestRow::Shape shape) {
  if (!option.IsWritten()) return "";
  if (shape == PmTestRow::Shape::kElements) return CarriedByElement(written);
  const bool is_lost = option.range_attribute && written.find('-') != std::string::npos;
  return is_lost ? "" : Carried(written);
}

void ExpectCarried(std::span<const OptionRow> options, const ConfigRecord& written,
                   const ConfigRecord& read, PmTestRow::Shape shape = PmTestRow::Shape::kElements) {
  for (const OptionRow& option : options) {
    SCOPED_TRACE(option.name);
    if (option.list != nullptr) {
      const auto expected = Carried(written.*option.list);
      EXPECT_EQ(read.*option.list, option.IsRead() ? expected : std::vector<std::string>());
      continue;
    }
    const bool is_home_of_another = std::ranges::any_of(options, [&](const OptionRow& other) {
      return &other != &option && other.text == option.text && other.IsWritten();
    });
    const bool is_derived = !option.IsWritten() && option.settle != nullptr;
    if (!option.IsRead() || is_home_of_another || is_derived) continue;
    EXPECT_EQ(read.*option.text, ReadBack(option, written.*option.text, shape));
  }
}

TEST(RoundTrip, GivesBackWhatIsWrittenAndRead) {
  for (unsigned seed = 0; seed < 30; ++seed) {
    SCOPED_TRACE(seed);
    const _XML_FULL_CFG written = RandomRecord(seed);
    const _XML_FULL_CFG read = ReadDocument(FormatXMLConfig(written));
    EXPECT_EQ(read.TestControl.AutoRunCfg, written.TestControl.AutoRunCfg);
    EXPECT_EQ(read.TestControl.TestTraceCfg, Carried(written.TestControl.TestTraceCfg));
    ExpectCarried(kWorkloadRunnerOptions, written.TestControl, read.TestControl);
    for (const PmTestRow& test : PmTests()) {
      SCOPED_TRACE(test.name);
      ExpectCarried(test.options, test.look(written.GlobalPM), test.look(read.GlobalPM),
                    test.shape);
    }
    for (const SystemListRow& row : kSystemLists) {
      if (row.items != nullptr) {
        EXPECT_EQ(read.GlobalConfig.*row.items, Carried(written.GlobalConfig.*row.items));
      } else {
        EXPECT_EQ(read.GlobalConfig.*row.pairs, Carried(written.GlobalConfig.*row.pairs));
      }
    }
    for (const CustomTableRow& table : kCustomTables) {
      const _CUSTOM_XMLCFG& from = written.GlobalConfig.CustomConfiguration;
      const _CUSTOM_XMLCFG& to = read.GlobalConfig.CustomConfiguration;
      ASSERT_EQ(table.list.size(to), table.list.size(from));
      for (std::size_t i = 0; i < table.list.size(to); ++i) {
        ExpectCarried(table.options, table.list.at(from, i), table.list.at(to, i));
      }
    }
    ExpectCarried(kOverwriteOptions, written.GlobalConfig, read.GlobalConfig);
    ExpectCarried(kSettingOptions, written.GlobalConfig, read.GlobalConfig);
  }
}

TEST(RoundTrip, KeepsTheOldFileWhenTheDiskIsFull) {
  const TemporaryFolder folder;
  WriteBytes(folder / "lab.xml", "old");
  _XML_FULL_CFG cfg;
  const TestDisk disk;
  TestDisk::LimitSpace(10'000);
  EXPECT_FALSE(WriteXMLConfig((folder / "lab.xml").c_str(), cfg, false));
  EXPECT_EQ(ReadBytes(folder / "lab.xml"), "old");
  TestDisk::LimitSpace(TestDisk::kUnlimited);
  TestDisk::LimitWrite(1000);
  EXPECT_TRUE(WriteXMLConfig((folder / "lab.xml").c_str(), cfg, false));
  EXPECT_EQ(ReadBytes(folder / "lab.xml"), FormatXMLConfig(cfg));
}

}  // namespace
}  // namespace vexor
