#include <algorithm>
#include <cassert>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "config/edit/open_document.h"
#include "config/model/element_path.h"
#include "config/tables/sections.h"
#include "config/tables/system_setup.h"
#include "config/texts/fault_wording.h"
#include "config/texts/xml_characters.h"
#include "util/text.h"
#include "vexor/config/edit.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using Kind = SourceNode::Kind;

std::string Quoted(std::string_view text) {
  return std::string("\"").append(ShortenName(text)).append("\"");
}

bool IsXmlText(std::string_view text) {
  while (!text.empty()) {
    const Utf8Character character = DecodeUtf8(text);
    if (character.size == 0 || !IsXmlCharacter(character.value)) return false;
    text.remove_prefix(character.size);
  }
  return true;
}

std::size_t CountEntries(const Description& description, std::string_view list) {
  return static_cast<std::size_t>(
      std::ranges::count_if(description.settings, [list](const Setting& setting) {
        return ListOf(setting.path) == list && setting.path.size() > list.size();
      }));
}

// Returns why a path cannot be set; empty if it can.
std::string RefusePath(const ResolvedPath& path) {
  if (std::string older = RefuseOlderName(path); !older.empty()) return older;
  const ElementModel* const model = path.steps.back().model;
  if (model == nullptr) return {};
  const std::string name = path.Join();
  if (model->HoldsElements()) {
    return name + " holds elements; give the path of an option in it";
  }
  return model->is_read ? std::string() : name + " is never read";
}

// Returns why a number of the path is missing or too large; empty if none is.
std::string RefuseNumbers(const OpenDocument& document, const ResolvedPath& path) {
  const Description& description = document.description();
  for (std::size_t i = 0; i < path.steps.size(); ++i) {
    const PathStep& step = path.steps[i];
    const bool is_trace =
        step.model == nullptr && i > 0 && path.steps[i - 1].model->content == Content::kTraces;
    if (!is_trace && (step.model == nullptr || !step.model->repeats)) continue;
    const std::string list(ListOf(path.Join(i + 1)));
    std::size_t count = CountEntries(description, list);
    for (; i + 1 < path.steps.size(); ++count) {  // entries with options of their own
      const std::string first = EntryPath(list, count + 1) + "/";
      const bool is_there = std::ranges::any_of(
          description.settings,
          [&first](const Setting& setting) { return setting.path.starts_with(first); });
      if (!is_there) break;
    }
    if (step.number >= 1 && step.number <= count + 1) continue;
    return list + " is a list of " + std::to_string(count) + (count == 1 ? " entry" : " entries") +
           "; expected " + EntryPath(list, 1) +
           (count == 0 ? " to add one" : " to " + EntryPath(list, count + 1) + ", which adds one");
  }
  return {};
}

// Returns the row with the grammar of the path's text.
OptionRow RowOf(const ResolvedPath& path) {
  const ElementModel* const model = path.steps.back().model;
  OptionRow row;
  if (model != nullptr && model->option != nullptr) return *model->option;
  if (model != nullptr && model->content == Content::kSwitch) row.syntax = Syntax::kBoolean;
  const ElementModel& parent = path.Parent();
  if (model == nullptr && parent.content == Content::kPairs) {
    const auto& values = parent.list->values;
    const auto known = std::ranges::find(values, path.steps.back().name, &OptionRow::name);
    if (known != values.end()) return *known;
  }
  return row;
}

// Sets one option of a document.
class Setter {
 public:
  Setter(std::string_view content, const OpenDocument& document, ResolvedPath path,
         std::string_view value)
      : content_(content),
        document_(document),
        editor_(document.tree()),
        path_(std::move(path)),
        name_(path_.Join()),
        value_(value) {}

  EditedText Set(const EditLimits& limits);

