// Finds the element that a path of the user names.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/model/document_model.h"

namespace vexor {

// One element of a path, below the one before it.
struct PathStep {
  const ElementModel* model = nullptr;  // null for an entry of kTraces and a value of kPairs
  std::string name;                     // of the element, or of the argument
  std::size_t number = 0;               // of a repeated element, from 1; 0 if the path has none
};

struct ResolvedPath {
  std::vector<PathStep> steps;  // from a section down; empty if the path names nothing
  std::string fault;            // then, what is wrong with it

  // Returns "GLOBALPM/CORE/CSTATES/ActiveTime", with numbers in "[]".
  [[nodiscard]] std::string Join() const { return Join(steps.size()); }
  [[nodiscard]] std::string Join(std::size_t count) const;  // of the first steps
  [[nodiscard]] const ElementModel& Parent() const;  // the model of the element around the last
};

// Resolves a path such as "GLOBALPM/CORE/CSTATES/ActiveTime", or its end if that is unique, such as
// "CSTATES/ActiveTime", in any case. A path in which all names have the case of the file's elements
// is preferred.
ResolvedPath ResolvePath(std::string_view path, const ElementModel& root);

// Returns the path of a list: that of an entry without the number at its end.
std::string_view ListOf(std::string_view path);

// Returns why the path has no settings of its own, as that of an older name; empty if it may.
std::string RefuseOlderName(const ResolvedPath& path);

}  // namespace vexor
