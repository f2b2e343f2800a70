#include "vexor/config/workloads.h"

#include <tinyxml2.h>

#include "config/file/element_walk.h"
#include "config/file/option_reader.h"
#include "config/tables/workload_tables.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

void ReadWorkload(const XMLElement& group, const WorkloadRow& workload,
                  _WORKLOADS_XMLCFG& workloads) {
  ConfigRecord& record = workload.record(workloads);
  if (workload.name_home != nullptr) {
    // Only the rows of graphics workloads have a name, so the record is theirs.
    static_cast<_GFX_WORKLOAD_CFG&>(record).AutoRun = false;
    record.*workload.name_home = workload.name;
  }
  const XMLElement* const element = FindElement(&group, workload.name);
  if (element != nullptr) ReadOptions(*element, workload.options, record, nullptr);
}

}  // namespace
}  // namespace vexor

using namespace vexor;

bool GetWorkLoadsXML(_WORKLOADS_XMLCFG& workloads, const tinyxml2::XMLElement* root) {
  const auto* const section = FindSection(root, Section::kWorkloads);
  if (section == nullptr) return false;
  for (const WorkloadRow& workload : kWorkloads) {
    const auto* const group =
        workload.group.empty() ? section : FindElement(section, workload.group);
    if (group != nullptr) ReadWorkload(*group, workload, workloads);
  }
  return true;
}
