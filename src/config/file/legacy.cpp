#include "vexor/config/legacy.h"

void CheckLegacyLxDx(_XML_FULL_CFG* cfg) {
  if (cfg == nullptr || !cfg->GlobalPM.Dx_States.FromLegacyElement) return;
  _WL_CUSTOMERS_XMLCFG& control = cfg->TestControl;
  if (!vexor::IsAutoRun(control, PM_TEST_PCIE_LINK)) return;
  if (!vexor::IsAutoRun(control, PM_TEST_DX_STATES)) return;
  const bool link_has_states = !cfg->GlobalPM.PCIe_Link.ConfigState.empty();
  const bool device_has_states = !cfg->GlobalPM.Dx_States.ConfigState.empty();
  if (link_has_states == device_has_states) return;
  vexor::SetAutoRun(control, device_has_states ? PM_TEST_PCIE_LINK : PM_TEST_DX_STATES, false);
}
