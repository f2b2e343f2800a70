// Read a configuration value from an XML element. Any thread may call; the functions use only their
// arguments.
#pragma once

#include <string>
#include <string_view>

#include "vexor/config/config_record.h"
#include "vexor/export.h"

// Returns the text of the first child element of `parent` that is named `name`: its first child
// node, if that is text or CDATA, without surrounding white space (blank, tab, CR, LF). Returns
// `fallback` unchanged if `parent` or `name` is null, the element is missing, or its first child
// node is not text.
VEXOR_EXPORT std::string GetXMLText(const tinyxml2::XMLElement* parent, const char* name,
                                    std::string_view fallback);

// Returns whether the first child node of the first child element named `name` is exactly "true":
// case matters, and nothing is trimmed. Returns `fallback` if `parent` or `name` is null, the
// element is missing, or it has no child node.
VEXOR_EXPORT bool GetXMLBOOL(const tinyxml2::XMLElement* parent, const char* name, bool fallback);

// Returns the element's own text, untrimmed: its first child node, if that is text or CDATA.
// Returns empty text otherwise, and for a null element.
VEXOR_EXPORT std::string getElementText(const tinyxml2::XMLElement* element);

// Returns the attribute's value, untrimmed; `fallback` if `element` or `name` is null or there is
// no such attribute.
VEXOR_EXPORT std::string getElementAttribute(const tinyxml2::XMLElement* element, const char* name,
                                             std::string_view fallback);
