#include "vexor/syntax/keywords.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

constexpr const char* kKeywords =
    "ActiveTime at;ExeCycles c;CoreAffinity core;StartDelayTime dt;ExitOnFail eof;"
    "SanityEarlyExit eop;FailTolerance ftol;InStateTime it;Log_Level log;TestMode mode;"
    "ModuleAffinity mod;PkgAffinity pkg;PxMxCxScope scope;Random r;SwitchTime st;"
    "ControlPoint ctrlpoint;CoreExclusion coreexcl;autoEnable autoEnable;D3 d3;D0I3 d0i3;"
    "HwpDesiredValid desv;Device dev;DutyCycles duty;HwpEppValid eppv;"
    "ExitOnPassRatios eopratio;ForceIdleDelay fid;FailOnLimitReason flr;FreqTolerance fql;"
    "IceState ice;ICeIDAffinity idaff;AllPerICEIDScope idscope;AllMwaitReq invmwait;"
    "LimitReasonMask lrm;HwpMaxValid maxv;HwpMinValid minv;NoErrOnDemotion neodem;"
    "NoErrOnPromotion neoprom;DisableRandPkgVoting norpv;PassOnMinTurbo passpOn;"
    "PassOnPromotion passOnPro;M=M=D mmd;PCxDispOn pcxon;PassOnRaplPerfStatus raplstat;"
    "VerifyPerfStatusOnly perfstat;HwpPkgMode pkgmode;Power-Off poweroff;ExePstates gvpoints;"
    "QclkCheck qclk;RandomPkgVoting rpv;-ratioPUnit0 ratioPUnit0;-ratioPUnit1 ratioPUnit1;"
    "-ratioPUnit2 ratioPUnit2;-ratioPUnit3 ratioPUnit3;-ratioPUnit4 ratioPUnit4;RC0Time rc0t;"
    "RC6Time rc6t;Rc0Method rc0m;ExeCstates states;ConfigState states;SubStates substates;"
    "TurboLimitCores tlc;Tile tile;ExeValueSet value;GfxWorkLoad workload;"
    "WakeEvent wakeevent;SleepStates ss;S0ixFailureLevel sxfl;LoopEachSx sxloop;"
    "PreRequisiteSync sync;LPM_EN lpm;YellowBangCheck chkyellow;MemoryCheck chkmem;"
    "MCACheck chkmca;Kavrit chksoc";

TEST(Keywords, HaveShortNames) {
  std::istringstream pairs(kKeywords);
  for (std::string pair; std::getline(pairs, pair, ';');) {
    const std::size_t blank = pair.find(' ');
    const std::string keyword = pair.substr(0, blank);
    const std::string short_name = pair.substr(blank + 1);
    EXPECT_EQ(GetKeywordShortName(keyword), short_name);
    EXPECT_TRUE(IsOverwriteOption(keyword, short_name));
  }
  for (const char* text : {"", "activetime", "ActiveTime ", "at", "ratioPUnit0", "NoSuchKeyword"}) {
    EXPECT_EQ(GetKeywordShortName(text), "") << text;
    EXPECT_FALSE(IsOverwriteOption(text, "")) << text;
  }
  EXPECT_TRUE(IsOverwriteOption("ConfigState", "STATES"));
  EXPECT_FALSE(IsOverwriteOption("ExePstates", "states")) << "ExePstates is gvpoints";
  EXPECT_FALSE(IsOverwriteOption("ActiveTime", "-at"));
}

TEST(Keywords, KnobsAreAddedAndRemoved) {
  struct Case {
    const char* before;
    const char* knob;
    const char* option;
    const char* value;
    bool is_meant;
    const char* after;
  };
  const Case cases[] = {
      {"", "Random", "r", "true", true, "Random"},
      {"ExitOnFail", "Random", "R", "TRUE", true, "ExitOnFail;Random"},
      {"Random;ExitOnFail", "Random", "r", "true", true, "Random;ExitOnFail"},
      {"A; random ;B;Random", "Random", "r", "false", true, "A;B"},
      {"A;B", "Random", "r", "false", true, "A;B"},
      {"Random", "Random", "r", "no", true, ""},
      {"Random", "Random", "eof", "false", false, "Random"},
      {"A", "NoKnob", "", "true", false, "A"},
      {"RandomMode", "Random", "r", "false", true, "RandomMode"},
  };
  for (const Case& row : cases) {
    std::string knobs = row.before;
    EXPECT_EQ(UpdateknobsOptions(knobs, row.knob, row.option, row.value), row.is_meant);
    EXPECT_EQ(knobs, row.after) << row.before;
  }
}

TEST(Keywords, PrefixIsAddedToNumbers) {
  EXPECT_EQ(PrependtoRange("msec:", "10-20"), "msec:10-20");
  for (const char* text : {"sec:10", "", "-1", "All", "Invalid"}) {
    EXPECT_EQ(PrependtoRange("msec:", text), text);
  }
}

}  // namespace
