#include "vexor/config/overrides.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "placeholders.h"

namespace {

std::vector<_PM_TEST_CONFIG_NODE> ReadNodes(std::vector<std::string> arguments,
                                            std::vector<std::string>& faults) {
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  return getCmdPMTestsOptions(argv.data(), static_cast<int>(argv.size()), faults);
}

// Formats nodes, followed by faults.
std::string Read(const std::vector<std::string>& arguments) {
  std::vector<std::string> faults;
  std::string text;
  for (const auto& node : ReadNodes(arguments, faults)) {
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
      {{"/opt/engine", "/tmp/lab.xml", "/lab.xml", "/f:x", "/?", "/", "-at", "1"}, ""},
      {{"/engine", "-f", "lab.xml", "/cstate"}, "1{}"},
      {{"tool", "/cstate", "-at", "msec:80", "-core", "Specific:0,2"},
       "1{at=msec:80 core=Specific:0,2 }"},
      {{"/cstate", "-AT", "80", "-it", "10-20", "/rc6", "-fid", "5", "-ftol", "3", "-core", "0,1"},
       "1{at=msec:80 it=msec:10-20 }9{fid=usec:5 ftol=3 core=0,1 }"},
      {{"/hwp", "-R", "-eof", "FALSE", "-desv", "/hwp", "/all", "-gvpoints", ""},
       "2{r=true eof=false desv=true }2{}33{gvpoints= }"},
      {{"/cstate", "-states", "C1;C6", "-states", "C8", "/meshgv", "-ratiopunit3", "8"},
       "1{states=C1;C6 states=C8 }25{ratioPUnit3=8 }"},
  };
  for (const auto& [arguments, nodes] : cases) EXPECT_EQ(Read(arguments), nodes);
}

TEST(TestOptions, InvalidArgumentsAreReportedAndChangeNothing) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"/cstate", "-att", "sec:1", "x", "-c", "5"},
       "1{c=5 }!/cstate \"-att\": unknown option, the nearest is -at"},
      {{"/cstate", "-scop", "-", "-ActiveTime", "sec:1", "-log_level", "Debug"},
       "1{}!/cstate \"-scop\": unknown option, the nearest is -scope"
       "!/cstate \"-\": unknown option, the nearest is -c"
       "!/cstate \"-ActiveTime\": unknown option, the nearest is -at"
       "!/cstate \"-log_level\": unknown option, the nearest is -log"},
      {{"/sdc", "-cor", "1", "/meshgv", "-at", "5", "-desv", "true", "-c", "2", "/start", "-c",
        "1"},
       "5{}25{c=2 }35{}!/sdc \"-cor\": unknown option, the nearest is -c"
       "!/meshgv \"-at\": not an option of this test, the nearest is -dt"
       "!/meshgv \"-desv\": not an option of this test, the nearest is -dt"
       "!/start \"-c\": not an option of this test, the test has none"},
      {{"/cstate", "-at", "-states", "/hwp", "-core", "/link", "-states"},
       "1{}2{}29{}!/cstate \"-at\": no value, expected unit:value or unit:low-high with <...>; "
       "Invalid is no time (for example msec:80-120)"
       "!/cstate \"-states\": no value, expected C-states joined by \";\" (for example C1;C6;C10)"
       "!/hwp \"-core\": no value, expected <...> or Specific:numbers; numbers alone mean All "
       "(for example Specific:0-3,8)!/link \"-states\": no value, expected any text"},
      {{"/cstate", "-at", "banana", "-log", "Debog", "-c", "5", "/all", "-ftol", "C1:5"},
       "1{c=5 }33{}!/cstate -at \"banana\": not a unit and a value, expected unit:value or "
       "unit:low-high with <...> (for example msec:80)"
       "!/cstate -log \"Debog\": unknown level, expected <...>; "
       "did you mean \"Debug\"?"
       "!/all -ftol \"C1:5\": not a number for /pstate, expected decimal digits, or 0x and "
       "hexadecimal digits (for example 100)"},
      {{"/cstate", "yes", "-r", "yes", "-eof", "Fals", "-core", "0", "2"},
       "1{core=0 }!/cstate \"yes\": value without an option, expected \"-\" and an option's name"
       "!/cstate -r \"yes\": neither true nor false, expected true or false; did you mean \"true\"?"
       "!/cstate -eof \"Fals\": neither true nor false, expected true or false; did you mean "
       "\"false\"?"
       "!/cstate \"2\": value without an option, expected \"-\" and an option's name"},
      {{"/cstate", "/cstates", "-at", "1", "/dxstate", "/PCIe-Link", "/HWP", "/max", "/end"},
       "1{}36{}!\"/cstates\": unknown test, the nearest is /cstate"
       "!\"/dxstate\": unknown test, the nearest is /dxstates"
       "!\"/PCIe-Link\": unknown test, the nearest is /link"
       "!\"/HWP\": unknown test, the nearest is /hwp"
       "!\"/max\": unknown test, the nearest is /hwp"},
      {{"/cstat", "-at", "5"}, "!\"/cstat\": unknown test, the nearest is /cstate"},
      {{"tool", "lab.xml", "/cstat", "-at", "5", "/sdc"},
       "5{}!\"/cstat\": unknown test, the nearest is /cstate"},
  };
  for (const auto& [arguments, nodes] : cases) {
    const std::vector<std::string> read = {Read(arguments)};
    EXPECT_EQ(read, FilledIn({nodes}, read));
  }
  const std::string longest_shown = "-" + std::string(59, 'x');
  const std::string behind = "unknown option, the nearest is -scope";
  EXPECT_EQ(Read({"/cstate", longest_shown}), "1{}!/cstate \"" + longest_shown + "\": " + behind);
  EXPECT_EQ(Read({"/cstate", longest_shown + std::string(1 << 20, 'x')}),
            "1{}!/cstate \"" + longest_shown + "...\": " + behind);
  std::vector<std::string> faults;
  EXPECT_TRUE(getCmdPMTestsOptions(nullptr, -1, faults).empty() && faults.empty());
  std::string texts[] = {"/hwp", "-core", "-r"};
  char* nulls[] = {nullptr, texts[0].data(), texts[1].data(), nullptr, texts[2].data(), nullptr};
  const auto nodes = getCmdPMTestsOptions(nulls, 6, faults);
  ASSERT_EQ(nodes.size(), 1U);
  EXPECT_EQ(nodes[0].options.size(), 1U) << "the switch stands alone";
  EXPECT_EQ(faults.size(), 3U) << "what is no text is no value";
}

