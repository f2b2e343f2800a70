#include "vexor/syntax/power_scheme.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

TEST(PowerScheme, WordsInAnyCase) {
  struct Case {
    const char* text;
    int scheme;
    int source;
  };
  for (const Case& row : std::to_array<Case>({
           {"Balanced", 1, 0},
           {"power-saver", 2, 0},
           {"high-performance", 3, 0},
           {"RANDOM", 4, 0},
           {"All", 5, 0},
           {"AC", 0, 1},
           {"dc", 0, 2},
           {"Default", 0, 0},
           {"User Defined", 0, 0},
           {"Ultimate", 0, 0},
           {"Balanced ", 0, 0},
           {"", 0, 0},
       })) {
    EXPECT_EQ(ParsePowerScheme(row.text), row.scheme) << row.text;
    EXPECT_EQ(ParseBatteryOptions(row.text), row.source) << row.text;
  }
}

TEST(PowerScheme, OnlyPlansAndSourcesHaveNames) {
  std::string schemes;
  std::string sources;
  for (int value = -1; value <= 7; ++value) {
    schemes.append(PowerSchemeName(value)).append(";");
    sources.append(BatterySimName(value)).append(";");
  }
  EXPECT_EQ(schemes,
            "User Defined;User Defined;Balanced;Power-Saver;High-Performance;User Defined;"
            "User Defined;User Defined;User Defined;");
  EXPECT_EQ(sources,
            "User Defined;Default;AC;DC;User Defined;User Defined;User Defined;User Defined;"
            "User Defined;");
}

}  // namespace
