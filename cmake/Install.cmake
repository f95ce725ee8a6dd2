# What `cmake --install` puts in place: programs, libraries with their public headers,
# man pages, shell completions, documents, and the files by which CMake and pkg-config
# find the libraries. Everything can be moved as one tree afterwards.
include(CMakePackageConfigHelpers)

option(INTERLIST_INSTALL "Add install rules" ${PROJECT_IS_TOP_LEVEL})

set(programs interlist gas2interlist symdecode)
if(INTERLIST_CLIST)
  list(APPEND programs clist)
endif()
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/interlist)

# A project that takes this one in as a subdirectory gets the same names as from the
# package.
foreach(program IN LISTS programs)
  add_executable(interlist::${program} ALIAS ${program})
endforeach()
include(InterlistSources)

if(NOT INTERLIST_INSTALL)
  return()
endif()

# Programs that were linked with the shared libraries find them beside themselves.
if(BUILD_SHARED_LIBS)
  file(RELATIVE_PATH lib_from_bin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(${programs} PROPERTIES INSTALL_RPATH "\$ORIGIN/${lib_from_bin}")
endif()

install(TARGETS ${programs} support support_shared demangle demangle_shared
  EXPORT interlistTargets
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/interlist)

install(EXPORT interlistTargets NAMESPACE interlist:: DESTINATION ${package_dir})
configure_package_config_file(cmake/templates/interlistConfig.cmake.in interlistConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(interlistConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/interlistConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/interlistConfigVersion.cmake
  cmake/InterlistSources.cmake
  DESTINATION ${package_dir})

# interlist_pkgconfig(<name> <description>)
function(interlist_pkgconfig name description)
  set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH prefix_from_pc /prefix/${pc_dir} /prefix)
  set(PC_NAME interlist-${name})
  set(PC_DESCRIPTION ${description})
  configure_file(cmake/templates/pkgconfig.pc.in ${PC_NAME}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${PC_NAME}.pc DESTINATION ${pc_dir})
endfunction()
interlist_pkgconfig(support "File names, checked allocation and signal reports for tools")
interlist_pkgconfig(demangle "Demangler for two C++ name mangling schemes")

# A tree for a package may be put anywhere; any other one can be called by its name.
set(pc_files ${CMAKE_INSTALL_LIBDIR}/pkgconfig/interlist-*.pc)
install(CODE "
  if(NOT CMAKE_INSTALL_PREFIX MATCHES /_CPack_Packages/)
    get_filename_component(prefix \"\${CMAKE_INSTALL_PREFIX}\" ABSOLUTE)
    file(GLOB files \"\$ENV{DESTDIR}\${prefix}/${pc_files}\")
    foreach(file IN LISTS files)
      file(READ \${file} text)
      string(REGEX REPLACE \"prefix=[^\n]*\" \"prefix=\${prefix}\" text \"\${text}\")
      file(WRITE \${file} \"\${text}\")
    endforeach()
  endif()")

install(FILES README.md CONTRIBUTING.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN man EXCLUDE)

set(completions ${CMAKE_CURRENT_SOURCE_DIR}/completions)
foreach(program IN LISTS programs)
  install(FILES docs/man/${program}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${completions}/${program}.bash RENAME ${program}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${completions}/_${program}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES ${completions}/${program}.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endforeach()
