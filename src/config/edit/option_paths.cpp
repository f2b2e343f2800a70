#include "config/edit/option_paths.h"

#include <algorithm>
#include <functional>
#include <optional>

#include "config/check/shared_model.h"
#include "config/model/element_path.h"
#include "config/tables/sections.h"
#include "config/tables/system_setup.h"
#include "config/texts/word_list.h"
#include "config/texts/xml_characters.h"
#include "syntax/nearest.h"
#include "util/text.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;

struct NamePart {
  std::string_view name;
  std::size_t number = 0;
};

// Splits "A/B[2]" into its names; nothing if a number is malformed or a name is missing.
std::optional<std::vector<NamePart>> SplitPath(std::string_view path) {
  std::vector<NamePart> parts;
  while (true) {
    const std::size_t slash = std::min(path.find('/'), path.size());
    std::string_view name = path.substr(0, slash);
    NamePart& part = parts.emplace_back();
    if (name.ends_with(']')) {
      const std::size_t open = std::min(name.rfind('['), name.size() - 1);
      const UnsignedText number = ReadDigits<10>(name.substr(open + 1, name.size() - open - 2));
      constexpr std::uint64_t kMost = 1'000'000'000;
      if (number.kind != UnsignedText::Kind::kNumber || number.value == 0 || number.value > kMost) {
        return std::nullopt;
      }
      part.number = static_cast<std::size_t>(number.value);
      name = name.substr(0, open);
    }
    part.name = name;
    if (name.empty()) return std::nullopt;
    if (slash == path.size()) return parts;
    path.remove_prefix(slash + 1);
  }
}

using Trail = std::vector<PathStep>;

// Collects the paths of the model that end in the given names.
class Finder {
 public:
  Finder(const std::vector<NamePart>& parts, bool ignores_case)
      : parts_(parts), ignores_case_(ignores_case) {}

  void Search(const ElementModel& parent) {
    for (const ElementModel& child : parent.children) {
      Judge(&child, child.name, known);
      trail_.push_back({.model = &child, .name = std::string(child.name)});
      Search(child);
      trail_.pop_back();
    }
    if (parent.content == Content::kTraces) Judge(nullptr, kTraceEntry, known);
    if (parent.content != Content::kPairs) return;
    const std::string_view name = parts_.back().name;
    const auto& values = parent.list->values;
    const auto row = std::ranges::find_if(
        values, [this, name](const OptionRow& value) { return IsSame(value.name, name); });
    if (row != values.end()) {
      Judge(nullptr, row->name, known);
    } else if (parts_.size() > 1 && IsXmlName(name)) {
      Judge(nullptr, name, possible);
    }
  }

  std::vector<Trail> known;
  std::vector<Trail> possible;  // values of any name in a list of named values

 private:
  [[nodiscard]] bool IsSame(std::string_view a, std::string_view b) const {
    return ignores_case_ ? EqualsIgnoreCase(a, b) : a == b;
  }

  void Judge(const ElementModel* model, std::string_view name, std::vector<Trail>& found) const {
    if (parts_.size() > trail_.size() + 1) return;
    const std::size_t first = trail_.size() + 1 - parts_.size();
    if (!IsSame(name, parts_.back().name)) return;
    Trail trail = trail_;
    trail.push_back({.model = model, .name = std::string(name)});
    for (std::size_t i = 0; i < parts_.size(); ++i) {
      if (!IsSame(trail[first + i].name, parts_[i].name)) return;
      trail[first + i].number = parts_[i].number;
    }
    found.push_back(std::move(trail));
  }

  const std::vector<NamePart>& parts_;
  bool ignores_case_;
  Trail trail_;
};

// Returns the paths that end in the names: in their own case if there are any, and those of known
// names before those that a list of named values could have.
std::vector<Trail> FindTrails(const std::vector<NamePart>& parts, const ElementModel& root) {
  Finder exact(parts, false);
  exact.Search(root);
  if (!exact.known.empty()) return std::move(exact.known);
  Finder lenient(parts, true);
  lenient.Search(root);
  if (!lenient.known.empty()) return std::move(lenient.known);
  return std::move(exact.possible.empty() ? lenient.possible : exact.possible);
}

std::string JoinSteps(const Trail& steps, std::size_t count) {
  std::string path;
  for (std::size_t i = 0; i < count; ++i) {
    path = JoinPath(path, steps[i].name);
    if (steps[i].number > 0) path = EntryPath(path, steps[i].number);
  }
  return path;
}

