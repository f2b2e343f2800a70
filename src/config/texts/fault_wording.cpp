#include "config/texts/fault_wording.h"

#include <algorithm>
#include <cassert>
#include <span>
#include <string>
#include <utility>

#include "config/tables/finding_kinds.h"
#include "config/texts/syntax_table.h"
#include "config/texts/text_repair.h"
#include "config/texts/word_list.h"
#include "config/texts/xml_characters.h"
#include "syntax/keyword_table.h"
#include "util/text.h"

namespace vexor {
namespace {

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

std::string_view CodeOf(FindingKind kind) { return GetFindingRow(kind).code; }

FindingKind KindOf(const OptionRow& option, const Fault& fault) {
  switch (fault.kind) {
    case FaultKind::kForm:
      break;
    case FaultKind::kLargeNumber:
      return FindingKind::kLargeNumber;
    case FaultKind::kReversedRange:
      return FindingKind::kReversedRange;
    case FaultKind::kSurplus:
      return FindingKind::kSurplusText;
    case FaultKind::kReadsAsFalse:
      return FindingKind::kReadsAsFalse;
    case FaultKind::kFalseForm:
      return FindingKind::kFalseForm;
    case FaultKind::kListAlone:
      return FindingKind::kListAlone;
    case FaultKind::kNothing:
      return FindingKind::kNothing;
    case FaultKind::kRepeatedItem:
      return FindingKind::kRepeatedItem;
    case FaultKind::kReplacedItem:
      return FindingKind::kReplacedItem;
    case FaultKind::kOneOfSeveral:
      return FindingKind::kOneOfSeveral;
  }
  if (option.syntax == Syntax::kKnobs) return FindingKind::kUnknownKnob;
  const bool takes_words = !fault.expected.words.empty() || HasOwnWords(option.syntax);
  return takes_words ? FindingKind::kUnknownWord : FindingKind::kInvalidText;
}

TextFault MakeTextFault(Severity severity, const OptionRow& option, const Fault& fault) {
  TextFault result;
  result.at = fault.at;
  result.what = fault.what;
  result.expected = option.words.empty() ? std::string(fault.expected.text)
                                         : JoinWordList(SplitWords(option.words));
  result.severity = severity;
  result.code = CodeOf(KindOf(option, fault));
  return result;
}

constexpr std::string_view kWrongHint = ", listed by mistake in the hint comment";

// Reports the wrong separator. The check sees one unknown word instead: "C1,C6".
void BlameSeparator(std::string_view text, TextFault& fault) {
  const auto [wrong, right] = std::ranges::mismatch(text, fault.suggestion);
  assert(wrong != text.end() && right != fault.suggestion.end());
  fault.at = static_cast<std::size_t>(wrong - text.begin());
  fault.what = std::string("items joined by \"") + *wrong + "\"";
  fault.expected = std::string("\"") + *right + "\" between the items";
  fault.code = CodeOf(FindingKind::kWrongSeparator);
}

void ExplainRepair(const OptionRow& option, std::string_view text, TextFault& fault) {
  if (!FindHintCorrection(option.syntax, text).empty()) fault.what += kWrongHint;
  const bool was_rejoined =
      !fault.suggestion.empty() && fault.suggestion == RejoinItems(option.syntax, text);
  if (was_rejoined) BlameSeparator(text, fault);
}

// Names the first character beyond ASCII: it may be invisible or look like an ASCII character.
void NameNonAscii(std::string_view text, TextFault& fault) {
  const auto* const stranger =
      std::ranges::find_if(text, [](char c) { return static_cast<unsigned char>(c) > 127; });
  if (stranger == text.end()) return;
  const Utf8Character c =
      DecodeUtf8(text.substr(static_cast<std::size_t>(stranger - text.begin())));
  if (c.size > 0) fault.what += ", with the character " + FormatHex("U+", 4, c.value);
}

TextFault ExplainFault(Severity severity, const OptionRow& option, std::string_view text,
                       const Fault& fault) {
  TextFault result = MakeTextFault(severity, option, fault);
  result.suggestion = RepairText(option, text);
  ExplainRepair(option, text, result);
  NameNonAscii(text, result);
  return result;
}

// Returns the knobs of the test itself and those of command lines.
Words KnownKnobs(const OptionRow& option) {
  Words known = SplitWords(option.words);
  for (const std::string_view knob : GetWords(Syntax::kKnobs)) {
    if (std::ranges::find(known, knob) == known.end()) known.push_back(knob);
  }
  return known;
}

// Returns the knob that an unknown one was probably meant to be; empty if none is near.
std::string_view FindMeantKnob(std::string_view knob, std::span<const std::string_view> known) {
  const std::string_view correction = FindHintCorrection(Syntax::kKnobs, knob);
  if (!correction.empty()) return correction;
  const Keyword* const keyword = FindShortName(knob);
  const bool is_knob = keyword != nullptr && std::ranges::find(known, keyword->name) != known.end();
  return is_knob ? keyword->name : SuggestWord(knob, known);
}

// Suggests known knobs for the unknown ones that are near, and reports the first of these. Unknown
// knobs that are near none may be the user's own and stay.
void MendKnobs(const OptionRow& option, std::string_view text, TextFault& fault) {
  int searches_left = 1000;  // keeps the time bounded; nobody reads more suggestions
  const Words known = KnownKnobs(option);
  std::string mended;
  std::string_view rest = text;
  for (std::string_view item; TakeItem(rest, ';', item);) {
    const std::string_view knob = TrimBlanks(item);
    const bool is_unknown = DoubtOption(option, knob).has_value();
    const std::string_view meant =
        is_unknown && searches_left-- > 0 ? FindMeantKnob(knob, known) : "";
    mended.append(item.data() == text.data() ? "" : ";").append(meant.empty() ? item : meant);
    if (meant.empty() || fault.severity == Severity::kWarning) continue;
    fault.severity = Severity::kWarning;
    fault.at = static_cast<std::size_t>(knob.data() - text.data());
    if (!FindHintCorrection(Syntax::kKnobs, knob).empty()) fault.what += kWrongHint;
  }
  if (fault.severity == Severity::kWarning) fault.suggestion = std::move(mended);
}

// A wrong separator goes first: "Random,ExitOnFail" looks like one unknown knob.
std::optional<TextFault> JudgeKnobs(const OptionRow& option, std::string_view text) {
  const std::optional<Fault> doubt = DoubtOption(option, text);
  if (!doubt) return std::nullopt;
  if (doubt->kind != FaultKind::kForm) {
    return ExplainFault(Severity::kWarning, option, text, *doubt);
  }
  TextFault result = MakeTextFault(Severity::kNote, option, *doubt);
  std::string rejoined = RejoinItems(option.syntax, text);
  if (rejoined.empty() || DoubtOption(option, rejoined)) {
    MendKnobs(option, text, result);
  } else {
    result.severity = Severity::kWarning;
    result.suggestion = std::move(rejoined);
    BlameSeparator(text, result);
  }
  return result;
}

// Inserts the faulty piece, unless the whole text is at fault or the message already quotes it.
std::string AddPiece(std::string_view text, const TextFault& fault) {
  const bool is_apart = fault.at > 0 && fault.at < text.size() && !fault.what.ends_with('"');
  if (!is_apart) return fault.what;
  std::string what = fault.what;
  const std::string place = " at \"" + std::string(PieceAt(text, fault.at)) + "\"";
  return what.insert(std::min(what.find(','), what.size()), place);
}

std::string AddExample(const OptionRow& option, const std::string& expected) {
  constexpr std::size_t kMostWords = 20;  // a longer list is no help in a one-line message
  const Words words = GetWords(option);
  if (words.size() > kMostWords && expected == JoinWordList(words)) return {};
  const std::string_view example = GetSyntax(option.syntax).example;
  const bool shows_example = !option.words.empty() || Contains(expected, example) ||
                             Contains(expected, "such as") || Contains(expected, "for example");
  return shows_example ? expected : expected + " (for example " + std::string(example) + ")";
}

}  // namespace

std::optional<TextFault> JudgeText(const OptionRow& option, std::string_view text) {
  if (option.syntax == Syntax::kKnobs) return JudgeKnobs(option, text);
  const std::optional<Fault> fault = CheckOption(option, text);
  const std::optional<Fault> doubt = fault ? std::nullopt : DoubtOption(option, text);
  if (!fault && !doubt) return std::nullopt;
  return fault ? ExplainFault(Severity::kError, option, text, *fault)
               : ExplainFault(Severity::kWarning, option, text, *doubt);
}

FaultWording WordFault(const OptionRow& option, std::string_view text, const TextFault& fault) {
  return {.what = AddPiece(text, fault),
          .expected = AddExample(option, fault.expected),
          .suggestion = fault.suggestion};
}

FaultWording WordFault(const OptionRow& option, std::string_view text, const Fault& fault) {
  return WordFault(option, text, ExplainFault(Severity::kError, option, text, fault));
}

}  // namespace vexor
