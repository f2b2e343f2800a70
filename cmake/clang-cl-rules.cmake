# Writes an empty file in place of each link; see clang-cl.cmake.
foreach(rule CREATE_SHARED_LIBRARY CREATE_SHARED_MODULE CREATE_STATIC_LIBRARY LINK_EXECUTABLE)
  set(CMAKE_CXX_${rule} "<CMAKE_COMMAND> -E touch <TARGET>")
endforeach()
