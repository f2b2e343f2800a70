// A program that uses the library: reads a configuration, parses an option, writes a log, catches
// an exception of the library, and prints the library's version.
//   user CONFIGURATION LOG-FOLDER
#include <vexor/vexor.h>

#include <cstdio>
#include <stdexcept>

int main(int argc, char** argv) {
  if (argc != 3) return 2;

  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  if (!VexorConfigParser().ReadXMLPar(argv[1], &cfg, true, true)) return 1;
  const ONTIME_TYPE active = ParseOnTimeType(cfg.GlobalPM.CSTATES.ActiveTime);

  ConsoleOutput::SetPrintLevel(TRACE_CRITICAL);  // the log is not announced
  VexorLogging log("Time,Notes");
  if (!log.Initialize(argv[2], "user", TRACE_INFORMATION, LOG_FILE_NEW)) return 1;
  log.LogNote(GetUnitTimeString(active), TRACE_INFORMATION);
  if (!log.FlushToDisk()) return 1;

  try {
    GetIntegerList("0-99999999", ',', 0, false);
    return 1;
  } catch (const std::length_error&) {
    std::puts(vexor::GetVersionText());
  }
  return 0;
}
