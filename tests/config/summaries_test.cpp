#include "vexor/config/summaries.h"

#include <gtest/gtest.h>

#include "config/config_files.h"

namespace {

using Lines = std::vector<std::string>;

TEST(Summaries, ShowTheDefaults) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  EXPECT_EQ(GetXMLPMTestsInfo(cfg), Lines());
  EXPECT_EQ(GetXMLTestControlInfo(cfg),
            Lines({"<AutoRunCfg>,", "<TestTraceCfg>,", "ExeMode=CM;MaxWorkloads=Max;LoopNum=1"}));
  EXPECT_EQ(GetXMLGlobalConfigInfo(cfg),
            Lines({"<OverwriteCfg>,", "<SystemSetup>,", "<SysConfiguration><CORE>,",
                   "<SysConfiguration><POWER>,", "<SysConfiguration><UNCORE>,",
                   "<SysConfiguration><GSTATES>,", "<SysConfiguration><OS>,",
                   "<SysConfiguration><KNOBS>,<LTR_IGN_Mask>0  <Snoop_Latency_Mask>0", "<MSR_CFG>,",
                   "<PCIE_CFG>,", "<PMC-MMIO>,", "<GT-MMIO>,", "<ISP-MMIO>,", "<MMIO>,",
                   "<P2SB-MMIO>,", "<CRBCFG>,", "<IOSFCFG>,", "<MailBoxCfg>,"}));
}

TEST(Summaries, ListTestsInAFixedOrder) {
  _XML_FULL_CFG cfg;
  cfg.TestControl.AutoRunCfg.fill(true);
  std::string names;
  for (const std::string& line : GetXMLPMTestsInfo(cfg)) names += line;
  EXPECT_EQ(names,
            "<CSTATES>,<PSTATES>,<HWP>,<TSTATES>,<SDC>,<FACT>,<Ice-Cstates>,<Ice-Pstates>,"
            "<GSTATES>,<PECI>,<iGFX-DVFS>,<iGFX-RC6>,<dGFX-DVFS>,<dGFX-RC6>,<dGFX-SAGV>,"
            "<DGFX-RESET>,<FANSPEED-CTR>,<GCD-RC6>,<GCD-DVFS>,<SAMedia-RC6>,<SAMedia-DVFS>,"
            "<IS-DVFS>,<PS-DVFS>,<SAGV>,<PSF0-GV>,<UFS>,<MESH-GV>,<PCIe-Link>,<Dx-States>,"
            "<PCIe-GenWidth>,");
  EXPECT_TRUE(GetXMLTestControlInfo(cfg)[0].starts_with("<AutoRunCfg>,<CSTATES>true <HWP>true "));
  EXPECT_TRUE(GetXMLTestControlInfo(cfg)[0].ends_with("<Dx-States>true <TestControl>true "));
}

TEST(Summaries, ShowAConfiguration) {
  const _XML_FULL_CFG cfg = ReadDocument(Document(
      "<GLOBALPM><CORE><CSTATES><ActiveTime> msec:80 </ActiveTime><KNOBS/></CSTATES></CORE>"
      "</GLOBALPM><TEST_CONTROL_CFG><AutoRunCfg><CSTATES>true</CSTATES><Vpu-DVFS>true</Vpu-DVFS>"
      "</AutoRunCfg><TestTraceCfg><N>SDC_a_b</N><N>HWP_a_b</N></TestTraceCfg></TEST_CONTROL_CFG>"
      "<GLOBALCONFIGURATION><SystemSetup><OverwriteCfg><CPU>X</CPU><PCH>Default</PCH>"
      "</OverwriteCfg><SETTING><TopoMode>OS</TopoMode><Seeds/></SETTING></SystemSetup>"
      "<SysConfiguration><CORE><CONFIG><ITEM>0;SDC;Enable</ITEM><ITEM>b</ITEM></CONFIG>"
      "<SETTING><ITEM>c</ITEM></SETTING></CORE><POWER><CONFIG><ITEM>d</ITEM></CONFIG></POWER>"
      "<UNCORE><CONFIG><A>1</A><B>Default</B></CONFIG><SETTING><C>false</C></SETTING></UNCORE>"
      "<SYSTEM><GSTATES><H>1</H></GSTATES><KNOBS><D>false</D><E>5</E><F>Default</F>"
      "<G>true</G></KNOBS></SYSTEM></SysConfiguration><CustomConfiguration><MSR_CFG><MSR>"
      "<Address>1</Address><OrMask/></MSR><MSR><Address>2</Address></MSR></MSR_CFG><P2SB-MMIO>"
      "<MMIO><Port>9</Port></MMIO></P2SB-MMIO></CustomConfiguration></GLOBALCONFIGURATION>"));
  EXPECT_EQ(GetXMLPMTestsInfo(cfg), Lines({"<CSTATES>,<ActiveTime>msec:80  <KNOBS/>  "}));
  EXPECT_EQ(GetXMLTestControlInfo(cfg),
            Lines({"<AutoRunCfg>,<CSTATES>true <Vpu-DVFS>true ",
                   "<TestTraceCfg>,<SDC_a_b>,<HWP_a_b>", "ExeMode=CM;MaxWorkloads=Max;LoopNum=1"}));
  const Lines lines = GetXMLGlobalConfigInfo(cfg);
  ASSERT_EQ(lines.size(), 18u);
  EXPECT_EQ(lines[0], "<OverwriteCfg>,<CPU>X  ");
  EXPECT_EQ(lines[1], "<SystemSetup>,<TopoMode>OS  ");
  EXPECT_EQ(lines[2], "<SysConfiguration><CORE>,<CONFIG>0;SDC;Enable  <CONFIG>b  <SETTING>c  ");
  EXPECT_EQ(lines[3], "<SysConfiguration><POWER>,<CONFIG>d  ");
  EXPECT_EQ(lines[4], "<SysConfiguration><UNCORE>,<A>1  <C>false");
  EXPECT_EQ(lines[5] + lines[6], "<SysConfiguration><GSTATES>,<H>1<SysConfiguration><OS>,");
  EXPECT_EQ(lines[7], "<SysConfiguration><KNOBS>,<E>5  <G>true");
  EXPECT_EQ(lines[8], "<MSR_CFG>,<Address>1  <OrMask/>  ;  <Address>2  ");
  EXPECT_EQ(lines[14], "<P2SB-MMIO>,<Port>9  ");
}

}  // namespace
