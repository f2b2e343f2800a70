#pragma once

#include <string_view>

namespace vexor {

// The columns of the suite's tests. The blank before "Level" is part of the text that the programs
// behind the logs know.
inline constexpr std::string_view kSuiteHeader =
    "Time,TestType,Iter,Affinity,Scope,Result,FailCount,Request,Status,Notes,freq(MHz),ClkMod,"
    "PC2,PC2%,PC3,PC3%,PC6,PC6%,PC7,PC7%,PC8,PC8%,PC9,PC9%,PC10,PC10%,MC6,MC6%,C1,C1%,C3,C3%,"
    "C6,C6%,C7,C7%,GT-RC6,GT-RC6%,GT-BW,GT-BW%,GT-SR,GT-SR%,ClipCause, Level";

}  // namespace vexor
