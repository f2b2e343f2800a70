// The times of a test: without them it goes through its states without a pause.
#pragma once

#include <tinyxml2.h>

#include <span>
#include <string_view>

#include "config/model/document_model.h"
#include "config/texts/word_list.h"

namespace vexor {

// Returns whether the file at `root` switches the test on whose element the model is of; false for
// an element that is no test's.
bool RunsByItself(const tinyxml2::XMLElement& root, const ElementModel& model);

// Returns the names of the active, in-state and switch times that a test has and its element does
// not give. `texts` are those of the model's children, empty for absent ones. A switch time that
// follows from the others is missing only where these are, too.
Words FindMissingTimes(const ElementModel& model, std::span<const std::string_view> texts);

}  // namespace vexor
