#include "vexor/syntax/power_scheme.h"

#include <gtest/gtest.h>

#include <array>

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

TEST(PowerScheme, ChoicesHaveNoNameOfTheirOwn) {
  struct Case {
    int value;
    const char* scheme;
    const char* source;
  };
  for (const Case& row : std::to_array<Case>({
           {-1, "User Defined", "User Defined"},
           {0, "User Defined", "Default"},
           {1, "Balanced", "AC"},
           {2, "Power-Saver", "DC"},
           {3, "High-Performance", "User Defined"},
           {4, "User Defined", "User Defined"},
           {5, "User Defined", "User Defined"},
           {7, "User Defined", "User Defined"},
       })) {
    EXPECT_STREQ(PowerSchemeName(row.value), row.scheme) << row.value;
    EXPECT_STREQ(BatterySimName(row.value), row.source) << row.value;
  }
}

}  // namespace
