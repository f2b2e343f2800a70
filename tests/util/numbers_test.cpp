#include "vexor/util/numbers.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "vexor/util/clock.h"

namespace {

using Integers = std::vector<int>;
using Doubles = std::vector<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr const char* kBeyond64Bits = "99999999999999999999";

// Returns the text of the exception of type `Error` that the call throws.
template <class Error, class Call>
std::string TextOfThrown(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.what();
  }
  return "nothing thrown";
}

TEST(Numbers, String2IntegerReadsWholeUnsignedTexts) {
  struct Case {
    std::uint64_t value;
    bool before_colon;
    std::vector<const char*> texts;
  };
  constexpr std::uint64_t kBad = 7;
  const Case cases[] = {
      {31, false, {"31", "0031", "0x1F", "0X1f"}},
      {UINT64_MAX, false, {"18446744073709551615", "0xFFFFFFFFFFFFFFFF"}},
      {kBad, false, {"", " 31", "31 ", "-1", "+1", "1.0", "1f", "0x", "x1", "12:34"}},
      {kBad, false, {"99999999999999999999x", "0x99999999999999999g"}},
      {12, true, {"12", "12:34", " 12 :x", "::12", ": 0xC"}},
      {kBad, true, {"", ":", " :12", "x:12", "1 2:"}},
  };
  for (const Case& c : cases) {
    for (const char* text : c.texts) {
      EXPECT_EQ(String2Integer(text, kBad, c.before_colon), c.value) << text;
    }
  }
  for (const char* text : {kBeyond64Bits, "0x10000000000000000", "18446744073709551616"}) {
    EXPECT_EQ(TextOfThrown<std::out_of_range>([text] { String2Integer(text, 0); }),
              "stoull argument out of range");
  }
}

TEST(Numbers, String2FloatReadsTheBeginningOfPlainDecimals) {
  const std::pair<double, std::vector<std::string>> cases[] = {
      {2.5, {"2.5", "02.50", "2.5-1", "2.5.1"}},
      {-0.5, {"-.5", "-0.5-"}},
      {5, {"5.", "5-2"}},
      {0, {"-", ".", "..1", "--1", "0." + std::string(60, '0') + "9"}},
      {-kInfinity, {"-" + std::string(50, '9') + ".5"}},
  };
  bool ok = false;
  for (const auto& [value, texts] : cases) {
    for (const std::string& text : texts)
      EXPECT_TRUE(String2Float(text, ok) == value && ok) << text;
  }
  for (const char* bad : {"", " 1", "1e2", "+1", "1,5", "0x1", "inf"}) {
    ok = true;
    EXPECT_TRUE(String2Float(bad, ok) == 0 && !ok) << bad;
  }
}

TEST(Numbers, GetDoubleValueReadsWordsAndNumbers) {
  const std::pair<double, std::vector<const char*>> cases[] = {
      {7, {"N/A", "n/a"}},
      {0, {"False", "no", "Inactive", "Disabled by", "disable", "0", "0xg", "0x.", "0x-1", "0x"}},
      {1, {"true", "yEs", "active", "enable", "Enabled", "1", "1e", "0x1", "0x2p-1"}},
      {2.5, {"2.5", " \t\n\v\f\r+2.5x", "25.e-1-", "0x2.8", "0X.Ap2p", "0x2.8p+-1", "2.5.1"}},
      {-3, {"-3", "-0x1.8p1"}},
      {18446744073709551616.0, {"0xFFFFFFFFFFFFFFFF"}},
      {-kInfinity, {"-inf", "-INFINITE"}},
  };
  for (const auto& [value, texts] : cases) {
    for (const char* text : texts) EXPECT_EQ(GetDoubleValue(text, 7), value) << text;
  }
  EXPECT_TRUE(std::isnan(GetDoubleValue("nan(1)", 7)));
  for (const char* text : {"", " ", "x", "N", "truex", "-", "+-1", "--1", ".", "e5", "- 1"}) {
    EXPECT_EQ(TextOfThrown<std::invalid_argument>([text] { GetDoubleValue(text, 7); }),
              "invalid stod argument")
        << text;
  }
  for (const char* text : {"1e400", "-1e400", "1e-400", "0x1p9999"}) {
    EXPECT_EQ(TextOfThrown<std::out_of_range>([text] { GetDoubleValue(text, 7); }),
              "stod argument out of range")
        << text;
  }
  EXPECT_EQ(TextOfThrown<std::out_of_range>([] { GetDoubleValue("0x10000000000000000", 7); }),
            "stoull argument out of range");
}

