# Finds the name of the C++ runtime of the project's compiler. The library and a program need the
# same one, because they pass strings and containers to each other.
include(CheckCXXSourceCompiles)

function(vexor_get_cxx_runtime result)
  if(MSVC)
    set(${result} "Microsoft's C++ library" PARENT_SCOPE)
    return()
  endif()
  check_cxx_source_compiles("
    #include <version>
    #if !defined(__GLIBCXX__) || !_GLIBCXX_USE_CXX11_ABI
    #error
    #endif
    int main() {}" VEXOR_HAS_LIBSTDCXX)
  if(NOT VEXOR_HAS_LIBSTDCXX)
    set(${result} "another C++ library or ABI" PARENT_SCOPE)
  elseif(WIN32)
    set(${result} "gcc's C++ library for Windows (mingw-w64)" PARENT_SCOPE)
  else()
    set(${result} "gcc's C++ library" PARENT_SCOPE)
  endif()
endfunction()
