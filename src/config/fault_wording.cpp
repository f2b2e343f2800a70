#include "config/fault_wording.h"

#include <algorithm>

#include "config/syntax_table.h"
#include "config/word_list.h"
#include "util/text.h"

namespace vexor {
namespace {

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// The word or number that the fault lies in.
std::string_view PieceAt(std::string_view text, std::size_t at) {
  const std::string_view rest = text.substr(std::min(at, text.size()));
  const std::string_view piece = TrimBlanks(rest.substr(0, rest.find_first_of(";,:=")));
  return piece.empty() ? rest : piece;
}

Words ExpectedWords(const OptionRow& option, const Fault& fault) {
  return option.words.empty() ? SplitWordList(fault.expected) : SplitWords(option.words);
}

std::string ExpectedText(const OptionRow& option, const Fault& fault) {
  if (!option.words.empty()) return JoinWordList(SplitWords(option.words));
  const std::string_view example = GetSyntax(option.syntax).example;
  std::string expected(fault.expected);
  const bool shows_example = Contains(expected, example) || Contains(expected, "such as") ||
                             Contains(expected, "for example");
  if (!shows_example) expected.append(" (for example ").append(example).append(")");
  return expected;
}

// Replaces one unknown word after the other by the known one that it is nearest to, and returns the
// text if that makes it a good one.
std::string Repair(const OptionRow& option, std::string_view text) {
  constexpr int kMostWords = 16;
  std::string repaired(text);
  for (int i = 0; i < kMostWords; ++i) {
    const std::optional<Fault> fault = CheckOption(option, repaired);
    if (!fault) return repaired;
    const std::string_view piece = PieceAt(repaired, fault->at);
    std::string_view word = SuggestWord(piece, ExpectedWords(option, *fault));
    if (word.empty() || word == piece) return {};
    const auto at = static_cast<std::size_t>(piece.data() - repaired.data());
    const bool has_colon =
        at + piece.size() < repaired.size() && repaired[at + piece.size()] == ':';
    if (has_colon && word.ends_with(':')) word.remove_suffix(1);
    repaired.replace(at, piece.size(), word);
  }
  return {};
}

}  // namespace

FaultWording WordFault(const OptionRow& option, std::string_view text, const Fault& fault) {
  FaultWording wording{.what = std::string(fault.what),
                       .expected = ExpectedText(option, fault),
                       .suggestion = Repair(option, text)};
  if (fault.at > 0 && fault.at < text.size()) {
    wording.what.append(" at \"").append(PieceAt(text, fault.at)).append("\"");
  }
  return wording;
}

}  // namespace vexor