TEST(Numbers, GetIntegerListExpandsRanges) {
  constexpr int kBad = -7;
  const std::pair<const char*, Integers> cases[] = {
      {"", {}},
      {"[1,3-5]", {1, 3, 4, 5}},
      {"5-3,4-4,", {3, 4, 5, 4}},
      {"10,0x10,1[2]", {10, 16, 12}},
      {"9-0XB", {9, 10, 11}},
      {"1,x,3", {kBad, 3}},
      {"1,,3", {kBad, 3}},
      {",", {kBad}},
      {"2,-1", {kBad}},
      {"1-", {kBad}},
      {"1-2-3", {kBad}},
      {"1, 2,0xDEADBEEFDEADBEEF,3", {kBad, 3}},
      {"0xFFFFFFFF,0x100000002", {-1, 2}},
      {"0x7FFFFFFF-0x80000000", {INT32_MAX, INT32_MIN}},
      {"0xFFFFFFFFFFFFFFFE-0xFFFFFFFFFFFFFFFF", {-2, -1}},
  };
  for (const auto& [text, values] : cases) {
    EXPECT_EQ(GetIntegerList(text, ',', kBad, false), values) << text;
  }
  EXPECT_EQ(GetIntegerList("10,0x10;f", ',', kBad, true), Integers{kBad});
  EXPECT_EQ(GetIntegerList("10;0X10;f-0x11;0x", ';', kBad, true), Integers{kBad});
  EXPECT_EQ(GetIntegerList("10;0X10;f-0x11", ';', kBad, true), (Integers{16, 16, 15, 16, 17}));
}

TEST(Numbers, GetDoubleListStepsThroughRanges) {
  struct Case {
    const char* text;
    double step;
    Doubles values;
    const char* rule;
  };
  constexpr double kBad = -7;
  const Case cases[] = {
      {"", 1, {}, "no items"},
      {"[0.5-1.5],", 0.5, {0.5, 1, 1.5}, "the upper bound is reached exactly"},
      {"3-1.5,9", 1, {1.5, 2.5, 9}, "bounds are swapped, the upper one is not reached"},
      {"1-2", 0.1, {1, 1.1, 1.2, 1.3, 1.4, 1.5, 1.6, 1.7, 1.8, 1.9, 2}, "steps do not drift"},
      {"2--1", 1, {-1, 0, 1, 2}, "a minus behind the first dash is a sign"},
      {"1,x,3", 1, {kBad}, "nothing behind a bad item is read"},
      {"1,,3", 1, {kBad}, "an empty item is bad"},
      {"1,-2", 1, {kBad}, "a first dash makes a range"},
      {"1,2", 0, {1, 2}, "without a range no step is needed"},
      {"1,2-3", 0, {kBad}, "a step of zero leads nowhere"},
      {"1-2", -1, {kBad}, "a negative step leads nowhere"},
      {"1-2", std::nan(""), {kBad}, "no number is no step"},
      {"1-2", kInfinity, {1}, "the largest step"},
      {"2-2", 1e-300, {2}, "a step too small to lead on"},
      {"0.2-0.5", 0.1, {0.2, 0.3, 0.4, 0.5}, "the steps that fit are not rounded down"},
  };
  for (const Case& c : cases) {
    const Doubles values = GetDoubleList(c.text, ',', kBad, c.step);
    ASSERT_EQ(values.size(), c.values.size()) << c.rule;
    for (std::size_t i = 0; i < values.size(); ++i)
      EXPECT_DOUBLE_EQ(values[i], c.values[i]) << c.rule;
  }
}

TEST(Numbers, RangesThatAreTooLongThrowImmediately) {
  EXPECT_EQ(GetIntegerList("1-16777216", ',', 0).size(), 16'777'216U);
  for (const char* text :
       {"0-16777216", "18446744073709551615-0", "5,0-4294967295", "1-9999999,x,1-7777777"}) {
    const std::string range = std::string(text).substr(std::string(text).rfind(',') + 1);
    EXPECT_NE(TextOfThrown<std::length_error>([text] { GetIntegerList(text, ',', 0); }).find(range),
              std::string::npos)
        << text;
  }
  const std::string infinite(400, '9');
  EXPECT_THROW(GetDoubleList("0-16777216", ',', 0, 1), std::length_error);
  EXPECT_THROW(GetDoubleList("0-1", ',', 0, 1e-300), std::length_error);
  EXPECT_THROW(GetDoubleList("1-9999999,1-7777777", ',', 0, 1), std::length_error);
  EXPECT_THROW(GetDoubleList(infinite + "-" + infinite, ',', 0, 1), std::length_error);
  EXPECT_THROW(BitsCount2List(16'777'217), std::length_error);
  EXPECT_THROW(GetIntegerList(kBeyond64Bits, ',', 0), std::out_of_range);
  EXPECT_THROW(GetIntergerRange(std::string("1-") + kBeyond64Bits), std::out_of_range);
}

TEST(Numbers, GetIntergerRangeDoesNotExpand) {
  EXPECT_EQ(GetIntergerRange("7"), Integers{7});
  EXPECT_EQ(GetIntergerRange("7-2"), (Integers{7, 2}));
  EXPECT_EQ(GetIntergerRange("0x10-"), (Integers{16, 0}));
  EXPECT_EQ(GetIntergerRange("1-2-3"), (Integers{1, 0})) << "split at the first dash only";
  EXPECT_EQ(GetIntergerRange(""), Integers{0});
}

