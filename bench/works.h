// What is measured, a file each.
#pragma once

namespace vexor {

void AddReading();
void AddWriting();
void AddUtilities();
void AddSyntaxes();

}  // namespace vexor
