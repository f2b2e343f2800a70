// The parts of the report's page, embedded in the program: see the folder "report" and embed.cmake.
#pragma once

#include <string_view>

namespace tools::vexorlog {

extern const std::string_view kReportPage;
extern const std::string_view kReportStyle;
extern const std::string_view kReportScript;
extern const std::string_view kDygraphsStyle;
extern const std::string_view kDygraphsScript;

}  // namespace tools::vexorlog
