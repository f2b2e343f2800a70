// Names of the features and limits of a processor that a test reads, sets and reports.
//
// Names are accepted exactly as they are returned: case and blanks matter. Any thread may call.
#pragma once

#include <cstdint>
#include <string_view>

#include "vexor/export.h"

// Power limits of the package.
enum CF_POWER : std::int32_t {
  CF_POWER_RAPL_PKG_POWER_LIMIT1 = 0,
  CF_POWER_RAPL_PKG_CLAMP_LIMIT1,
  CF_POWER_RAPL_PKG_POWER_LIMIT2,
  CF_POWER_RAPL_PKG_CLAMP_LIMIT2,
  CF_POWER_PKG_POWER_LIMIT1_W,
  CF_POWER_PKG_TIME_LIMIT1,
  CF_POWER_PKG_POWER_LIMIT2_W,
  CF_POWER_PKG_TIME_LIMIT2,
  CF_POWER_UNKNOWN = 255,
};

// Features of the cores and the package.
enum CF_CORE : std::int32_t {
  CF_CORE_ORVEL_RATEGLIDE = 0,
  CF_CORE_TURBO_MODE,
  CF_CORE_HWP,
  CF_CORE_RACE_TO_HALT,
  CF_CORE_THERMAL_MONITOR,
  CF_CORE_CLOCK_MODULATION,
  CF_CORE_P_CONTROL,
  CF_CORE_ENERGY_TURBO,
  CF_CORE_FAST_MSR,
  CF_CORE_TURBO_ACTIVATION_RATIO,
  CF_CORE_SDC,
  CF_CORE_TIME_MWAIT,
  CF_CORE_C1_E,
  CF_CORE_C1_DEMOTION,
  CF_CORE_C1_UNDEMOTION,
  CF_CORE_C3_DEMOTION,
  CF_CORE_C3_UNDEMOTION,
  CF_CORE_PCX_DEMOTION,
  CF_CORE_PCX_UNDEMOTION,
  CF_CORE_PKG_CSTATE_LIMIT,
  CF_CORE_UNKNOWN = 255,
};

enum CF_CSTATE_LATENCY_CTL : std::int32_t {
  CF_CSTATE_LATENCY_CTL_0 = 0,
  CF_CSTATE_LATENCY_CTL_1,
  CF_CSTATE_LATENCY_CTL_2,
  CF_CSTATE_LATENCY_CTL_3,
  CF_CSTATE_LATENCY_CTL_4,
  CF_CSTATE_LATENCY_CTL_5,
  CF_CSTATE_LATENCY_CTL_UNKNOWN = 255,
};

// Registers that tests read in addition to those in a configuration.
enum PRIVAVE_REGS : std::int32_t {
  PRIVAVE_REGS_PKG_ENERGY = 0,
  PRIVAVE_REGS_PKG_RESIDENCY,
  PRIVAVE_REGS_CORE_RESIDENCY,
  PRIVAVE_REGS_POWER_CONTROL,
  PRIVAVE_REGS_PERF_STATUS,
  PRIVAVE_REGS_LIMIT_REASONS,
  PRIVAVE_REGS_THERMAL_STATUS,
  PRIVAVE_REGS_TURBO_LIMIT,
  PRIVAVE_REGS_UNKNOWN = 255,
};

// Mailboxes to which a configuration can send commands.
enum CUSTOM_CFG_MAILBOX : std::int32_t {
  CUSTOM_CFG_MAILBOX_CPU = 0,
  CUSTOM_CFG_MAILBOX_GT,
  CUSTOM_CFG_MAILBOX_PMC,
  CUSTOM_CFG_MAILBOX_ISP,
  CUSTOM_CFG_MAILBOX_VPU,
  CUSTOM_CFG_MAILBOX_UNKNOWN = 255,
};

// Return the name of a value, empty text for a value without one.
VEXOR_EXPORT const char* GetNameOfPower(int value);
VEXOR_EXPORT const char* GetNameOfCore(int value);
VEXOR_EXPORT const char* GetNameOfCstateLatency(int value);
VEXOR_EXPORT const char* GetPrivateRegisterName(int value);

// Return the value of a name; for any other text the enumeration's unknown value, 255.
VEXOR_EXPORT CF_POWER ParseIDOfPower(std::string_view text);
VEXOR_EXPORT CF_CORE ParseIDOfCore(std::string_view text);
VEXOR_EXPORT CF_CSTATE_LATENCY_CTL ParseIdOfCstateLatency(std::string_view text);
VEXOR_EXPORT PRIVAVE_REGS ParsePrivateRegisterID(std::string_view text);
VEXOR_EXPORT CUSTOM_CFG_MAILBOX ParseCustomConfigMailboxID(std::string_view text);

// The same as ParseIDOfCore; the front end uses this name.
VEXOR_EXPORT CF_CORE ParsePMFeatureID(std::string_view text);

namespace vexor {

// Returns the name of a CUSTOM_CFG_MAILBOX value, empty text for a value without one.
VEXOR_EXPORT const char* GetCustomConfigMailboxName(int value);

}  // namespace vexor
