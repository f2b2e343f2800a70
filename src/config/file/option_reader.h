// Fills a record from an element, by the rows of its options.
#pragma once

#include <span>
#include <string>

#include "config/tables/option_table.h"

namespace vexor {

// Whether a flattened element includes empty values and "Default".
enum class Flatten : std::uint8_t { kAll, kWithoutDefaults };

// Reads the element's children into the record. If `flattened` is not null, also stores all
// children in it, known or not, as one text: "<name>text  ", or "<name/>  " for one without text.
void ReadOptions(const tinyxml2::XMLElement& element, std::span<const OptionRow> options,
                 ConfigRecord& record, std::string* flattened, Flatten mode = Flatten::kAll);

// Does the same for options in "arg" children: the attribute "name" is the option's name, "val" its
// value, untrimmed. The first "arg" of a name counts, even if it has no "val".
void ReadArguments(const tinyxml2::XMLElement& element, std::span<const OptionRow> options,
                   ConfigRecord& record, std::string* flattened);

// Sets every option to its reset value.
void ResetOptions(std::span<const OptionRow> options, ConfigRecord& record);

// Appends the non-empty texts of the children named `item`.
void ReadItems(const tinyxml2::XMLElement& element, std::string_view item,
               std::vector<std::string>& items);

}  // namespace vexor
