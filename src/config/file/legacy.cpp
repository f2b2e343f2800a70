#include "vexor/config/legacy.h"

using namespace vexor;

// The older element "PCIe-Link-DState" held the options of two tests, and its switch turned on
// both. If only one of them has device states, the other was not meant and is switched off again.
void CheckLegacyLxDx(_XML_FULL_CFG* cfg) {
  if (cfg == nullptr || !cfg->GlobalPM.Dx_States.FromLegacyElement) return;
  _WL_CUSTOMERS_XMLCFG& control = cfg->TestControl;
  if (!IsAutoRun(control, PM_TEST_PCIE_LINK)) return;
  if (!IsAutoRun(control, PM_TEST_DX_STATES)) return;
  const bool link_has_states = !cfg->GlobalPM.PCIe_Link.ConfigState.empty();
  const bool device_has_states = !cfg->GlobalPM.Dx_States.ConfigState.empty();
  if (link_has_states == device_has_states) return;
  SetAutoRun(control, device_has_states ? PM_TEST_PCIE_LINK : PM_TEST_DX_STATES, false);
}
