#include "show.h"

#include <iostream>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "vexor/vexor.h"

namespace vexorcfg {
namespace {

// A summary line is the texts of its options joined by two blanks: the first line names the
// section, the options follow below it.
void PrintLine(std::string_view line) {
  const std::size_t comma = line.find(">,");
  const std::size_t head = comma == std::string_view::npos ? 0 : comma + 2;
  std::string_view rest = line.substr(head);
  if (head > 0) std::cout << "  " << line.substr(0, head - 1) << (rest.empty() ? " -" : "") << '\n';
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find("  "), rest.size());
    if (end > 0) std::cout << "    " << rest.substr(0, end) << '\n';
    rest.remove_prefix(std::min(end + 2, rest.size()));
  }
}

void PrintSection(std::string_view title, const std::vector<std::string>& lines) {
  std::cout << title << '\n';
  if (lines.empty()) std::cout << "  none\n";
  for (const std::string& line : lines) PrintLine(line);
  std::cout << '\n';
}

// The library's own message goes to standard output; this one names the file.
int Refuse(const std::string& file, std::string_view reason) {
  std::cout.flush();
  std::cerr << "vexorcfg: " << file << ": " << reason << '\n';
  return 3;
}

}  // namespace

int Show(const std::string& file) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  try {
    if (!VexorConfigParser().ReadXMLPar(file, &cfg, false, false)) {
      return Refuse(file, "cannot be read as a configuration file");
    }
  } catch (const std::out_of_range&) {
    return Refuse(file,
                  "a trace entry needs three fields joined by \"_\", and the version four pieces");
  }
  std::cout << "Configuration " << file << ", version " << cfg.GlobalConfig.Version << "\n\n";
  PrintSection("Tests that run", GetXMLPMTestsInfo(cfg));
  PrintSection("Test control", GetXMLTestControlInfo(cfg));
  PrintSection("Global configuration", GetXMLGlobalConfigInfo(cfg));
  return 0;
}

}  // namespace vexorcfg
