#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include "config/edit/open_document.h"
#include "config/model/element_path.h"
#include "config/tables/finding_kinds.h"
#include "config/tables/sections.h"
#include "util/text.h"
#include "vexor/config/check.h"
#include "vexor/config/edit.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using Kind = SourceNode::Kind;

// Returns the beginning of the paths in a section of the test control.
std::string ControlPath(Section section) {
  return JoinPath(NameOf(Section::kTestControl), NameOf(section)) + "/";
}

// Makes the edits that bring one document to the current form.
class Migrator {
 public:
  explicit Migrator(const OpenDocument& document)
      : document_(document), tree_(document.tree()), editor_(tree_) {}

  // Renames elements, and corrects the switches that the reader corrects because of older names.
  void RenameElements() {
    Walk(document_.Root(), document_.model(), "");
    RenewSwitches();
  }

  // Brings texts, trace entries and the version to their current form.
  void RenewTexts();

  SourceEdits edits;
  std::vector<TextChange> changes;

 private:
  void Walk(std::size_t parent, const ElementModel& model, const std::string& path);
  void RenewElement(std::size_t element, std::size_t parent, const ElementModel& model,
                    const ElementModel& older, const std::string& path);
  bool MergeInto(std::size_t current, std::size_t older, const ElementModel& model,
                 const std::string& path);
  [[nodiscard]] SourceEdits SetSwitch(std::size_t element, std::string_view path) const;
  void RenewFindings();
  void RenewTraces();
  void RenewSwitches();
  void RenewVersion();

  void Add(const SourceEdits& more) { edits.insert(edits.end(), more.begin(), more.end()); }
  void AddChange(std::size_t node, std::string path, std::string what, std::string_view before,
                 std::string_view after) {
    changes.push_back({.line = document_.LineOf(node),
                       .path = std::move(path),
                       .what = std::move(what),
                       .before = std::string(before),
                       .after = std::string(after)});
  }
  [[nodiscard]] std::string_view TextOf(std::size_t element) const {
    const std::size_t text = tree_.TextNodeOf(element);
    return text == 0 ? std::string_view() : TrimSpace(tree_.TextOf(tree_[text].range));
  }

  const OpenDocument& document_;
  const SourceTree& tree_;
  SourceEditor editor_;
};

// Only the first element of a name is read.
void Migrator::Walk(std::size_t parent, const ElementModel& model, const std::string& path) {
  for (std::size_t node = tree_.FirstChild(parent); node != 0; node = tree_.NextSibling(node)) {
    if (tree_[node].kind != Kind::kElement) continue;
    const std::string_view name = document_.NameIn(model, node);
    const ElementModel* const known = FindChild(model, name);
    if (known == nullptr) continue;
    const PathStep step{.model = known, .name = std::string(name)};
    const bool is_first = document_.FindStep(parent, model, step) == node;
    if (!known->repeats && !is_first) continue;
    if (known->IsOlder()) {
      RenewElement(node, parent, model, *known, path);
    } else {
      Walk(node, *known, JoinPath(path, name));
    }
  }
}

// An older name may stand for several current ones. The element becomes the first that the parent
// lacks, and is copied for the others.
void Migrator::RenewElement(std::size_t element, std::size_t parent, const ElementModel& model,
                            const ElementModel& older, const std::string& path) {
  const std::string name(document_.NameIn(model, element));
  bool is_renamed = false;
  bool is_merged = false;
  for (const std::string_view current : older.currents) {
    std::size_t present = 0;
    for (std::size_t node = tree_.FirstChild(parent); node != 0; node = tree_.NextSibling(node)) {
      if (tree_[node].kind != Kind::kElement || document_.NameIn(model, node) != current) continue;
      present = node;
      break;
    }
    const std::string current_path = JoinPath(path, current);
    if (present != 0) {
      is_merged = MergeInto(present, element, older, current_path) || is_merged;
    } else if (!is_renamed) {
      is_renamed = true;
      if (older.content == Content::kSwitch) Add(SetSwitch(element, current_path));
      Add(model.content == Content::kArguments ? editor_.SetAttribute(element, "name", current)
                                               : editor_.Rename(element, current));
      AddChange(element, current_path, "renamed", name, current);
    } else if (const Setting* const setting = document_.FindSetting(current_path);
               older.content == Content::kSwitch && setting != nullptr) {
      Add(editor_.Insert(parent, element, {.name = std::string(current), .text = setting->value}));
      AddChange(element, current_path, "copied", name, current);
    } else {
      Add(editor_.InsertCopy(element, element, current));
      AddChange(element, current_path, "copied", name, current);
    }
  }
  if (is_merged && !is_renamed) {
    Add(editor_.Remove(element));
    AddChange(element, JoinPath(path, name), "removed", TextOf(element), "");
  }
}

