#include <iostream>
#include <memory>

#include "commands.h"
#include "files.h"
#include "text_output.h"
#include "vexor/config/writer.h"

namespace vexorcfg {

Status WriteDefaults(const DefaultsArguments& arguments) {
  const auto cfg = std::make_unique<_XML_FULL_CFG>();
  if (arguments.file.empty() || arguments.file == "-") {
    ResetVexorXmlConfiguration(*cfg);
    std::cout << vexor::FormatXMLConfig(*cfg);
    return kClean;
  }
  return WriteRecord(arguments.file, *cfg, true, arguments.force);
}

}  // namespace vexorcfg
