// What the tool asks of the system it runs on: terminal_posix.cpp or terminal_windows.cpp.
#pragma once

namespace tools {

// Returns whether standard output is a terminal that shows colours, and is ready to.
bool OutputShowsColours();

// The same, unless the user asked for none (NO_COLOR).
bool UsesColours();

// Returns whether standard error is a terminal.
bool ErrorsAreOnTerminal();

// Makes a terminal show texts in UTF-8 until the program ends.
void ShowUtf8();

// Makes standard input give its bytes, or standard output take them, as they are.
void UseBinaryInput();
void UseBinaryOutput();

}  // namespace tools
