// What is wrong with ratios in an option text; nothing for a good one. Empty text is good: it means
// all ratios.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParseTrendRatios`.
std::optional<Fault> CheckTrendRatios(std::string_view text);

// Of `ParseExePstates`.
std::optional<Fault> CheckExePstates(std::string_view text);

// Of `ParseSagvRatios`.
std::optional<Fault> CheckSagvRatios(std::string_view text);

// Of `ParseSagvRatios`, for a test that knows "Low" and "High" only.
std::optional<Fault> CheckLowHighRatios(std::string_view text);

// Of `ParseTurboActivationRatios`.
std::optional<Fault> CheckTurboActivationRatios(std::string_view text);

}  // namespace vexor
