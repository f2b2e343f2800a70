// A tree of all elements that a configuration file may have, built from the option tables. Checker,
// description, schema and reference walk it.
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

// All records that a file can fill.
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
    kSwitch,  // an AutoRun switch: true only for exactly "true"
    kCounter,
    kItem,    // the text of a list entry
    kPairs,   // elements of any name, each a named value
    kTraces,  // elements of any name, each a trace entry
  };

  std::string_view name;
  Content content = Content::kChildren;
  std::vector<std::string_view> currents = {};  // of an older name: the current names
  std::string_view about = {};
  const OptionRow* option = nullptr;  // kOption and kItem; may be null for kItem
  bool repeats = false;               // whether all elements of the name count, not only the first
  bool is_read = true;
  const ConfigRecord* record = nullptr;   // the record of the children's options
  const SystemListRow* list = nullptr;    // set for lists under "SysConfiguration" and their items
  const CustomTableRow* table = nullptr;  // set for containers of register items
  std::vector<ElementModel> children = {};

  // Returns whether the element holds elements and not a text.
  [[nodiscard]] bool HoldsElements() const {
    return content == Content::kChildren || content == Content::kArguments ||
           content == Content::kPairs || content == Content::kTraces;
  }
  [[nodiscard]] bool IsOlder() const { return !currents.empty(); }
  [[nodiscard]] bool StandsFor(std::string_view current) const {
    return std::ranges::find(currents, current) != currents.end();
  }
};

// Builds the tree of the root element. Its nodes point into `records`; their values do not matter
// if only the structure is needed.
ElementModel MakeDocumentModel(const FullRecords& records);

// Returns the child of that name, or null.
const ElementModel* FindChild(const ElementModel& parent, std::string_view name);

}  // namespace vexor
