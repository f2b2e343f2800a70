// Functions on texts: splitting, trimming, comparing with or without case, keyword lists,
// replacing, and recognising numbers.
//
//   Split("C6; C8;;C10", ';', true);                         // "C6", "C8", "C10"
//   StringContainsKeyword("C6; C8", "c8", ';', true);        // true
//
// The functions work on bytes. Ignoring case applies to a to z only, whatever the locale. They have
// no state: any thread may call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"

// Appends every non-empty item of the text to `out`, which is not cleared first, and returns a copy
// of `out`. Items are not trimmed: ",a,, b" split at ',' gives "a" and " b".
VEXOR_EXPORT std::vector<std::string> Splits(std::string_view text, char delimiter,
                                             std::vector<std::string>& out);

// Returns the non-empty items of the text. With `trim`, the blanks around them are removed
// afterwards, so an item of blanks becomes an empty one: "a, ,b" gives "a", "" and "b".
VEXOR_EXPORT std::vector<std::string> Split(std::string_view text, char delimiter, bool trim);

// Returns the texts between the matches of the delimiter, including empty ones; the whole text if
// there is no match or the delimiter is empty. Each match counts as two characters, whatever the
// delimiter's length: made for separators such as ", ". Throws std::out_of_range if a match begins
// at the last character.
VEXOR_EXPORT std::vector<std::string> SplitByString(std::string_view text,
                                                    std::string_view delimiter);

// Returns the text without leading and trailing blanks. Tab, CR and LF are not blanks.
VEXOR_EXPORT std::string Trim(std::string_view text);

// Returns whether the two texts are equal.
VEXOR_EXPORT bool StringCompare(std::string_view a, std::string_view b, bool ignore_case);

// Returns whether `b` occurs in `a`. An empty `b` always does.
VEXOR_EXPORT bool StringContains(std::string_view a, std::string_view b, bool ignore_case);

// Returns whether `a` begins with the whole of `b`. Every text begins with an empty one.
VEXOR_EXPORT bool StringStartswith(std::string_view a, std::string_view b, bool ignore_case);

// Returns whether `a` ends with the whole of `b`. Every text ends with an empty one.
VEXOR_EXPORT bool StringEndsWith(std::string_view a, std::string_view b, bool ignore_case);

// Returns whether the text begins with an entry of the list, in any case (prefix mode), or
// contains an entry in exactly its case (otherwise). False for an empty list.
VEXOR_EXPORT bool StringHasAny(std::string_view text, const std::vector<std::string>& list,
                               bool prefix_mode);

// Returns whether the keyword is one of the items that `Split` with trimming returns for the list.
VEXOR_EXPORT bool StringContainsKeyword(std::string_view list, std::string_view keyword,
                                        char delimiter, bool ignore_case);

// Returns whether one of the items equals the text.
VEXOR_EXPORT bool IsInVector(const std::vector<std::string>& items, std::string_view text,
                             bool ignore_case);

// Returns the text with a to z in upper case.
VEXOR_EXPORT std::string StringToUpper(std::string_view text);

// Returns whether the text is "true" in any case; `default_value` for an empty text. "1", "yes" and
// "on" are false.
VEXOR_EXPORT bool StringBoolean(std::string_view text, bool default_value);

// Returns the first text for true, the second for false.
VEXOR_EXPORT std::string Bool2String(bool value, std::string_view text_if_true,
                                     std::string_view text_if_false);

// Returns the text with `old_char` replaced by `new_char`. A run of old characters becomes a single
// new one, and those at both ends are removed: ",a,,b" with ',' and ';' gives "a;b".
VEXOR_EXPORT std::string StringReplace(std::string_view text, char old_char, char new_char);

// Replaces every occurrence of `old_text`, left to right, in place. Does not search inserted text
// again; an empty `old_text` changes nothing.
VEXOR_EXPORT void StringReplaceSubstring(std::string& text, std::string_view old_text,
                                         std::string_view new_text);

// Removes every character of the zero-terminated `set` from the text, in place. `set` must not be
// null.
VEXOR_EXPORT void RemoveCharsFromString(std::string& text, const char* set);

// Returns only the digits and points of the text: "1.5 GHz" gives "1.5".
VEXOR_EXPORT std::string RemoveUnits(std::string_view text);

// Joins the items, each in single quotes and followed by a blank. The separator goes before every
// item but the first, and with `leading_separator` before the first, too. The tail goes after every
// item but the last two, and with `tail_after_last` after the last, too. No item may be null.
VEXOR_EXPORT std::string ConcatCharVec(const std::vector<const char*>& items,
                                       std::string_view separator, std::string_view tail,
                                       bool leading_separator, bool tail_after_last);

// Returns the low byte of each unit of a UTF-16 text, at most `count` and at most 255 of them.
// Stops before the first unit whose low byte is zero, which includes U+0100. Empty for a count of
// zero or less.
VEXOR_EXPORT std::string WChar2String(const unsigned short* wide, int count);

// Returns a text of up to four 7-bit characters as a number, with the first in the lowest byte. The
// fifth to eighth characters are OR-ed over the first four. A character of 0x80 or more counts as
// negative. A text of more than eight characters prints an error on standard output and gives 0.
VEXOR_EXPORT std::uint64_t String2Ascii(std::string_view text);

// Returns whether the character is anything but 0 to 9.
VEXOR_EXPORT bool IsNotDigit(char c);

// Returns whether the text is one or more digits, and nothing else.
VEXOR_EXPORT bool IsDecString(std::string_view text);

// Returns whether the text is "0x" or "0X" and one or more hexadecimal digits in either case.
VEXOR_EXPORT bool IsHexString(std::string_view text);

// Returns whether the text is a decimal or hexadecimal number as above.
VEXOR_EXPORT bool IsDecOrHexString(std::string_view text);
