#include "vexor/config/syntaxes.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <iterator>
#include <memory>

#include "config/model/document_model.h"
#include "config/model/element_path.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/sections.h"
#include "config/tables/system_setup.h"
#include "config/texts/fault_wording.h"
#include "config/texts/syntax_table.h"
#include "syntax/keyword_table.h"
#include "syntax/nearest.h"
#include "syntax/time_units.h"
#include "util/text.h"
#include "vexor/syntax/keywords.h"
#include "vexor/util/strings.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;

SyntaxInfo InfoOf(const SyntaxRow& row) { return {row.name, GrammarOf(row.syntax), row.example}; }

std::optional<TextFault> FindFault(Syntax syntax, std::string_view words, std::string_view text) {
  OptionRow option;
  option.syntax = syntax;
  option.words = words;
  return JudgeText(option, text);
}

std::string JoinTexts(const Hint& hint) {
  std::string joined;
  for (const std::string_view text : hint.texts) {
    if (!text.empty()) joined.append(joined.empty() ? "" : "\n").append(text);
  }
  return joined;
}

// Lists all elements that hold a text, with their paths.
class Lister {
 public:
  std::vector<OptionInfo> List() {
    ResetVexorXmlConfiguration(records_->config);
    for (const ElementModel& section : MakeDocumentModel(*records_).children) {
      AddElement(section, {}, std::string(section.name));
    }
    return std::move(options_);
  }

 private:
  OptionInfo& Add(const std::string& path, std::string_view about,
                  Syntax syntax = Syntax::kFreeText) {
    OptionInfo& info = options_.emplace_back();
    info.path = path;
    info.about = about;
    info.syntax = InfoOf(GetSyntax(syntax));
    return info;
  }

  void AddElement(const ElementModel& element, const ElementModel& parent,
                  const std::string& path) {
    switch (element.content) {
      case Content::kOption:
        return AddOption(element, parent, path);
      case Content::kItem:
        return AddItem(element, parent, path);
      case Content::kVersion:
        Add(path, element.about).preset = GetVersionText();
        return;
      case Content::kCounter:
        Add(path, element.about, Syntax::kCount).is_read = false;
        return;
      case Content::kSwitch:
        return AddSwitch(element, path);
      case Content::kTraces:
        Add(JoinPath(path, kTraceEntry), element.about).repeats = true;
        return;
      case Content::kPairs:
        return AddPairs(*element.list, path);
      case Content::kChildren:
      case Content::kArguments:
        if (element.IsOlder()) return;
        for (const ElementModel& child : element.children) {
          AddElement(child, element, path + "/" + std::string(child.name));
        }
    }
  }

  void AddOption(const ElementModel& element, const ElementModel& parent, const std::string& path) {
    const OptionRow& option = *element.option;
    OptionInfo& info = Add(path, option.about, option.syntax);
    info.words = option.words;
    info.hint = HintOf(option, parent);
    info.preset = option.reset;
    info.keyword = KeywordOf(option, parent);
    if (parent.record != nullptr && option.text != nullptr) {
      info.preset = parent.record->*option.text;
    }
    if (option.flag != nullptr) info.preset = "false";
    info.fallback = option.flag != nullptr ? "false" : option.fallback;
    if (element.IsOlder()) info.stands_for = element.currents.front();
    info.repeats = element.repeats;
    info.is_argument = parent.content == Content::kArguments;
    info.is_read = element.is_read;
    info.is_written = option.IsWritten();
  }

  static bool IsTest(const ElementModel& element) {
    return std::ranges::any_of(
        PmTests(), [&element](const PmTestRow& test) { return test.name == element.name; });
  }

  static std::string_view KeywordOf(const OptionRow& option, const ElementModel& parent) {
    const bool is_known = IsTest(parent) && FindKeyword(option.Keyword()) != nullptr;
    return is_known ? option.Keyword() : std::string_view();
  }

  // Returns the hint comment; that of KNOBS is in the test's row or its record.
  static std::string HintOf(const OptionRow& option, const ElementModel& parent) {
    if (option.hint.kind != Hint::Kind::kRecord) return JoinTexts(option.hint);
    const auto test = std::ranges::find(PmTests(), parent.name, &PmTestRow::name);
    assert(test != PmTests().end());  // only rows of tests have hints of this kind
    if (!test->knob_hint.empty()) return std::string(test->knob_hint);
    if (parent.record == nullptr) return {};
    return static_cast<const _PM_TEST_NODE&>(*parent.record).KnobHint;
  }

  // Adds the items of an option or of a list under "SysConfiguration".
  void AddItem(const ElementModel& element, const ElementModel& parent, const std::string& path) {
    const OptionRow* const option = element.option;
    OptionInfo& info = option == nullptr ? Add(path, "An entry of the list.")
                                         : Add(path, option->about, option->syntax);
    info.repeats = true;
    if (option != nullptr) info.hint = JoinTexts(option->hint);
    if (parent.list != nullptr) info.hint = JoinTexts(parent.list->hint);
  }

