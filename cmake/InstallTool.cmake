set(VEXOR_ZSH_FUNCTIONS ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING
  "Folder of completions for zsh, below the prefix")

# Installs a tool with its manual page, docs/NAME.1, and its completions for bash, fish and zsh. That
# for PowerShell has no usual place; the tool prints it.
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
  # Each shell finds its script by the file's name.
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/completion)
  set(names ${name} ${name}.fish _${name})
  set(shells bash fish zsh)
  set(destinations ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d ${VEXOR_ZSH_FUNCTIONS})
  foreach(script shell destination IN ZIP_LISTS names shells destinations)
    add_custom_command(OUTPUT ${folder}/${script}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
      COMMAND ${name} completion ${shell} > ${folder}/${script}
      DEPENDS ${name} COMMENT "Writing the completion of ${name} for ${shell}" VERBATIM)
    list(APPEND scripts ${folder}/${script})
    install(FILES ${folder}/${script} DESTINATION ${destination} COMPONENT Tools)
  endforeach()
  add_custom_target(${name}_completion ALL DEPENDS ${scripts})
endfunction()
