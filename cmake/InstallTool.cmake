# Installs a tool with its manual page, docs/NAME.1, and its completion for bash.
function(vexor_install_tool name)
  if(NOT VEXOR_INSTALL)
    return()
  endif()
  if(NOT WIN32)
    file(RELATIVE_PATH up ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN/${up}")
  endif()
  install(TARGETS ${name} RUNTIME COMPONENT Tools)
  install(FILES ${PROJECT_SOURCE_DIR}/docs/${name}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
    COMPONENT Tools)
  if(CMAKE_CROSSCOMPILING)
    return()  # the tool cannot run here to print its completion
  endif()
  set(completion ${CMAKE_CURRENT_BINARY_DIR}/completion/${name})  # bash finds it by this name
  add_custom_command(OUTPUT ${completion}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/completion
    COMMAND ${name} completion > ${completion}
    DEPENDS ${name} COMMENT "Writing the completion of ${name}" VERBATIM)
  add_custom_target(${name}_completion ALL DEPENDS ${completion})
  install(FILES ${completion} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    COMPONENT Tools)
endfunction()
