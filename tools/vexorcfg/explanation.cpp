#include "explanation.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <set>
#include <utility>

#include "common/suggestion.h"
#include "common/text_output.h"
#include "error_words.h"
#include "vexor/syntax/keywords.h"
#include "vexor/util/strings.h"

namespace tools::vexorcfg {
namespace {

using vexor::OptionInfo;
using vexor::SyntaxInfo;

std::optional<SyntaxInfo> FindSyntax(std::string_view name) {
  for (const SyntaxInfo& syntax : vexor::GetSyntaxes()) {
    if (StringCompare(syntax.name, name, true)) return syntax;
  }
  return std::nullopt;
}

// Whether the name is the option's name, alone or with the elements around it, or its keyword.
bool IsMeant(const OptionInfo& option, const std::string& name) {
  const std::string keyword = std::string(ParentOf(option)).append("/").append(option.keyword);
  return StringEndsWith("/" + option.path, "/" + name, true) ||
         StringEndsWith(keyword, "/" + name, true) || IsOverwriteOption(option.keyword, name);
}

void AddSyntax(const std::string& name, Explanation& found) {
  if (const auto syntax = FindSyntax(name)) found.syntaxes.push_back(*syntax);
}

void AddTest(const std::string& name, Explanation& found) {
  const VEXOR_PM_TEST_ID test = FindTest(name);
  if (test != PM_TEST_MAX) found.tests.push_back(test);
}

// Returns the words of an option that has its own.
std::vector<std::string> OwnWords(const OptionInfo& option) {
  return Split(std::string(option.words), ';', false);
}

void AddWord(const std::string& name, Explanation& found) {
  for (const SyntaxInfo& syntax : vexor::GetSyntaxes()) {
    for (const std::string_view word : vexor::GetSyntaxWords(syntax.name)) {
      if (!StringCompare(word, name, true) && !StringCompare(word, name + ":", true)) continue;
      found.words.push_back({.word = std::string(word),
                             .syntax = syntax,
                             .meaning = vexor::DescribeText(syntax.name, word),
                             .options = {}});
    }
  }
  for (const OptionInfo& option : vexor::GetOptions()) {
    for (const std::string& word : OwnWords(option)) {
      if (!StringCompare(word, name, true)) continue;
      const auto use = std::ranges::find_if(found.words, [&](const WordUse& other) {
        return other.word == word && other.syntax.name == option.syntax.name;
      });
      WordUse& target =
          use != found.words.end()
              ? *use
              : found.words.emplace_back(
                    WordUse{.word = word, .syntax = option.syntax, .meaning = {}, .options = {}});
      target.options.push_back(option.path);
    }
  }
}

void AddTag(const std::string& name, Explanation& found) { found.tags = FindTag(name); }

void AddCode(const std::string& name, Explanation& found) {
  if (const auto code = ParseErrorCode(name)) found.codes = ExplainCode(*code);
}

void AddFinding(const std::string& name, Explanation& found) {
  for (const vexor::FindingCode& code : vexor::GetFindingCodes()) {
    if (StringCompare(code.code, name, true)) found.findings.push_back(code);
  }
}

void AddOption(const std::string& name, Explanation& found) {
  for (OptionInfo& option : vexor::FindOptions(name)) {
    (IsMeant(option, name) ? found.options : found.within).push_back(std::move(option));
  }
}

// What a name may be. A new kind of name is a function here.
constexpr std::array kKinds = {&AddSyntax, &AddTest,    &AddWord,  &AddTag,
                               &AddCode,   &AddFinding, &AddOption};

bool IsEmpty(const Explanation& found) {
  return found.syntaxes.empty() && found.tests.empty() && found.words.empty() &&
         found.tags.empty() && found.codes.empty() && found.findings.empty() &&
         found.options.empty() && found.within.empty();
}

// Returns all names that can be explained, those that people know best first.
std::vector<std::string> AllNames() {
  std::vector<std::string> names;
  std::set<std::string> seen;
  const auto add = [&](std::string_view name) {
    if (seen.emplace(name).second) names.emplace_back(name);
  };
  for (const SyntaxInfo& syntax : vexor::GetSyntaxes()) add(syntax.name);
  add("option");
  add("error");
  for (const std::string& name : NamesOfTests()) add(name);
  for (const OptionInfo& option : vexor::GetOptions()) {
    for (const std::string& part : Split(option.path, '/', false)) add(part);
    for (const std::string& word : OwnWords(option)) add(word);
  }
  for (const SyntaxInfo& syntax : vexor::GetSyntaxes()) {
    for (const std::string_view word : vexor::GetSyntaxWords(syntax.name)) add(word);
  }
  for (const std::string& tag : NamesOfTags()) add(tag);
  return names;
}

bool IsFindingCode(std::string_view name) {
  return name.size() > 2 && StringCompare(name.substr(0, 2), "VX", true) &&
         name.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

std::string RefuseName(const std::string& name) {
  if (IsFindingCode(name)) return "no code " + Quote(name) + "; vexorcfg explain codes lists them";
  const std::string suggestion = SuggestName(name, AllNames());
  return "no option, syntax, test, word or code is named " + Quote(name) +
         (suggestion.empty() ? "; vexorcfg explain lists what there is" : suggestion);
}

}  // namespace

std::string_view NameOf(const OptionInfo& option) {
  return std::string_view(option.path).substr(option.path.rfind('/') + 1);
}

std::string_view ParentOf(const OptionInfo& option) {
  const std::size_t slash = option.path.rfind('/');
  return std::string_view(option.path).substr(0, slash == std::string::npos ? 0 : slash);
}

Explanation ExplainSyntaxes() { return {.syntaxes = vexor::GetSyntaxes()}; }

Explanation ExplainFindings() { return {.findings = vexor::GetFindingCodes()}; }

Explanation ExplainName(const std::string& name) {
  Explanation found;
  for (const auto& add : kKinds) add(name, found);
  if (IsEmpty(found)) found.failure = RefuseName(name);
  return found;
}

Explanation ExplainTexts(const std::string& name, const std::vector<std::string>& texts) {
  Explanation found;
  if (const std::optional<SyntaxInfo> syntax = FindSyntax(name)) {
    for (const std::string& text : texts) {
      found.texts.push_back({.syntax = *syntax,
                             .options = {},
                             .text = text,
                             .fault = vexor::CheckSyntax(syntax->name, text),
                             .meaning = vexor::DescribeText(syntax->name, text)});
    }
    return found;
  }
  Explanation named;
  AddOption(name, named);
  std::vector<OptionInfo>& options = named.options;
  while (!options.empty()) {  // options with the same texts are judged once
    const OptionInfo first = options.front();
    const auto rest =
        std::stable_partition(options.begin(), options.end(), [&first](const OptionInfo& other) {
          return other.syntax.name == first.syntax.name && other.words == first.words;
        });
    std::vector<std::string> paths;
    std::transform(options.begin(), rest, std::back_inserter(paths),
                   [](const OptionInfo& option) { return option.path; });
    for (const std::string& text : texts) {
      found.texts.push_back({.syntax = first.syntax,
                             .options = paths,
                             .text = text,
                             .fault = vexor::CheckOptionText(first, text),
                             .meaning = vexor::DescribeText(first.syntax.name, text)});
    }
    options.erase(options.begin(), rest);
  }
  if (!found.texts.empty()) return found;
  found.failure = IsEmpty(ExplainName(name))
                      ? RefuseName(name)
                      : Quote(name) + " takes no text, only a syntax or an option does";
  return found;
}

Explanation ExplainOption(const std::string& name) {
  Explanation found;
  AddOption(name, found);
  if (!IsEmpty(found)) return found;
  const std::string nearest = vexor::FindNearestOption(name);
  found.failure = "no option or element of the name " + Quote(name) +
                  (nearest.empty() ? "; vexorcfg reference lists them all"
                                   : "; did you mean " + Quote(nearest) + "?");
  return found;
}

Explanation ExplainErrors(const std::string& name, const std::vector<std::string>& texts) {
  Explanation found;
  const VEXOR_PM_TEST_ID test = FindTest(name);
  if (test == PM_TEST_MAX) {
    if (texts.empty()) {
      AddTag(name, found);
      AddCode(name, found);
    }
    if (IsEmpty(found)) found.failure = RefuseTest(name);
    return found;
  }
  if (texts.empty()) {
    found.tags = TagsOf(test);
    return found;
  }
  for (const std::string& text : texts) {
    const std::optional<std::uint32_t> code = ParseErrorCode(text);
    const std::optional<TagUse> tag = code ? std::nullopt : FindTagOf(test, text);
    if (code) found.codes.push_back(ExplainCode(test, *code));
    if (tag) found.tags.push_back(*tag);
    if (!code && !tag) found.failure = RefuseError(test, text);
  }
  return found;
}

Status StatusOf(const Explanation& explanation) {
  if (!explanation.failure.empty()) return kNotRun;
  Status status = kClean;
  for (const JudgedText& judged : explanation.texts) {
    if (!judged.fault || judged.fault->severity == vexor::Severity::kNote) continue;
    const bool is_warning = judged.fault->severity == vexor::Severity::kWarning;
    status = std::max(status, is_warning ? kWarnings : kErrors);
  }
  return status;
}

}  // namespace tools::vexorcfg
