#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "vexor/vocabulary/config_names.h"
#include "vexor/vocabulary/device_names.h"
#include "vexor/vocabulary/feature_names.h"
#include "vexor/vocabulary/platform_names.h"
#include "vexor/vocabulary/pm_tests.h"
#include "vexor/vocabulary/report_labels.h"
#include "vexor/vocabulary/state_names.h"

namespace {

using GetName = const char* (*)(int);
using ParseName = int (*)(std::string_view);

// Wraps the parsers, which have different result types, in functions of the same type.
template <auto Parse>
int AsInt(std::string_view text) {
  return Parse(text);
}

template <auto Get, bool kLongForm>
const char* InForm(int value) {
  return Get(value, kLongForm);
}

template <auto Parse, bool kLongForm>
int AsIntInForm(std::string_view text) {
  return Parse(text, kLongForm);
}

struct Table {
  GetName get;
  ParseName parse;  // null when the names are only given out
  int unknown;
  const char* outside;  // the name of a value that has none
  const char* names;    // joined by ";"; further ones may follow
};

constexpr const char* kCoreNames =
    "Orvel RateGlide;Turbo Mode;HWP;Race-To-Halt;Thermal Monitor;Clock Modulation;"
    "P-Control;Energy Turbo;Fast-MSR;Turbo Activation Ratio;SDC;Time Mwait;C1-E;"
    "C1 Demotion;C1 UnDemotion;C3 Demotion;C3 UnDemotion;PCx Demotion;PCx UnDemotion;"
    "Pkg Cstate Limit";

constexpr auto kTables = std::to_array<Table>({
    {GetNameOfPower, AsInt<ParseIDOfPower>, 255, "",
     "RAPL_Pkg_Power_Limit1;RAPL_Pkg_Clamp_Limit1;RAPL_Pkg_Power_Limit2;"
     "RAPL_Pkg_Clamp_Limit2;Pkg_Power_Limit1_(W);Pkg_Time_Limit1;Pkg_Power_Limit2_(W);"
     "Pkg_Time_Limit2"},
    {GetNameOfCore, AsInt<ParseIDOfCore>, 255, "", kCoreNames},
    {GetNameOfCore, AsInt<ParsePMFeatureID>, 255, "", kCoreNames},
    {GetNameOfCstateLatency, AsInt<ParseIdOfCstateLatency>, 255, "",
     "Latency CTL 0;Latency CTL 1;Latency CTL 2;Latency CTL 3;Latency CTL 4;Latency CTL 5"},
    {GetPrivateRegisterName, AsInt<ParsePrivateRegisterID>, 255, "",
     "PKG_ENERGY;PKG_RESIDENCY;CORE_RESIDENCY;POWER_CONTROL;PERF_STATUS;LIMIT_REASONS;"
     "THERMAL_STATUS;TURBO_LIMIT"},
    {vexor::GetCustomConfigMailboxName, AsInt<ParseCustomConfigMailboxID>, 255, "",
     "CPU;GT;PMC;ISP;VPU"},
    {GetConfigEnableStatus, AsInt<ParseConfigEnableStatus>, CFG_MODE_UNKNOWN, "n/a",
     "Disable;Enable;Random;Toggle;Default"},
    {GetTestModeName, AsInt<ParseTestModeID>, TEST_MODE_UNKNOWN, "",
     "Default;Verify;Exercise;Monitor"},
    {GetTestControlNameByID, AsInt<ParseTestControlID>, TEST_CONTROL_UNKNOWN, "",
     "start;stop;pause;resume;skip;repeat"},
    {GetSysConfigName, AsInt<ParseSysConfigID>, SYS_CFG_UNKNOWN, "",
     "PerfP_Limitation_Enable;HangOnGlbReset;Hybrid_Sleep;Fast_Startup;AC_Deep_S3;"
     "DC_Deep_S3;AC_Deep_S4;DC_Deep_S4;AC_Deep_S5;DC_Deep_S5;LPM0_PRI;LPM1_PRI;LPM2_PRI;"
     "LPM3_PRI;LPM4_PRI;LPM5_PRI;LPM6_PRI;LPM7_PRI;Stop_on_GlobalReset0_Mask;"
     "Stop_on_GlobalReset1_Mask;Stop_on_GlobalReset0_IOE_Mask;"
     "Stop_on_GlobalReset1_IOE_Mask;HPR_Cause0_Check_Mask;IOE_HPR_Cause0_Mask"},
    {GetGuiConfigName, AsInt<ParseGuiConfigID>, 255, "",
     "PerfP_Limitation_Enable;PerfP_Threshold;PerfP_Clip;PerfP_Differential;"
     "HangOnGlbReset;Hybrid_Sleep;Fast_Startup;AC_Deep_S3;DC_Deep_S3;AC_Deep_S4;"
     "DC_Deep_S4;AC_Deep_S5;DC_Deep_S5;LPM0_PRI;LPM1_PRI;LPM2_PRI;LPM3_PRI;LPM4_PRI;"
     "LPM5_PRI;LPM6_PRI;LPM7_PRI;Power_Scheme;Battery_Simulation;CrashLogCollect;"
     "Stop_on_GlobalReset0_Mask;Stop_on_GlobalReset1_Mask;Stop_on_GlobalReset0_IOE_Mask;"
     "Stop_on_GlobalReset1_IOE_Mask;HPR_Cause0_Check_Mask;IOE_HPR_Cause0_Mask;"
     "LTR_IGN_Mask;Snoop_Latency_Mask;PEG_Link_Disable_WA;PCIe_DMI_L1_WA;Power_Down_ISP_WA"},
    {GetFlowInitStatusMsg, nullptr, 0, "",
     "Pass;Invalid CLI Options/Arguments;Invalid XML File/Path/Version/Format;"
     "Log File Initialization;Invalid \"System Setup\" User Configuration;"
     "Invalid \"System Knobs\" User Configuration;"
     "Invalid \"Custom Knobs\" User Configuration;"
     "Invalid \"TestControl\" User Configuration"},
    {GetS0ixStatesName, AsInt<ParseS0ixStatesID>, S0IX_UNKNOWN, "",
     "S0iR;S0i1;S0i2;S0i3;PS-ON;IDLE1;IDLE2;IDLE3;IVR-S0IX;S0i2-0;S0i2-1;S0i2-2;S0i3-0;"
     "S0i3-1;S0i3-2;S0i3-3;S0i3-4"},
    {GetDevicePCIOptionName, AsInt<ParseDevicePCIOptionID>, DEVICE_PCIE_UNKNOWN, "",
     "L0;L0s;L1;L0s-and-L1"},
    {InForm<GetPCIeGenSpeedName, false>, AsIntInForm<ParsePCIeGenSpeedID, false>,
     PCIE_GEN_SPEED_UNKNOWN, "", "Gen1;Gen2;Gen3;Gen4;Gen5;Gen6"},
    {InForm<GetPCIeGenSpeedName, true>, AsIntInForm<ParsePCIeGenSpeedID, true>,
     PCIE_GEN_SPEED_UNKNOWN, "", "2.5 GT/s;5.0 GT/s;8.0 GT/s;16.0 GT/s;32.0 GT/s;64.0 GT/s"},
    {InForm<GetPCIeLinkWidthName, false>, AsIntInForm<ParsePCIeLinkWidthID, false>,
     PCIE_LINK_WIDTH_UNKNOWN, "", "x1;x2;x4;x8;x12;x16;x32"},
    {InForm<GetPCIeLinkWidthName, true>, AsIntInForm<ParsePCIeLinkWidthID, true>,
     PCIE_LINK_WIDTH_UNKNOWN, "", "1 lane;2 lanes;4 lanes;8 lanes;12 lanes;16 lanes;32 lanes"},
    {InForm<GetPCIeDStateName, false>, AsIntInForm<ParsePCIeDStateID, false>, PCIE_DSTATE_UNKNOWN,
     "", "D0;D1;D2;D3hot;D3cold"},
    {InForm<GetPCIeDStateName, true>, AsIntInForm<ParsePCIeDStateID, true>, PCIE_DSTATE_UNKNOWN, "",
     "D0 fully on;D1 light sleep;D2 deep sleep;D3 with power;D3 without power"},
    {vexor::GetPcieDevTypeName, AsInt<ParsePcieDevType>, PCIE_DEVICE_UNKNOWN, "",
     "All;Root-Port;Bridge;Graphics;Storage;Network;USB;Audio"},
    {GetCpuNameById, AsInt<GetCpuIdByName>, 0, "",
     "Unknown;CPU-A1;CPU-A2;CPU-B1;CPU-B2;CPU-C1;CPU-C2"},
    {vexor::GetProductTypeName, AsInt<vexor::ParseProductType>, 0, "",
     "Unknown;Desktop;Mobile;Server;Embedded"},
    {vexor::GetPchLpcTypeName, AsInt<vexor::ParsePchLpcType>, 0, "",
     "Unknown;PCH-A1;PCH-B1;PCH-C1"},
    {vexor::GetDgfxTypeName, AsInt<ParserDgfxType>, 0, "", "Unknown;DGFX-A1;DGFX-B1;DGFX-C1"},
    {GetAcpiString, AsInt<GetAcpiEnum>, ACPI_TABLE_UNKNOWN, "",
     "APIC;BERT;BGRT;CPEP;DBG2;DMAR;DSDT;ECDT;EINJ;ERST;FACP;FACS;FPDT;GTDT;HEST;HPET;"
     "LPIT;MCFG;MPST;MSCT;NFIT;PCCT;PMTT;PPTT;PSDT;RASF;RSDT;SBST;SDEI;SLIT;SRAT;SSDT;"
     "TPM2;UEFI;WAET;XSDT"},
    {GetPMTestNameByID, AsIntInForm<ParsePMTestID, false>, PM_TEST_MAX, "",
     "vexor;cstate;hwp;pstate;tstate;sdc;gstate;peci;dvfs;rc6;dgdvfs;dgrc6;dgsagv;dgreset;dgfan;"
     "gcdrc6;gcddvfs;mediarc6;mediadvfs;vpudvfs;ipups;ipuis;ufs;sagv;psf0;meshgv;icep;icec;fact;"
     "link;gen;dxstates;testcontrol;all;max;start;end"},
    {GetDefSysInfoName, nullptr, 0, "",
     "CPUID;LPC-ID;Patch ID;Virtual CPU;Total Sockets;Module-Per-Socket;Cores-Per-Socket;"
     "Theads-Per-Socket;Hybrid Cores;System Power States;CPU Power States;IA Px[Pn:P1:P0];"
     "Active-Core Turbo;UFS Px[Pn:P0];GT Px[Pn:Pe:P0];ISP Px[Pn:P0];PMWR BASE;MCH BASE;"
     "PCIeExt BASE;P2SB BASE;GT MMIO BASE;DGFX MMIO BASE;ISP_MMIO;Ice MMIO BASE;"
     "VPU MMIO BASE;IOE MMIO BASE;Platorm-Info MSR;AVX-512;Debug Patch;TJ-Max;ProcHot/TM;"
     "Fan Temp;SDC;HWP ;HWP Pkg Mode;CrashLog;Config TDP;Config TDP Level;"
     "Nominal TDP Ratio;TDP LEVEL1 Ratio;TDP LEVEL1 PKG PWR;TDP LEVEL1 min:max PWR;"
     "TDP LEVEL2 Ratio;TDP LEVEL2 PKG POWER;TDP LEVEL 2 min:max PWR"},
    {GetDefSysCfgName, nullptr, 0, "",
     "Power Scheme;Orvel RateGlide;Turbo Mode;HWP;Race-To-Halt;Thermal Monitor;"
     "Clock Modulation;P-Control;Energy Turbo;Fast-MSR;Turbo Activation Ratio;SDC;"
     "Time Mwait;C1-E;C1 Demotion;C1 UnDemotion;C3 Demotion;C3 UnDemotion;PCx Demotion;"
     "PCx UnDemotion;Pkg Cstate Limit;Hybrid Sleep;Fast Startup;AC Deep S3;DC Deep S3;"
     "AC Deep S4;DC Deep S4;AC Deep S5;DC Deep S5;RAPL Pkg Power Limit1;"
     "RAPL Pkg Clamp Limit1;Pkg Power Limit1(Watt);Pkg Time Limit1;RAPL Pkg Power Limit2;"
     "RAPL Pkg Clamp Limit2;Pkg Power Limit2(Watt);Pkg Time Limit2;WinIdle BIOS En"},
});

TEST(NameTables, EveryNameIsParsedBack) {
  for (const Table& table : kTables) {
    SCOPED_TRACE(table.names);
    std::string names;
    int count = 0;
    for (; std::string_view(table.get(count)) != table.outside; ++count) {
      const char* const name = table.get(count);
      names.append(count == 0 ? "" : ";").append(name);
      if (table.parse != nullptr) {
        EXPECT_EQ(table.parse(name), count);
        EXPECT_EQ(table.parse(std::string(name) + ' '), table.unknown);
        EXPECT_EQ(table.parse(std::string(name) + '\0'), table.unknown);
      }
    }
    EXPECT_TRUE((names + ";").starts_with(std::string(table.names) + ";")) << names;
    for (const int value : {-1, count, count + 1, 255, 2147483647, -2147483647 - 1}) {
      EXPECT_STREQ(table.get(value), table.outside) << value;
    }
    for (const char* text : {"", ";", "no such name"}) {
      EXPECT_TRUE(table.parse == nullptr || table.parse(text) == table.unknown) << text;
    }
  }
}

// Whether the enumeration has an enumerator for the value. If not, the compiler prints the value as
// a cast of a number.
template <auto kValue>
constexpr bool IsEnumerator() {
  return std::string_view(__PRETTY_FUNCTION__).find("= (") == std::string_view::npos;
}

template <class Enum, std::size_t... kValues>
std::size_t CountEnumerators(std::index_sequence<kValues...> /*values*/) {
  return (std::size_t{IsEnumerator<static_cast<Enum>(kValues)>()} + ...);
}

// Elsewhere the value after the last name is an enumerator, and the compiler counts.
TEST(NameTables, EveryEnumeratorBelowAFarUnknownHasAName) {
  const auto expect_names = []<class Enum>(GetName get, Enum /*unknown*/) {
    const std::size_t count = CountEnumerators<Enum>(std::make_index_sequence<255>());
    EXPECT_STRNE(get(static_cast<int>(count) - 1), "") << count;
    EXPECT_STREQ(get(static_cast<int>(count)), "") << count;
  };
  expect_names(GetNameOfPower, CF_POWER_UNKNOWN);
  expect_names(GetNameOfCore, CF_CORE_UNKNOWN);
  expect_names(GetNameOfCstateLatency, CF_CSTATE_LATENCY_CTL_UNKNOWN);
  expect_names(GetPrivateRegisterName, PRIVAVE_REGS_UNKNOWN);
  expect_names(vexor::GetCustomConfigMailboxName, CUSTOM_CFG_MAILBOX_UNKNOWN);
  expect_names(GetGuiConfigName, GUI_CFG_UNKNOWN);
  expect_names(GetFlowInitStatusMsg, FLOW_INIT_PASS);
  expect_names(GetCpuNameById, CPU_ID_UNKNOWN);
  expect_names(vexor::GetProductTypeName, PRODUCT_TYPE_UNKNOWN);
  expect_names(vexor::GetPchLpcTypeName, PCH_LPC_UNKNOWN);
  expect_names(vexor::GetDgfxTypeName, DGFX_TYPE_UNKNOWN);
}

TEST(NameTables, CaseMatters) {
  EXPECT_EQ(ParseTestModeID("verify"), TEST_MODE_UNKNOWN);
  EXPECT_EQ(ParseSysConfigID("hpr_cause0_check"), SYS_CFG_UNKNOWN);
  EXPECT_EQ(ParseIDOfCore("hwp"), CF_CORE_UNKNOWN);
  EXPECT_EQ(ParsePMTestID("CSTATE", false), PM_TEST_MAX);
}

TEST(NameTables, OlderMaskNamesAreAccepted) {
  int offset = 0;
  for (const char* name : {"GlobalReset0_Check", "GlobalReset1_Check", "GlobalReset0_IOE_Check",
                           "GlobalReset1_IOE_Check", "HPR_Cause0_Check"}) {
    EXPECT_EQ(ParseSysConfigID(name), 18 + offset) << name;
    EXPECT_EQ(ParseGuiConfigID(name), 24 + offset) << name;
    ++offset;
  }
}

TEST(NameTables, ListSizesAreReturned) {
  EXPECT_EQ(GetDefSysInfoListSize(), 45);
  EXPECT_EQ(GetDefSysCfgListSize(), 38);
}

}  // namespace
