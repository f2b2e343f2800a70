#include <memory>

#include "commands.h"
#include "common/files.h"
#include "vexor/config/full_config.h"
#include "vexor/config/reference.h"
#include "vexor/config/schema.h"
#include "vexor/config/writer.h"

namespace tools::vexorcfg {

Status WriteDefaults(const WriteArguments& arguments) {
  const auto cfg = std::make_unique<_XML_FULL_CFG>();
  ResetVexorXmlConfiguration(*cfg);
  return PutDocument(arguments, vexor::FormatXMLConfig(*cfg));
}

Status WriteSchema(const WriteArguments& arguments) {
  return PutDocument(arguments, vexor::GetXMLSchema());
}

Status WriteReference(const WriteArguments& arguments) {
  return PutDocument(arguments, vexor::GetOptionReference());
}

}  // namespace tools::vexorcfg
