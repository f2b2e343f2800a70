// The entries of "TestTraceCfg", such as "CSTATES_Core_Con:10": fields joined by "_". The first
// field is the name of a test; the third consists of parts joined by ":".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vexor {

// Converts the entries of older files to the current form. Malformed entries throw
// std::out_of_range with the text "invalid vector<T> subscript": a configuration with one must not
// be used.
class TraceMigration {
 public:
  // Throws for a version of fewer than four pieces.
  explicit TraceMigration(const std::string& version);

  // Appends the current form of an entry, which must not be empty: two entries if its older test
  // name stands for two tests. Throws for fewer than three fields or an empty third field.
  void Append(const std::string& entry, std::vector<std::string>& entries) const;

 private:
  bool is_old_ = false;  // whether the version wrote "0" instead of "Con"
};

}  // namespace vexor
