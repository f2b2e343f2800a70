# Run by cpack on what is about to be packed: brings the documents into the form that Debian asks
# of a package.
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(doc ${share}/doc/vexorutils)

file(READ ${doc}/LICENSE licence)
file(READ ${doc}/third_party.txt others)
file(WRITE ${doc}/copyright "${licence}\n${others}")
file(REMOVE ${doc}/LICENSE ${doc}/third_party.txt)

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${doc}/changelog "vexorutils (${CPACK_PACKAGE_VERSION}) stable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION} of the library and the tool.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
execute_process(COMMAND gzip -9n ${doc}/changelog ${share}/man/man1/vexorcfg.1
  COMMAND_ERROR_IS_FATAL ANY)
file(CHMOD_RECURSE ${doc} FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
  DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
    WORLD_EXECUTE)
