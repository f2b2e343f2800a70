// The options of "TEST_CONTROL_CFG".
#pragma once

#include "config/tables/option_table.h"
#include "vexor/config/test_control.h"

namespace vexor {

// The options of "WorkloadCfg". In all other sections a missing option reads as empty; here it
// reads as its default, which the loop below copies to the fallback.
// clang-format off
inline constexpr auto kWorkloadRunnerOptions = []() consteval {
  auto rows = Options<_WL_CUSTOMERS_XMLCFG>({
      {.name = "Log_File_Name",
       .text = &_WL_CUSTOMERS_XMLCFG::Log_File_Name,
       .reset = "Generated/VexorWorkload.csv",
       .about = "Log file of the workload runner."},
      {.name = "ExeMode",
       .text = &_WL_CUSTOMERS_XMLCFG::ExeMode,
       .reset = "CM",
       .about = "Execution mode of the runner."},
      {.name = "MaxWorkloads",
       .text = &_WL_CUSTOMERS_XMLCFG::MaxWorkloads,
       .reset = "Max",
       .about = "Maximum number of workloads that run at once."},
      {.name = "Delay",
       .text = &_WL_CUSTOMERS_XMLCFG::Delay,
       .reset = "0",
       .about = "Delay between two workloads."},
      {.name = "LoopNum",
       .text = &_WL_CUSTOMERS_XMLCFG::LoopNum,
       .syntax = Syntax::kCount,
       .reset = "1",
       .about = "Number of rounds over the workloads."},
  });
  for (auto& row : rows) row.fallback = row.reset;
  return Finish(rows);
}
();
// clang-format on

}  // namespace vexor
