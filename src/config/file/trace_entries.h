// The entries of "TestTraceCfg", such as "CSTATES_Core_Con:10": fields joined by "_", the first the
// name of a test, the third of parts joined by ":".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vexor {

// Brings entries of older files up to date. Its errors are std::out_of_range with the text "invalid
// vector<T> subscript": on purpose, an entry in the wrong form makes the configuration unusable.
class TraceMigration {
 public:
  // Throws for a version text of fewer than four pieces.
  explicit TraceMigration(const std::string& version);

  // Appends the entry, which is not empty, in its current form: two entries where the older test
  // stands for two. Throws for fewer than three fields or a third field without a part.
  void Append(const std::string& entry, std::vector<std::string>& entries) const;

 private:
  bool is_old_ = false;  // "Con" was still written "0"
};

}  // namespace vexor
