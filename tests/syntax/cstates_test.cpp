#include "vexor/syntax/cstates.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/syntax/ice_states.h"

namespace {

using Numbers = std::vector<int>;
using Lists = std::vector<Numbers>;

TEST(Cstates, NamesMasksHintsAndNumbers) {
  struct Case {
    const char* name;
    int mask;
    int hint;
    int limit;
  };
  const Case cases[] = {{"C0", 1, 8, 0},  {"C1", 2, 0, 1},     {"C3", 4, 1, 3},   {"C6", 8, 2, 6},
                        {"C6r", 8, 2, 0}, {"C7", 16, 3, 7},    {"C7s", 16, 3, 0}, {"C8", 32, 4, 8},
                        {"C9", 64, 5, 9}, {"C10", 128, 6, 10}, {"c6", 0, 8, 0},   {"Cx", 0, 8, 0},
                        {"C5", 0, 8, 0},  {"C1 ", 0, 8, 0},    {"", 0, 8, 0}};
  for (const Case& row : cases) {
    EXPECT_EQ(ParseCstate(row.name), row.mask) << row.name;
    EXPECT_EQ(ParseCstateToHint(row.name), row.hint) << row.name;
    EXPECT_EQ(ParseLimitCstates(row.name), row.limit) << row.name;
    EXPECT_EQ(ParseCstateToHint(static_cast<CX_STATES>(row.mask)), row.hint) << row.name;
    std::vector<int> tolerances = {9, 9};
    const bool has_number = row.hint != MWAIT_HINT_NONE;
    EXPECT_EQ(ParsePerCtateTolerance(tolerances, static_cast<MWAIT_HINT>(row.hint), 77),
              has_number);
    Numbers expected = {9, 9, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    constexpr std::size_t kNumbers[] = {1, 3, 6, 7, 8, 9, 10};
    if (has_number) expected[kNumbers[row.hint]] = 77;
    EXPECT_EQ(tolerances, expected) << row.name;
  }
  for (const int bit : {3, 256, -1}) {
    EXPECT_EQ(ParseCstateToHint(static_cast<CX_STATES>(bit)), MWAIT_HINT_NONE) << bit;
  }
  Numbers longer(20, 5);
  EXPECT_FALSE(ParsePerCtateTolerance(longer, static_cast<MWAIT_HINT>(7), 1));
  EXPECT_EQ(longer, Numbers(11, 5));
}

TEST(Cstates, ExecutedStatesAreAllKnownOrNone) {
  using Masks = std::vector<CSTATE_MASK>;
  EXPECT_EQ(ParseExeCstates("C1;C6;C1;C0"),
            (Masks{CSTATE_MASK_C1, CSTATE_MASK_C6, CSTATE_MASK_C1, CSTATE_MASK_C0}));
  EXPECT_EQ(ParseExeCstates("C10;"), Masks{CSTATE_MASK_C10});
  for (const char* list : {"", "C1;C5", "C1;;C6", ";C1", "C1; C6", "C1,C6", ";"}) {
    EXPECT_TRUE(ParseExeCstates(list).empty()) << list;
  }
}

TEST(Cstates, LimitMergesNumbersAndNotBits) {
  EXPECT_EQ(ParseLimitCstates("C1,C3"), 3);
  EXPECT_EQ(ParseLimitCstates("C6,C8"), 14);
  EXPECT_EQ(ParseLimitCstates("C1, C3"), 1) << "a blank makes it another name";
  EXPECT_EQ(ParseLimitCstates(",x,C10,"), 10);
  EXPECT_EQ(ParseLimitCstates("C6;C8"), 0);
}

// Shows a slot: its four conditions, then the other fields; "-" if all are 0.
std::string Show(const CSTATE_PER_STATE_CFG& slot) {
  std::string text = " ";
  for (const int field : {slot.cond0, slot.cond1, slot.cond2, slot.cond3, slot.noConditions,
                          slot.globalBit1, slot.globalBit2, slot.field2BitA, slot.field2BitB}) {
    text += std::to_string(field);
  }
  return text == " 000000000" ? " -" : text;
}

// Shows the flags that are set after a word was parsed, and the slots. `before` are the flags set
// before. Begins with "bad" if parsing failed.
std::string Decode(const char* word, std::string_view before) {
  bool flags[4] = {};
  for (std::size_t i = 0; i < 4; ++i) flags[i] = before.find("abcd"[i]) != std::string_view::npos;
  std::vector<CSTATE_PER_STATE_CFG> slots(3, {1, 1, 1});
  std::string text =
      ParsePerStateConditions(word, slots, flags[0], flags[1], flags[2], flags[3]) ? "" : "bad ";
  for (std::size_t i = 0; i < 4; ++i) text.append(flags[i] ? 1 : 0, "abcd"[i]);
  for (const CSTATE_PER_STATE_CFG& slot : slots) text += Show(slot);
  return text;
}

TEST(Cstates, ConditionWordsFillTheirSlots) {
  struct Case {
    const char* word;
    const char* flags;
    const char* result;
  };
  const Case cases[] = {
      {"0x00000F00", "", " - - 111100000 - - - - -"},
      // Bit 3 sets the first flag, bit 0 is assigned to the last.
      {"0x842184EA", "d", "a - - 001001023 000101023 100001023 010001023 001001023 000101023"},
      // A set flag applies to every slot and is never cleared; an empty word is 0.
      {"0x5", "ac", "acd - - 001000100 001000100 001000100 001000100 001000100 001000100"},
      {"", "b", "b - - 000110000 000110000 000110000 000110000 000110000 000110000"},
  };
  for (const Case& row : cases) EXPECT_EQ(Decode(row.word, row.flags), row.result) << row.word;
  for (const char* word : {"x", "0x", "-1", "0xDEADBEEF", "3735928559", "18446744073709551616"}) {
    EXPECT_EQ(Decode(word, "d"), "bad d - - - - - - - -") << word;
  }
}

TEST(Cstates, SettingsPerState) {
  struct Case {
    const char* text;
    bool is_good;
    Numbers c1_c3_c6_to_c10;
  };
  const Case cases[] = {
      {"", true, {-1, -1, -1, -1, -1, -1, -1}},
      {"C1:5;C3:5;C6:5;C7:5;C8:5;C9:5;C10:5", true, {5, 5, 5, 5, 5, 5, 5}},
      {"C1:1;C10:0x10", true, {1, -1, -1, -1, -1, -1, 16}},
      {" C1 : 1 ;; C3:2147483647;", true, {1, 2147483647, -1, -1, -1, -1, -1}},
      {"7", true, {7, 7, 7, 7, 7, 7, 7}},
      {"7;C6:2", true, {7, 7, 2, 7, 7, 7, 7}},
      {"C6:2;7", true, {7, 7, 7, 7, 7, 7, 7}},
      {"C0:1;C6r:1;C7:3", false, {-1, -1, -1, 3, -1, -1, -1}},
      {"C1:x;C3:2147483648;C6:;C7:-1;C8:4", false, {-1, -1, -1, -1, 4, -1, -1}},
      {":3;c1:2; ;C1:1:1", false, {-1, -1, -1, -1, -1, -1, -1}},
  };
  for (const Case& row : cases) {
    Numbers values(3, -1);
    values.resize(11, -1);
    EXPECT_EQ(ParsePerCStateSetting(row.text, values), row.is_good) << row.text;
    EXPECT_EQ(
        (Numbers{values[1], values[3], values[6], values[7], values[8], values[9], values[10]}),
        row.c1_c3_c6_to_c10)
        << row.text;
    EXPECT_EQ(values[0] + values[2] + values[4] + values[5], -4) << row.text;
  }
  Numbers values;
  EXPECT_TRUE(ParsePerCStateSetting("C3:1", values));
  EXPECT_EQ(values, (Numbers{0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(Cstates, ListsPerState) {
  struct Case {
    const char* text;
    bool is_hex;
    bool is_good;
    Numbers c1;
    Numbers c6;
  };
  const Case cases[] = {
      {"C1:[];C3:[];C6:[]", false, true, {}, {}},
      {"C1:[0,2-4] ;C6: [0x10]", false, true, {0, 2, 3, 4}, {16}},
      {"[1];C6:[2]", false, true, {1}, {2}},
      {"C1:[10-11];C6:[0x10]", true, true, {16, 17}, {16}},
      {"C6:[5]", false, true, {-1}, {5}},
      {"C1:[1,x];C6:[5]", false, false, {-1}, {5}},
      {"C1:1;C6:[5;C6:[6]]", false, false, {-1}, {6}},
      {"C1:[0, 1];C2:[1]", false, false, {-1}, {-1}},
  };
  for (const Case& row : cases) {
    Lists lists(11, {-1});
    EXPECT_EQ(ParsePerCStateSetting(row.text, lists, row.is_hex), row.is_good) << row.text;
    ASSERT_EQ(lists.size(), 11U);
    EXPECT_EQ(lists[1], row.c1) << row.text;
    EXPECT_EQ(lists[6], row.c6) << row.text;
  }
  Lists lists;
  for (const char* text : {"C1:[0-4294967295]", "[0-2396745]", "C1:[0-8388608];C1:[x,0-8388607]"}) {
    EXPECT_THROW(ParsePerCStateSetting(text, lists, false), std::length_error) << text;
  }
}

TEST(Cstates, HexadecimalNumbersAfterTwoCharacters) {
  const std::pair<const char*, int> cases[] = {{"", -1},
                                               {"0x1F", 31},
                                               {"zz7fffffff", 2147483647},
                                               {"0x10g", 16},
                                               {"0x000000001", 0},
                                               {"0x -5", -5},
                                               {"0x-80000000", -0x8000000},
                                               {"0x0x1F", 31},
                                               {"0x0x", 0},
                                               {"0x0xg", 0},
                                               {"0x-0Xa", -10}};
  for (const auto& [text, number] : cases) EXPECT_EQ(ParseNum(text), number) << text;
  const auto error_of = [](const char* text) -> std::string {
    try {
      ParseNum(text);
    } catch (const std::invalid_argument& error) {
      return std::string("invalid: ") + error.what();
    } catch (const std::out_of_range& error) {
      return std::string("range: ") + error.what();
    }
    return "";
  };
  EXPECT_EQ(error_of("0x"), "invalid: invalid stoi argument");
  EXPECT_EQ(error_of("0xg1"), "invalid: invalid stoi argument");
  EXPECT_EQ(error_of("0x+-1"), "invalid: invalid stoi argument");
  EXPECT_EQ(error_of("0x80000000"), "range: stoi argument out of range");
  EXPECT_EQ(error_of("0").substr(0, 7), "range: ") << "one character is a position error";
}

TEST(IceStates, HighestPrecedenceWins) {
  const std::pair<const char*, int> cases[] = {{"poweron", 2},
                                               {"Power-On", 2},
                                               {"POWER-OFF", 1},
                                               {"PowerOff", 1},
                                               {"D0", 3},
                                               {"d0i3", 5},
                                               {"D3", 4},
                                               {"D0;D3", 3},
                                               {"D3;D0", 3},
                                               {"D3; d0I3 ", 5},
                                               {"D0;PowerOff;Power-On", 2},
                                               {"x;;D3;", 4},
                                               {"D3;D3x", 4},
                                               {"", 0},
                                               {"Power", 0},
                                               {"None", 0},
                                               {"D0,D3", 0}};
  for (const auto& [list, state] : cases) EXPECT_EQ(ParseIceState(list), state) << list;
}

TEST(IceStates, ExecutedStatesAreAllKnownOrNone) {
  EXPECT_EQ(ParseExeIceSleepStates("PowerOn; D0I3;d3;"), (Numbers{2, 5, 4}));
  for (const char* list : {"", "D0;;D3", "D0;D1", "None", ";"}) {
    EXPECT_TRUE(ParseExeIceSleepStates(list).empty()) << list;
  }
}

}  // namespace
