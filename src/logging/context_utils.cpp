#include "vexor/logging/context_utils.h"

#include <iostream>

ContextUtils::~ContextUtils() = default;

// By value: front ends override it with this signature.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool ContextUtils::CreateAutoRun(std::string script, unsigned char flags) {
  std::cout << script << static_cast<char>(flags);
  return false;
}
