# Run by CPack on the folder that becomes the package. Debian's packages have their change log and manuals packed.
if(CPACK_GENERATOR STREQUAL "DEB")
  file(GLOB manuals ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share/man/man1/*.1)
  set(log ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share/doc/belvor/changelog)
  file(WRITE ${log} "belvor (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n  * Version ${CPACK_PACKAGE_VERSION}.\n\n"
    " -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  Tue, 14 Nov 2023 22:13:20 +0000\n")
  execute_process(COMMAND gzip -9nf ${log} ${manuals} COMMAND_ERROR_IS_FATAL ANY)
endif()
execute_process(COMMAND chmod -R u=rwX,go=rX ${CPACK_TEMPORARY_INSTALL_DIRECTORY} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND find ${CPACK_TEMPORARY_INSTALL_DIRECTORY} -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} +
  COMMAND_ERROR_IS_FATAL ANY)
