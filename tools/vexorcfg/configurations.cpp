#include "configurations.h"

#include <stdexcept>

#include "common/text_output.h"
#include "vexor/config/reader.h"

namespace tools::vexorcfg {

std::optional<vexor::Description> DescribeInput(const std::string& path, Input& input) {
  input = ReadInput(path);
  if (!input.failure.empty()) {
    Refuse(input.name, input.failure);
    return std::nullopt;
  }
  vexor::Description description = vexor::DescribeXMLConfigText(input.content);
  if (description.error.empty()) return description;
  const int line = description.error_line;
  Refuse(line == 0 ? input.name : input.name + ":" + std::to_string(line), description.error);
  return std::nullopt;
}

std::unique_ptr<_XML_FULL_CFG> ReadRecord(const std::string& path) {
  auto cfg = std::make_unique<_XML_FULL_CFG>();
  ResetVexorXmlConfiguration(*cfg);
  bool is_read = false;
  try {
    is_read = VexorConfigParser().ReadXMLPar(path, cfg.get(), false, false);
  } catch (const std::out_of_range&) {
    is_read = false;  // a trace entry
  }
  if (is_read) return cfg;
  Refuse(path, "changed while it was read");
  return nullptr;
}

}  // namespace tools::vexorcfg
