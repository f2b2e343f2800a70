#include "logging/log_names.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "logging/log_test_tools.h"
#include "platform/platform.h"

namespace {

TEST(LogNames, AreRecognisedAsDevicesAndStreams) {
  for (const char* name :
       {"NUL", "nul.csv", "logs/Con.csv", "C:\\logs\\aux.x.csv", "C:prn.csv", "COM1.csv",
        "lpt9 .csv", "conin$.csv", "CONOUT$", "run:1.csv", "C:run:1.csv", ":.csv"}) {
    EXPECT_TRUE(vexor::NamesDeviceOrStream(name)) << name;
  }
  for (const char* name : {"C:run.csv", "C:/logs/run.csv", "NUL/run.csv", "null.csv", "com.csv",
                           "com12.csv", "comx.csv", "xcom1.csv", "NUL_0.csv", ".csv", ""}) {
    EXPECT_FALSE(vexor::NamesDeviceOrStream(name)) << name;
  }
}

TEST(LogNames, EndWithASeriesNumberThatHasANextOne) {
  using Index = std::optional<std::uint32_t>;
  const std::pair<const char*, Index> cases[] = {
      {"run_0.csv", 0},           {"a_1/run_x_12.csv", 12}, {"run_4294967294", 4294967294},
      {"run_4294967295.csv", {}}, {"run_1_.csv", {}},       {"a_1/run.csv", {}},
  };
  for (const auto& [name, index] : cases) EXPECT_EQ(vexor::FindSeriesIndex(name), index) << name;
}

TEST(LogNames, AreRefusedIfTheSystemWouldOpenAnotherFile) {
  const TemporaryFolder folder;
  std::vector<std::string> names = {std::string("run\0x", 5), std::string("\0", 1)};
  if (vexor::kHasWindowsNames) names.insert(names.end(), {"NUL", "com1.csv", "run:1"});
  for (const std::string& name : names) {
    VexorLogging log;
    testing::internal::CaptureStdout();
    EXPECT_FALSE(OpenPlain(log, folder, name)) << name;
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(printed.starts_with("Cannot open log file " + folder.path())) << printed;
    EXPECT_NE(printed.find("the name "), std::string::npos) << printed;
    EXPECT_FALSE(log.IsInitialized());
  }
  EXPECT_TRUE(GetFilesInFolder(folder.path()).empty());
}

}  // namespace
