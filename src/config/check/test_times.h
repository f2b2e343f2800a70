// The times of a test. A test that is switched on without them runs through its states without
// pause.
#pragma once

#include <tinyxml2.h>

#include <span>
#include <string_view>

#include "config/model/document_model.h"
#include "config/texts/word_list.h"

namespace vexor {

// Returns whether the file with the root element `root` switches on the test that `model`
// describes; false for elements other than tests.
bool IsSwitchedOn(const tinyxml2::XMLElement& root, const ElementModel& model);

// Returns the names of the active, in-state and switch times that the test has but its element
// lacks, or has as "Invalid", which is no time. `texts` are the texts of the model's children,
// empty for absent ones. An empty switch time that is derived from the others is only missing if
// these are missing, too.
Words FindMissingTimes(const ElementModel& model, std::span<const std::string_view> texts);

}  // namespace vexor
