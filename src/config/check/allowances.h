// Comments in a file that allow findings: "<!-- vexorcfg: allow VX019, VX054 -->" allows findings
// of these codes in the element that follows it and in all below that. In front of the root
// element, or as the first content of it, such a comment is for the whole file.
#pragma once

#include <tinyxml2.h>

#include <cstddef>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "config/check/findings.h"

namespace vexor {

// Returns whether a comment that is being typed, with its "<!--", is at the codes that it allows.
bool IsAllowance(std::string_view comment);

class Allowances {
 public:
  // Finds the comments of the document. Adds a finding for each that cannot be followed.
  Allowances(const tinyxml2::XMLDocument& document, Findings& findings);

  // Marks the findings that a comment allows, and adds a finding for each code that allowed none.
  void Apply(Findings& findings);

 private:
  // A code in a comment.
  struct Allowance {
    const tinyxml2::XMLComment* comment;
    const tinyxml2::XMLNode* scope;  // null if no element follows the comment
    std::string_view code;
    bool is_used = false;
  };

  // A node that is not a text; they are listed in the order of their lines.
  struct Place {
    int line;
    const tinyxml2::XMLNode* node;
  };

  void CollectComments(const tinyxml2::XMLNode& parent, Findings& findings);
  void CollectPlaces(const tinyxml2::XMLNode& parent);
  void AddComment(const tinyxml2::XMLComment& comment, Findings& findings);
  void AddCodes(const tinyxml2::XMLComment& comment, std::string_view codes, Findings& findings);
  bool Allows(std::string_view code, const tinyxml2::XMLNode* node);
  bool AllowsOnLine(std::string_view code, int line);
  void AddIdle(Findings& findings) const;

  const tinyxml2::XMLDocument& document_;
  std::vector<Allowance> allowances_;  // in the order of the file
  std::map<std::pair<const tinyxml2::XMLNode*, std::string_view>, std::size_t> by_scope_;
  std::vector<Place> places_;
  std::map<std::pair<int, std::string_view>, bool> lines_;  // a cache of AllowsOnLine
};

}  // namespace vexor
