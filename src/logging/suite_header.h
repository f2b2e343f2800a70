// The header line of the suite's logs.
#pragma once

#include <string_view>

namespace vexor {

// The columns that the suite's tests fill. The blank before "Level" belongs to the text: programs
// that read the logs compare the whole line.
inline constexpr std::string_view kSuiteHeader =
    "Time,TestType,Iter,Affinity,Scope,Result,FailCount,Request,Status,Notes,freq(MHz),ClkMod,"
    "PC2,PC2%,PC3,PC3%,PC6,PC6%,PC7,PC7%,PC8,PC8%,PC9,PC9%,PC10,PC10%,MC6,MC6%,C1,C1%,C3,C3%,"
    "C6,C6%,C7,C7%,GT-RC6,GT-RC6%,GT-BW,GT-BW%,GT-SR,GT-SR%,ClipCause, Level";

}  // namespace vexor
