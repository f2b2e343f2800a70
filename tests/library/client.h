#pragma once

// Calls the library here and there; returns its version text.
extern "C" const char* UseVexorUtils();
