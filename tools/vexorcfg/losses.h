// What a file loses when it is read and written anew.
#pragma once

#include <string>
#include <vector>

#include "comparison.h"
#include "vexor/config/describe.h"

namespace tools::vexorcfg {

struct Losses {
  // What the file says and the new one does not, or not in the same meaning: a line each, in the
  // order of the file.
  std::vector<std::string> stated;
  // The defaults that the file relied on and the new one changes: a line an element.
  std::vector<std::string> defaults;
};

// `comparison` is that of the two descriptions, `file` the name of the first.
Losses ListLosses(const std::string& file, const vexor::Description& before,
                  const vexor::Description& after, const Comparison& comparison);

}  // namespace tools::vexorcfg
