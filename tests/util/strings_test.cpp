#include "vexor/util/strings.h"

#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>

namespace {

using Texts = std::vector<std::string>;

TEST(Strings, SplitDropsEmptyItemsAndThenTrimsBlanks) {
  EXPECT_EQ(Split("", ',', false), Texts{});
  EXPECT_EQ(Split(",a,,b,", ',', false), (Texts{"a", "b"}));
  EXPECT_EQ(Split(" a, ,b ", ',', false), (Texts{" a", " ", "b "}));
  EXPECT_EQ(Split(" a, ,b ", ',', true), (Texts{"a", "", "b"}));
  EXPECT_EQ(Split("\ta , b\n", ',', true), (Texts{"\ta", "b\n"}));
}

TEST(Strings, SplitsAppendsAndReturnsAll) {
  Texts out = {"x;;y "};
  const Texts all = {"x;;y ", "x", "y "};
  EXPECT_EQ(Splits(out[0], ';', out), all) << "even of one of its own items";
  EXPECT_EQ(out, all);
}

TEST(Strings, SplitByStringContinuesTwoCharactersAfterAMatch) {
  EXPECT_EQ(SplitByString("", ", "), Texts{""});
  EXPECT_EQ(SplitByString("a, b, c", ", "), (Texts{"a", "b", "c"}));
  EXPECT_EQ(SplitByString(", a, ", ", "), (Texts{"", "a", ""}));
  EXPECT_EQ(SplitByString("a,b,c", ","), (Texts{"a", "", ""}));
  EXPECT_EQ(SplitByString("a---b", "---"), (Texts{"a", "-b"}));
  EXPECT_EQ(SplitByString("abc", ""), Texts{"abc"});
  EXPECT_THROW(SplitByString("a,", ","), std::out_of_range);
}

TEST(Strings, TrimRemovesOuterBlanksOnly) {
  EXPECT_EQ(Trim("  a b "), "a b");
  EXPECT_EQ(Trim("\t a\r\n "), "\t a\r\n");
  EXPECT_EQ(Trim("   "), "");
}

TEST(Strings, ComparisonsInAndWithoutCase) {
  struct Case {
    const char *a, *b;
    // Expected in exact case and ignoring case, of equal, contains, begins, ends.
    const char *exact, *ignoring;
  };
  const Case cases[] = {
      {"Core", "Core", "1111", "1111"}, {"Core", "cORE", "0000", "1111"},
      {"Core", "Cor", "0110", "0110"},  {"Core", "oRe", "0000", "0101"},
      {"Core", "or", "0100", "0100"},   {"Core", "Cores", "0000", "0000"},
      {"Core", "", "0111", "0111"},     {"", "", "1111", "1111"},
      {"", "a", "0000", "0000"},        {"a[", "A{", "0000", "0000"},
      {"\xE4", "\xC4", "0000", "0000"},
  };
  for (const Case& c : cases) {
    for (const bool ignore_case : {false, true}) {
      std::string answers;
      for (const auto function :
           {StringCompare, StringContains, StringStartswith, StringEndsWith}) {
        answers += function(c.a, c.b, ignore_case) ? '1' : '0';
      }
      EXPECT_EQ(answers, ignore_case ? c.ignoring : c.exact) << c.a << " and " << c.b;
    }
  }
}

TEST(Strings, MembershipOfLists) {
  EXPECT_TRUE(StringHasAny("Package C6", {"x", "package"}, true)) << "a prefix ignores case";
  EXPECT_FALSE(StringHasAny("Package C6", {"package"}, false)) << "a part does not";
  EXPECT_FALSE(StringHasAny("Package C6", {"C6"}, true));
  EXPECT_TRUE(StringHasAny("Package C6", {"x", "C6"}, false));
  EXPECT_FALSE(StringHasAny("Package C6", {}, false));

  EXPECT_TRUE(StringContainsKeyword("C6; C8 ", "C8", ';', false)) << "items are trimmed";
  EXPECT_FALSE(StringContainsKeyword("C6; C8", "c8", ';', false));
  EXPECT_TRUE(StringContainsKeyword("C6; C8", "c8", ';', true));
  EXPECT_FALSE(StringContainsKeyword("C6;;C8", "", ';', true)) << "empty items are dropped";
  EXPECT_TRUE(StringContainsKeyword("C6; ;C8", "", ';', true)) << "blank ones become empty";

  EXPECT_TRUE(IsInVector({"a", "b"}, "B", true));
  EXPECT_FALSE(IsInVector({"a", "b"}, "B", false));
  EXPECT_FALSE(IsInVector({"ab"}, "a", false));
}

TEST(Strings, WordsForBooleans) {
  EXPECT_TRUE(StringBoolean("", true));
  EXPECT_FALSE(StringBoolean("", false));
  EXPECT_TRUE(StringBoolean("TrUE", false));
  for (const char* other : {"1", "yes", "on", "true ", "tru"}) {
    EXPECT_FALSE(StringBoolean(other, true)) << other;
  }
  EXPECT_EQ(Bool2String(true, "on", "off") + Bool2String(false, "on", "off"), "onoff");
}

TEST(Strings, Transformations) {
  EXPECT_EQ(StringToUpper("az`{\xE4 1"), "AZ`{\xE4 1");
  EXPECT_EQ(StringReplace(",a,,b,", ',', ';'), "a;b");
  EXPECT_EQ(StringReplace("", ',', ';'), "");
  EXPECT_EQ(RemoveUnits("about 12.3.4ms"), "12.3.4");

  std::string text = "aXXbXXX";
  StringReplaceSubstring(text, "XX", "XXX");
  EXPECT_EQ(text, "aXXXbXXXX") << "what was inserted is not searched again";
  StringReplaceSubstring(text, "", "never");
  StringReplaceSubstring(text, "Y", "never");
  EXPECT_EQ(text, "aXXXbXXXX");
  StringReplaceSubstring(text, text, "all");
  EXPECT_EQ(text, "all");

  RemoveCharsFromString(text = "[1,\xFF 2]", "]\xFF[");
  EXPECT_EQ(text, "1, 2");
  RemoveCharsFromString(text, "");
  EXPECT_EQ(text, "1, 2");
}

TEST(Strings, ConcatAddsTheTailToAllButTheLastTwo) {
  const std::vector<const char*> items = {"a", "b", "c"};
  EXPECT_EQ(ConcatCharVec(items, "or ", "+", false, false), "'a' +or 'b' or 'c' ");
  EXPECT_EQ(ConcatCharVec(items, "or ", "+", true, true), "or 'a' +or 'b' or 'c' +");
  EXPECT_EQ(ConcatCharVec({"a"}, "or ", "+", false, true), "'a' +");
  EXPECT_EQ(ConcatCharVec({"a"}, "or ", "+", false, false), "'a' ");
  EXPECT_EQ(ConcatCharVec({}, "or ", "+", true, true), "");
}

TEST(Strings, NarrowsWideTexts) {
  const unsigned short text[] = {'a', 0x1262, 'c', 0x100, 'd', 0};
  EXPECT_EQ(WChar2String(text, 6), "abc") << "a low byte of zero ends the text";
  EXPECT_EQ(WChar2String(text, 2), "ab");
  EXPECT_EQ(WChar2String(text, 0), "");
  EXPECT_EQ(WChar2String(text, -1), "");
  const std::vector<unsigned short> units(300, 'x');
  EXPECT_EQ(WChar2String(units.data(), 300), std::string(255, 'x'));
}

TEST(Strings, PacksCharacters) {
  EXPECT_EQ(String2Ascii(""), 0U);
  EXPECT_EQ(String2Ascii("AB"), 0x4241U);
  EXPECT_EQ(String2Ascii("ABCD"), 0x44434241U);
  EXPECT_EQ(String2Ascii("@@@@\x01\x02\x03\x04"), 0x44434241U) << "wraps around after four";
  EXPECT_EQ(String2Ascii("\x81"), 0xFFFFFFFFFFFFFF81U);
  EXPECT_EQ(String2Ascii("AAA\x80"), 0xFFFFFFFF80414141U);
  testing::internal::CaptureStdout();
  EXPECT_EQ(String2Ascii("ABCDEFGHI"), 0U);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "ERROR: Attemping string exceeds conversion limit: ABCDEFGHI\n");
}

