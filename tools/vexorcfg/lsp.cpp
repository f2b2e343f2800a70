#include <iostream>

#include "commands.h"
#include "common/terminal.h"
#include "lsp/server.h"

namespace tools::vexorcfg {

Status ServeEditor(const ServerArguments& /*arguments*/) {
  UseBinaryInput();
  UseBinaryOutput();
  std::cin.tie(nullptr);  // the thread that reads must not flush what the other one writes
  return lsp::Serve(std::cin, std::cout, std::cerr) == 0 ? kClean : kWarnings;
}

}  // namespace tools::vexorcfg
