// C-states: names of the idle states of cores and packages, lists of them, and settings per state.
//
//   name      "C0", "C1", "C3", "C6", "C6r", "C7", "C7s", "C8", "C9" or "C10", exactly
//   list      names joined by ";", such as "C1;C6"; ParseLimitCstates alone takes ","
//   setting   items joined by ";", each "name:number" or a number alone, which applies to every
//             state: "C1:5;C6:2", "5" or "5;C6:2"
//   lists     items joined by ";", each "name:[numbers]" or "[numbers]": "C1:[];C6:[0,2-4]"
//   word      a 32-bit number, such as "0x00000F00"; of a larger number, the low 32 bits are used
//
// The names in settings and lists are C1, C3 and C6 to C10. Blanks are ignored around the parts of
// their items, and not allowed elsewhere. Any thread may call.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "vexor/export.h"

// A state as a bit, for masks of states.
enum CSTATE_MASK : std::int32_t {
  CSTATE_MASK_NONE = 0,
  CSTATE_MASK_C0 = 1,
  CSTATE_MASK_C1 = 2,
  CSTATE_MASK_C3 = 4,
  CSTATE_MASK_C6 = 8,
  CSTATE_MASK_C7 = 16,
  CSTATE_MASK_C8 = 32,
  CSTATE_MASK_C9 = 64,
  CSTATE_MASK_C10 = 128,
};

using CX_STATES = CSTATE_MASK;

// A state as the hint operand of the MWAIT instruction that enters it.
enum MWAIT_HINT : std::int32_t {
  MWAIT_HINT_C1 = 0,
  MWAIT_HINT_C3 = 1,
  MWAIT_HINT_C6 = 2,
  MWAIT_HINT_C7 = 3,
  MWAIT_HINT_C8 = 4,
  MWAIT_HINT_C9 = 5,
  MWAIT_HINT_C10 = 6,
  MWAIT_HINT_NONE = 8,  // C0 or unknown
};

// The conditions of a test for one C-state. A list of them has eight slots; the first two are
// unused.
struct CSTATE_PER_STATE_CFG {
  std::uint8_t cond0 = 0;
  std::uint8_t cond1 = 0;
  std::uint8_t cond2 = 0;
  std::uint8_t cond3 = 0;
  std::uint8_t noConditions = 0;  // the whole word was 0
  std::uint8_t globalBit1 = 0;
  std::uint8_t globalBit2 = 0;
  std::uint8_t field2BitA = 0;  // two bits
  std::uint8_t field2BitB = 0;  // two bits
};

// Returns the bit of a name; CSTATE_MASK_NONE for any other text.
VEXOR_EXPORT CSTATE_MASK ParseCstate(std::string_view name);

// Returns the hint of a name; MWAIT_HINT_NONE for "C0" and any other text.
VEXOR_EXPORT MWAIT_HINT ParseCstateToHint(std::string_view name);

// Returns the hint of a single bit; MWAIT_HINT_NONE for C0 and any other value.
VEXOR_EXPORT MWAIT_HINT ParseCstateToHint(CX_STATES bit);

// Resizes the list to 11 entries, new ones 0, and stores the value at the index of the state (1, 3,
// 6 to 10). Returns false and stores nothing for a hint that is not a state's.
VEXOR_EXPORT bool ParsePerCtateTolerance(std::vector<int>& tolerances, MWAIT_HINT hint, int value);

// Decodes a condition word (0 for empty text) into eight new slots. `flag_d` gets bit 0; `flag_a`
// is set if bit 3 is. Slots 2 to 7 get bits 1 and 2 (the global bits), bits 4 to 5 and 6 to 7 (the
// two-bit fields), and each four bits of its own from bits 8 to 31 (cond0 to cond3). If `flag_c` is
// set on entry, cond2 is set in all of them; if `flag_b` is, cond3. Returns false, with the slots
// zero and the flags unchanged, for text that is not a number and for 0xDEADBEEF.
VEXOR_EXPORT bool ParsePerStateConditions(std::string_view word,
                                          std::vector<CSTATE_PER_STATE_CFG>& slots, bool& flag_a,
                                          bool& flag_b, bool& flag_c, bool& flag_d);

// Returns the bitwise OR of the numbers of the states in a list joined by ",": "C6" gives 6,
// "C6,C8" gives 14. Other items, including "C0", "C6r" and "C7s", are ignored.
VEXOR_EXPORT int ParseLimitCstates(std::string_view list);

// Returns the bits of the states of a list, in order. Returns an empty vector if any item is
// unknown or empty; a trailing ";" is allowed.
VEXOR_EXPORT std::vector<CSTATE_MASK> ParseExeCstates(std::string_view list);

// Resizes `values` to 11 entries, new ones 0, and stores each number (0 to 2147483647) at the index
// of its state (1, 3, 6 to 10). Returns whether all items are valid; invalid ones change nothing.
VEXOR_EXPORT bool ParsePerCStateSetting(std::string_view text, std::vector<int>& values);

// Resizes `lists` to 11 entries, new ones empty, and replaces the list at the index of each state
// (1, 3, 6 to 10). With `hexadecimal`, numbers are hexadecimal even without "0x". Returns whether
// all items are valid; invalid ones change nothing. Throws std::length_error for lists of more than
// 16,777,216 numbers in all; a list that applies to every state counts for each.
VEXOR_EXPORT bool ParsePerCStateSetting(std::string_view text, std::vector<std::vector<int>>& lists,
                                        bool hexadecimal);

// Skips two characters and returns the number of the next, at most eight, hexadecimal digits:
// "0x1F" gives 31. Returns -1 for empty text. Throws std::out_of_range for text of one character
// and ("stoi argument out of range") for a number beyond 31 bits, std::invalid_argument ("invalid
// stoi argument") if there are no digits.
VEXOR_EXPORT int ParseNum(std::string_view hex_text);
