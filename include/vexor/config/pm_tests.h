// The "GLOBALPM" section: one record per power-management test.
//
//   <GLOBALPM>
//     <CORE> <CSTATES> <ActiveTime>msec:80</ActiveTime> ... </CSTATES> ... </CORE>
//     ...
//   </GLOBALPM>
//
// A record stores each option as the trimmed text of the first element of its name, in the member
// of that name ("_" for "-"). A list member holds the texts of all elements of its name, without
// empty ones. "Vpu-DVFS" and "MESH-GV" have "arg" elements instead, whose "name" is the option and
// whose "val" is stored untrimmed. The tests turn the texts into values with the parsers of
// vexor/syntax/.
//
// If the file has a test's element but not the element of an option, the option becomes empty. Only
// SwitchTime has a substitute: "msec:80" for "Ice-Pstates", for most other tests the sum of
// ActiveTime and InStateTime, which also replaces an empty text. If the file lacks a test's
// element, the test's record stays as it was. One thread at a time may use a record.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vexor/config/config_record.h"
#include "vexor/export.h"
#include "vexor/vocabulary/pm_tests.h"

// The options that most tests share, as the base of every test record. Members that a test does not
// read keep their values.
struct _PM_TEST_NODE : vexor::ConfigRecord {
  std::string PxMxCxScope;
  std::string PxMxCxTxScope;
  std::string PkgAffinity;
  std::string ModuleAffinity;
  std::string CoreAffinity;
  std::string ActiveTime;
  std::string InStateTime;
  std::string SwitchTime;
  std::string ExeCycles;
  std::string ConfigLoop;
  std::string StartDelayTime;
  std::string FailTolerance;
  std::string SanityEarlyExit;
  std::string TestMode;
  std::string Log_Level;
  std::string KNOBS;
  std::string KnobHint;          // the comment above KNOBS in a written file; never read
  std::string AllOptions;        // all child elements as read: "<name>text  " or "<name/>  " each
  std::string SpareTime;         // reset only
  std::int32_t SpareNumber = 0;  // reset only
};

struct _CSTATES_CFG : _PM_TEST_NODE {
  std::string RandomPkgVoting;
  std::string ExeCstates;
  std::string IceState;
  std::string PerStateCond;
  std::string CoreExclusion;
  std::string SubStates;
  std::string IdleMethod;  // reset only
};

struct _PSTATES_CFG : _PM_TEST_NODE {
  std::string LimitReasonMask;
  std::string TurboLimitCores;
  std::string ExePstates;
  std::string RatioDistLoMeHi;
  std::string FreqTolerance;
  std::string ExitOnPassRatios;
  std::string RegressionKnobs;
};

struct _HWP_CFG : _PM_TEST_NODE {
  std::string LimitReasonMask;
  std::string TurboLimitCores;
  std::string ExeValueSet;
  std::string ExePstates;
  std::string RatioDistLoMeHi;
  std::string FreqTolerance;
  std::string HwpPkgThreadAffinity;
  std::string BigCorePerfScaler;
  std::string AtomPerfScaler;
  std::string ThreadAffinity;
  std::string HwpPkgMode;
  std::string HwpEppValid;
  std::string HwpMinValid;
  std::string HwpMaxValid;
  std::string HwpDesiredValid;
  std::string ExitOnPassRatios;
};

struct _TSTATES_CFG : _PM_TEST_NODE {
  std::string RatioDistLoMeHi;
  std::string FailOnExit;
  std::string DutyCycles;
  std::string ExitOnPassRatios;
};

struct _SDC_CFG : _PM_TEST_NODE {
  std::string DutyCycles;
};

// The configuration states of "FACT" and "DGFX-RESET" are written to a file but not read from it.
struct _FACT_CFG : _PM_TEST_NODE {
  std::vector<std::string> ConfigState;
};

struct _DGFX_RESET_CFG : _PM_TEST_NODE {
  std::vector<std::string> ConfigState;
};

struct _GSTATES_CFG : _PM_TEST_NODE {
  std::string KavritTime;
  std::string LPM_EN;
  std::string HoldPower;
  std::string SleepStates;
  std::string WakeEvent;
  std::string LoopEachSx;
  std::string S0ixResThreshold;
  std::string S0ixFailureLevel;
  std::string PrePostCheck;
  std::string WakeUpTimeout;
  std::string ResetDelayTime;
};

struct _PECI_CFG : _PM_TEST_NODE {
  std::string RandomMode;
  std::string Interface;
  std::string Commands;
  std::string RdPkgConfigName;
  std::string RdPkgConfigParams;
  std::string WrPkgConfigName;
  std::string WrPkgConfigParams;
  std::string WrPkgConfigData;
  std::string RdMSRName;
  std::string RdMSRExtName;
  std::string WrMSRName;
  std::string RdEndPointConfigName;
  std::string WrEndPointConfigName;
  std::string WrEndPointConfigAndMask;
  std::string WrEndPointConfigOrMask;
  std::vector<std::string> WrPCIConfigLocal;
  std::vector<std::string> WrPCIConfig;
  std::vector<std::string> RdPCIConfigLocal;
  std::vector<std::string> RdPCIConfig;
};

