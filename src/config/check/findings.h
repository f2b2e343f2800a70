// What a check of a configuration file has found so far, and where.
#pragma once

#include <tinyxml2.h>

#include <string>
#include <string_view>
#include <vector>

#include "vexor/config/check.h"

namespace vexor {

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
  std::vector<Finding> Sorted() &&;

 private:
  std::vector<Finding> findings_;
};

}  // namespace vexor
