// Findings for unknown names: what was probably meant, and where a misplaced element belongs.
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
  // Keeps references to both arguments.
  UnknownNames(const ElementPlaces& places, Findings& findings)
      : places_(places), findings_(findings) {}

  // These add a finding for an element or argument that `parent` does not have.
  void AddElement(const tinyxml2::XMLElement& element, const ElementModel& parent,
                  const std::string& path);
  void AddArgument(const tinyxml2::XMLElement& argument, std::string_view name,
                   const ElementModel& parent, const std::string& path);

  // Returns the word that was probably meant, like SuggestWord, or empty text if the limit of
  // searches is reached.
  std::string_view Suggest(std::string_view name, std::span<const std::string_view> known);

  // Warns if the trace entry does not start with a test name: long, older or short, in any case.
  void CheckTestOfTrace(const tinyxml2::XMLElement& element, const std::string& entry,
                        const std::string& path);

 private:
  // The limit of searches for similar names in one file. A search takes longer than all other
  // checks of an element, and nobody reads more suggestions.
  static constexpr int kMostSearches = 1000;

  bool MaySearch() { return searches_left_ > 0 && searches_left_-- > 0; }

  const ElementPlaces& places_;
  Findings& findings_;
  int searches_left_ = kMostSearches;
};

}  // namespace vexor
