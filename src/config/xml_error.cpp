#include "config/xml_error.h"

namespace vexor {

std::string_view ExplainXmlError(tinyxml2::XMLError error) {
  switch (error) {
    case tinyxml2::XML_ERROR_PARSING_ATTRIBUTE:
      return "a malformed attribute";
    case tinyxml2::XML_ERROR_PARSING_TEXT:
      return "text without an end";
    case tinyxml2::XML_ERROR_PARSING_CDATA:
      return "a CDATA section without an end";
    case tinyxml2::XML_ERROR_PARSING_COMMENT:
      return "a comment without an end";
    case tinyxml2::XML_ERROR_PARSING_DECLARATION:
      return "a malformed or misplaced declaration";
    case tinyxml2::XML_ERROR_PARSING_UNKNOWN:
      return "markup without an end";
    case tinyxml2::XML_ERROR_EMPTY_DOCUMENT:
      return "an empty document";
    case tinyxml2::XML_ERROR_MISMATCHED_ELEMENT:
      return "an element without its closing tag";
    case tinyxml2::XML_ELEMENT_DEPTH_EXCEEDED:
      return "elements nested too deep";
    default:
      return "a malformed tag";
  }
}

}  // namespace vexor
