# The archive for Windows that cpack makes of an installation. Debian packages come from debian/.
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "VexorUtils developers")
set(CPACK_PACKAGE_CONTACT "VexorUtils developers <vexorutils@example.org>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_GENERATOR ZIP)
# A program needs the compiler and the runtime of its library.
set(compiler msvc${MSVC_TOOLSET_VERSION})
if(MINGW)
  string(REGEX MATCH "^[0-9]+" version ${CMAKE_CXX_COMPILER_VERSION})
  set(compiler mingw-gcc${version})
endif()
set(CPACK_PACKAGE_FILE_NAME VexorUtils-${PROJECT_VERSION}-win64-${compiler})
include(CPack)
