// The tables against the records: what the rows say is what reading and resetting do, and no member
// escapes its table.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "config/config_files.h"
#include "config/option_reader.h"
#include "config/pm_test_table.h"
#include "config/syntax_table.h"
#include "config/tables/common_node.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/system_setup.h"
#include "config/tables/test_control_table.h"
#include "config/tables/workload_tables.h"

namespace vexor {
namespace {

std::ptrdiff_t OffsetOf(const ConfigRecord& record, const OptionRow& option) {
  const auto* const home = option.text != nullptr
                               ? reinterpret_cast<const char*>(&(record.*option.text))
                               : reinterpret_cast<const char*>(&(record.*option.list));
  return home - reinterpret_cast<const char*>(&record);
}

// The names of a table's options in the order of their members.
std::string NamesByMember(const ConfigRecord& record, std::span<const OptionRow> options,
                          std::ptrdiff_t from) {
  std::map<std::ptrdiff_t, std::string> names;
  for (const OptionRow& option : options) {
    if (option.flag != nullptr || option.take != Take::kAlways) continue;
    const std::ptrdiff_t offset = OffsetOf(record, option);
    if (offset >= from) names[offset] = option.name;
  }
  std::string text;
  for (const auto& [offset, name] : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

TEST(OptionTables, NameTheMembersInTheOrderOfTheRecord) {
  EXPECT_EQ(NamesByMember(_PM_TEST_NODE(), common::kAllFields, 0),
            "PxMxCxScope PxMxCxTxScope PkgAffinity ModuleAffinity CoreAffinity ActiveTime "
            "InStateTime SwitchTime ExeCycles ConfigLoop StartDelayTime FailTolerance "
            "SanityEarlyExit TestMode Log_Level KNOBS KnobHint AllOptions SpareTime");
  const char* const graphics =
      "Ratios Device Tile ExitOnPassRatios ForceIdleDelay Rc0Method LimitReasonMask";
  const std::map<VEXOR_PM_TEST_ID, const char*> own = {
      {PM_TEST_CSTATES,
       "RandomPkgVoting ExeCstates IceState PerStateCond CoreExclusion SubStates IdleMethod"},
      {PM_TEST_PSTATES,
       "LimitReasonMask TurboLimitCores ExePstates RatioDistLoMeHi FreqTolerance ExitOnPassRatios "
       "RegressionKnobs"},
      {PM_TEST_HWP,
       "LimitReasonMask TurboLimitCores ExeValueSet ExePstates RatioDistLoMeHi FreqTolerance "
       "HwpPkgThreadAffinity BigCorePerfScaler AtomPerfScaler ThreadAffinity HwpPkgMode "
       "HwpEppValid HwpMinValid HwpMaxValid HwpDesiredValid ExitOnPassRatios"},
      {PM_TEST_TSTATES, "RatioDistLoMeHi FailOnExit DutyCycles ExitOnPassRatios"},
      {PM_TEST_SDC, "DutyCycles"},
      {PM_TEST_FACT, "ConfigState"},
      {PM_TEST_ICE_CSTATES, "AllPerICEIDScope ICeIDAffinity ExeStates"},
      {PM_TEST_ICE_PSTATES,
       "AllPerICEIDScope ICeIDAffinity ExePstates StatusCheckDelay LimitReasonMask "
       "RatioTolerance"},
      {PM_TEST_GSTATES,
       "KavritTime LPM_EN HoldPower SleepStates WakeEvent LoopEachSx S0ixResThreshold "
       "S0ixFailureLevel PrePostCheck WakeUpTimeout ResetDelayTime"},
      {PM_TEST_PECI,
       "RandomMode Interface Commands RdPkgConfigName RdPkgConfigParams WrPkgConfigName "
       "WrPkgConfigParams WrPkgConfigData RdMSRName RdMSRExtName WrMSRName RdEndPointConfigName "
       "WrEndPointConfigName WrEndPointConfigAndMask WrEndPointConfigOrMask WrPCIConfigLocal "
       "WrPCIConfig RdPCIConfigLocal RdPCIConfig"},
      {PM_TEST_DGFX_RESET, "ConfigState"},
      {PM_TEST_FANSPEED_CTR, "NumFanSpeedCtrPoints ControlPoint Device"},
      {PM_TEST_PCIE_LINK, "ConfigState"},
      {PM_TEST_PCIE_GEN_WIDTH, "ConfigState"},
      {PM_TEST_DX_STATES, "ConfigState"},
      {PM_TEST_VPU_DVFS, "StatusCheckDelay Ratios ExitOnPassRatios"},
      {PM_TEST_MESH_GV,
       "-checkDelayTime -exitOnPassRatios -ratioPUnit0 -ratioPUnit1 -ratioPUnit2 -ratioPUnit3 "
       "-ratioPUnit4"},
  };
  _GLOBALPM_XMLCFG pm;
  for (const PmTestRow& test : PmTests()) {
    const auto expected = own.find(test.id);
    EXPECT_EQ(NamesByMember(test.look(pm), test.options, sizeof(_PM_TEST_NODE)),
              expected == own.end() ? graphics : expected->second)
        << test.name;
  }
  EXPECT_EQ(NamesByMember(_GLOBALCONFIG_XMLCFG(), kOverwriteOptions, 0),
            "CPU PCH Power_Base MCH_Base GTTM_Address ISP_MMIO_Base P2SB_Base PCIeExt_Address "
            "CrashLog_Base XRAM_Base");
  EXPECT_EQ(NamesByMember(_GLOBALCONFIG_XMLCFG(), kSettingOptions, 0),
            "TopoMode Seeds Ordered_Interleave_ICE_Flow Ignore_Error_Code MailBox_Max_Busy_Check "
            "Host_IP_Config Log_Path Log_File_Name Log_Add_Option Log_Level Read_Interval "
            "Collect-Crashlog-AllResets Spare2 Spare3 Spare4 Flow_Config Check_Bios_Knobs");
  EXPECT_EQ(NamesByMember(_CPU_WORKLOAD_CFG(), workloads::kCpu, 0),
            "PkgAffinity ModuleAffinity CoreAffinity StartDelayTime Duration Log_Level");
  EXPECT_EQ(NamesByMember(_MEMORY_WORKLOAD_CFG(), workloads::kMemory, 0),
            "Algorithm PkgAffinity ModuleAffinity CoreAffinity Duration IdleTime StartDelayTime "
            "DataSizeInDW Producers Consumers Log_Level");
  EXPECT_EQ(NamesByMember(_COPY_COMPARE_CFG(), workloads::kCopyCompare, 0),
            "Duration IdleTime StartDelayTime Source CopyTo Cycle DataSizeMB Thread Log_Level");
}

TEST(OptionTables, ResetEveryKindOfHome) {
  _CPU_WORKLOAD_CFG workload;
  workload.AutoRun = true;
  workload.PkgAffinity = "1";
  ResetOptions(workloads::kCpu, workload);
  EXPECT_FALSE(workload.AutoRun);
  EXPECT_EQ(workload.PkgAffinity, "");
}

TEST(OptionTables, LetNoMemberOfATestEscape) {
  _GLOBALPM_XMLCFG pm;
  for (const PmTestRow& test : PmTests()) {
    std::set<std::ptrdiff_t> own;
    std::size_t covered = 0;
    for (const OptionRow& option : test.options) {
      const std::ptrdiff_t offset = OffsetOf(test.look(pm), option);
      if (offset < static_cast<std::ptrdiff_t>(sizeof(_PM_TEST_NODE))) continue;
      if (own.insert(offset).second) {
        covered += option.text != nullptr ? sizeof(std::string) : sizeof(std::vector<std::string>);
      }
    }
    const std::size_t flag = test.from_older == nullptr ? 0 : alignof(std::string);
    const std::map<VEXOR_PM_TEST_ID, std::size_t> sizes = {
        {PM_TEST_CSTATES, sizeof(_CSTATES_CFG)},
        {PM_TEST_PSTATES, sizeof(_PSTATES_CFG)},
        {PM_TEST_HWP, sizeof(_HWP_CFG)},
        {PM_TEST_TSTATES, sizeof(_TSTATES_CFG)},
        {PM_TEST_SDC, sizeof(_SDC_CFG)},
        {PM_TEST_FACT, sizeof(_FACT_CFG)},
        {PM_TEST_GSTATES, sizeof(_GSTATES_CFG)},
        {PM_TEST_PECI, sizeof(_PECI_CFG)},
        {PM_TEST_MESH_GV, sizeof(_MESH_GV_CFG)},
        {PM_TEST_VPU_DVFS, sizeof(_VPU_DVFS_CFG)},
        {PM_TEST_UFS, sizeof(_GFX_CFG)},
        {PM_TEST_DX_STATES, sizeof(_PCIE_DEVICE_CFG)},
        {PM_TEST_ICE_CSTATES, sizeof(_ICE_CSTATES_CFG)},
        {PM_TEST_ICE_PSTATES, sizeof(_ICE_PSTATES_CFG)},
        {PM_TEST_FANSPEED_CTR, sizeof(_FANSPEED_CTR_CFG)},
        {PM_TEST_DGFX_RESET, sizeof(_DGFX_RESET_CFG)},
    };
    const auto size = sizes.find(test.id);
    if (size == sizes.end()) continue;
    EXPECT_EQ(sizeof(_PM_TEST_NODE) + covered + flag, size->second) << test.name;
  }
}

// The element of one option with the given text.
std::string OptionElement(const PmTestRow& test, const OptionRow& option, const std::string& text) {
  const std::string name(option.name);
  if (test.shape == PmTestRow::Shape::kArguments) {
    return "<arg name=\"" + name + "\" val=\"" + text + "\"/>";
  }
  if (option.item.empty()) return Wrapped(name, text);
  return Wrapped(name, Wrapped(std::string(option.item), text));
}

std::string ValueOf(const ConfigRecord& record, const OptionRow& option) {
  if (option.text != nullptr) return record.*option.text;
  std::string joined;
  for (const std::string& item : record.*option.list) joined += item;
  return joined;
}

// What an option holds when its test's element is there and it is not.
std::string Missing(const OptionRow& option) {
  if (!option.IsRead()) return std::string(option.text == nullptr ? "" : option.reset);
  if (!option.fallback.empty()) return std::string(option.fallback);
  return option.settle == nullptr ? "" : "hour:0";
}

bool SharesHome(const OptionRow& a, const OptionRow& b) {
  return a.text != nullptr && a.text == b.text;
}

TEST(OptionTables, EachOptionReadsIntoItsOwnMemberAndNoOther) {
  for (const PmTestRow& test : PmTests()) {
    for (const OptionRow& option : test.options) {
      SCOPED_TRACE(std::string(test.name) + "/" + std::string(option.name));
      const std::string element = Wrapped(std::string(test.name), OptionElement(test, option, "@"));
      const std::string document =
          Document(Wrapped("GLOBALPM", Wrapped(std::string(test.group), element)));
      const _XML_FULL_CFG cfg = ReadDocument(document);
      const ConfigRecord& record = test.look(cfg.GlobalPM);
      for (const OptionRow& other : test.options) {
        if (!SharesHome(option, other) && &option != &other) {
          EXPECT_EQ(ValueOf(record, other), Missing(other)) << other.name;
        }
      }
      EXPECT_EQ(ValueOf(record, option), option.IsRead() ? "@" : Missing(option));
    }
  }
}

TEST(OptionTables, CommonFieldsOutsideATestsRowsKeepTheirValue) {
  for (const PmTestRow& test : PmTests()) {
    _XML_FULL_CFG cfg;
    auto& record = static_cast<_PM_TEST_NODE&>(test.record(cfg.GlobalPM));
    for (const OptionRow& field : common::kAllFields) {
      static_cast<ConfigRecord&>(record).*field.text = "kept";
    }
    const std::string element = "<" + std::string(test.name) + "/>";
    EXPECT_TRUE(
        ReadInto(cfg, Document(Wrapped("GLOBALPM", Wrapped(std::string(test.group), element))))
            .read);
    for (const OptionRow& field : common::kAllFields) {
      const bool is_read = field.name == "AllOptions" ||
                           std::ranges::any_of(test.options, [&field](const OptionRow& option) {
                             return option.text == field.text && option.IsRead();
                           });
      EXPECT_EQ(ValueOf(record, field) == "kept", !is_read) << test.name << "/" << field.name;
    }
  }
}

// "Invalid" is what a time holds until a file sets it, and good; all the rest is to be readable.
TEST(OptionTables, EveryResetTextPassesItsOwnGrammar) {
  const auto check = [](std::string_view element, std::span<const OptionRow> options) {
    for (const OptionRow& option : options) {
      for (const std::string_view text : {option.reset, option.fallback}) {
        const std::optional<Fault> fault = CheckOption(option, text);
        EXPECT_FALSE(fault.has_value())
            << element << "/" << option.name << ": " << text << ": " << fault->what;
      }
    }
  };
  for (const PmTestRow& test : PmTests()) check(test.name, test.options);
  check("OverwriteCfg", kOverwriteOptions);
  check("SETTING", kSettingOptions);
  check("WorkloadCfg", kWorkloadRunnerOptions);
  for (const SyntaxRow& syntax : Syntaxes()) {
    if (syntax.check != nullptr) {
      EXPECT_FALSE(syntax.check(syntax.example).has_value()) << syntax.name;
      EXPECT_TRUE(syntax.check("no such text!").has_value()) << syntax.name;
    }
  }
}

}  // namespace
}  // namespace vexor
