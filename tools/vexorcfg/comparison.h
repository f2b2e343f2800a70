// Compares the meaning of two configurations.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "vexor/config/describe.h"

namespace tools::vexorcfg {

// A setting of two descriptions that differs, or an entry of a list that only one of them has. An
// entry may have several settings.
struct Difference {
  std::string path;
  std::span<const vexor::Setting> a;  // empty if only `b` has it
  std::span<const vexor::Setting> b;  // empty if only `a` has it

  [[nodiscard]] const vexor::Setting& setting() const { return a.empty() ? b.front() : a.front(); }
};

struct SettingPair {
  const vexor::Setting* a;
  const vexor::Setting* b;
};

struct Comparison {
  std::vector<Difference> differences;         // in the order of a written file
  std::vector<SettingPair> equal;              // settings of one meaning
  std::size_t reworded = 0;                    // those of them that are written differently
  std::vector<const vexor::Setting*> misread;  // of `a`: not read as the element says
};

// Lists are aligned, so that an entry that one of them lacks does not make those behind it differ.
// The result refers to the two descriptions.
Comparison Compare(const vexor::Description& a, const vexor::Description& b);

// Returns all defaults, as a description of a file that states nothing.
vexor::Description DescribeDefaults();

}  // namespace tools::vexorcfg
