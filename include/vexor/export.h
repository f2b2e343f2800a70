// The export macro. VEXOR_STATIC is defined for users of the static library, VEXOR_BUILDING while
// the library itself is compiled; the CMake targets set both.
//
// Functions take and return strings, vectors and other types of the C++ standard library. So the
// library and the program must be compiled by the same or compatible compilers, for the same
// runtime library. With Microsoft's compiler that is the DLL runtime: /MD, or /MDd with a debug
// build of the library.
#pragma once

#if defined(_MSC_VER) && !defined(VEXOR_STATIC) && !defined(_DLL)
#error VexorUtils.dll needs a program that is compiled for the runtime as a DLL: /MD or /MDd
#endif
// The CMake package defines VEXOR_DEBUG_RUNTIME as 1 for a debug build of the library, else as 0.
#if defined(_MSC_VER) && defined(VEXOR_DEBUG_RUNTIME)
#if VEXOR_DEBUG_RUNTIME && !defined(_DEBUG)
#error this VexorUtils is built for the debug runtime: compile with /MDd or use a release build of it
#elif !VEXOR_DEBUG_RUNTIME && defined(_DEBUG)
#error this VexorUtils is built for the release runtime: compile with /MD or use a debug build of it
#endif
#endif

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
