# Copies the compiler's runtime DLLs to the programs, without debug information, which is nine tenths
# of their size. The library and its callers share the runtime, because they pass strings and
# exceptions to each other. VEXOR_RUNTIME_DLLS lists the DLLs for the installation.

set(VEXOR_RUNTIME_DLLS)
file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(NOT IS_ABSOLUTE "${path}")
    message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${dll}")
  endif()
  set(stripped ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${dll})
  if(${path} IS_NEWER_THAN ${stripped})
    execute_process(COMMAND ${CMAKE_STRIP} -o ${stripped} ${path} COMMAND_ERROR_IS_FATAL ANY)
  endif()
  list(APPEND VEXOR_RUNTIME_DLLS ${stripped})
endforeach()