TEST(Numbers, ListsAreFormattedAsText) {
  const Integers values = {1, 0, -1, 31, INT32_MIN};
  EXPECT_EQ(IntergerList2HexString(values, false), "0x1; 0x1f");
  EXPECT_EQ(IntergerList2HexString(values, true), "0x1; 0x0; 0xffffffff; 0x1f; 0x80000000");
  EXPECT_EQ(IntergerList2DecString(values, false), "1; 31");
  EXPECT_EQ(IntergerList2DecString(values, true), "1; 0; -1; 31; -2147483648");
  EXPECT_EQ(IntergerList2DecString({0}, false), "");

  EXPECT_EQ(BitsCount2List(1), "0");
  EXPECT_EQ(BitsCount2List(11), "0,1,2,3,4,5,6,7,8,9,10");
  EXPECT_EQ(BitsMaskConvert(0x15), "0,2,4");
  EXPECT_EQ(BitsMaskConvert(0x8000000000000001), "0,63");
  for (const std::uint64_t none :
       {std::uint64_t{0}, std::uint64_t{0xDEADBEEF}, 0xDEADBEEFDEADBEEF}) {
    EXPECT_EQ(BitsCount2List(none) + BitsMaskConvert(none), "");
  }
}

TEST(Numbers, Bits) {
  EXPECT_EQ(GetMaskByLen(0), 0U);
  EXPECT_EQ(GetMaskByLen(5), 0x1FU);
  EXPECT_EQ(GetMaskByLen(63), UINT64_MAX >> 1U);
  EXPECT_EQ(GetMaskByLen(64), UINT64_MAX);
  EXPECT_EQ(GetMaskByLen(254), UINT64_MAX);
  EXPECT_EQ(CountHighBits(0xF000000F), 8U);
  EXPECT_EQ(BitScanForwardUtil(0x80000000), 31U);
  EXPECT_EQ(BitScanForwardUtil(0), 0xDEADBEEFU);
  EXPECT_EQ(BitScanForward64Util(0x8000000000000000), 63U);
  EXPECT_EQ(BitScanForward64Util(0), 0xDEADBEEFU);
}

TEST(Numbers, Formatting) {
  struct Case {
    double number;
    const char* text;
  };
  const Case cases[] = {
      {3, "3.0"},         {10.25, "10.25"}, {100, "100.0"}, {0.000001, "0.000001"},
      {0.0000004, "0.0"}, {-1.5, "-1.5"},   {0, "0.0"},     {1e20, "100000000000000000000.0"},
      {kInfinity, "inf"},
  };
  for (const Case& c : cases) EXPECT_EQ(RemoveZerosFromNumber(c.number), c.text);
  EXPECT_EQ(RemoveZerosFromNumber(-std::numeric_limits<double>::max()).size(), 1 + 309 + 2U);
}

TEST(Numbers, FixedPoint) {
  EXPECT_EQ(FixedPointToFloat(0x180, 8), 1.5);
  EXPECT_EQ(FixedPointToFloat(3, 0), 3.0);
  EXPECT_EQ(FixedPointToFloat(0xFFFFFFFF, 32), 4294967295.0) << "the shift wraps at 32";
  EXPECT_EQ(FloatToFixedPoint(1.999, 8), 0x1FFU) << "truncated";
  EXPECT_EQ(FloatToFixedPoint(-1.5, 8), 0xFFFFFE80U);
  EXPECT_EQ(FloatToFixedPoint(1e300, 8), 0U);
  EXPECT_EQ(FloatToFixedPoint(kInfinity, 8), 0U);
}

TEST(Numbers, Ratios) {
  EXPECT_EQ(PercentRes(50, 100), 50.0);
  EXPECT_EQ(PercentRes(100, 100), 100.0);
  EXPECT_EQ(PercentRes(0, 100), 0.0);
  EXPECT_EQ(PercentRes(100, 0), 0.0);
  // 83 is what the generator with seed 256 draws first from 0 to 90.
  EXPECT_DOUBLE_EQ(PercentRes(1001, 1000), 98.83);
  EXPECT_DOUBLE_EQ(PercentRes(UINT64_MAX, 1), 98.83);

  EXPECT_EQ(GetRefCount(100, 40), 1000U);
  EXPECT_EQ(GetRefCount(3000, 0), 20U);
  EXPECT_EQ(GetRefCount(7, 0), 8571U) << "truncated";
  EXPECT_EQ(GetRefCount(0, 1), UINT64_MAX);
  EXPECT_EQ(GetRefCount(-1, 1), 0U);
}

TEST(Numbers, DoNotDependOnTheLocale) {
  const char* const comma_locales[] = {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "German_Germany"};
  bool is_set = false;
  for (const char* name : comma_locales) is_set = is_set || std::setlocale(LC_ALL, name) != nullptr;
  if (!is_set) GTEST_SKIP() << "this machine has no locale with a decimal comma";
  bool ok = false;
  EXPECT_EQ(String2Float("1.5", ok), 1.5F);
  EXPECT_EQ(GetDoubleValue("1.5", 0), 1.5);
  EXPECT_EQ(RemoveZerosFromNumber(1.5), "1.5");
  EXPECT_TRUE(CurrentTimeDateAsString(true, true).ends_with('M')) << "AM and PM are not translated";
  std::setlocale(LC_ALL, "C");
}

}  // namespace
