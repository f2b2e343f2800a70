// What stands in a document and no setting comes from: all that is not marked as read.
#pragma once

#include <tinyxml2.h>

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "config/model/document_model.h"
#include "vexor/config/describe.h"

namespace vexor {

class ReadMarks {
 public:
  // Mark the element's own text, and an argument's value.
  void MarkText(const tinyxml2::XMLElement& element);
  void MarkArgument(const tinyxml2::XMLElement& argument);

  [[nodiscard]] bool IsMarked(const void* content) const { return marked_.contains(content); }

 private:
  std::unordered_set<const void*> marked_;
};

// Returns everything else, in the order of the file. `model` is that of the root element, and tells
// which elements are known: an empty one of those holds nothing.
std::vector<Unread> ListUnread(const tinyxml2::XMLDocument& document, const ElementModel& model,
                               const ReadMarks& read);

}  // namespace vexor