// Gives the current element the text of the older one if that is what is read.
bool Migrator::MergeInto(std::size_t current, std::size_t older, const ElementModel& model,
                         const std::string& path) {
  const bool is_switch = model.content == Content::kSwitch;
  if (!is_switch && model.content != Content::kOption) return false;
  const std::string_view text = TextOf(older);
  const bool is_read =
      is_switch ? text == "true" && TextOf(current) != "true" : TextOf(current).empty();
  if (!is_read || text.empty()) return false;
  const Setting* const setting = document_.FindSetting(path);
  if (setting == nullptr) return false;
  Add(editor_.SetText(current, setting->value, is_switch));
  AddChange(current, path, "set", TextOf(current), setting->value);
  return true;
}

// Writes the value that the reader gives to a switch into its element.
SourceEdits Migrator::SetSwitch(std::size_t element, std::string_view path) const {
  const Setting* const setting = document_.FindSetting(path);
  if (setting == nullptr || TextOf(element) == setting->value) return {};
  return editor_.SetText(element, setting->value, true);
}

void Migrator::RenewTexts() {
  RenewFindings();
  RenewTraces();
  RenewVersion();
}

void Migrator::RenewFindings() {
  constexpr CheckLimits kNoLimits{.most_bytes = std::numeric_limits<std::size_t>::max()};
  for (const Finding& finding : CheckXMLConfigText(tree_.content(), kNoLimits)) {
    const bool is_older = finding.code == GetFindingRow(FindingKind::kOlderSetting).code;
    if (!is_older || finding.mend != Mend::kText || finding.column == 0) continue;
    edits.push_back(
        editor_.Replace({finding.at, finding.at + finding.size}, finding.suggestion).front());
    changes.push_back({.line = finding.line,
                       .path = finding.path,
                       .what = "renewed",
                       .before = finding.text,
                       .after = finding.suggestion});
  }
}

// An entry of an older form may stand for two.
void Migrator::RenewTraces() {
  const std::string prefix = ControlPath(Section::kTestTraces);
  std::size_t last = 0;
  for (const Setting& setting : document_.description().settings) {
    if (!setting.path.starts_with(prefix)) continue;
    const std::size_t element = document_.ElementOf(setting);
    if (element == 0 || (setting.origin != Origin::kCorrected && element != last)) continue;
    if (element == last) {
      const std::string name(tree_.TextOf(tree_.NameOf(element)));
      Add(editor_.Insert(tree_[element].parent, element, {.name = name, .text = setting.value}));
      AddChange(element, setting.path, "added", "", setting.value);
    } else {
      Add(editor_.SetText(element, setting.value, false));
      AddChange(element, setting.path, "renewed", TextOf(element), setting.value);
    }
    last = element;
  }
}

// The reader switches tests off that an older file did not mean.
void Migrator::RenewSwitches() {
  const std::string prefix = ControlPath(Section::kAutoRun);
  for (const Setting& setting : document_.description().settings) {
    const bool is_switch = setting.path.starts_with(prefix);
    if (!is_switch || setting.origin != Origin::kCorrected) continue;
    const std::size_t element = document_.ElementOf(setting);
    if (element == 0) continue;
    const bool is_older =
        tree_.TextOf(tree_.NameOf(element)) != std::string_view(setting.path).substr(prefix.size());
    if (is_older || TextOf(element) == setting.value) continue;  // renamed, and corrected there
    Add(editor_.SetText(element, setting.value, true));
    AddChange(element, setting.path, "set", TextOf(element), setting.value);
  }
}

void Migrator::RenewVersion() {
  const PathStep step{.model = nullptr, .name = std::string(NameOf(Section::kVersion))};
  const std::size_t element = document_.FindStep(document_.Root(), document_.model(), step);
  if (element == 0 || document_.description().version == GetVersionText()) return;
  Add(editor_.SetText(element, GetVersionText(), false));
  AddChange(element, step.name, "set", document_.description().version, GetVersionText());
}

}  // namespace

// Names first: texts are found in the elements of current names.
EditedText MigrateText(std::string_view content) {
  EditedText result;
  result.content = content;
  const auto before = std::make_unique<OpenDocument>(content);
  if (!before->error().empty()) return Fail(content, before->error(), before->error_line());
  // An element that was copied may hold older names of its own.
  constexpr int kMostRounds = 4;
  for (int round = 0; round < kMostRounds; ++round) {
    const std::string text = result.content;
    const auto document = std::make_unique<OpenDocument>(text);
    if (!document->error().empty()) return Fail(content, document->error(), document->error_line());
    Migrator migrator(*document);
    migrator.RenameElements();
    const bool is_renamed = !migrator.edits.empty();
    if (!is_renamed) migrator.RenewTexts();
    result.content = ApplyEdits(text, migrator.edits);
    result.changes.insert(result.changes.end(), migrator.changes.begin(), migrator.changes.end());
    if (!is_renamed) break;
  }
  const auto after = std::make_unique<OpenDocument>(result.content);
  if (!after->error().empty()) return Fail(content, after->error(), 0);
  const auto differences = ListDifferences(before->description(), after->description());
  if (!differences.empty()) {
    return Fail(content, "not migrated, because it would change " + differences.front(), 0);
  }
  return result;
}

}  // namespace vexor
