// Finds what is lost when a file is read and written again.
#pragma once

#include <string>
#include <vector>

#include "comparison.h"
#include "vexor/config/describe.h"

namespace tools::vexorcfg {

struct Losses {
  // What the new file lacks or changes in meaning, one line for each, in the order of the file.
  std::vector<std::string> stated;
  // Defaults that the file relied on and that the new file changes, one line for each element.
  std::vector<std::string> defaults;
};

// `comparison` compares the two descriptions; `file` is the name of the first.
Losses ListLosses(const std::string& file, const vexor::Description& before,
                  const vexor::Description& after, const Comparison& comparison);

}  // namespace tools::vexorcfg
