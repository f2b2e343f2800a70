#include "config/edit/open_document.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "config/file/xml_lint.h"
#include "vexor/config/overrides.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using Kind = SourceNode::Kind;

bool IsText(const ElementModel* model) {
  return model == nullptr || model->content == Content::kItem || model->content == Content::kOption;
}

// The values of a description by path. Named values may stand several times; then the number of
// earlier ones tells them apart.
using Values = std::map<std::pair<std::string_view, std::size_t>, const Setting*>;

Values IndexValues(const Description& description) {
  Values values;
  std::map<std::string_view, std::size_t> seen;
  for (const Setting& setting : description.settings) {
    values.emplace(std::pair(std::string_view(setting.path), seen[setting.path]++), &setting);
  }
  return values;
}

bool IsDerived(const Setting* setting) {
  return setting != nullptr && setting->origin == Origin::kDerived;
}

}  // namespace

OpenDocument::OpenDocument(std::string_view content) : tree_(content) {
  DescribeDocument(content, {}, described_);
  FindError();
  if (error_.empty()) nodes_.emplace(described_.document, tree_);
}

// The positions are those of a strict parser, so it has to accept the whole document.
void OpenDocument::FindError() {
  error_ = description().error;
  error_line_ = description().error_line;
  if (!error_.empty() || tree_.IsWhole()) return;
  const XmlLint lint = LintXml(tree_.content());
  error_ = "cannot be changed in place before its XML is mended";
  error_line_ = lint.stop ? lint.stop->line : 0;
  if (lint.faults.empty()) return;
  const XmlFault& first = lint.faults.front();
  error_line_ = first.line;
  error_ += ": " + first.what;
  if (!first.expected.empty()) error_ += ", expected " + first.expected;
}

const Setting* OpenDocument::FindSetting(std::string_view path) const {
  const auto setting = std::ranges::find(description().settings, path, &Setting::path);
  return setting == description().settings.end() ? nullptr : &*setting;
}

std::size_t OpenDocument::ElementOf(const Setting& setting) const {
  const auto index = static_cast<std::size_t>(&setting - description().settings.data());
  const tinyxml2::XMLElement* const element = described_.sources[index];
  return element == nullptr ? 0 : nodes_->Find(element);
}

std::size_t OpenDocument::FindStep(std::size_t parent, const ElementModel& parent_model,
                                   const PathStep& step) const {
  const bool is_any = step.model == nullptr && parent_model.content == Content::kTraces;
  std::size_t older = 0;
  std::size_t count = 0;
  for (std::size_t node = tree_.FirstChild(parent); node != 0; node = tree_.NextSibling(node)) {
    if (tree_[node].kind != Kind::kElement) continue;
    const std::string_view name = NameIn(parent_model, node);
    if (is_any || name == step.name) {
      // The reader skips entries without a text.
      const bool counts = step.number == 0 || !IsText(step.model) || tree_.TextNodeOf(node) != 0;
      if (counts && ++count >= step.number) return node;
      continue;
    }
    const ElementModel* const model = FindChild(parent_model, name);
    if (older == 0 && model != nullptr && model->StandsFor(step.name)) older = node;
  }
  return older;
}

std::size_t OpenDocument::FindElement(const ResolvedPath& path) const {
  std::size_t element = Root();
  const ElementModel* parent_model = &model();
  for (const PathStep& step : path.steps) {
    element = FindStep(element, *parent_model, step);
    if (element == 0) return 0;
    if (step.model != nullptr) parent_model = step.model;
  }
  return element;
}

std::string_view OpenDocument::NameIn(const ElementModel& parent, std::size_t element) const {
  if (parent.content != Content::kArguments) return tree_.TextOf(tree_.NameOf(element));
  const auto name = tree_.FindAttribute(element, "name");
  return name ? tree_.TextOf(name->value) : std::string_view();
}

std::size_t OpenDocument::FindSibling(std::size_t parent, const ElementModel& model,
                                      std::string_view name) const {
  const auto order_of = [&model](std::string_view wanted) {
    const ElementModel* const known = FindChild(model, wanted);
    const std::string_view current =
        known != nullptr && known->IsOlder() ? known->currents.front() : wanted;
    return std::ranges::find(model.children, current, &ElementModel::name) - model.children.begin();
  };
  const auto order = order_of(name);
  std::size_t sibling = 0;
  for (std::size_t node = tree_.FirstChild(parent); node != 0; node = tree_.NextSibling(node)) {
    if (tree_[node].kind != Kind::kElement) continue;
    if (order_of(NameIn(model, node)) <= order) sibling = node;
  }
  return sibling;
}

std::size_t OpenDocument::Root() const {
  std::size_t node = tree_.FirstChild(0);
  while (node != 0 && tree_[node].kind != Kind::kElement) node = tree_.NextSibling(node);
  return node;
}

int OpenDocument::LineOf(std::size_t node) const {
  const std::string_view before = tree_.content().substr(0, tree_[node].range.begin);
  return static_cast<int>(std::ranges::count(before, '\n')) + 1;
}

EditedText Fail(std::string_view content, std::string error, int line) {
  EditedText result;
  result.content = content;
  result.error = std::move(error);
  result.error_line = line;
  return result;
}

std::vector<std::string> ListDifferences(const Description& before, const Description& after) {
  const Values old_values = IndexValues(before);
  const Values new_values = IndexValues(after);
  std::vector<std::string> paths;
  const auto compare = [&paths](const Values& values, const Values& others, bool is_second) {
    for (const auto& [key, setting] : values) {
      const auto found = others.find(key);
      const Setting* const other = found == others.end() ? nullptr : found->second;
      if (is_second && other != nullptr) continue;
      if (IsDerived(setting) || IsDerived(other)) continue;
      const std::string_view value = other == nullptr ? std::string_view() : other->value;
      if (setting->value != value) paths.push_back(setting->path);
    }
  };
  compare(old_values, new_values, false);
  compare(new_values, old_values, true);
  return paths;
}

}  // namespace vexor
