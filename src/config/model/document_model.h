// The elements of a configuration file as one tree, made from the tables of options: which elements
// may stand where, and what their texts are. Checker, description, schema and reference walk it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/tables/option_table.h"
#include "vexor/config/full_config.h"
#include "vexor/config/workloads.h"

namespace vexor {

struct CustomTableRow;
struct SystemListRow;

// All that a file can fill.
struct FullRecords {
  _XML_FULL_CFG config;
  _WORKLOADS_XMLCFG workloads;
};

struct ElementModel {
  enum class Content : std::uint8_t {
    kChildren,   // the elements below
    kArguments,  // "arg" elements that name the options below
    kOption,     // the text of `option`
    kVersion,
    kSwitch,  // an automatic run: exactly "true", or not
    kCounter,
    kItem,    // an entry of a list
    kPairs,   // any elements, each a named value
    kTraces,  // any elements, each a trace entry
  };

  std::string_view name;
  Content content = Content::kChildren;
  std::vector<std::string_view> currents = {};  // of an older name: what it stands for
  std::string_view about = {};
  const OptionRow* option = nullptr;  // kOption and kItem; may be null for kItem
  bool repeats = false;               // every element of the name counts
  bool is_read = true;
  const ConfigRecord* record = nullptr;   // of the children's options
  const SystemListRow* list = nullptr;    // of a list under "SysConfiguration", and of its items
  const CustomTableRow* table = nullptr;  // of a container of register items
  std::vector<ElementModel> children = {};

  // Whether elements stand in it, and no text of its own.
  [[nodiscard]] bool HoldsElements() const {
    return content == Content::kChildren || content == Content::kArguments ||
           content == Content::kPairs || content == Content::kTraces;
  }
  [[nodiscard]] bool IsOlder() const { return !currents.empty(); }
  [[nodiscard]] bool StandsFor(std::string_view current) const {
    return std::ranges::find(currents, current) != currents.end();
  }
};

// Makes the tree of the root element. Its nodes point into `records`, which may be empty ones where
// only the shape is wanted.
ElementModel MakeDocumentModel(const FullRecords& records);

// Returns the child of that name, null when there is none.
const ElementModel* FindChild(const ElementModel& parent, std::string_view name);

}  // namespace vexor
