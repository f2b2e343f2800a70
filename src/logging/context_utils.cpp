#include "vexor/logging/context_utils.h"

#include "util/standard_output.h"

ContextUtils::~ContextUtils() = default;

// Takes the script by value because front ends override this signature.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool ContextUtils::CreateAutoRun(std::string script, unsigned char flags) {
  vexor::StandardOutput() << script << static_cast<char>(flags);
  return false;
}
