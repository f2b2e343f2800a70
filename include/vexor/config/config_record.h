// The common base of the records that hold the options of a configuration file.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vexor {

// Empty. As the base of all records, it lets the library's tables of options refer to members of
// any of them. Records are plain data, owned by the caller.
struct ConfigRecord {};

// Pairs of name and value in file order; a name may occur more than once.
using NamedValues = std::vector<std::pair<std::string, std::string>>;

}  // namespace vexor

namespace tinyxml2 {
class XMLDocument;
class XMLElement;
}  // namespace tinyxml2
