# Compiles for 64-bit Windows with clang in place of Microsoft's compiler, with the same flags, macros
# and ABI. The headers of the system and of the C++ library are those of mingw-w64, whose libraries
# have another ABI: objects can be compiled but not linked.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

find_program(VEXOR_CLANG clang++ REQUIRED)
file(REAL_PATH ${VEXOR_CLANG} clang)
cmake_path(GET clang PARENT_PATH clang_folder)
set(CMAKE_CXX_COMPILER ${clang_folder}/clang-cl)
set(CMAKE_CXX_COMPILER_TARGET x86_64-pc-windows-msvc)
set(CMAKE_CXX_COMPILER_WORKS ON)
set(CMAKE_SIZEOF_VOID_P 8)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

execute_process(COMMAND x86_64-w64-mingw32-g++-posix -print-file-name=include/c++
  OUTPUT_VARIABLE library OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
# Macros that gcc predefines and these headers need.
set(CMAKE_CXX_FLAGS_INIT "-fgnuc-version=12 /D__MINGW32__ /D__MINGW64__ /D__STRICT_ANSI__ \
/D__declspec=__declspec /DUSE_NO_MINGW_SETJMP_TWO_ARGS /imsvc ${library} \
/imsvc ${library}/x86_64-w64-mingw32 /imsvc /usr/share/mingw-w64/include")

set(CMAKE_USER_MAKE_RULES_OVERRIDE ${CMAKE_CURRENT_LIST_DIR}/clang-cl-rules.cmake)
