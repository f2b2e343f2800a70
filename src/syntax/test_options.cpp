#include "vexor/syntax/test_options.h"

#include <optional>
#include <span>
#include <utility>

#include "syntax/keyword_table.h"
#include "syntax/nearest.h"
#include "util/text.h"

using namespace vexor;

namespace {

bool IsSection(std::string_view argument) { return argument.starts_with('/'); }

bool IsOption(std::string_view argument) { return argument.starts_with('-'); }

bool IsValue(std::string_view argument) { return !IsSection(argument) && !IsOption(argument); }

// An argument is shown no longer than this.
std::string Quote(std::string_view argument) {
  constexpr std::size_t kLongestShown = 60;
  const bool is_long = argument.size() > kLongestShown;
  return "\"" + std::string(argument.substr(0, kLongestShown)) + (is_long ? "...\"" : "\"");
}

std::string_view FindNearestTest(std::string_view name) {
  std::vector<std::string_view> tests;
  for (int id = 0; id <= PM_TEST_END; ++id) {
    if (id != PM_TEST_MAX) tests.emplace_back(GetPMTestNameByID(id));
  }
  return FindNearest(name, tests, [](std::string_view test) { return test; });
}

// Reads the arguments in order and keeps the section that is open.
class SectionReader {
 public:
  SectionReader(std::span<char* const> arguments, std::vector<std::string>& faults)
      : arguments_(arguments), faults_(faults) {}

  std::vector<_PM_TEST_CONFIG_NODE> Read() {
    while (!arguments_.empty()) {
      const std::string_view argument = Take();
      if (IsSection(argument)) {
        OpenSection(argument);
      } else if (state_ == State::kInSection) {
        ReadInSection(argument);
      }
    }
    return std::move(nodes_);
  }

 private:
  enum class State {
    kBefore,     // the program's own arguments
    kInSection,  // options of a test
    kSkipping,   // options of a test that is unknown
  };

  std::string_view Take() {
    const std::string_view argument = arguments_.front() != nullptr ? arguments_.front() : "";
    arguments_ = arguments_.subspan(1);
    return argument;
  }

  // Takes the next argument if it is a value.
  std::optional<std::string_view> TakeValue() {
    if (arguments_.empty() || arguments_.front() == nullptr) return std::nullopt;
    if (!IsValue(arguments_.front())) return std::nullopt;
    return Take();
  }

  void OpenSection(std::string_view argument) {
    std::string name(argument);
    std::erase(name, '/');
    const VEXOR_PM_TEST_ID test = ParsePMTestID(name, false);
    if (test != PM_TEST_MAX) {
      nodes_.push_back({.test = test, .options = {}});
      state_ = State::kInSection;
    } else if (state_ != State::kBefore) {
      faults_.push_back("unknown test " + Quote(argument) + ", the nearest test is /" +
                        std::string(FindNearestTest(name)));
      state_ = State::kSkipping;
    }
  }

  void ReadInSection(std::string_view argument) {
    if (IsOption(argument)) {
      ReadOption(argument);
    } else {
      Refuse(argument, "value without an option", FindNearestShortName(argument));
    }
  }

  void ReadOption(std::string_view argument) {
    const std::string_view name = argument.substr(1);
    const Keyword* const keyword = FindShortName(name);
    if (keyword == nullptr) {
      Refuse(argument, "unknown option", FindNearestShortName(name));
      while (TakeValue()) {
      }
      return;
    }
    const std::optional<std::string_view> value =
        keyword->kind == KeywordKind::kSwitch ? TakeSwitchValue() : TakeValue();
    if (!value) {
      Refuse(argument, "option without a value", keyword->short_name);
      return;
    }
    nodes_.back().options.push_back(
        {std::string(keyword->short_name), PrependtoRange(keyword->unit, *value)});
  }

  std::string_view TakeSwitchValue() {
    if (arguments_.empty() || arguments_.front() == nullptr) return "true";
    const std::string_view next = arguments_.front();
    const bool is_value = EqualsIgnoreCase(next, "true") || EqualsIgnoreCase(next, "false");
    return is_value ? Take() : "true";
  }

  void Refuse(std::string_view argument, std::string_view what, std::string_view nearest) {
    std::string line(what);
    line += " " + Quote(argument) + " for /" + GetPMTestNameByID(nodes_.back().test) +
            ", the nearest option is -" + std::string(nearest);
    faults_.push_back(std::move(line));
  }

  std::span<char* const> arguments_;
  std::vector<std::string>& faults_;
  std::vector<_PM_TEST_CONFIG_NODE> nodes_;
  State state_ = State::kBefore;
};

}  // namespace

std::vector<_PM_TEST_CONFIG_NODE> getCmdPMTestsOptions(char** argv, int argc,
                                                       std::vector<std::string>& faults) {
  const auto count = static_cast<std::size_t>(argc > 0 ? argc : 0);
  return SectionReader({argv, count}, faults).Read();
}

bool IsOverwriteOption(std::string_view keyword, std::string_view option) {
  const Keyword* const row = FindKeyword(keyword);
  return row != nullptr && EqualsIgnoreCase(row->short_name, option);
}

bool UpdateknobsOptions(std::string& knobs, std::string_view knob, std::string_view option,
                        std::string_view value) {
  if (!IsOverwriteOption(knob, option)) return false;
  const bool is_on = EqualsIgnoreCase(value, "true");
  std::string kept;
  bool stands_there = false;
  std::string_view rest = knobs;
  for (std::string_view item; TakeItem(rest, ';', item);) {
    const bool is_knob = EqualsIgnoreCase(TrimBlanks(item), knob);
    stands_there = stands_there || is_knob;
    if (!is_knob) kept.append(kept.empty() ? "" : ";").append(item);
  }
  if (is_on && !stands_there) kept.append(kept.empty() ? "" : ";").append(knob);
  if (is_on != stands_there) knobs = std::move(kept);
  return true;
}

std::string PrependtoRange(std::string_view prefix, std::string_view text) {
  const bool is_bare = !text.empty() && IsDecDigit(text.front());
  return std::string(is_bare ? prefix : std::string_view{}).append(text);
}
