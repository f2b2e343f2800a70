#include "config/model/command_line.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <utility>

#include "config/model/option_target.h"
#include "config/texts/fault_wording.h"
#include "config/texts/syntax_table.h"
#include "syntax/checks.h"
#include "syntax/nearest.h"
#include "util/text.h"
#include "vexor/syntax/keywords.h"

namespace vexor {
namespace {

bool StartsSection(std::string_view argument) { return argument.starts_with('/'); }

bool IsOption(std::string_view argument) { return argument.starts_with('-'); }

// Tells "/cstate" from a path, which has more slashes or a file name extension.
bool LooksLikeSection(std::string_view argument) {
  const std::string_view name = argument.substr(1);
  return !name.empty() && std::ranges::all_of(name, [](char c) {
    return IsDecDigit(c) || (ToUpper(c) >= 'A' && ToUpper(c) <= 'Z') || c == '-' || c == '_';
  });
}

// Quotes an argument for a message, cut off if it is long.
std::string Quote(std::string_view argument) {
  constexpr std::size_t kLongestShown = 60;
  const bool is_long = argument.size() > kLongestShown;
  return "\"" + std::string(argument.substr(0, kLongestShown)) + (is_long ? "...\"" : "\"");
}

// A name to suggest, and its form on the command line.
struct Candidate {
  std::string name;
  std::string_view written;
};

std::string_view FindNearestOf(const std::vector<Candidate>& candidates, std::string_view name) {
  const Candidate* const nearest =
      FindNearestRow(name, candidates,
                     [](const Candidate& candidate) -> std::string_view { return candidate.name; });
  return nearest == nullptr ? std::string_view() : nearest->written;
}

std::string_view FindNearestTest(std::string_view name) {
  std::vector<Candidate> tests;
  for (int id = 0; id <= PM_TEST_END; ++id) {
    if (id == PM_TEST_MAX) continue;
    const char* const short_name = GetPMTestNameByID(id);
    tests.push_back({short_name, short_name});
    if (FindPmTest(VEXOR_PM_TEST_ID{id}) != nullptr) {
      tests.push_back({GetPMTestName(VEXOR_PM_TEST_ID{id}), short_name});
    }
  }
  return FindNearestOf(tests, name);
}

bool HasOption(std::span<const PmTestRow> tests, const Keyword& keyword) {
  return std::ranges::any_of(tests, [&keyword](const PmTestRow& test) {
    return FindTarget(test, keyword).option != nullptr;
  });
}

// Returns empty text if the tests have no options.
std::string_view FindNearestOption(std::string_view name, std::span<const PmTestRow> tests) {
  std::vector<Candidate> options;
  for (const Keyword& keyword : Keywords()) {
    if (!HasOption(tests, keyword)) continue;
    options.push_back({std::string(keyword.short_name), keyword.short_name});
    options.push_back({std::string(keyword.name), keyword.short_name});
  }
  return FindNearestOf(options, name);
}

// Reads the arguments in order. Arguments before the first section belong to the program and are
// skipped; an unknown section is skipped, so that its options do not go to the section before it.
class SectionReader {
 public:
  SectionReader(std::span<char* const> arguments, std::vector<std::string>& faults)
      : arguments_(arguments), faults_(faults) {}

  std::vector<_PM_TEST_CONFIG_NODE> Read();

 private:
  enum class State {
    kBefore,     // arguments of the program
    kInSection,  // options of a test
    kSkipping,   // options of an unknown test
  };

  [[nodiscard]] std::string_view Next() const;
  std::string_view NextArgument();
  std::optional<std::string_view> NextValue();
  void OpenSection(std::string_view argument, bool is_first);
  [[nodiscard]] bool IsMeantAsSection(std::string_view argument, bool is_first) const;
  void ReadInSection(std::string_view argument);
  void ReadSwitch(std::string_view argument, const Keyword& keyword, std::string_view value);
  void ReadValue(std::string_view argument, const Keyword& keyword, std::string_view value);
  void Accept(const Keyword& keyword, std::string text);
  void RefuseName(std::string_view argument, std::string what);
  void RefuseValue(std::string_view argument, std::string_view value, const FaultWording& wording);
  void RefuseWithoutValue(std::string_view argument, const Keyword& keyword);
  void Refuse(std::string_view argument, const std::string& what);
  static std::string SectionName(VEXOR_PM_TEST_ID test);

  // Only valid in state kInSection.
  [[nodiscard]] VEXOR_PM_TEST_ID CurrentTest() const {
    assert(!nodes_.empty());
    return nodes_.back().test;
  }

  [[nodiscard]] std::span<const PmTestRow> Tests() const { return TestsOfSection(CurrentTest()); }

