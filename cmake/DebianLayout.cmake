# Run by CPack on the tree that becomes a package: where Debian wants things otherwise
# than `cmake --install` leaves them.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)

# zsh looks here for the completions of packages.
file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)

# Man pages are compressed, and the same way each time.
file(GLOB pages ${share}/man/man1/*.1)
execute_process(COMMAND gzip -9 -n ${pages} COMMAND_ERROR_IS_FATAL ANY)
