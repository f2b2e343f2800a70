#include <memory>
#include <string>

#include "commands.h"
#include "common/files.h"
#include "common/uri.h"
#include "vexor/config/full_config.h"
#include "vexor/config/reference.h"
#include "vexor/config/schema.h"
#include "vexor/config/writer.h"

namespace tools::vexorcfg {

namespace {

// Returns the line before a root element that tells XML editors where the schema is.
std::string NameSchema(std::string_view schema) {
  std::string line = "<?xml-model href=\"";
  for (const char c : UriOf(schema)) line += c == '&' ? std::string("&amp;") : std::string(1, c);
  return line + "\" type=\"application/xml\" schematypens=\"http://www.w3.org/2001/XMLSchema\"?>\n";
}

}  // namespace

Status WriteDefaults(const DefaultsArguments& arguments) {
  const auto cfg = std::make_unique<_XML_FULL_CFG>();
  ResetVexorXmlConfiguration(*cfg);
  const std::string head = arguments.schema.empty() ? "" : NameSchema(arguments.schema);
  return PutDocument(arguments, head + vexor::FormatXMLConfig(*cfg));
}

Status WriteSchema(const WriteArguments& arguments) {
  return PutDocument(arguments, vexor::GetXMLSchema());
}

Status WriteReference(const WriteArguments& arguments) {
  return PutDocument(arguments, vexor::GetOptionReference());
}

}  // namespace tools::vexorcfg
