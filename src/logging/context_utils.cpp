#include "vexor/logging/context_utils.h"

#include "util/standard_output.h"

ContextUtils::~ContextUtils() = default;

// By value: front ends override it with this signature.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool ContextUtils::CreateAutoRun(std::string script, unsigned char flags) {
  vexor::StandardOutput() << script << static_cast<char>(flags);
  return false;
}
