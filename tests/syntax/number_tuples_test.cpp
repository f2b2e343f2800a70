#include "vexor/syntax/number_tuples.h"

#include <gtest/gtest.h>

#include <string>

namespace {

template <class... Numbers>
std::string Join(Numbers... numbers) {
  std::string text;
  ((text += std::to_string(numbers) + " "), ...);
  return text;
}

// Shows what the three parsers return for a text, "-" for nothing.
std::string Read(const char* text) {
  const auto scope = vexor::ParseScope(text);
  const auto spread = vexor::ParseRatioSpread(text);
  const auto timeout = vexor::ParseTimeout(text);
  return (scope ? Join(scope->packages, scope->modules, scope->cores, scope->threads) : "-") + "/" +
         (spread ? Join(spread->low, spread->medium, spread->high) : "-") + "/" +
         (timeout ? Join(timeout->seconds, timeout->times) : "-");
}

TEST(NumberTuples, FormsReadTheirNumbers) {
  const std::pair<const char*, const char*> cases[] = {
      {"100:0:0", "100 0 0 0 /-/-"},
      {"10: 0x14 :30", "10 20 30 0 /16 20 48 /-"},
      {"0:1:2:100", "0 1 2 100 /-/-"},
      {"101:0:0", "-/-/-"},
      {"FF:fe:0xFD", "-/255 254 253 /-"},
      {"0:0:0:101", "-/-/-"},
      {"120:5", "-/-/120 5 "},
      {"4294967295:4294967296", "-/-/-"},
      {"0:0:0:0:0", "-/-/-"},
      {"1:2:", "-/-/1 2 "},
      {"1::2", "-/-/-"},
      {"", "-/-/-"},
      {":", "-/-/-"},
      {"100", "-/-/100 1 "},
  };
  for (const auto& [text, numbers] : cases) EXPECT_EQ(Read(text), numbers) << text;
}

}  // namespace