// "PCIe-Link", "PCIe-GenWidth" and "Dx-States".
struct _PCIE_DEVICE_CFG : _PM_TEST_NODE {
  std::vector<std::string> ConfigState;
  bool FromLegacyElement = false;  // last read from the older element "PCIe-Link-DState"
};

// The frequency and RC6 tests of graphics, media, imaging and uncore. The RC6 tests read "RC0Time"
// into ActiveTime and "RC6Time" into InStateTime; these override elements "ActiveTime" and
// "InStateTime" unless they are empty.
struct _GFX_CFG : _PM_TEST_NODE {
  std::string Ratios;
  std::string Device;
  std::string Tile;
  std::string ExitOnPassRatios;
  std::string ForceIdleDelay;
  std::string Rc0Method;
  std::string LimitReasonMask;
};

struct _FANSPEED_CTR_CFG : _PM_TEST_NODE {
  std::string NumFanSpeedCtrPoints;
  std::string ControlPoint;
  std::string Device;
};

struct _ICE_CSTATES_CFG : _PM_TEST_NODE {
  std::string AllPerICEIDScope;
  std::string ICeIDAffinity;
  std::string ExeStates;
};

struct _ICE_PSTATES_CFG : _PM_TEST_NODE {
  std::string AllPerICEIDScope;
  std::string ICeIDAffinity;
  std::string ExePstates;
  std::string StatusCheckDelay;
  std::string LimitReasonMask;
  std::string RatioTolerance;
};

struct _VPU_DVFS_CFG : _PM_TEST_NODE {
  std::string StatusCheckDelay;
  std::string Ratios;
  std::string ExitOnPassRatios;
};

struct _MESH_GV_CFG : _PM_TEST_NODE {
  std::string CheckDelayTime;
  std::string ExitOnPassRatios;
  std::string RatioPUnit0;
  std::string RatioPUnit1;
  std::string RatioPUnit2;
  std::string RatioPUnit3;
  std::string RatioPUnit4;
};

struct _GLOBALPM_XMLCFG {
  _CSTATES_CFG CSTATES;
  _PSTATES_CFG PSTATES;
  _HWP_CFG HWP;
  _GSTATES_CFG GSTATES;
  _PECI_CFG PECI;
  _TSTATES_CFG TSTATES;
  _SDC_CFG SDC;
  _GFX_CFG iGFX_DVFS;
  _GFX_CFG iGFX_RC6;
  _GFX_CFG IS_DVFS;
  _GFX_CFG PS_DVFS;
  _GFX_CFG SAGV;
  _GFX_CFG dGFX_SAGV;
  _DGFX_RESET_CFG DGFX_RESET;
  _FANSPEED_CTR_CFG FANSPEED_CTR;
  _GFX_CFG PSF0_GV;
  _GFX_CFG UFS;
  _MESH_GV_CFG MESH_GV;
  _GFX_CFG dGFX_DVFS;
  _GFX_CFG dGFX_RC6;
  _ICE_CSTATES_CFG Ice_Cstates;
  _ICE_PSTATES_CFG Ice_Pstates;
  _FACT_CFG FACT;
  _PCIE_DEVICE_CFG PCIe_Link;
  _PCIE_DEVICE_CFG PCIe_GenWidth;
  _GFX_CFG GCD_RC6;
  _GFX_CFG GCD_DVFS;
  _GFX_CFG SAMedia_RC6;
  _GFX_CFG SAMedia_DVFS;
  _VPU_DVFS_CFG Vpu_DVFS;
  _PCIE_DEVICE_CFG Dx_States;
};

// Reads the "GLOBALPM" child of `root` into the test records. Returns false and changes nothing if
// there is none or `root` is null. Missing groups and tests are skipped without a message. The
// older elements "GT-DVFS", "GT-RC6" and "PCIe-Link-DState" (read into PCIe_Link as well as
// Dx_States) count where the newer element is missing.
VEXOR_EXPORT bool GetGlobalPMXML(_GLOBALPM_XMLCFG& pm, const tinyxml2::XMLElement* root);

namespace vexor {

// Returns the record of a test, null for an id without a section such as PM_TEST_TEST_CONTROL. The
// pointer refers into `pm`.
VEXOR_EXPORT _PM_TEST_NODE* FindTestNode(_GLOBALPM_XMLCFG& pm, VEXOR_PM_TEST_ID test);

// Sets every test record to its default texts and empties its lists.
VEXOR_EXPORT void ResetGlobalPm(_GLOBALPM_XMLCFG& pm);

}  // namespace vexor
