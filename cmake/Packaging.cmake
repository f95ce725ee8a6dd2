# CPack: `cpack -G DEB` makes the Debian package, `cpack --config CPackSourceConfig.cmake`
# the source archive.
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

set(CPACK_PACKAGE_NAME interlist)
set(CPACK_PACKAGE_VENDOR "Morvex")
set(CPACK_PACKAGE_CONTACT "Morvex tools <support@ze.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "C source interlister and C++ demangler")
set(CPACK_PACKAGE_DESCRIPTION
"interlist merges the lines of C and C++ sources into the assembly listing
of the code that a compiler made from them. gas2interlist prepares the
assembly of GNU-style compilers for it. clist does all from a compiler's
command line, for one source or a whole project, and shows each source line
with its code in the code's own order. symdecode decodes mangled C++ names
in any text. The libraries behind them, for demangling and for the common
needs of tools, are included with their headers.")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_THREADS 0)

set(CPACK_GENERATOR DEB)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianLayout.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianControl.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "binutils, cmake, gcc | clang, llvm, ninja-build, pkg-config")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
find_program(DPKG_SHLIBDEPS dpkg-shlibdeps)
mark_as_advanced(DPKG_SHLIBDEPS)
if(DPKG_SHLIBDEPS)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${PROJECT_BINARY_DIR}/support ${PROJECT_BINARY_DIR}/demangle)
endif()

set(CPACK_SOURCE_GENERATOR TGZ)
string(REGEX REPLACE "([][+.*()^$?|\\])" "\\\\\\1" build_dir ${PROJECT_BINARY_DIR})
set(CPACK_SOURCE_IGNORE_FILES
  "/\\.git/" "/\\.cache/" "/build/" "^${build_dir}/" "/compile_commands\\.json$" "~$" "\\.swp$")

include(CPack)
