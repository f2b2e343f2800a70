#include "vexor/config/workloads.h"

#include <tinyxml2.h>

#include "config/option_reader.h"
#include "config/tables/workload_tables.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

const XMLElement* FindGroup(const XMLElement& section, std::string_view group) {
  if (group.empty()) return &section;
  return section.FirstChildElement(std::string(group).c_str());
}

void ReadWorkload(const XMLElement& group, const WorkloadRow& workload,
                  _WORKLOADS_XMLCFG& workloads) {
  ConfigRecord& record = workload.record(workloads);
  if (workload.name_home != nullptr) {
    static_cast<_GFX_WORKLOAD_CFG&>(record).AutoRun = false;
    record.*workload.name_home = workload.name;
  }
  const XMLElement* const element = group.FirstChildElement(std::string(workload.name).c_str());
  if (element != nullptr) ReadOptions(*element, workload.options, record, nullptr);
}

}  // namespace
}  // namespace vexor

bool GetWorkLoadsXML(_WORKLOADS_XMLCFG& workloads, const tinyxml2::XMLElement* root) {
  const auto* const section = root == nullptr ? nullptr : root->FirstChildElement("WORKLOADS");
  if (section == nullptr) return false;
  for (const vexor::WorkloadRow& workload : vexor::kWorkloads) {
    const auto* const group = vexor::FindGroup(*section, workload.group);
    if (group != nullptr) vexor::ReadWorkload(*group, workload, workloads);
  }
  return true;
}
