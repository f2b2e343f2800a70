#include "vexor/vocabulary/feature_names.h"

#include <array>

#include "vocabulary/name_table.h"

namespace vexor {

namespace {

constexpr auto kPower = NamesBefore<Next(CF_POWER_PKG_TIME_LIMIT2)>({
    {CF_POWER_RAPL_PKG_POWER_LIMIT1, "RAPL_Pkg_Power_Limit1"},
    {CF_POWER_RAPL_PKG_CLAMP_LIMIT1, "RAPL_Pkg_Clamp_Limit1"},
    {CF_POWER_RAPL_PKG_POWER_LIMIT2, "RAPL_Pkg_Power_Limit2"},
    {CF_POWER_RAPL_PKG_CLAMP_LIMIT2, "RAPL_Pkg_Clamp_Limit2"},
    {CF_POWER_PKG_POWER_LIMIT1_W, "Pkg_Power_Limit1_(W)"},
    {CF_POWER_PKG_TIME_LIMIT1, "Pkg_Time_Limit1"},
    {CF_POWER_PKG_POWER_LIMIT2_W, "Pkg_Power_Limit2_(W)"},
    {CF_POWER_PKG_TIME_LIMIT2, "Pkg_Time_Limit2"},
});

constexpr auto kCore = NamesBefore<Next(CF_CORE_PKG_CSTATE_LIMIT)>({
    {CF_CORE_ORVEL_RATEGLIDE, "Orvel RateGlide"},
    {CF_CORE_TURBO_MODE, "Turbo Mode"},
    {CF_CORE_HWP, "HWP"},
    {CF_CORE_RACE_TO_HALT, "Race-To-Halt"},
    {CF_CORE_THERMAL_MONITOR, "Thermal Monitor"},
    {CF_CORE_CLOCK_MODULATION, "Clock Modulation"},
    {CF_CORE_P_CONTROL, "P-Control"},
    {CF_CORE_ENERGY_TURBO, "Energy Turbo"},
    {CF_CORE_FAST_MSR, "Fast-MSR"},
    {CF_CORE_TURBO_ACTIVATION_RATIO, "Turbo Activation Ratio"},
    {CF_CORE_SDC, "SDC"},
    {CF_CORE_TIME_MWAIT, "Time Mwait"},
    {CF_CORE_C1_E, "C1-E"},
    {CF_CORE_C1_DEMOTION, "C1 Demotion"},
    {CF_CORE_C1_UNDEMOTION, "C1 UnDemotion"},
    {CF_CORE_C3_DEMOTION, "C3 Demotion"},
    {CF_CORE_C3_UNDEMOTION, "C3 UnDemotion"},
    {CF_CORE_PCX_DEMOTION, "PCx Demotion"},
    {CF_CORE_PCX_UNDEMOTION, "PCx UnDemotion"},
    {CF_CORE_PKG_CSTATE_LIMIT, "Pkg Cstate Limit"},
});

constexpr auto kCstateLatency = NamesBefore<Next(CF_CSTATE_LATENCY_CTL_5)>({
    {CF_CSTATE_LATENCY_CTL_0, "Latency CTL 0"},
    {CF_CSTATE_LATENCY_CTL_1, "Latency CTL 1"},
    {CF_CSTATE_LATENCY_CTL_2, "Latency CTL 2"},
    {CF_CSTATE_LATENCY_CTL_3, "Latency CTL 3"},
    {CF_CSTATE_LATENCY_CTL_4, "Latency CTL 4"},
    {CF_CSTATE_LATENCY_CTL_5, "Latency CTL 5"},
});

constexpr auto kPrivateRegisters = NamesBefore<Next(PRIVAVE_REGS_TURBO_LIMIT)>({
    {PRIVAVE_REGS_PKG_ENERGY, "PKG_ENERGY"},
    {PRIVAVE_REGS_PKG_RESIDENCY, "PKG_RESIDENCY"},
    {PRIVAVE_REGS_CORE_RESIDENCY, "CORE_RESIDENCY"},
    {PRIVAVE_REGS_POWER_CONTROL, "POWER_CONTROL"},
    {PRIVAVE_REGS_PERF_STATUS, "PERF_STATUS"},
    {PRIVAVE_REGS_LIMIT_REASONS, "LIMIT_REASONS"},
    {PRIVAVE_REGS_THERMAL_STATUS, "THERMAL_STATUS"},
    {PRIVAVE_REGS_TURBO_LIMIT, "TURBO_LIMIT"},
});

constexpr auto kMailboxes = NamesBefore<Next(CUSTOM_CFG_MAILBOX_VPU)>({
    {CUSTOM_CFG_MAILBOX_CPU, "CPU"},
    {CUSTOM_CFG_MAILBOX_GT, "GT"},
    {CUSTOM_CFG_MAILBOX_PMC, "PMC"},
    {CUSTOM_CFG_MAILBOX_ISP, "ISP"},
    {CUSTOM_CFG_MAILBOX_VPU, "VPU"},
});

}  // namespace

const char* GetCustomConfigMailboxName(int value) { return NameOf(kMailboxes, value); }

}  // namespace vexor

using namespace vexor;

const char* GetNameOfPower(int value) { return NameOf(kPower, value); }

CF_POWER ParseIDOfPower(std::string_view text) { return ValueOf(kPower, text, CF_POWER_UNKNOWN); }

const char* GetNameOfCore(int value) { return NameOf(kCore, value); }

CF_CORE ParseIDOfCore(std::string_view text) { return ValueOf(kCore, text, CF_CORE_UNKNOWN); }

CF_CORE ParsePMFeatureID(std::string_view text) { return ParseIDOfCore(text); }

const char* GetNameOfCstateLatency(int value) { return NameOf(kCstateLatency, value); }

CF_CSTATE_LATENCY_CTL ParseIdOfCstateLatency(std::string_view text) {
  return ValueOf(kCstateLatency, text, CF_CSTATE_LATENCY_CTL_UNKNOWN);
}

const char* GetPrivateRegisterName(int value) { return NameOf(kPrivateRegisters, value); }

PRIVAVE_REGS ParsePrivateRegisterID(std::string_view text) {
  return ValueOf(kPrivateRegisters, text, PRIVAVE_REGS_UNKNOWN);
}

CUSTOM_CFG_MAILBOX ParseCustomConfigMailboxID(std::string_view text) {
  return ValueOf(kMailboxes, text, CUSTOM_CFG_MAILBOX_UNKNOWN);
}
