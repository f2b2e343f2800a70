// Finds the content of a document that sets nothing: everything that is not marked as read.
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
  // Marks an element's own text.
  void MarkText(const tinyxml2::XMLElement& element);
  // Marks the value of an argument.
  void MarkArgument(const tinyxml2::XMLElement& argument);

  [[nodiscard]] bool IsMarked(const void* content) const { return marked_.contains(content); }

 private:
  std::unordered_set<const void*> marked_;
};

// Returns the content that is not marked, in the order of the file. `model` is that of the root
// element: an empty element is only reported if the model does not contain it.
std::vector<Unread> ListUnread(const tinyxml2::XMLDocument& document, const ElementModel& model,
                               const ReadMarks& read);

}  // namespace vexor
