#include "config/file/version_rules.h"

#include <algorithm>

#include "vexor/util/strings.h"
#include "vexor/util/version.h"

namespace vexor {

std::vector<std::string> SplitVersion(std::string_view version) {
  std::vector<std::string> pieces = Split(version, '.', false);
  if (pieces.size() >= 4) pieces[3].resize(std::min(pieces[3].find('_'), pieces[3].size()));
  return pieces;
}

bool IsCompatibleVersion(std::string_view version) {
  const std::vector<std::string> pieces = SplitVersion(version);
  const std::vector<std::string> own = SplitVersion(GetVersionText());
  return pieces.size() >= 4 && pieces[0] == own[0] && pieces[3] == own[3];
}

}  // namespace vexor
