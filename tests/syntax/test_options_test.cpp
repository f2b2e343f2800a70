#include "vexor/syntax/test_options.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "vexor/syntax/keywords.h"

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
  std::size_t count = 0;
  for (std::string pair; std::getline(pairs, pair, ';'); ++count) {
    const std::size_t blank = pair.find(' ');
    const std::string keyword = pair.substr(0, blank);
    const std::string short_name = pair.substr(blank + 1);
    EXPECT_EQ(GetKeywordShortName(keyword), short_name);
    EXPECT_TRUE(IsOverwriteOption(keyword, short_name));
  }
  EXPECT_EQ(count, 74U);
  for (const char* text : {"", "activetime", "ActiveTime ", "at", "ratioPUnit0", "NoSuchKeyword"}) {
    EXPECT_EQ(GetKeywordShortName(text), "") << text;
    EXPECT_FALSE(IsOverwriteOption(text, "")) << text;
  }
  EXPECT_TRUE(IsOverwriteOption("ConfigState", "STATES"));
  EXPECT_FALSE(IsOverwriteOption("ExePstates", "states")) << "its first short name is kept";
  EXPECT_FALSE(IsOverwriteOption("ActiveTime", "-at"));
}

// Nodes as a text, faults behind them.
std::string Read(std::vector<std::string> arguments) {
  std::vector<char*> argv;
  argv.reserve(arguments.size());
  for (std::string& argument : arguments) argv.push_back(argument.data());
  std::vector<std::string> faults;
  std::string text;
  for (const auto& node :
       getCmdPMTestsOptions(argv.data(), static_cast<int>(argv.size()), faults)) {
    text += std::to_string(node.test) + "{";
    for (const auto& option : node.options) text += option.name + "=" + option.value + " ";
    text += "}";
  }
  for (const std::string& fault : faults) text += "!" + fault;
  return text;
}

TEST(TestOptions, SectionsHoldTheOptionsOfTheirTest) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{}, ""},
      {{"tool", "-f", "lab.xml", "/no/such", "-at", "1"}, ""},
      {{"tool", "/cstate", "-at", "msec:80", "-core", "Specific:0,2"},
       "1{at=msec:80 core=Specific:0,2 }"},
      {{"/cstate", "-AT", "80", "-it", "10-20", "-fid", "5", "-ftol", "3", "-core", "0,1"},
       "1{at=msec:80 it=msec:10-20 fid=usec:5 ftol=3 core=0,1 }"},
      {{"/hwp", "-R", "-eof", "FALSE", "-desv", "/hwp", "/all", "-gvpoints", ""},
       "2{r=true eof=FALSE desv=true }2{}33{gvpoints= }"},
      {{"/cstate", "-states", "C1;C6", "-states", "C8", "-ratiopunit3", "8"},
       "1{states=C1;C6 states=C8 ratioPUnit3=8 }"},
  };
  for (const auto& [arguments, nodes] : cases) EXPECT_EQ(Read(arguments), nodes);
}

TEST(TestOptions, WhatIsWrongIsReportedAndChangesNothing) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"/cstate", "-att", "sec:1", "x", "-c", "5"},
       "1{c=5 }!unknown option \"-att\" for /cstate, the nearest option is -at"},
      {{"/cstate", "-scop", "-"},
       "1{}!unknown option \"-scop\" for /cstate, the nearest option is -scope"
       "!unknown option \"-\" for /cstate, the nearest option is -c"},
      {{"/cstate", "-at", "-it", "/hwp", "-core"},
       "1{}2{}!option without a value \"-at\" for /cstate, the nearest option is -at"
       "!option without a value \"-it\" for /cstate, the nearest option is -it"
       "!option without a value \"-core\" for /hwp, the nearest option is -core"},
      {{"/cstate", "-r", "yes", "-core", "0", "2"},
       "1{r=true core=0 }!value without an option \"yes\" for /cstate, the nearest option is -desv"
       "!value without an option \"2\" for /cstate, the nearest option is -c"},
      {{"/cstate", "/cstates", "-at", "1", "/dxstate", "/HWP", "/max", "/end"},
       "1{}36{}!unknown test \"/cstates\", the nearest test is /cstate"
       "!unknown test \"/dxstate\", the nearest test is /dxstates"
       "!unknown test \"/HWP\", the nearest test is /hwp"
       "!unknown test \"/max\", the nearest test is /hwp"},
  };
  for (const auto& [arguments, nodes] : cases) EXPECT_EQ(Read(arguments), nodes);
  const std::string longest_shown = "-" + std::string(59, 'x');
  EXPECT_EQ(Read({"/hwp", longest_shown}), "2{}!unknown option \"" + longest_shown +
                                               "\" for /hwp, the nearest option is -coreexcl");
  EXPECT_EQ(
      Read({"/hwp", longest_shown + std::string(1 << 20, 'x')}),
      "2{}!unknown option \"" + longest_shown + "...\" for /hwp, the nearest option is -coreexcl");
  std::vector<std::string> faults;
  EXPECT_TRUE(getCmdPMTestsOptions(nullptr, -1, faults).empty() && faults.empty());
  std::string texts[] = {"/hwp", "-core", "-r"};
  char* nulls[] = {nullptr, texts[0].data(), texts[1].data(), nullptr, texts[2].data(), nullptr};
  const auto nodes = getCmdPMTestsOptions(nulls, 6, faults);
  ASSERT_EQ(nodes.size(), 1U);
  EXPECT_EQ(nodes[0].options.size(), 1U) << "the switch stands alone";
  EXPECT_EQ(faults.size(), 3U) << "what is no text is no value";
}

TEST(TestOptions, KnobsAreSwitchedInTheirList) {
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

TEST(TestOptions, APrefixGoesToBareNumbers) {
  EXPECT_EQ(PrependtoRange("msec:", "10-20"), "msec:10-20");
  for (const char* text : {"sec:10", "", "-1", "All", "Invalid"}) {
    EXPECT_EQ(PrependtoRange("msec:", text), text);
  }
}

}  // namespace
