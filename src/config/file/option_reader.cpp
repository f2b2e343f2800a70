#include "config/file/option_reader.h"

#include <array>
#include <cassert>

#include "config/file/element_walk.h"
#include "config/tables/sections.h"
#include "util/text.h"

namespace vexor {
namespace {

// The first child with an option's name.
struct Found {
  const tinyxml2::XMLElement* element = nullptr;
  std::optional<std::string_view> text;
};

// Reading takes two passes: the children are collected first and stored in row order afterwards, so
// that Overwrite and Adjustment do not depend on the order of elements in the file.
using FoundOptions = std::array<Found, kMaxOptions>;

void AppendFlattened(std::string_view name, std::string_view text, Flatten mode, std::string& out) {
  if (mode == Flatten::kWithoutDefaults && (text.empty() || text == "Default")) return;
  out += '<';
  out += name;
  if (text.empty()) {
    out += "/>  ";
    return;
  }
  out += '>';
  out += text;
  out += "  ";
}

void StoreText(const OptionRow& option, const std::optional<std::string_view>& text,
               ConfigRecord& record) {
  assert(option.text != nullptr);
  std::string& home = record.*option.text;
  const std::string_view value = text.value_or(option.fallback);
  switch (option.overwrite) {
    case Overwrite::kIfGiven:
      if (value.empty()) return;
      break;
    case Overwrite::kIfEmpty:
      if (!home.empty()) return;
      break;
    case Overwrite::kAlways:
      break;
  }
  home = value;
}

void StoreOption(const OptionRow& option, const Found& found, ConfigRecord& record) {
  if (!option.IsRead()) return;
  if (option.text != nullptr) {
    StoreText(option, found.text, record);
  } else if (option.flag != nullptr) {
    record.*option.flag = found.element != nullptr && IsTrue(*found.element);
  } else if (!option.item.empty()) {
    assert(option.list != nullptr);
    (record.*option.list).clear();
    if (found.element != nullptr) ReadItems(*found.element, option.item, record.*option.list);
  }
  if (option.adjust.run != nullptr) option.adjust.run(record);
}

bool IsRepeated(const OptionRow& option) {
  return option.list != nullptr && option.item.empty() && option.IsRead();
}

}  // namespace

void ReadItems(const tinyxml2::XMLElement& element, std::string_view item,
               std::vector<std::string>& items) {
  for (const tinyxml2::XMLElement& child : ChildElements(element)) {
    if (item != child.Name()) continue;
    const std::string_view text = TextOf(child);
    if (!text.empty()) items.emplace_back(text);
  }
}

void ReadOptions(const tinyxml2::XMLElement& element, std::span<const OptionRow> options,
                 ConfigRecord& record, std::string* flattened, Flatten mode) {
  assert(options.size() <= kMaxOptions);
  if (flattened != nullptr) flattened->clear();
  for (const OptionRow& option : options) {
    if (IsRepeated(option)) (record.*option.list).clear();
  }
  FoundOptions found;
  RowFinder finder(options, &OptionRow::name);
  for (const tinyxml2::XMLElement& child : ChildElements(element)) {
    const std::string_view name = child.Name();
    const std::optional<std::string_view> text = TrimmedText(child);
    if (flattened != nullptr) AppendFlattened(name, text.value_or(""), mode, *flattened);
    const std::size_t i = finder.Find(name);
    if (i == options.size()) continue;
    if (IsRepeated(options[i])) {
      if (text && !text->empty()) (record.*options[i].list).emplace_back(*text);
    } else if (found[i].element == nullptr) {
      found[i] = {&child, text};
    }
  }
  for (std::size_t i = 0; i < options.size(); ++i) StoreOption(options[i], found[i], record);
}

void ReadArguments(const tinyxml2::XMLElement& element, std::span<const OptionRow> options,
                   ConfigRecord& record, std::string* flattened) {
  assert(options.size() <= kMaxOptions);
  if (flattened != nullptr) flattened->clear();
  FoundOptions found;
  RowFinder finder(options, &OptionRow::name);
  for (const tinyxml2::XMLElement& child : ChildElements(element)) {
    const std::string_view element_name = child.Name();
    if (flattened != nullptr) {
      AppendFlattened(element_name, TextOf(child), Flatten::kAll, *flattened);
    }
    const char* const name = element_name == kArgumentElement ? child.Attribute("name") : nullptr;
    if (name == nullptr) continue;
    const std::size_t i = finder.Find(name);
    if (i == options.size() || found[i].element != nullptr) continue;
    const char* const value = child.Attribute("val");
    found[i] = {&child, value == nullptr ? "" : value};
  }
  for (std::size_t i = 0; i < options.size(); ++i) StoreOption(options[i], found[i], record);
}

void ResetOptions(std::span<const OptionRow> options, ConfigRecord& record) {
  for (const OptionRow& option : options) {
    if (option.text != nullptr) {
      record.*option.text = option.reset;
    } else if (option.flag != nullptr) {
      record.*option.flag = false;
    } else {
      assert(option.list != nullptr);  // see OptionOf: rows of named values have no record
      (record.*option.list).clear();
    }
  }
}

}  // namespace vexor
