// The terminal, as far as it depends on the system: see terminal_posix.cpp and
// terminal_windows.cpp.
#pragma once

namespace tools {

// Returns whether standard output is a terminal that shows colours. Switches them on if need be.
bool OutputShowsColours();

// The same, but false if the user does not want colours (NO_COLOR).
bool UsesColours();

// Returns whether standard error is a terminal.
bool ErrorsAreOnTerminal();

// Makes the terminal interpret output as UTF-8 until the program ends.
void ShowUtf8();

// Switch off the conversion of line ends on standard input or output.
void UseBinaryInput();
void UseBinaryOutput();

}  // namespace tools
