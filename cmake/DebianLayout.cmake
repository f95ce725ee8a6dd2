# Run by CPack on the tree that becomes a package: where Debian wants things otherwise
# than `cmake --install` leaves them.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(usr ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)
set(debian ${CMAKE_CURRENT_LIST_DIR}/debian)

# zsh looks here for the completions of packages.
file(RENAME ${usr}/share/zsh/site-functions ${usr}/share/zsh/vendor-completions)

# A package stays where it is put, so its folders can be called by their names.
file(GLOB files ${usr}/lib*/pkgconfig/*.pc)
foreach(file IN LISTS files)
  file(READ ${file} text)
  string(REGEX REPLACE "prefix=[^\n]*" "prefix=/usr" text "${text}")
  file(WRITE ${file} "${text}")
endforeach()

configure_file(${debian}/changelog.in ${usr}/share/doc/interlist/changelog @ONLY)
configure_file(${debian}/lintian-overrides ${usr}/share/lintian/overrides/interlist COPYONLY)

# Man pages and the changelog are compressed, and the same way each time.
file(GLOB pages ${usr}/share/man/man1/*.1)
execute_process(COMMAND gzip -9 -n ${pages} ${usr}/share/doc/interlist/changelog
  COMMAND_ERROR_IS_FATAL ANY)
