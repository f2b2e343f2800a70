#include "vexor/config/full_config.h"

void ResetVexorXmlConfiguration(_XML_FULL_CFG& cfg) {
  vexor::ResetGlobalConfig(cfg.GlobalConfig);
  vexor::ResetGlobalPm(cfg.GlobalPM);
  vexor::ResetTestControl(cfg.TestControl);
  cfg.SelectionIndex = -1;
  cfg.SelectionText.clear();
}
