// The tables against the records: what the rows say is what reading, resetting and checking do, and
// no member escapes its table.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "config/config_files.h"
#include "config/file/option_reader.h"
#include "config/tables/common_node.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/system_setup.h"
#include "config/tables/test_control_table.h"
#include "config/tables/workload_tables.h"
#include "vexor/config/check.h"

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
    if (option.flag != nullptr || option.overwrite != Overwrite::kAlways) continue;
    const std::ptrdiff_t offset = OffsetOf(record, option);
    if (offset >= from) names[offset] = option.name;
  }
  std::string text;
  for (const auto& [offset, name] : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

TEST(OptionTables, NameTheMembersOfTheTestsInTheirOrder) {
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
}

TEST(OptionTables, NameTheMembersOfTheOtherRecordsInTheirOrder) {
  EXPECT_EQ(NamesByMember(_GLOBALCONFIG_XMLCFG(), kOverwriteOptions, 0),
            "CPU PCH Power_Base MCH_Base GTTM_Address ISP_MMIO_Base P2SB_Base PCIeExt_Address "
            "CrashLog_Base XRAM_Base");
  EXPECT_EQ(NamesByMember(_GLOBALCONFIG_XMLCFG(), kSettingOptions, 0),
            "TopoMode Seeds Ordered_Interleave_ICE_Flow Ignore_Error_Code MailBox_Max_Busy_Check "
            "Host_IP_Config Log_Path Log_File_Name Log_Add_Option Log_Level Read_Interval "
            "Collect-Crashlog-AllResets Spare2 Spare3 Spare4 Flow_Config Check_Bios_Knobs");
  const char* const mmio = "Offset AndMask OrMask";
  const std::map<std::string_view, const char*> registers = {
      {"MSR_CFG", "Address AndMask OrMask Pkg Module CORE"},
      {"P2SB-MMIO", "Port Address AndMask OrMask"},
      {"PCIE_CFG", "Segment Bus Device Function Offset AndMask OrMask"},
      {"CRBCFG", "Address AndMask OrMask Type Pkg CORE"},
      {"IOSFCFG", "Port Register AndMask OrMask"},
      {"MailBoxCfg", "Command Sub-Command Value Type ReadWriteType Offset"},
  };
  _CUSTOM_XMLCFG custom;
  for (const CustomTableRow& table : kCustomTables) {
    const auto expected = registers.find(table.container);
    EXPECT_EQ(NamesByMember(table.list.append(custom), table.options, 0),
              expected == registers.end() ? mmio : expected->second);
  }
  EXPECT_EQ(NamesByMember(_CPU_WORKLOAD_CFG(), workloads::kCpu, 0),
            "PkgAffinity ModuleAffinity CoreAffinity StartDelayTime Duration Log_Level");
  EXPECT_EQ(NamesByMember(_MEMORY_WORKLOAD_CFG(), workloads::kMemory, 0),
            "Algorithm PkgAffinity ModuleAffinity CoreAffinity Duration IdleTime StartDelayTime "
            "DataSizeInDW Producers Consumers Log_Level");
  EXPECT_EQ(NamesByMember(_GFX_WORKLOAD_CFG(), workloads::kGraphics, 0),
            "IdleTime StartDelayTime Duration Log_Level");
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

// The records of the tests stand one behind the other: each ends where the next one begins.
TEST(OptionTables, LetNoMemberOfATestEscape) {
  _GLOBALPM_XMLCFG pm;
  std::set<const void*> ends = {&pm + 1};
  for (const PmTestRow& test : PmTests()) ends.insert(&test.look(pm));
  for (const PmTestRow& test : PmTests()) {
    const ConfigRecord& record = test.look(pm);
    std::map<std::ptrdiff_t, std::size_t> members;
    for (const OptionRow& option : test.options) {
      members[OffsetOf(record, option)] =
          option.text != nullptr ? sizeof(std::string) : sizeof(std::vector<std::string>);
    }
    std::size_t covered = test.from_older == nullptr ? 0 : alignof(std::string);
    for (const auto& [offset, size] : members) {
      if (offset >= std::ptrdiff_t{sizeof(_PM_TEST_NODE)}) covered += size;
    }
    const auto* const end = static_cast<const char*>(*ends.upper_bound(&record));
    EXPECT_EQ(end - reinterpret_cast<const char*>(&record), sizeof(_PM_TEST_NODE) + covered)
        << test.name;
  }
  constexpr std::size_t kSpareNumber = alignof(std::string);
  EXPECT_EQ(common::kAllFields.size() * sizeof(std::string) + kSpareNumber, sizeof(_PM_TEST_NODE));
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

// Bad by every grammar.
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
