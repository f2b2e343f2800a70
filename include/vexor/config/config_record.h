// The common base of the records that keep options of a configuration file.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vexor {

// Empty. It lets one table of options serve every record: the library's tables name a member of any
// record derived from this one. Records are plain data, owned by the caller.
struct ConfigRecord {};

// Named values in file order; a name may stand more than once.
using NamedValues = std::vector<std::pair<std::string, std::string>>;

}  // namespace vexor

namespace tinyxml2 {
class XMLDocument;
class XMLElement;
}  // namespace tinyxml2
