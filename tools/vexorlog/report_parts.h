// The files that make up the report's page, built in: see "report" and embed.cmake.
#pragma once

#include <string_view>

namespace tools::vexorlog {

extern const std::string_view kReportPage;
extern const std::string_view kReportStyle;
extern const std::string_view kReportScript;
extern const std::string_view kDygraphsStyle;
extern const std::string_view kDygraphsScript;

}  // namespace tools::vexorlog
