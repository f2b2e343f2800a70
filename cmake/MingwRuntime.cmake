# Puts the compiler's runtime DLLs beside the programs. The runtime is shared by the library and
# its callers, because strings and exceptions cross the border between them. VEXOR_RUNTIME_DLLS lists
# them for the installation.

set(VEXOR_RUNTIME_DLLS)
foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(NOT IS_ABSOLUTE "${path}")
    message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${dll}")
  endif()
  file(COPY ${path} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  list(APPEND VEXOR_RUNTIME_DLLS ${path})
endforeach()
