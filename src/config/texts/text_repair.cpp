#include "config/texts/text_repair.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <utility>

#include "config/texts/syntax_table.h"
#include "config/texts/word_list.h"
#include "syntax/time_units.h"
#include "util/text.h"

namespace vexor {
namespace {

// Words that the hint comments list although no parser accepts them. The comments must stay as they
// are, because written files are compared to the byte.
struct HintCorrection {
  Syntax syntax;
  std::string_view listed;
  std::string_view valid;
};

constexpr HintCorrection kHintCorrections[] = {
    {Syntax::kPowerScheme, "Balance", "Balanced"},
    {Syntax::kLogLevel, "Error", "Critical"},
    {Syntax::kLogLevel, "Warning", "Information"},
    {Syntax::kKnobs, "QclkCheck(SAGV only)", "QclkCheck"},
};

// Other common names of true and false.
constexpr std::pair<std::string_view, std::string_view> kSwitchNames[] = {
    {"true", "true"}, {"false", "false"}, {"yes", "true"},      {"on", "true"},
    {"1", "true"},    {"enable", "true"}, {"enabled", "true"},  {"no", "false"},
    {"off", "false"}, {"0", "false"},     {"disable", "false"}, {"disabled", "false"}};

// Invisible characters that come with text copied from a document: no-break space, zero-width
// space, byte-order mark.
constexpr std::string_view kInvisible[] = {"\xC2\xA0", "\xE2\x80\x8B", "\xEF\xBB\xBF"};

// Other common names of the time units.
constexpr std::pair<std::string_view, std::string_view> kUnitNames[] = {
    {"us", "usec"},     {"microseconds", "usec"},
    {"ms", "msec"},     {"milliseconds", "msec"},
    {"s", "sec"},       {"second", "sec"},
    {"seconds", "sec"}, {"minute", "min"},
    {"minutes", "min"}, {"h", "hour"},
    {"hr", "hour"},     {"hrs", "hour"},
};

bool IsLetter(char c) { return ToUpper(c) >= 'A' && ToUpper(c) <= 'Z'; }

std::string_view FindUnit(std::string_view word) {
  for (const auto& [name, unit] : kUnitNames) {
    if (EqualsIgnoreCase(name, word)) return unit;
  }
  return SuggestWord(word, kDurationUnits);
}

// Removes and returns the leading bytes for which the predicate holds.
template <class Predicate>
std::string_view TakeRun(std::string_view& rest, Predicate is_in) {
  const auto end = std::ranges::find_if_not(rest, is_in);
  const std::string_view run = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
  rest.remove_prefix(run.size());
  return run;
}

// Repairs "500-200" to "200-500".
std::string InOrder(std::string_view value) {
  const std::size_t dash = value.find('-');
  if (dash == std::string_view::npos) return std::string(value);
  const std::string_view low = value.substr(0, dash);
  const std::string_view high = value.substr(dash + 1);
  const bool is_reversed = ParseUnsigned(high).value_or(0) < ParseUnsigned(low).value_or(0);
  return is_reversed ? std::string(high).append("-").append(low) : std::string(value);
}

using Text = std::string_view;

// Each repair below returns a candidate, or empty text if it does not apply. RepairText verifies
// candidates with the grammar, so a repair may be generous in what it accepts.

std::string CorrectHint(const OptionRow& option, Text text) {
  return std::string(FindHintCorrection(option.syntax, text));
}

std::string Trim(const OptionRow& /*option*/, Text text) { return std::string(TrimSpace(text)); }

std::string NameSwitch(const OptionRow& option, Text text) {
  if (option.syntax != Syntax::kBoolean) return {};
  for (const auto& [name, value] : kSwitchNames) {
    if (EqualsIgnoreCase(name, TrimSpace(text))) return std::string(value);
  }
  return {};
}

// Repairs "\"C1;C6\"" to "C1;C6".
std::string DropQuotes(const OptionRow& /*option*/, Text text) {
  const bool is_quoted = text.size() > 2 && text.front() == text.back() &&
                         (text.front() == '"' || text.front() == '\'');
  return is_quoted ? std::string(text.substr(1, text.size() - 2)) : std::string();
}

std::string DropUnseen(const OptionRow& /*option*/, Text text) {
  std::string mended(text);
  for (const Text invisible : kInvisible) {
    for (std::size_t at = 0; (at = mended.find(invisible, at)) != Text::npos;) {
      mended.erase(at, invisible.size());
    }
  }
  return mended;
}

// Repairs "C1; C6" to "C1;C6": drops the blanks next to separators.
std::string DropBlanks(const OptionRow& /*option*/, Text text) {
  const auto is_separator = [text](std::size_t at) {
    return at < text.size() && Text(";,:=-").find(text[at]) != Text::npos;
  };
  std::string mended;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t next = std::min(text.find_first_not_of(' ', at), text.size());
    const std::size_t end = std::max(next, at + 1);  // of a run of blanks or a single other byte
    const bool is_dropped =
        text[at] == ' ' && (is_separator(next) || (at > 0 && is_separator(at - 1)));
    if (!is_dropped) mended += text.substr(at, end - at);
    at = end - 1;
  }
  return mended;
}

bool IsAffinity(Syntax syntax) {
  return syntax == Syntax::kPkgAffinity || syntax == Syntax::kUnitAffinity ||
         syntax == Syntax::kThreadAffinity;
}

std::string FixSeparators(const OptionRow& option, Text text) {
  return RejoinItems(option.syntax, text);
}

// Repairs "0,1" or "Specific=0,1" to "Specific:0,1".
std::string SelectNumbers(const OptionRow& option, Text text) {
  constexpr Text kKeyword = "Specific";
  if (!IsAffinity(option.syntax)) return {};
  if (StartsWithIgnoreCase(text, kKeyword)) text.remove_prefix(kKeyword.size());
  TakeRun(text, [](char c) { return c == ' ' || c == '=' || c == ':'; });
  if (text.empty() || !IsDecDigit(text.front())) return {};
  return std::string(kKeyword).append(":").append(text);
}

// Repairs "p0..pn" to "P0...Pn".
std::string WriteRange(const OptionRow& /*option*/, Text text) {
  const auto without_dots = [](Text range) {
    std::string letters(range);
    std::erase(letters, '.');
    return letters;
  };
  for (const Text range : {"P0...Pn", "P0..P1", "P1..Pn"}) {
    const bool is_meant = text.size() <= 2 * range.size() && text.find("..") != Text::npos &&
                          EqualsIgnoreCase(without_dots(text), without_dots(range));
    if (is_meant) return std::string(range);
  }
  return {};
}

// Keeps the keyword that a text starts with: "BigCores" for "BigCoresAndMore".
std::string KeepKeyword(const OptionRow& option, Text text) {
  const std::optional<Fault> fault = CheckOption(option, text);
  if (!fault || !IsAffinity(option.syntax)) return {};
  const std::span<const std::string_view> keywords = fault->expected.words;
  const Text keyword = text.substr(0, fault->at);
  const auto known = std::ranges::find_if(
      keywords, [keyword](Text word) { return EqualsIgnoreCase(word, keyword); });
  return known == keywords.end() ? std::string() : std::string(*known);
}

// Accepts unit and number in any order, with any separator: "80ms", "80:msec", "msec=80".
std::string WriteTime(const OptionRow& option, Text text) {
  if (option.syntax != Syntax::kDuration && option.syntax != Syntax::kExeCycles) return {};
  const std::string tight = DropBlanks(option, text);
  const auto is_between = [](char c) { return c == ':' || c == '=' || c == ' '; };
  const auto is_digit = [](char c) { return IsDecDigit(c) || c == '-'; };
  Text rest = TrimIf(tight, is_between);
  const bool is_unit_first = !rest.empty() && IsLetter(rest.front());
  Text unit = is_unit_first ? TakeRun(rest, IsLetter) : Text();
  TakeRun(rest, is_between);
  const Text value = TakeRun(rest, is_digit);
  TakeRun(rest, is_between);
  if (!is_unit_first) unit = TakeRun(rest, IsLetter);
  if (unit.empty() || value.empty() || !rest.empty()) return {};
  return std::string(FindUnit(unit)).append(":").append(InOrder(value));
}

Words ExpectedWords(const OptionRow& option, const Fault& fault) {
  const auto& words = fault.expected.words;
  return option.words.empty() ? Words(words.begin(), words.end()) : SplitWords(option.words);
}

// Replaces each unknown word by the nearest valid one. The number of words is limited because each
// replacement checks the whole text again.
std::string MendWords(const OptionRow& option, Text text) {
  constexpr int kMostWords = 16;
  std::string mended(text);
  for (int i = 0; i < kMostWords; ++i) {
    std::optional<Fault> fault = CheckOption(option, mended);
    if (!fault) fault = DoubtOption(option, mended);
    if (!fault) return mended;
    const Text piece = PieceAt(mended, fault->at);
    Text word = SuggestWord(piece, ExpectedWords(option, *fault));
    if (word.empty() || word == piece) return {};
    const auto at = static_cast<std::size_t>(piece.data() - mended.data());
    const bool has_colon = at + piece.size() < mended.size() && mended[at + piece.size()] == ':';
    if (has_colon && word.ends_with(':')) word.remove_suffix(1);
    mended.replace(at, piece.size(), word);
  }
  return {};
}

// Repairs "Specific:0,1,1" to "Specific:0,1": keeps the first of equal items.
std::string DropRepeated(const OptionRow& option, Text text) {
  const bool is_affinity = IsAffinity(option.syntax);
  if (!is_affinity && option.syntax != Syntax::kKnobs && option.syntax != Syntax::kWordList)
    return {};
  std::set<Text> seen;
  std::string mended(text.substr(0, is_affinity ? text.find(':') + 1 : 0));
  Text rest = text.substr(mended.size());
  for (Text item; TakeItem(rest, is_affinity ? ',' : ';', item);) {
    const Text word = TrimBlanks(item);
    if (!word.empty() && !seen.insert(word).second) continue;
    if (seen.size() > 1) mended += is_affinity ? ',' : ';';
    mended += item;
  }
  return mended;
}

// Returns whether the mended text is valid and without doubt. An invalid text is also mended by one
// in which an item stands twice.
bool IsClean(const OptionRow& option, Text text, Text mended) {
  if (CheckOption(option, mended)) return false;
  const std::optional<Fault> doubt = DoubtOption(option, mended);
  return !doubt ||
         (doubt->kind == FaultKind::kRepeatedItem && CheckOption(option, text).has_value());
}

}  // namespace

