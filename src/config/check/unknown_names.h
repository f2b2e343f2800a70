// Names that a configuration file does not know: what they were probably meant to be, and where
// they would stand rightly.
#pragma once

#include <tinyxml2.h>

#include <span>
#include <string>
#include <string_view>

#include "config/check/findings.h"
#include "config/model/document_model.h"
#include "config/model/element_places.h"

namespace vexor {

class UnknownNames {
 public:
  // Keeps references to both: the model of the root element, and where the findings go.
  UnknownNames(const ElementModel& root, Findings& findings) : places_(root), findings_(findings) {}

  // Add what there is to say of an element or an argument that `parent` does not have.
  void AddElement(const tinyxml2::XMLElement& element, const ElementModel& parent,
                  const std::string& path);
  void AddArgument(const tinyxml2::XMLElement& argument, std::string_view name,
                   const ElementModel& parent, const std::string& path);

  // Returns the word that an unknown one was probably meant to be, as SuggestWord does, as long as
  // searches are left.
  std::string_view Suggest(std::string_view name, std::span<const std::string_view> known);

  // Adds that the trace entry begins with no test's name, if it does. The names known are the long
  // ones, older and short ones, in any case.
  void AddTestOfTrace(const tinyxml2::XMLElement& element, const std::string& entry,
                      const std::string& path);

 private:
  // For so many unknown names it is searched what they may have been meant to be. It takes longer
  // than all the rest, and nobody reads more.
  static constexpr int kMostSearches = 1000;

  bool MaySearch() { return searches_left_ > 0 && searches_left_-- > 0; }

  ElementPlaces places_;
  Findings& findings_;
  int searches_left_ = kMostSearches;
};

}  // namespace vexor