bool MayRepeat(const Trail& steps, std::size_t i) {
  const ElementModel* const model = steps[i].model;
  if (model != nullptr) return model->repeats;
  return i > 0 && steps[i - 1].model->content == Content::kTraces;
}

void ListNames(const ElementModel& parent, std::vector<std::string_view>& names) {
  for (const ElementModel& child : parent.children) {
    names.push_back(child.name);
    ListNames(child, names);
  }
}

// Names the first part that no element has, with the most similar name.
std::string NameUnknown(const std::vector<NamePart>& parts, const ElementModel& root) {
  std::vector<std::string_view> names;
  ListNames(root, names);
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
  for (const NamePart& part : parts) {
    const bool is_known = std::ranges::any_of(
        names, [&part](std::string_view name) { return EqualsIgnoreCase(name, part.name); });
    if (is_known) continue;
    const std::string_view meant = SuggestWord(part.name, names);
    return "no element is named \"" + ShortenName(part.name) + "\"" +
           (meant.empty() ? "" : "; did you mean \"" + std::string(meant) + "\"?");
  }
  return "no such path; vexorcfg explain option " + ShortenName(parts.back().name) +
         " lists the paths of that name";
}

std::string NameChoices(const std::vector<Trail>& found) {
  constexpr std::size_t kMost = 5;
  std::string text = "more than one path ends so: ";
  for (std::size_t i = 0; i < found.size() && i < kMost; ++i) {
    text.append(i == 0 ? "" : ", ").append(JoinSteps(found[i], found[i].size()));
  }
  if (found.size() > kMost) text += " and " + std::to_string(found.size() - kMost) + " more";
  return text;
}

// A second name of a value that takes precedence, such as RC0Time, stands for the option under
// whose name the value is described.
void UseMainName(Trail& steps, const ElementModel& root) {
  PathStep& last = steps.back();
  const OptionRow* const option = last.model == nullptr ? nullptr : last.model->option;
  if (option == nullptr || option->overwrite != Overwrite::kIfGiven) return;
  const ElementModel& parent = steps.size() < 2 ? root : *steps[steps.size() - 2].model;
  for (const ElementModel& child : parent.children) {
    if (child.option == nullptr || child.option->text != option->text ||
        child.option->overwrite != Overwrite::kAlways) {
      continue;
    }
    last = {.model = &child, .name = std::string(child.name)};
    return;
  }
}

}  // namespace

std::string ResolvedPath::Join(std::size_t count) const { return JoinSteps(steps, count); }

const ElementModel& ResolvedPath::Parent() const {
  return steps.size() < 2 ? GetSharedModel().root : *steps[steps.size() - 2].model;
}

ResolvedPath ResolvePath(std::string_view path, const ElementModel& root) {
  ResolvedPath resolved;
  const auto parts = SplitPath(path);
  if (!parts) {
    resolved.fault =
        "not a path, expected names joined by \"/\", such as CSTATES/ActiveTime or Name[2]";
    return resolved;
  }
  std::vector<Trail> found = FindTrails(*parts, root);
  // A whole path is meant even if it is the end of another.
  const auto whole = std::ranges::find(found, parts->size(), &Trail::size);
  if (whole != found.end()) found = {Trail(*whole)};
  if (found.empty()) {
    resolved.fault = NameUnknown(*parts, root);
  } else if (found.size() > 1) {
    resolved.fault = NameChoices(found);
  } else {
    resolved.steps = std::move(found.front());
    UseMainName(resolved.steps, root);
  }
  for (std::size_t i = 0; i < resolved.steps.size(); ++i) {
    if (resolved.steps[i].number == 0 || MayRepeat(resolved.steps, i)) continue;
    resolved.fault = "only entries of lists have numbers, and " + resolved.steps[i].name +
                     " is not an entry of a list";
    resolved.steps.clear();
  }
  return resolved;
}

std::string_view ListOf(std::string_view path) {
  return path.ends_with(']') ? path.substr(0, path.rfind('[')) : path;
}

std::string RefuseOlderName(const ResolvedPath& path) {
  ResolvedPath current = path;
  bool is_older = false;
  for (PathStep& step : current.steps) {
    if (step.model == nullptr || !step.model->IsOlder()) continue;
    step.name = step.model->currents.front();
    is_older = true;
  }
  if (!is_older) return {};
  return path.Join() + " is an older name, expected " + current.Join();
}

}  // namespace vexor
