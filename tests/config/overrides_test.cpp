#include "vexor/config/overrides.h"

#include <gtest/gtest.h>

namespace {

// Runs the arguments, as typed behind the program's name, over the defaults.
_XML_FULL_CFG Apply(std::vector<std::string> arguments) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  std::string program = "tool";
  std::vector<char*> argv = {program.data()};
  for (std::string& argument : arguments) argv.push_back(argument.data());
  std::vector<std::string> faults;
  for (const auto& node :
       getCmdPMTestsOptions(argv.data(), static_cast<int>(argv.size()), faults)) {
    vexor::ApplyTestOptions(cfg, node);
  }
  EXPECT_EQ(faults, std::vector<std::string>());
  return cfg;
}

TEST(ApplyTestOptions, OverridesTheRecordOfItsTest) {
  const auto pm =
      Apply({"/cstate", "-at", "msec:80", "-core", "Specific:0,2", "-states", "C6", "-r", "/rc6",
             "-rc0t", "sec:3", "/meshgv", "-st", "20", "-ratioPUnit1", "7"})
          .GlobalPM;
  EXPECT_EQ(pm.CSTATES.ActiveTime, "msec:80");
  EXPECT_EQ(pm.CSTATES.CoreAffinity, "Specific:0,2");
  EXPECT_EQ(pm.CSTATES.ExeCstates, "C6");
  EXPECT_EQ(pm.CSTATES.KNOBS, "Random");
  EXPECT_EQ(pm.CSTATES.InStateTime, "msec:200");
  EXPECT_EQ(pm.iGFX_RC6.ActiveTime, "sec:3");
  EXPECT_EQ(pm.MESH_GV.SwitchTime, "msec:20");
  EXPECT_EQ(pm.MESH_GV.RatioPUnit1, "7");
  EXPECT_EQ(pm.PSTATES.ActiveTime, "Invalid");
}

TEST(ApplyTestOptions, OverridesEveryTestThatHasTheOption) {
  const auto pm = Apply({"/all", "-ftol", "9", "-r", "true", "/sdc", "-ftol", "2"}).GlobalPM;
  EXPECT_EQ(pm.HWP.FailTolerance, "9");
  EXPECT_EQ(pm.SDC.FailTolerance, "2");
  EXPECT_EQ(pm.FANSPEED_CTR.FailTolerance, "5");
  EXPECT_EQ(pm.FANSPEED_CTR.KNOBS, "");
  EXPECT_EQ(pm.PECI.KNOBS, "Random");
}

}  // namespace
