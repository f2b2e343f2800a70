// The groups of benchmarks, one file for each.
#pragma once

namespace vexor {

void AddReading();
void AddWriting();
void AddUtilities();
void AddSyntaxes();

}  // namespace vexor