  void AddSwitch(const ElementModel& element, const std::string& path) {
    OptionInfo& info = Add(path, "Whether the test runs.", Syntax::kBoolean);
    info.preset = "false";
    info.fallback = "false";
    if (!element.IsOlder()) return;
    info.stands_for = element.currents.front();
    info.is_written = false;
  }

  void AddPairs(const SystemListRow& list, const std::string& path) {
    Add(path, "Named values: elements of any name, each with a text.").hint = JoinTexts(list.hint);
    for (const OptionRow& option : list.values) {
      OptionInfo& info = Add(path + "/" + std::string(option.name), option.about, option.syntax);
      info.hint = JoinTexts(option.hint);
      info.preset = option.reset;
    }
  }

  std::unique_ptr<FullRecords> records_ = std::make_unique<FullRecords>();
  std::vector<OptionInfo> options_;
};

// Returns whether the name equals one or more consecutive parts of the path, ignoring case.
bool HasPart(std::string_view path, std::string_view name) {
  const std::string whole = std::string("/").append(path).append("/");
  return !name.empty() && ContainsIgnoreCase(whole, std::string("/").append(name).append("/"));
}

// Returns the path with the option's name replaced by its keyword.
std::string KeywordPath(const OptionInfo& option) {
  return option.path.substr(0, option.path.rfind('/') + 1).append(option.keyword);
}

}  // namespace

std::vector<SyntaxInfo> GetSyntaxes() {
  std::vector<SyntaxInfo> infos;
  std::ranges::transform(Syntaxes(), std::back_inserter(infos), InfoOf);
  return infos;
}

std::vector<std::string_view> GetSyntaxWords(std::string_view syntax) {
  const SyntaxRow* const row = FindSyntax(syntax);
  if (row == nullptr) return {};
  Words words = GetWords(row->syntax);
  if (row->pattern.find("%u") == std::string_view::npos) return words;
  for (const std::string_view unit : kDurationUnits) {
    if (!row->check(std::string(unit) + ":1")) words.push_back(unit);
  }
  return words;
}

std::optional<TextFault> CheckSyntax(std::string_view syntax, std::string_view text) {
  const SyntaxRow* const row = FindSyntax(syntax);
  if (row == nullptr) {
    TextFault fault;
    fault.what = "unknown syntax";
    return fault;
  }
  if (HasOwnWords(row->syntax)) return std::nullopt;
  return FindFault(row->syntax, {}, text);
}

std::optional<TextFault> CheckOptionText(const OptionInfo& option, std::string_view text) {
  const SyntaxRow* const row = FindSyntax(option.syntax.name);
  if (row == nullptr) return std::nullopt;
  return FindFault(row->syntax, option.words, text);
}

std::string DescribeText(std::string_view syntax, std::string_view text) {
  const SyntaxRow* const row = FindSyntax(syntax);
  if (row == nullptr || row->meaning == nullptr || text.empty()) return {};
  assert(row->check != nullptr);  // a grammar with a meaning has a check
  return row->check(text) ? std::string() : row->meaning(text);
}

bool MeanTheSame(std::string_view syntax, std::string_view a, std::string_view b) {
  if (a == b) return true;
  const SyntaxRow* const row = FindSyntax(syntax);
  if (row == nullptr || row->meaning == nullptr) return false;
  const auto is_valid = [row](std::string_view text) { return text.empty() || !row->check(text); };
  return is_valid(a) && is_valid(b) && row->meaning(a) == row->meaning(b);
}

std::vector<OptionInfo> GetOptions() { return Lister().List(); }

std::vector<OptionInfo> FindOptions(std::string_view name) {
  std::vector<OptionInfo> options = GetOptions();
  const auto has_name = [name](const OptionInfo& option) {
    return HasPart(option.path, name) ||
           (!option.keyword.empty() && HasPart(KeywordPath(option), name));
  };
  const auto has_short_name = [name](const OptionInfo& option) {
    return IsOverwriteOption(option.keyword, name);
  };
  const bool is_name = std::ranges::any_of(options, has_name);
  std::erase_if(options, [&](const OptionInfo& option) {
    return is_name ? !has_name(option) : !has_short_name(option);
  });
  return options;
}

std::string FindNearestOption(std::string_view name) {
  std::vector<std::string> parts;
  for (const OptionInfo& option : GetOptions()) Splits(option.path, '/', parts);
  std::erase_if(parts, [](const std::string& part) { return part.size() > kLongestCompared; });
  const std::string_view nearest = FindNearest(name, parts, std::identity());
  const bool is_near = CountEdits(name, nearest) <= std::max<std::size_t>(1, nearest.size() / 3);
  return is_near ? std::string(nearest) : std::string();
}

}  // namespace vexor