 private:
  [[nodiscard]] bool IsSwitch() const;
  [[nodiscard]] std::string Wanted() const;
  [[nodiscard]] EditedText SetIn(std::size_t element) const;
  [[nodiscard]] EditedText Add(std::size_t parent, const ElementModel& parent_model,
                               std::size_t first) const;
  [[nodiscard]] NewElement MakeChain(const ElementModel& parent, std::size_t first) const;
  [[nodiscard]] NewElement MakeSection(const ElementModel& parent, std::size_t first) const;
  [[nodiscard]] std::string Prove(const std::string& result, const EditLimits& limits) const;
  [[nodiscard]] EditedText Finish(SourceEdits edits, std::size_t at, std::string what) const;

  std::string_view content_;
  const OpenDocument& document_;
  SourceEditor editor_;
  ResolvedPath path_;
  std::string name_;
  std::string_view value_;
};

bool Setter::IsSwitch() const {
  const ElementModel* const model = path_.steps.back().model;
  return model != nullptr && (model->content == Content::kSwitch ||
                              (model->option != nullptr && model->option->flag != nullptr));
}

// Returns the value as the reader gives it.
std::string Setter::Wanted() const {
  if (IsSwitch()) return value_ == "true" ? "true" : "false";
  return std::string(TrimSpace(value_));
}

EditedText Setter::Set(const EditLimits& limits) {
  const Setting* const setting = document_.FindSetting(name_);
  const std::size_t source = setting == nullptr ? 0 : document_.ElementOf(*setting);
  if (source != 0 && setting->value == Wanted() && setting->text.empty()) {
    return Finish({}, source, "");
  }
  EditedText result;
  std::size_t parent = document_.Root();
  const ElementModel* model = &document_.model();
  std::size_t first = 0;  // the first step without an element
  for (; source == 0 && first < path_.steps.size(); ++first) {
    const std::size_t found = document_.FindStep(parent, *model, path_.steps[first]);
    if (found == 0) break;
    parent = found;
    if (path_.steps[first].model != nullptr) model = path_.steps[first].model;
  }
  if (source != 0 || first == path_.steps.size()) {
    result = SetIn(source != 0 ? source : parent);
    result.error = Prove(result.content, limits);
  } else {
    result = Add(parent, *model, first);
    result.error = Prove(result.content, limits);
    const bool is_section = first + 1 < path_.steps.size();
    if (!result.error.empty() && is_section) {
      // The new element made other options of its section read as empty: write those, too.
      const std::size_t sibling = document_.FindSibling(parent, *model, path_.steps[first].name);
      result = Finish(editor_.Insert(parent, sibling, MakeSection(*model, first)), parent,
                      "added " + path_.Join(first + 1) + " with its defaults");
      result.error = Prove(result.content, limits);
    }
  }
  if (!result.error.empty()) return Fail(content_, result.error, document_.LineOf(parent));
  return result;
}

EditedText Setter::SetIn(std::size_t element) const {
  const bool is_argument = path_.Parent().content == Content::kArguments;
  return Finish(is_argument ? editor_.SetAttribute(element, "val", value_)
                            : editor_.SetText(element, value_, IsSwitch()),
                element, "set");
}

EditedText Setter::Add(std::size_t parent, const ElementModel& parent_model,
                       std::size_t first) const {
  const std::size_t sibling = document_.FindSibling(parent, parent_model, path_.steps[first].name);
  return Finish(editor_.Insert(parent, sibling, MakeChain(parent_model, first)), parent, "added");
}

// Returns the missing elements down to the option.
NewElement Setter::MakeChain(const ElementModel& parent, std::size_t first) const {
  NewElement element{.name = path_.steps[first].name,
                     .is_argument = parent.content == Content::kArguments};
  if (first + 1 == path_.steps.size()) {
    element.text = value_;
  } else {
    element.children = {MakeChain(*path_.steps[first].model, first + 1)};
  }
  return element;
}

