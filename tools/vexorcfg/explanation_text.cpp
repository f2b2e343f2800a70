#include <algorithm>
#include <iomanip>
#include <iostream>

#include "common/text_output.h"
#include "error_words.h"
#include "explanation.h"
#include "findings.h"
#include "vexor/syntax/error_codes.h"
#include "vexor/syntax/keywords.h"
#include "vexor/util/numbers.h"
#include "vexor/util/strings.h"

namespace tools::vexorcfg {
namespace {

using vexor::OptionInfo;
using vexor::SyntaxInfo;

void PrintRow(std::string_view name, std::string_view text) {
  if (text.empty()) return;
  std::cout << "  " << std::left << std::setw(14) << name << text << '\n';
}

// Returns the number of columns that a UTF-8 text takes.
std::size_t WidthOf(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
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

void PrintSyntax(const SyntaxInfo& syntax) {
  std::cout << syntax.name << '\n';
  PrintRow("texts", syntax.grammar);
  PrintRow("example", syntax.example);
  const std::string meaning = vexor::DescribeText(syntax.name, syntax.example);
  PrintRow("", meaning.empty() ? meaning : "which means " + meaning);
}

// Shows the text with a mark below its first wrong byte.
void PrintFault(const JudgedText& judged) {
  const vexor::TextFault& fault = *judged.fault;
  const std::string before = OneLine(judged.text.substr(0, fault.at), std::string::npos);
  std::cout << "  " << OneLine(judged.text, std::string::npos) << "\n  "
            << std::string(WidthOf(before), ' ') << "^ " << PrefixOf(fault.severity) << fault.what
            << '\n';
  if (fault.severity != vexor::Severity::kError) {
    PrintRow("read as", OneLine(judged.meaning, std::string::npos));
  }
  PrintRow("expected", fault.expected);
  PrintRow("did you mean", OneLine(fault.suggestion, std::string::npos));
  PrintRow("example", judged.syntax.example);
}

void PrintText(const JudgedText& judged) {
  if (judged.fault) return PrintFault(judged);
  const std::string meaning = judged.text.empty() ? "as if the option were missing"
                                                  : OneLine(judged.meaning, std::string::npos);
  std::cout << "  " << (judged.text.empty() ? "\"\"" : OneLine(judged.text, std::string::npos))
            << "\n  good" << (meaning.empty() ? "" : ": " + meaning) << '\n';
}

// Texts of options of one name that have different syntaxes stand below the options.
void PrintTexts(const std::vector<JudgedText>& texts) {
  const bool has_groups = texts.front().options != texts.back().options;
  const JudgedText* previous = nullptr;
  for (const JudgedText& judged : texts) {
    const bool opens_group = previous == nullptr || previous->options != judged.options;
    previous = &judged;
    if (has_groups && opens_group) {
      for (const std::string& option : judged.options) std::cout << option << '\n';
    }
    PrintText(judged);
  }
}

void PrintTest(VEXOR_PM_TEST_ID test) {
  std::cout << GetPMTestName(test) << '\n';
  PrintRow("command line", std::string("/") + GetPMTestNameByID(test));
  PrintRow("error tags", "vexorcfg explain error " + GetPMTestName(test));
}

void PrintWords(const std::vector<WordUse>& words) {
  std::string_view previous;
  for (const WordUse& use : words) {
    if (use.word != previous) std::cout << use.word << '\n';
    previous = use.word;
    PrintRow(use.syntax.name, use.meaning.empty() ? "a word of this syntax" : use.meaning);
    for (const std::string& option : use.options) PrintRow(" ", option);
  }
}

std::string JoinTests(const std::vector<VEXOR_PM_TEST_ID>& tests) {
  if (tests.size() == NamesOfTests().size()) return "all tests";
  std::string names;
  for (const VEXOR_PM_TEST_ID test : tests) {
    names += (names.empty() ? "" : ", ") + GetPMTestName(test);
  }
  return names;
}

std::string Hex(std::uint32_t bits) {
  std::string text = "0x";
  for (int shift = 28; shift >= 0; shift -= 4) {
    text += "0123456789ABCDEF"[(bits >> static_cast<unsigned>(shift)) & 0xFU];
  }
  return text;
}

void PrintTag(std::uint32_t bits, std::string_view name) {
  std::cout << "  " << Hex(bits) << "  " << std::left << std::setw(36) << name << " bits "
            << BitsMaskConvert(bits) << '\n';
}

// Prints the tags below their tests.
void PrintTags(const std::vector<TagUse>& tags) {
  const std::vector<VEXOR_PM_TEST_ID>* tests = nullptr;
  for (const TagUse& tag : tags) {
    if (tests == nullptr || *tests != tag.tests) std::cout << JoinTests(tag.tests) << '\n';
    tests = &tag.tests;
    PrintTag(tag.bits, tag.tag);
  }
}

void PrintCode(const ErrorCode& code) {
  std::string tags = Trim(GetErrorCode(code.tests.front(), code.code));
  if (tags.empty()) tags = code.code == 0 ? "no error" : "no tags";
  std::cout << JoinTests(code.tests) << ' ' << Hex(code.code) << ": " << tags << '\n';
  for (const TagUse& tag : code.tags) PrintTag(tag.bits, tag.tag);
  if (code.unexplained != 0) PrintTag(code.unexplained, "no tag of this test");
}

// Options of the same name are mostly equal in all elements; what they share is printed once.
bool AreAlike(const OptionInfo& a, const OptionInfo& b) {
  return NameOf(a) == NameOf(b) && a.about == b.about && a.syntax.name == b.syntax.name &&
         a.words == b.words && a.hint == b.hint && a.is_argument == b.is_argument &&
         a.stands_for == b.stands_for && a.keyword == b.keyword;
}

void PrintPlace(const OptionInfo& option, std::size_t width) {
  std::cout << "    " << std::left << std::setw(static_cast<int>(width)) << ParentOf(option) << "  "
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
  for (const OptionInfo* const other : alike) width = std::max(width, ParentOf(*other).size());
  for (const OptionInfo* const other : alike) PrintPlace(*other, width);
}

void PrintOptionsAlike(const std::vector<OptionInfo>& all) {
  std::vector<const OptionInfo*> options;
  options.reserve(all.size());
  for (const OptionInfo& option : all) options.push_back(&option);
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
void PrintOptionsWithin(const std::vector<OptionInfo>& options, bool is_continued) {
  std::string_view place;
  for (const OptionInfo& option : options) {
    if (ParentOf(option) != place) {
      if (is_continued) std::cout << '\n';
      is_continued = true;
      place = ParentOf(option);
      std::cout << place << '\n';
    }
    std::cout << "  " << std::left << std::setw(24) << NameOf(option) << option.about << '\n';
  }
}

void PrintFindings(const std::vector<vexor::FindingCode>& codes) {
  if (codes.size() > 1) {
    for (const auto& row : codes) std::cout << row.code << "  " << row.title << '\n';
    return;
  }
  const vexor::FindingCode& row = codes.front();
  std::cout << row.code << ": " << row.title << " (" << NameOf(row.severity) << ")\n  " << row.about
            << '\n';
  if (!row.can_be_allowed) return;
  std::cout << "  Where it is meant so, write in front of the element:  <!-- vexorcfg: allow "
            << row.code << " -->\n";
}

// Prints the parts of an explanation, each below a title if there are several.
class Printer {
 public:
  explicit Printer(bool has_titles) : has_titles_(has_titles) {}

  template <class Items, class Print>
  void PrintAll(std::string_view title, const Items& items, Print print) {
    if (std::empty(items)) return;
    if (has_titles_) std::cout << (is_first_ ? "" : "\n") << "As " << title << ":\n";
    is_first_ = false;
    print(items);
  }

 private:
  bool has_titles_;
  bool is_first_ = true;
};

// Returns a function that prints items one by one.
template <class Item>
auto Each(void (*print)(Item)) {
  return [print](const auto& items) {
    for (const auto& item : items) print(item);
  };
}

}  // namespace

void PrintExplanation(const Explanation& found) {
  const bool has_options = !found.options.empty() || !found.within.empty();
  const int kinds = static_cast<int>(!found.syntaxes.empty()) +
                    static_cast<int>(!found.tests.empty()) +
                    static_cast<int>(!found.words.empty()) + static_cast<int>(!found.tags.empty()) +
                    static_cast<int>(!found.codes.empty()) + static_cast<int>(has_options);
  Printer printer(kinds > 1 && found.texts.empty());
  printer.PrintAll("a syntax", found.syntaxes, Each(PrintSyntax));
  printer.PrintAll("texts", found.texts, PrintTexts);
  printer.PrintAll("a test", found.tests, Each(PrintTest));
  printer.PrintAll("a word", found.words, PrintWords);
  printer.PrintAll("an error tag", found.tags, PrintTags);
  printer.PrintAll("an error code", found.codes, Each(PrintCode));
  printer.PrintAll("a code of the checker", found.findings, PrintFindings);
  printer.PrintAll(found.options.empty() ? "an element" : "an option",
                   found.options.empty() ? found.within : found.options, [&found](const auto&) {
                     PrintOptionsAlike(found.options);
                     PrintOptionsWithin(found.within, !found.options.empty());
                   });
}

}  // namespace tools::vexorcfg
