#include "vexor/syntax/peci.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace {

TEST(Peci, CommandsAndInterfaces) {
  using Commands = std::vector<int>;
  const std::pair<const char*, Commands> cases[] = {
      {"Ping;GetDIB;GetTemp;RdPkgConfig;WrPkgConfig;RdMSR;RdMSRExt;WrMSR;RdPCIConfig;WrPCIConfig;"
       "RdPCIConfigLocal;WrPCIConfigLocal;RdEndPointConfig;WrEndPointConfig",
       {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}},
      {" ping ;; PING;Pong;Ping,GetTemp", {0, 0}},
      {"", {}},
  };
  for (const auto& [text, expected] : cases) {
    Commands commands;
    for (const auto command : ParsePECIMajorCmdsList(text)) {
      commands.push_back(static_cast<int>(command));
    }
    EXPECT_EQ(commands, expected) << text;
  }
  EXPECT_EQ(vexor::ParsePeciInterface("espi"), vexor::PeciInterface::kEspi);
  EXPECT_EQ(vexor::ParsePeciInterface("MCTP"), vexor::PeciInterface::kMctp);
  EXPECT_EQ(vexor::ParsePeciInterface("serial"), vexor::PeciInterface::kSerial);
  EXPECT_EQ(vexor::ParsePeciInterface("eSPI,MCTP"), vexor::PeciInterface::kUnknown);
}

TEST(Peci, ServicesAreCombinedWithNumbersByPosition) {
  const auto show = [](const std::vector<vexor::PeciPkgConfig>& configs) {
    std::string text;
    for (const auto& config : configs) {
      text += config.service + "," + std::to_string(config.parameter) + "," +
              std::to_string(config.data) + ";";
    }
    return text;
  };
  EXPECT_EQ(show(ParsePECIRdPkgCfgCmdsList("Pkg-Id; 0x1A ;a.b_c", "0xFFFF;;3;9")),
            "Pkg-Id,65535,0;0x1A,0,0;a.b_c,3,0;");
  EXPECT_EQ(show(ParsePECIRdPkgCfgCmdsList("A;B;;C,D;E", "65536;1;2;3")), "B,1,0;E,0,0;");
  EXPECT_EQ(show(ParsePECIWrPkgCfgCmdsList("A;B;C", " 1 ;x;3", "0xFFFFFFFF;2;0x100000000")),
            "A,1,4294967295;");
  EXPECT_EQ(show(ParsePECIWrPkgCfgCmdsList("", "1", "1")), "");
}

TEST(Peci, RegistersMayNameAThread) {
  std::string text;
  for (const auto& msr : ParsePECIRdMSRCmdsList("0x1A2; Perf-Status : 3 ;A:256;:1;A:;B:0:1;C")) {
    text += msr.name + "," + std::to_string(msr.thread) + ";";
  }
  EXPECT_EQ(text, "0x1A2,0;Perf-Status,3;C,0;");
}

TEST(Peci, PciRegistersHaveFiveOrSevenFields) {
  const auto show = [](const char* text) {
    std::string shown;
    for (const auto& pci : ParsePECIPciCfgCmdsList(text)) {
      for (const std::uint32_t field :
           {std::uint32_t{pci.segment}, std::uint32_t{pci.bus}, std::uint32_t{pci.device},
            std::uint32_t{pci.function}, std::uint32_t{pci.offset}, pci.and_mask, pci.or_mask}) {
        shown += std::to_string(field) + " ";
      }
    }
    return shown;
  };
  EXPECT_EQ(show("0:0:31:0:0x40"), "0 0 31 0 64 4294967295 0 ");
  EXPECT_EQ(show(" 65535 : 255:31:7:4095:0xFFFFFF00:1;;1:2:3:4:5:6:7"),
            "65535 255 31 7 4095 4294967040 1 1 2 3 4 5 6 7 ");
  for (const char* text :
       {"", "0", "0:0:0:0", "0:0:0:0:0:0", "0:0:0:0:0:0:0:0", "0::0:0:0", "65536:0:0:0:0",
        "0:256:0:0:0", "0:0:32:0:0", "0:0:0:8:0", "0:0:0:0:0x1000", "0:0:0:0:0:0x100000000:0",
        "0:0:0:0:0:0:0x100000000", "0:0:0:0:-1", "0:0:0:0:x"}) {
    EXPECT_EQ(show(text), "") << text;
  }
}

}  // namespace