// Adds an option to a new element, with the elements between the two.
void AddSetting(NewElement& section, const ElementModel* model, std::string_view path,
                std::string_view text) {
  const std::size_t slash = path.find('/');
  const std::string_view entry = path.substr(0, slash);
  const std::string name(ListOf(entry));
  const ElementModel* const child = model == nullptr ? nullptr : FindChild(*model, name);
  if (slash == std::string_view::npos) {
    section.children.push_back(
        {.name = name,
         .text = std::string(text),
         .is_argument = model != nullptr && model->content == Content::kArguments});
    return;
  }
  if (section.children.empty() || section.children.back().entry != entry) {
    section.children.push_back({.name = name, .text = {}, .entry = std::string(entry)});
  }
  AddSetting(section.children.back(), child, path.substr(slash + 1), text);
}

// Returns the first missing element with all that is set in it by default, and the option.
NewElement Setter::MakeSection(const ElementModel& parent, std::size_t first) const {
  const std::string section_path = path_.Join(first + 1) + "/";
  std::vector<std::pair<std::string_view, std::string_view>> settings;
  bool is_set = false;
  for (const Setting& setting : document_.description().settings) {
    const bool is_it = setting.path == name_;
    is_set = is_set || is_it;
    if (!is_it && (setting.value.empty() || !setting.path.starts_with(section_path))) continue;
    settings.emplace_back(setting.path, is_it ? value_ : std::string_view(setting.value));
  }
  if (!is_set) settings.emplace_back(name_, value_);
  NewElement section{.name = path_.steps[first].name,
                     .is_argument = parent.content == Content::kArguments};
  for (const auto& [path, text] : settings) {
    if (path.size() <= section_path.size()) continue;
    AddSetting(section, path_.steps[first].model, path.substr(section_path.size()), text);
  }
  return section;
}

// Returns empty text if reading the result gives the wanted value and no other change, or else what
// is wrong.
std::string Setter::Prove(const std::string& result, const EditLimits& limits) const {
  const auto after = std::make_unique<OpenDocument>(result);
  if (!after->error().empty()) return "the file could not be read any more: " + after->error();
  const Setting* const setting = after->FindSetting(name_);
  std::string differing;
  for (const std::string& path : ListDifferences(document_.description(), after->description())) {
    if (path != name_) differing = path;
  }
  if (!differing.empty()) {
    const bool is_older = !MigrateText(content_).changes.empty();
    return "setting " + name_ + " would change " + differing + ", too" +
           (is_older ? "; migrate the file first, as an older name may stand for both" : "");
  }
  const bool is_version = name_ == NameOf(Section::kVersion);
  const std::string read = is_version           ? after->description().version
                           : setting == nullptr ? std::string()
                                                : setting->value;
  if (read == Wanted() || limits.force) return {};
  return name_ + " would read as " + Quoted(read) + " and not as " + Quoted(Wanted());
}

EditedText Setter::Finish(SourceEdits edits, std::size_t at, std::string what) const {
  EditedText result;
  const bool is_unchanged = edits.empty();
  result.content = ApplyEdits(content_, std::move(edits));
  if (is_unchanged) return result;
  const Setting* const setting = document_.FindSetting(name_);
  result.changes.push_back({.line = document_.LineOf(at),
                            .path = name_,
                            .what = std::move(what),
                            .before = setting == nullptr ? std::string() : setting->value,
                            .after = std::string(value_)});
  return result;
}

bool HasComments(const SourceTree& tree, std::size_t element) {
  for (std::size_t node = element; node < tree[element].next; ++node) {
    if (tree[node].kind == Kind::kComment) return true;
  }
  return false;
}