  std::span<char* const> arguments_;
  std::vector<std::string>& faults_;
  std::vector<_PM_TEST_CONFIG_NODE> nodes_;
  State state_ = State::kBefore;
};

std::vector<_PM_TEST_CONFIG_NODE> SectionReader::Read() {
  for (bool is_first = true; !arguments_.empty(); is_first = false) {
    const std::string_view argument = NextArgument();
    if (StartsSection(argument)) {
      OpenSection(argument, is_first);
    } else if (state_ == State::kInSection) {
      ReadInSection(argument);
    }
  }
  return std::move(nodes_);
}

std::string_view SectionReader::Next() const {
  if (arguments_.empty() || arguments_.front() == nullptr) return {};
  return arguments_.front();
}

std::string_view SectionReader::NextArgument() {
  const std::string_view argument = Next();
  arguments_ = arguments_.subspan(1);
  return argument;
}

// Removes and returns the next argument if it is a value.
std::optional<std::string_view> SectionReader::NextValue() {
  if (arguments_.empty() || arguments_.front() == nullptr) return std::nullopt;
  if (StartsSection(Next()) || IsOption(Next())) return std::nullopt;
  return NextArgument();
}

void SectionReader::OpenSection(std::string_view argument, bool is_first) {
  std::string name(argument);
  std::erase(name, '/');
  const VEXOR_PM_TEST_ID test = ParsePMTestID(name, false);
  if (test != PM_TEST_MAX) {
    nodes_.push_back({.test = test, .options = {}});
    state_ = State::kInSection;
  } else if (state_ != State::kBefore || IsMeantAsSection(argument, is_first)) {
    faults_.push_back(Quote(argument) + ": unknown test, the nearest is /" +
                      std::string(FindNearestTest(name)));
    state_ = State::kSkipping;
  }
}

// Returns whether an argument before the first section is probably a mistyped section. The very
// first may be a path, so it must also be followed by a known option.
bool SectionReader::IsMeantAsSection(std::string_view argument, bool is_first) const {
  if (!LooksLikeSection(argument)) return false;
  return !is_first || (IsOption(Next()) && FindShortName(Next().substr(1)) != nullptr);
}

void SectionReader::ReadInSection(std::string_view argument) {
  if (!IsOption(argument)) {
    return Refuse(argument, "value without an option, expected \"-\" and an option's name");
  }
  const Keyword* const keyword = FindShortName(argument.substr(1));
  if (keyword == nullptr) return RefuseName(argument, "unknown option");
  if (!HasOption(Tests(), *keyword)) return RefuseName(argument, "not an option of this test");
  const std::optional<std::string_view> value = NextValue();
  if (keyword->kind != KeywordKind::kValue) {
    ReadSwitch(argument, *keyword, value.value_or("true"));
  } else if (value) {
    ReadValue(argument, *keyword, *value);
  } else {
    RefuseWithoutValue(argument, *keyword);
  }
}

void SectionReader::ReadSwitch(std::string_view argument, const Keyword& keyword,
                               std::string_view value) {
  for (const std::string_view word : {"true", "false"}) {
    if (EqualsIgnoreCase(value, word)) return Accept(keyword, std::string(word));
  }
  constexpr OptionRow kSwitch{.name = "switch", .syntax = Syntax::kBoolean};
  const Fault fault{.what = "neither true nor false", .expected = kBooleanWords};
  RefuseValue(argument, value, WordFault(kSwitch, value, fault));
}

void SectionReader::ReadValue(std::string_view argument, const Keyword& keyword,
                              std::string_view value) {
  std::string text = PrependtoRange(keyword.unit, value);
  for (const PmTestRow& test : Tests()) {
    const OptionRow* const option = FindTarget(test, keyword).option;
    const auto fault = option == nullptr ? std::nullopt : CheckOption(*option, text);
    if (!fault) continue;
    FaultWording wording = WordFault(*option, text, *fault);
    if (CurrentTest() == PM_TEST_ALL) wording.what += " for " + SectionName(test.id);
    return RefuseValue(argument, value, wording);
  }
  Accept(keyword, std::move(text));
}

void SectionReader::Accept(const Keyword& keyword, std::string text) {
  nodes_.back().options.push_back({std::string(keyword.short_name), std::move(text)});
}

// Skips the values of the invalid option, too.
void SectionReader::RefuseName(std::string_view argument, std::string what) {
  const std::string_view nearest = FindNearestOption(argument.substr(1), Tests());
  if (nearest.empty()) {
    what += ", the test has none";
  } else {
    what.append(", the nearest is -").append(nearest);
  }
  Refuse(argument, what);
  while (NextValue()) {
  }
}

void SectionReader::RefuseValue(std::string_view argument, std::string_view value,
                                const FaultWording& wording) {
  std::string line = SectionName(CurrentTest()).append(" ").append(argument).append(" ");
  line += Quote(value) + ": " + wording.what + ", expected " + wording.expected;
  if (!wording.suggestion.empty()) line += "; did you mean " + Quote(wording.suggestion) + "?";
  faults_.push_back(std::move(line));
}

void SectionReader::RefuseWithoutValue(std::string_view argument, const Keyword& keyword) {
  for (const PmTestRow& test : Tests()) {
    const OptionRow* const option = FindTarget(test, keyword).option;
    if (option == nullptr) continue;
    const Fault missing{.what = "no value", .expected = GrammarOf(option->syntax)};
    return Refuse(argument, "no value, expected " + WordFault(*option, "", missing).expected);
  }
}

void SectionReader::Refuse(std::string_view argument, const std::string& what) {
  faults_.push_back(SectionName(CurrentTest()) + " " + Quote(argument) + ": " + what);
}

std::string SectionReader::SectionName(VEXOR_PM_TEST_ID test) {
  return std::string("/") + GetPMTestNameByID(test);
}

}  // namespace

std::vector<_PM_TEST_CONFIG_NODE> ReadTestOptions(std::span<char* const> arguments,
                                                  std::vector<std::string>& faults) {
  return SectionReader(arguments, faults).Read();
}

}  // namespace vexor
