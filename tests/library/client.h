// A shared library that uses VexorUtils, as a plug-in of the suite's programs would.
#pragma once

// Reads the configuration file and has memory and an exception cross the library's border. Returns
// the library's version text where all is well, and otherwise what is not.
extern "C" const char* UseVexorUtils(const char* configuration);
