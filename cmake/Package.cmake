# The packages that cpack makes of an installation: a Debian package, and for Windows an archive.
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "VexorUtils developers")
set(CPACK_PACKAGE_CONTACT "VexorUtils developers <vexorutils@example.org>")
set(CPACK_PACKAGE_DESCRIPTION
"VexorUtils reads, checks and writes the configuration files of a
power-management test suite, understands the texts of their options, knows the
suite's test names and error codes, and keeps its durable logs. This package
holds the library, its headers, the tool vexorcfg and their documents.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  # A program needs the compiler and the runtime of its library.
  set(compiler msvc${MSVC_TOOLSET_VERSION})
  if(MINGW)
    string(REGEX MATCH "^[0-9]+" version ${CMAKE_CXX_COMPILER_VERSION})
    set(compiler mingw-gcc${version})
  endif()
  set(CPACK_PACKAGE_FILE_NAME VexorUtils-${PROJECT_VERSION}-win64-${compiler})
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_DEBIAN_PACKAGE_NAME vexorutils)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  # What others' packages need that use the library, and what the system does when it comes.
  set(control ${PROJECT_BINARY_DIR}/debian)
  file(WRITE ${control}/shlibs "libVexorUtils ${PROJECT_VERSION_MAJOR} vexorutils (>= "
    "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})\n")
  file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
  set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/triggers)
  set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/DebianDocuments.cmake)
endif()
include(CPack)
