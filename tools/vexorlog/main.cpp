#include "cli.h"

int main(int argc, char** argv) {
  tools::Status status = tools::kClean;
  const auto app = tools::vexorlog::MakeCommandLine(status);
  return tools::RunProgram(*app, status, argc, argv);
}
