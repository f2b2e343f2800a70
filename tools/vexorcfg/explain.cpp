#include <algorithm>
#include <iomanip>
#include <iostream>
#include <optional>

#include "commands.h"
#include "common/text_output.h"
#include "explain_code.h"
#include "vexor/config/syntaxes.h"
#include "vexor/syntax/error_codes.h"
#include "vexor/syntax/keywords.h"
#include "vexor/util/numbers.h"
#include "vexor/util/strings.h"

namespace tools::vexorcfg {
namespace {

using vexor::OptionInfo;
using vexor::SyntaxInfo;

std::string MeaningOf(const SyntaxInfo& syntax, std::string_view text) {
  return OneLine(vexor::DescribeText(syntax.name, text), std::string::npos);
}

void PrintRow(std::string_view name, std::string_view text) {
  if (text.empty()) return;
  std::cout << "  " << std::left << std::setw(14) << name << text << '\n';
}

Status ListSyntaxes() {
  std::cout << "explain SYNTAX [TEXT]     what a text means, or what is wrong with it\n"
               "explain option NAME       what an option means and takes\n"
               "explain error TEST CODE   which bits of an error code say what\n"
               "explain VX019             what a code of the checker means; codes lists them\n\n"
               "Syntaxes, and a text of each:\n";
  for (const SyntaxInfo& syntax : vexor::GetSyntaxes()) {
    std::cout << "  " << std::left << std::setw(17) << syntax.name
              << (syntax.example.empty() ? syntax.grammar : syntax.example) << '\n';
  }
  return kClean;
}

// Returns the number of columns that a UTF-8 text takes.
std::size_t WidthOf(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

Status StatusOf(vexor::Severity severity) {
  switch (severity) {
    case vexor::Severity::kNote:
      return kClean;
    case vexor::Severity::kWarning:
      return kWarnings;
    case vexor::Severity::kError:
      break;
  }
  return kErrors;
}

std::string_view PrefixOf(vexor::Severity severity) {
  switch (severity) {
    case vexor::Severity::kNote:
      return "note: ";
    case vexor::Severity::kWarning:
      return "warning: ";
    case vexor::Severity::kError:
      break;
  }
  return "";
}

// Shows the text with a mark below its first wrong byte.
void PrintFault(const SyntaxInfo& syntax, std::string_view text, const vexor::TextFault& fault) {
  const std::string before = OneLine(text.substr(0, fault.at), std::string::npos);
  std::cout << "  " << OneLine(text, std::string::npos) << "\n  "
            << std::string(WidthOf(before), ' ') << "^ " << PrefixOf(fault.severity) << fault.what
            << '\n';
  if (fault.severity != vexor::Severity::kError) PrintRow("read as", MeaningOf(syntax, text));
  PrintRow("expected", fault.expected);
  PrintRow("did you mean", OneLine(fault.suggestion, std::string::npos));
  PrintRow("example", syntax.example);
}

Status ExplainText(const SyntaxInfo& syntax, const std::vector<std::string>& texts) {
  if (texts.empty()) {
    std::cout << syntax.name << '\n';
    PrintRow("texts", syntax.grammar);
    PrintRow("example", syntax.example);
    const std::string meaning = MeaningOf(syntax, syntax.example);
    PrintRow("", meaning.empty() ? meaning : "which means " + meaning);
    return kClean;
  }
  Status status = kClean;
  for (const std::string& text : texts) {
    if (const auto fault = vexor::CheckSyntax(syntax.name, text)) {
      PrintFault(syntax, text, *fault);
      status = std::max(status, StatusOf(fault->severity));
      continue;
    }
    const std::string meaning =
        text.empty() ? "as if the option were missing" : MeaningOf(syntax, text);
    std::cout << "  " << (text.empty() ? "\"\"" : OneLine(text, std::string::npos)) << "\n  good"
              << (meaning.empty() ? "" : ": " + meaning) << '\n';
  }
  return status;
}

std::string_view NameOf(const OptionInfo& option) {
  return std::string_view(option.path).substr(option.path.rfind('/') + 1);
}

std::string_view PlaceOf(const OptionInfo& option) {
  const std::size_t slash = option.path.rfind('/');
  return std::string_view(option.path).substr(0, slash == std::string::npos ? 0 : slash);
}

// Options of the same name are mostly equal in all elements; what they share is printed once.
bool AreAlike(const OptionInfo& a, const OptionInfo& b) {
  return NameOf(a) == NameOf(b) && a.about == b.about && a.syntax.name == b.syntax.name &&
         a.words == b.words && a.hint == b.hint && a.is_argument == b.is_argument &&
         a.stands_for == b.stands_for && a.keyword == b.keyword;
}

void PrintPlace(const OptionInfo& option, std::size_t width) {
  std::cout << "    " << std::left << std::setw(static_cast<int>(width)) << PlaceOf(option) << "  "
            << (option.preset.empty() ? "\"\"" : option.preset);
  if (!option.fallback.empty() && option.fallback != option.preset) {
    std::cout << ", " << option.fallback << " in an element without it";
  }
  if (!option.is_read) std::cout << "  (written, never read)";
  if (!option.is_written) std::cout << "  (read, never written)";
  std::cout << '\n';
}

void PrintOption(const std::vector<const OptionInfo*>& alike) {
  const OptionInfo& option = *alike.front();
  std::cout << NameOf(option) << (option.is_argument ? "  (the name of an arg element)" : "")
            << "\n  " << option.about << '\n';
  PrintRow("older name of", option.stands_for);
  if (option.syntax.name != "text") {
    PrintRow("syntax", option.syntax.name);
    PrintRow("texts", option.syntax.grammar);
    PrintRow("words", option.words);
    PrintRow("example", option.syntax.example);
  }
  std::string_view name = "known values";
  for (const std::string& hint : Split(option.hint, '\n', false)) {
    if (hint == option.words) continue;
    PrintRow(name, hint);
    name = "";
  }
  const std::string short_name = GetKeywordShortName(option.keyword);
  PrintRow("command line", short_name.empty() ? short_name : "-" + short_name);
  if (option.repeats) PrintRow("", "may stand several times");
  std::cout << "  stands in, with its default there\n";
  std::size_t width = 0;
  for (const OptionInfo* const other : alike) width = std::max(width, PlaceOf(*other).size());
  for (const OptionInfo* const other : alike) PrintPlace(*other, width);
}

void PrintOptionsAlike(std::vector<const OptionInfo*> options) {
  bool is_first = true;
  while (!options.empty()) {
    const OptionInfo& first = *options.front();
    const auto rest = std::stable_partition(
        options.begin(), options.end(),
        [&first](const OptionInfo* other) { return AreAlike(first, *other); });
    if (!is_first) std::cout << '\n';
    is_first = false;
    PrintOption({options.begin(), rest});
    options.erase(options.begin(), rest);
  }
}

// Prints one line for each option, below its element.
void PrintOptionsWithin(const std::vector<const OptionInfo*>& options, bool is_continued) {
  std::string_view place;
  for (const OptionInfo* const option : options) {
    if (PlaceOf(*option) != place) {
      if (is_continued) std::cout << '\n';
      is_continued = true;
      place = PlaceOf(*option);
      std::cout << place << '\n';
    }
    std::cout << "  " << std::left << std::setw(24) << NameOf(*option) << option->about << '\n';
  }
}

// Whether the name is the option's name, alone or with the elements around it, or its keyword.
bool IsMeant(const OptionInfo& option, const std::string& name) {
  const std::string keyword = std::string(PlaceOf(option)).append("/").append(option.keyword);
  return StringEndsWith("/" + option.path, "/" + name, true) ||
         StringEndsWith(keyword, "/" + name, true) || IsOverwriteOption(option.keyword, name);
}

Status ExplainOption(const std::string& name) {
  const std::vector<OptionInfo> found = vexor::FindOptions(name);
  if (found.empty()) {
    const std::string nearest = vexor::FindNearestOption(name);
    const std::string hint = nearest.empty() ? "; vexorcfg reference lists them all"
                                             : "; did you mean " + Quote(nearest) + "?";
    return Refuse("explain option", "no option or element of the name " + Quote(name) + hint);
  }
  std::vector<const OptionInfo*> of_the_name;
  std::vector<const OptionInfo*> within;
  for (const OptionInfo& option : found) {
    (IsMeant(option, name) ? of_the_name : within).push_back(&option);
  }
  PrintOptionsAlike(of_the_name);
  PrintOptionsWithin(within, !of_the_name.empty());
  return kClean;
}

// Explains a subject that is not a syntax.
Status RefuseSubject(const std::string& subject) {
  if (!vexor::FindOptions(subject).empty()) {
    return Refuse("explain",
                  Quote(subject) + " is no syntax; try vexorcfg explain option " + subject);
  }
  const std::string nearest = vexor::FindNearestOption(subject);
  return Refuse("explain",
                Quote(subject) + " is no syntax; vexorcfg explain lists them" +
                    (nearest.empty() ? "" : "; the nearest option is " + Quote(nearest)));
}

VEXOR_PM_TEST_ID FindTest(std::string_view name) {
  const VEXOR_PM_TEST_ID test = GetPMTestID(name, true);
  return test != PM_TEST_MAX ? test : ParsePMTestID(name, true);
}

std::string Hex(std::uint32_t bits) {
  std::string text = "0x";
  for (int shift = 28; shift >= 0; shift -= 4) {
    text += "0123456789ABCDEF"[(bits >> static_cast<unsigned>(shift)) & 0xFU];
  }
  return text;
}

Status ExplainError(const std::string& test_name, const std::string& code_text) {
  const VEXOR_PM_TEST_ID test = FindTest(test_name);
  if (test == PM_TEST_MAX) {
    return Refuse("explain error", "no test " + Quote(test_name) +
                                       ", expected a name such as CSTATES; vexorcfg explain option "
                                       "AutoRunCfg lists them");
  }
  constexpr std::uint64_t kLargest = 0xFFFFFFFF;
  if (vexor::CheckSyntax("mask", code_text) || String2Integer(code_text, kLargest + 1) > kLargest) {
    return Refuse("explain error", Quote(code_text) +
                                       " is no error code, expected 32 bits as a "
                                       "decimal or 0x number");
  }
  const auto code = static_cast<std::uint32_t>(String2Integer(code_text, 0));
  std::cout << GetPMTestName(test) << ' ' << Hex(code) << ": "
            << (code == 0 ? "no error" : Trim(GetErrorCode(test, code))) << '\n';
  std::uint32_t unexplained = code;
  for (const vexor::ErrorTag& tag : vexor::GetErrorTags(test, code)) {
    std::string name = Trim(tag.tag);
    RemoveCharsFromString(name, ":;");
    std::cout << "  " << Hex(tag.bits) << "  " << std::left << std::setw(36) << name << " bits "
              << BitsMaskConvert(tag.bits) << '\n';
    unexplained &= ~tag.bits;
  }
  if (unexplained != 0) {
    std::cout << "  " << Hex(unexplained) << "  " << std::setw(36) << "no tag of this test"
              << " bits " << BitsMaskConvert(unexplained) << '\n';
  }
  return kClean;
}

}  // namespace

Status Explain(const ExplainArguments& arguments) {
  const std::string& subject = arguments.subject;
  const std::vector<std::string>& texts = arguments.texts;
  if (subject.empty()) return ListSyntaxes();
  if (const std::optional<Status> explained = ExplainCode(subject)) return *explained;
  if (subject == "option") {
    if (texts.size() == 1) return ExplainOption(texts.front());
    return Refuse("explain option", "the name of one option is needed");
  }
  if (subject == "error") {
    if (texts.size() == 2) return ExplainError(texts[0], texts[1]);
    return Refuse("explain error", "a test and an error code are needed");
  }
  const std::vector<SyntaxInfo> syntaxes = vexor::GetSyntaxes();
  const auto syntax = std::ranges::find(syntaxes, subject, &SyntaxInfo::name);
  if (syntax != syntaxes.end()) return ExplainText(*syntax, texts);
  return RefuseSubject(subject);
}

}  // namespace tools::vexorcfg