// Removes the first element of a path.
EditedText RemoveElement(std::string_view content, const OpenDocument& document,
                         const ResolvedPath& path, const EditLimits& limits) {
  const std::string name = path.Join();
  const Setting* const setting = document.FindSetting(name);
  std::size_t element = setting == nullptr ? 0 : document.ElementOf(*setting);
  if (element == 0) {
    element = document.FindElement(path);
    if (element == 0) return Fail(content, "");
  }
  const int line = document.LineOf(element);
  if (HasComments(document.tree(), element) && !limits.force) {
    return Fail(content, name + " holds comments, which would be lost", line);
  }
  EditedText result;
  result.content = ApplyEdits(content, SourceEditor(document.tree()).Remove(element));
  const auto after = std::make_unique<OpenDocument>(result.content);
  if (!after->error().empty()) return Fail(content, after->error(), after->error_line());
  const std::string_view list = ListOf(name);
  for (const std::string& other : ListDifferences(document.description(), after->description())) {
    const bool is_inside = other == name || other.starts_with(name + "/");
    const bool is_entry = list != name && other.starts_with(list);
    if (is_inside || is_entry) continue;
    return Fail(content, "removing " + name + " would change " + other + ", too", line);
  }
  result.changes.push_back({.line = line,
                            .path = name,
                            .what = "removed",
                            .before = setting == nullptr ? std::string() : setting->value,
                            .after = {}});
  return result;
}

}  // namespace

EditedText SetOptionInText(std::string_view content, std::string_view path, std::string_view value,
                           const EditLimits& limits) {
  const auto document = std::make_unique<OpenDocument>(content);
  if (!document->error().empty()) return Fail(content, document->error(), document->error_line());
  ResolvedPath resolved = ResolvePath(path, document->model());
  if (resolved.steps.empty()) return Fail(content, resolved.fault);
  for (std::string refusal : {RefusePath(resolved), RefuseNumbers(*document, resolved)}) {
    if (!refusal.empty()) return Fail(content, std::move(refusal));
  }
  if (!IsXmlText(value)) return Fail(content, "the value has a character that XML forbids");
  if (resolved.steps.back().number > 0 && TrimSpace(value).empty()) {
    return Fail(content, "an empty entry is not read; remove the entry instead");
  }
  const OptionRow row = RowOf(resolved);
  std::string warning;
  if (const auto fault = JudgeText(row, value); fault && !value.empty()) {
    const FaultWording wording = WordFault(row, value, *fault);
    std::string text = resolved.Join() + ": " + Quoted(value) + ": " + wording.what;
    if (!wording.expected.empty()) text += ", expected " + wording.expected;
    if (!wording.suggestion.empty()) text += "; did you mean " + Quoted(wording.suggestion) + "?";
    if (fault->severity == Severity::kError && !limits.force) return Fail(content, text);
    if (fault->severity != Severity::kNote) warning = std::move(text);
  }
  EditedText result = Setter(content, *document, std::move(resolved), value).Set(limits);
  if (result.error.empty()) result.warning = std::move(warning);
  return result;
}

// An element may stand several times, of which only the first is read, or under an older name
// beside the current one. All of them are removed.
EditedText UnsetOptionInText(std::string_view content, std::string_view path,
                             const EditLimits& limits) {
  EditedText result;
  result.content = content;
  while (true) {
    const std::string current = result.content;
    const auto document = std::make_unique<OpenDocument>(current);
    if (!document->error().empty()) return Fail(content, document->error(), document->error_line());
    const ResolvedPath resolved = ResolvePath(path, document->model());
    if (resolved.steps.empty()) return Fail(content, resolved.fault);
    if (std::string refusal = RefuseNumbers(*document, resolved); !refusal.empty()) {
      return Fail(content, std::move(refusal));
    }
    EditedText step = RemoveElement(current, *document, resolved, limits);
    if (!step.error.empty()) return Fail(content, step.error, step.error_line);
    if (step.changes.empty()) return result;
    result.content = std::move(step.content);
    result.changes.push_back(std::move(step.changes.front()));
    if (resolved.steps.back().number > 0) return result;  // the next entry has this number now
  }
}

}  // namespace vexor
