# Microsoft's runtime as a DLL, which the library and its callers share because they pass strings and
# exceptions to each other. Debug information is in the objects, from which the linker makes the PDB.
if(NOT DEFINED CMAKE_MSVC_RUNTIME_LIBRARY)
  set(CMAKE_MSVC_RUNTIME_LIBRARY MultiThreaded$<$<CONFIG:Debug>:Debug>DLL)
endif()
if(BUILD_SHARED_LIBS AND NOT CMAKE_MSVC_RUNTIME_LIBRARY MATCHES "DLL$")
  message(FATAL_ERROR "VexorUtils.dll exchanges strings with its programs and needs the runtime as a "
    "DLL, as they do; CMAKE_MSVC_RUNTIME_LIBRARY is ${CMAKE_MSVC_RUNTIME_LIBRARY}")
endif()
if(NOT DEFINED CMAKE_MSVC_DEBUG_INFORMATION_FORMAT)
  set(CMAKE_MSVC_DEBUG_INFORMATION_FORMAT $<$<CONFIG:Debug,RelWithDebInfo>:Embedded>)
endif()
