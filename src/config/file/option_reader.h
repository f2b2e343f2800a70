// Filling a record from an element by the rows of its options.
#pragma once

#include <span>
#include <string>

#include "config/tables/option_table.h"

namespace vexor {

// Whether empty values and "Default" stay out of a flattened element.
enum class Flatten : std::uint8_t { kAll, kWithoutDefaults };

// Reads the element's children into the record and, where `flattened` is given, joins all of them
// in it: "<name>text  ", or "<name/>  " for one without text.
void ReadOptions(const tinyxml2::XMLElement& element, std::span<const OptionRow> options,
                 ConfigRecord& record, std::string* flattened, Flatten mode = Flatten::kAll);

// The same for options that stand in "arg" children: the attribute "name" is the option's name,
// "val" its value, untrimmed. The first "arg" of a name decides, even without a "val".
void ReadArguments(const tinyxml2::XMLElement& element, std::span<const OptionRow> options,
                   ConfigRecord& record, std::string* flattened);

// Gives every option its reset value.
void ResetOptions(std::span<const OptionRow> options, ConfigRecord& record);

// Appends the text of every child named `item` that has one.
void ReadItems(const tinyxml2::XMLElement& element, std::string_view item,
               std::vector<std::string>& items);

}  // namespace vexor
