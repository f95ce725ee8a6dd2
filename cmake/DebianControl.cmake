# Run by CPack on the Debian package that it made: takes out the scripts that call
# ldconfig, which the package's trigger calls for.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
find_program(DPKG_DEB dpkg-deb)
if(NOT DPKG_DEB)
  return()
endif()
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree ${package}.tree)
  execute_process(COMMAND ${DPKG_DEB} -R ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
  execute_process(COMMAND ${DPKG_DEB} --root-owner-group -b ${tree} ${package}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${tree})
endforeach()
