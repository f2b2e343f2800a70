#include "library/client.h"

#include <stdexcept>

#include "vexor/vexor.h"

const char* UseVexorUtils(const char* configuration) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  if (!VexorConfigParser().ReadXMLPar(configuration, &cfg, true, true)) return "not read";
  if (GetXMLPMTestsInfo(cfg).empty()) return "nothing read";
  try {
    GetIntegerList("0-99999999", ',', 0, false);
    return "an exception got lost";
  } catch (const std::length_error&) {
    return vexor::GetVersionText();
  }
}
