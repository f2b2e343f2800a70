// The meaning of valid option texts in plain words: "80 ms to 120 ms". Texts of one syntax that
// mean the same have the same description, so that files can be compared by it. Each function
// requires text that the check of its syntax accepts.
#pragma once

#include <string>
#include <string_view>

namespace vexor {

std::string DescribeDuration(std::string_view text);
std::string DescribeCycles(std::string_view text);
std::string DescribeTimeout(std::string_view text);
std::string DescribeScope(std::string_view text);
std::string DescribeSpread(std::string_view text);
std::string DescribePackages(std::string_view text);
std::string DescribeUnits(std::string_view text);
std::string DescribeThreads(std::string_view text);
std::string DescribeCstates(std::string_view text);
std::string DescribeCounts(std::string_view text);
std::string DescribeLists(std::string_view text);
std::string DescribeMask(std::string_view text);
std::string DescribeCount(std::string_view text);
std::string DescribeAddress(std::string_view text);
std::string DescribeIceState(std::string_view text);
std::string DescribeIceStates(std::string_view text);
std::string DescribeRatios(std::string_view text);
std::string DescribeExitRatios(std::string_view text);
std::string DescribePstates(std::string_view text);
std::string DescribePoints(std::string_view text);
std::string DescribeSleepStates(std::string_view text);
std::string DescribeWakeEvents(std::string_view text);
std::string DescribePci(std::string_view text);
std::string DescribeRegisters(std::string_view text);

}  // namespace vexor
