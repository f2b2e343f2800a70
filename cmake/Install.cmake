# The installed files, except those of the tools, in four components: Runtime, Development, Tools and
# Documentation. No file contains the prefix, so an installed tree may be moved.
include(CMakePackageConfigHelpers)

install(TARGETS VexorUtils EXPORT VexorUtilsTargets
  RUNTIME COMPONENT Runtime
  LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE COMPONENT Development)
if(MINGW AND BUILD_SHARED_LIBS)
  install(FILES ${VEXOR_RUNTIME_DLLS} TYPE BIN COMPONENT Runtime)
elseif(MSVC AND BUILD_SHARED_LIBS)
  install(FILES $<TARGET_PDB_FILE:VexorUtils> TYPE BIN COMPONENT Development OPTIONAL)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vexor TYPE INCLUDE COMPONENT Development)

get_target_property(library_type VexorUtils TYPE)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VexorUtils)
install(EXPORT VexorUtilsTargets NAMESPACE VexorUtils:: DESTINATION ${package_dir}
  COMPONENT Development)
include(CxxRuntime)
vexor_get_cxx_runtime(cxx_runtime)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/VexorUtilsConfig.cmake.in
  ${PROJECT_BINARY_DIR}/VexorUtilsConfig.cmake INSTALL_DESTINATION ${package_dir}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VexorUtilsConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/VexorUtilsConfig.cmake ${PROJECT_BINARY_DIR}/VexorUtilsConfigVersion.cmake
  ${CMAKE_CURRENT_LIST_DIR}/CxxRuntime.cmake
  DESTINATION ${package_dir} COMPONENT Development)

# pkg-config derives the prefix from the place of the .pc file; the folders are relative to it.
set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${pc_dir})
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH up /${pc_dir} /)
  string(REGEX REPLACE "/$" "" up "${up}")
  set(pc_prefix "\${pcfiledir}/${up}")
endif()
cmake_path(APPEND pc_libdir "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND pc_includedir "\${prefix}" ${CMAKE_INSTALL_INCLUDEDIR})
set(pc_cflags)
set(pc_private)
if(library_type STREQUAL STATIC_LIBRARY)
  set(pc_cflags " -DVEXOR_STATIC")
  set(pc_private "Requires.private: tinyxml2, expat\nLibs.private: -pthread\n")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/VexorUtils.pc.in ${PROJECT_BINARY_DIR}/VexorUtils.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/VexorUtils.pc DESTINATION ${pc_dir} COMPONENT Development)

install(FILES
  ${PROJECT_SOURCE_DIR}/docs/catalog.xml
  ${PROJECT_SOURCE_DIR}/docs/vexor.xsd
  ${PROJECT_SOURCE_DIR}/docs/vexorcfg.schema.json
  DESTINATION ${CMAKE_INSTALL_DATADIR}/vexorutils COMPONENT Documentation)
install(FILES
  ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  ${PROJECT_SOURCE_DIR}/LICENSE
  ${PROJECT_SOURCE_DIR}/README.md
  ${PROJECT_SOURCE_DIR}/docs/editors.md
  ${PROJECT_SOURCE_DIR}/docs/options.md
  ${PROJECT_SOURCE_DIR}/docs/third_party.txt
  TYPE DOC COMPONENT Documentation)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples TYPE DOC COMPONENT Documentation
  PATTERN CMakeLists.txt EXCLUDE)