// Applies the arguments of a command line to the defaults.
_GLOBALPM_XMLCFG Apply(const std::vector<std::string>& arguments) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  cfg.GlobalPM.PCIe_Link.ConfigState = {"of the file", "too"};
  std::vector<std::string> faults;
  for (const auto& node : ReadNodes(arguments, faults)) vexor::ApplyTestOptions(cfg, node);
  EXPECT_EQ(faults, std::vector<std::string>());
  return cfg.GlobalPM;
}

TEST(ApplyTestOptions, OverridesTheRecordOfItsTest) {
  const auto pm =
      Apply({"/cstate", "-at",   "msec:80", "-core", "Specific:0,2", "-states", "C1",
             "-states", "C6",    "-r",      "/rc6",  "-rc0t",        "sec:3",   "/meshgv",
             "-st",     "20",    "-log",    "Debug", "-ratioPUnit1", "7",       "-eopratio",
             "P0",      "/icec", "-states", "D0I3"});
  EXPECT_EQ(pm.CSTATES.ActiveTime, "msec:80");
  EXPECT_EQ(pm.CSTATES.CoreAffinity, "Specific:0,2");
  EXPECT_EQ(pm.CSTATES.ExeCstates, "C6");
  EXPECT_EQ(pm.CSTATES.KNOBS, "Random");
  EXPECT_EQ(pm.CSTATES.InStateTime, "msec:200");
  EXPECT_EQ(pm.iGFX_RC6.ActiveTime, "sec:3");
  EXPECT_EQ(pm.MESH_GV.SwitchTime, "msec:20");
  EXPECT_EQ(pm.MESH_GV.Log_Level, "Debug");
  EXPECT_EQ(pm.MESH_GV.RatioPUnit1, "7");
  EXPECT_EQ(pm.MESH_GV.ExitOnPassRatios, "P0");
  EXPECT_EQ(pm.Ice_Cstates.ExeStates, "D0I3");
  EXPECT_EQ(pm.PSTATES.ActiveTime, "Invalid");
}

TEST(ApplyTestOptions, ReplacesListsAndSwitchesWords) {
  using Texts = std::vector<std::string>;
  const auto pm = Apply({"/link",   "-states", "1:0:0;L1", "-states",    "2:0:0;L0", "/fact",
                         "-states", "A",       "/fact",    "-states",    "B",        "/dxstates",
                         "-states", "",        "/gstate",  "-chkyellow", "-chkmem",  "-chkmca",
                         "/gstate", "-chkmem", "false",    "/cstate",    "-chkmem"});
  EXPECT_EQ(pm.PCIe_Link.ConfigState, Texts({"1:0:0;L1", "2:0:0;L0"}));
  EXPECT_EQ(pm.FACT.ConfigState, Texts({"B"}));
  EXPECT_EQ(pm.Dx_States.ConfigState, Texts());
  EXPECT_EQ(pm.GSTATES.PrePostCheck, "YellowBangCheck");
  EXPECT_EQ(pm.GSTATES.KNOBS, "MCACheck");
  EXPECT_EQ(pm.CSTATES.KNOBS, "MemoryCheck");
}

TEST(ApplyTestOptions, OverridesEveryTestThatHasTheOption) {
  const auto pm = Apply({"/all", "-ftol", "9", "-r", "true", "/sdc", "-ftol", "2"});
  EXPECT_EQ(pm.HWP.FailTolerance, "9");
  EXPECT_EQ(pm.SDC.FailTolerance, "2");
  EXPECT_EQ(pm.FANSPEED_CTR.FailTolerance, "5");
  EXPECT_EQ(pm.FANSPEED_CTR.KNOBS, "");
  EXPECT_EQ(pm.PECI.KNOBS, "Random");
}

}  // namespace
