#include "vexor/config/workloads.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include "config/config_files.h"

namespace {

using Texts = std::vector<std::string>;

bool Read(_WORKLOADS_XMLCFG& workloads, const std::string& content) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  document.Parse(Wrapped("VEXOR", content).c_str());
  return GetWorkLoadsXML(workloads, document.RootElement());
}

TEST(Workloads, FillsEachRecordFromItsOwnElement) {
  const auto marked = [](const std::vector<const char*>& names) {
    std::string elements;
    for (const char* const name : names) {
      elements += Wrapped(name, "<AutoRun>true</AutoRun>" + Wrapped("Duration", name));
    }
    return elements;
  };
  const std::string cpu = marked({"SSE2", "AVX128", "AVX128Lite", "AVX256", "AVX256Lite", "AVX512",
                                  "AVX512Lite", "AVX512-VNNI", "DGEMM"});
  const std::string memory = marked({"L1", "L2", "L3", "DRAM", "Splits", "ProCon"});
  const std::string graphics = marked({"BouncingBall", "Media3DPTV"});
  _WORKLOADS_XMLCFG w;
  w.SpareWord = 5;
  w.CopyCompare.Source = "kept unless missing";
  ASSERT_TRUE(
      Read(w, Wrapped("WORKLOADS", Wrapped("IAPowerStress", cpu) + Wrapped("MemoryStress", memory) +
                                       marked({"CopyCompare"}) + Wrapped("GtStress", graphics))));
  EXPECT_EQ(w.SpareWord, 5u);
  EXPECT_EQ(
      Texts({w.SSE2.Duration, w.AVX128.Duration, w.AVX128Lite.Duration, w.AVX256.Duration,
             w.AVX256Lite.Duration, w.AVX512.Duration, w.AVX512Lite.Duration,
             w.AVX512_VNNI.Duration, w.DGEMM.Duration, w.L1.Duration, w.L2.Duration, w.L3.Duration,
             w.DRAM.Duration, w.Splits.Duration, w.ProCon.Duration, w.CopyCompare.Duration,
             w.BouncingBall.Duration, w.Media3DPTV.Duration, w.CopyCompare.Source}),
      Texts({"SSE2", "AVX128", "AVX128Lite", "AVX256", "AVX256Lite", "AVX512", "AVX512Lite",
             "AVX512-VNNI", "DGEMM", "L1", "L2", "L3", "DRAM", "Splits", "ProCon", "CopyCompare",
             "BouncingBall", "Media3DPTV", ""}));
  EXPECT_TRUE(w.SSE2.AutoRun && w.L1.AutoRun && w.BouncingBall.AutoRun && w.Media3DPTV.AutoRun);
}

TEST(Workloads, AbsentWorkloadsKeepTheirRecord) {
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
