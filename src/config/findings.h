// What a check of a configuration file has found so far, and where.
#pragma once

#include <tinyxml2.h>

#include <string>
#include <string_view>
#include <vector>

#include "vexor/config/check.h"

namespace vexor {

// Returns the path of an element below `parent`. Paths begin below the sections of the root, which
// add nothing: "CORE/CSTATES" for "CSTATES" in the path "CORE", "CORE" for it in "GLOBALPM". A very
// long name is cut.
std::string JoinPath(const std::string& parent, std::string_view name);

// Returns the name, cut if it is very long.
std::string ShortenName(std::string_view name);

class Findings {
 public:
  // Add a finding, on the line of the node or the one given. What is expected and suggested is put
  // into the result before the next finding is added.
  Finding& Add(Severity severity, int line, std::string path, std::string_view text,
               std::string what);
  Finding& AddError(const tinyxml2::XMLNode& at, const std::string& path, std::string_view text,
                    std::string what);
  Finding& AddWarning(const tinyxml2::XMLNode& at, const std::string& path, std::string_view text,
                      std::string what);
  Finding& AddNote(const tinyxml2::XMLNode& at, const std::string& path, std::string_view text,
                   std::string what);

  // Gives all findings in the order of their lines, those of one line as they were added.
  std::vector<Finding> TakeSorted() &&;

 private:
  std::vector<Finding> findings_;
};

}  // namespace vexor
