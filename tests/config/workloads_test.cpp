#include "vexor/config/workloads.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include "config/config_files.h"

namespace {

bool Read(_WORKLOADS_XMLCFG& workloads, const std::string& content) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  document.Parse(Wrapped("VEXOR", content).c_str());
  return GetWorkLoadsXML(workloads, document.RootElement());
}

TEST(Workloads, FillsEachRecordFromItsOwnElement) {
  const auto marked = [](const char* name) {
    return Wrapped(name, "<AutoRun>true</AutoRun>" + Wrapped("Duration", name));
  };
  std::string cpu;
  for (const char* name : {"SSE2", "AVX128", "AVX128Lite", "AVX256", "AVX256Lite", "AVX512",
                           "AVX512Lite", "AVX512-VNNI", "DGEMM"}) {
    cpu += marked(name);
  }
  std::string memory;
  for (const char* name : {"L1", "L2", "L3", "DRAM", "Splits", "ProCon"}) memory += marked(name);
  const std::string graphics = marked("BouncingBall") + marked("Media3DPTV");
  _WORKLOADS_XMLCFG w;
  w.SpareWord = 5;
  w.CopyCompare.Source = "kept unless missing";
  ASSERT_TRUE(
      Read(w, Wrapped("WORKLOADS", Wrapped("IAPowerStress", cpu) + Wrapped("MemoryStress", memory) +
                                       marked("CopyCompare") + Wrapped("GtStress", graphics))));
  EXPECT_EQ(w.SpareWord, 5u);
  EXPECT_EQ(w.SSE2.Duration, "SSE2");
  EXPECT_EQ(w.AVX128.Duration, "AVX128");
  EXPECT_EQ(w.AVX128Lite.Duration, "AVX128Lite");
  EXPECT_EQ(w.AVX256.Duration, "AVX256");
  EXPECT_EQ(w.AVX256Lite.Duration, "AVX256Lite");
  EXPECT_EQ(w.AVX512.Duration, "AVX512");
  EXPECT_EQ(w.AVX512Lite.Duration, "AVX512Lite");
  EXPECT_EQ(w.AVX512_VNNI.Duration, "AVX512-VNNI");
  EXPECT_EQ(w.DGEMM.Duration, "DGEMM");
  EXPECT_EQ(w.L1.Duration, "L1");
  EXPECT_EQ(w.L2.Duration, "L2");
  EXPECT_EQ(w.L3.Duration, "L3");
  EXPECT_EQ(w.DRAM.Duration, "DRAM");
  EXPECT_EQ(w.Splits.Duration, "Splits");
  EXPECT_EQ(w.ProCon.Duration, "ProCon");
  EXPECT_EQ(w.CopyCompare.Duration, "CopyCompare");
  EXPECT_EQ(w.CopyCompare.Source, "");
  EXPECT_EQ(w.BouncingBall.Duration, "BouncingBall");
  EXPECT_EQ(w.Media3DPTV.Duration, "Media3DPTV");
  EXPECT_TRUE(w.SSE2.AutoRun && w.L1.AutoRun && w.BouncingBall.AutoRun && w.Media3DPTV.AutoRun);
}

TEST(Workloads, KeepsWhatTheFileLacks) {
  _WORKLOADS_XMLCFG w;
  w.SSE2.AutoRun = w.L1.AutoRun = w.BouncingBall.AutoRun = w.Media3DPTV.AutoRun = true;
  w.SSE2.Duration = w.L1.Duration = w.Media3DPTV.Duration = "kept";
  EXPECT_FALSE(Read(w, "<IAPowerStress/>"));
  EXPECT_FALSE(GetWorkLoadsXML(w, nullptr));
  EXPECT_TRUE(Read(w, "<WORKLOADS><IAPowerStress/></WORKLOADS>"));
  EXPECT_TRUE(w.SSE2.AutoRun && w.L1.AutoRun && w.BouncingBall.AutoRun && w.Media3DPTV.AutoRun);
  EXPECT_EQ(w.SSE2.Duration + w.L1.Duration, "keptkept");

  EXPECT_TRUE(Read(w,
                   "<WORKLOADS><GtStress><BouncingBall><AutoRun>true</AutoRun></BouncingBall>"
                   "</GtStress><IAPowerStress><SSE2/></IAPowerStress></WORKLOADS>"));
  EXPECT_TRUE(w.BouncingBall.AutoRun);
  EXPECT_FALSE(w.Media3DPTV.AutoRun);
  EXPECT_EQ(w.BouncingBall.Name, "BouncingBall");
  EXPECT_EQ(w.Media3DPTV.Name, "Media3DPTV");
  EXPECT_EQ(w.Media3DPTV.Duration, "kept");
  EXPECT_FALSE(w.SSE2.AutoRun);
  EXPECT_EQ(w.SSE2.Duration, "");
}

}  // namespace
