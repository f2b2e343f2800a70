#include "vexor/config/full_config.h"

using namespace vexor;

void ResetVexorXmlConfiguration(_XML_FULL_CFG& cfg) {
  ResetGlobalConfig(cfg.GlobalConfig);
  ResetGlobalPm(cfg.GlobalPM);
  ResetTestControl(cfg.TestControl);
  cfg.SelectionIndex = -1;
  cfg.SelectionText.clear();
}