TEST(Strings, RecognisesNumbers) {
  for (const char* dec : {"0", "0123456789", "99999999999999999999"}) {
    EXPECT_TRUE(IsDecString(dec) && !IsHexString(dec) && IsDecOrHexString(dec)) << dec;
  }
  for (const char* hex : {"0X1f", "0xabcdefABCDEF0123456789"}) {
    EXPECT_TRUE(!IsDecString(hex) && IsHexString(hex) && IsDecOrHexString(hex)) << hex;
  }
  for (const char* bad :
       {"", "-1", " 1", "1f", "1x1", "1/", ":", "0x", "0xg", "0x1 ", "0x@", "0x`", "x1"}) {
    EXPECT_FALSE(IsDecString(bad) || IsHexString(bad) || IsDecOrHexString(bad)) << bad;
  }
  EXPECT_TRUE(IsNotDigit('/') && IsNotDigit(':') && !IsNotDigit('0') && !IsNotDigit('9'));
}

// Each of these would take minutes for megabytes if it moved the rest of the text for every match.
TEST(Strings, LongTextsTakeLinearTime) {
  std::string text;
  for (int i = 0; i < 1'000'000; ++i) text += "a, ";
  EXPECT_EQ(SplitByString(text, ", ").size(), 1'000'001U);
  StringReplaceSubstring(text, ",", ";;");
  EXPECT_EQ(text.size(), 4'000'000U);
  RemoveCharsFromString(text, "; ");
  EXPECT_EQ(text.size(), 1'000'000U);
}

}  // namespace
