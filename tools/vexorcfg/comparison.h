// Compares the meaning of two configurations.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "vexor/config/describe.h"

namespace tools::vexorcfg {

// A setting in both descriptions; null in the one that does not have it.
struct SettingPair {
  const vexor::Setting* a = nullptr;
  const vexor::Setting* b = nullptr;

  [[nodiscard]] const std::string& path() const { return a != nullptr ? a->path : b->path; }
};

struct Comparison {
  std::vector<SettingPair> differences;        // in the order of a written file
  std::vector<SettingPair> equal;              // settings of one meaning
  std::size_t reworded = 0;                    // those of them that are written differently
  std::vector<const vexor::Setting*> misread;  // of `a`: not read as the element says
};

// The result refers to the two descriptions.
Comparison Compare(const vexor::Description& a, const vexor::Description& b);

// Returns where a setting of a file comes from: "lab.xml:57", "default", ...
std::string PlaceOf(const std::string& file, const vexor::Setting& setting);

}  // namespace tools::vexorcfg