std::string RejoinItems(Syntax syntax, std::string_view text) {
  const bool joins_with_semicolons =
      GetSyntax(syntax).separators == ";" || syntax == Syntax::kKnobs;
  if (!joins_with_semicolons && !IsAffinity(syntax)) return {};
  const auto [wrong, right] = joins_with_semicolons ? std::pair(',', ';') : std::pair(';', ',');
  if (text.find(wrong) == std::string_view::npos) return {};
  std::string joined(text);
  std::ranges::replace(joined, wrong, right);
  return joined;
}

std::string_view FindHintCorrection(Syntax syntax, std::string_view text) {
  for (const HintCorrection& row : kHintCorrections) {
    if (row.syntax == syntax && EqualsIgnoreCase(row.listed, text)) return row.valid;
  }
  return {};
}

std::string_view PieceAt(std::string_view text, std::size_t at) {
  const std::string_view rest = text.substr(std::min(at, text.size()));
  const std::string_view piece = TrimBlanks(rest.substr(0, rest.find_first_of(";,:=")));
  return piece.empty() ? rest : piece;
}

std::string RepairText(const OptionRow& option, std::string_view text) {
  // Simple repairs come first: the first candidate that the grammar accepts is returned. MendWords
  // is last because it is the slowest and changes the most.
  constexpr decltype(&Trim) kMends[] = {
      CorrectHint,   NameSwitch,  DropQuotes, DropUnseen, Trim,         DropBlanks, FixSeparators,
      SelectNumbers, KeepKeyword, WriteRange, WriteTime,  DropRepeated, MendWords};
  for (const auto mend : kMends) {
    std::string mended = mend(option, text);
    if (!mended.empty() && mended != text && IsClean(option, text, mended)) return mended;
  }
  return {};
}

}  // namespace vexor
