// The export macro. VEXOR_STATIC is defined for users of the static library, VEXOR_BUILDING while
// the library itself is compiled; the CMake targets set both.
#pragma once

#if defined(_WIN32)
#if defined(VEXOR_BUILDING)
#define VEXOR_EXPORT __declspec(dllexport)
#elif defined(VEXOR_STATIC)
#define VEXOR_EXPORT
#else
#define VEXOR_EXPORT __declspec(dllimport)
#endif
#else
#define VEXOR_EXPORT __attribute__((visibility("default")))
#endif
