# The libraries that the project offers to others, static and shared from the same
# objects. Inside the tree:
#   support, demangle                the static libraries, with their internals: for tests
#   support_shared, demangle_shared  what users get: only the public symbols show
#   interlist::support, ...          what programs link: static, or shared under
#                                    BUILD_SHARED_LIBS

# interlist_library(<name> EXPORTS <version script> SOURCES ... HEADERS ...)
# HEADERS are the public ones, which are installed.
function(interlist_library name)
  cmake_parse_arguments(arg "" "EXPORTS" "SOURCES;HEADERS" ${ARGN})

  add_library(${name} STATIC ${arg_SOURCES})
  interlist_target(${name})
  # Nothing outside replaces a function of these libraries, so calls may be inlined.
  target_compile_options(${name} PRIVATE -fno-semantic-interposition)

  add_library(${name}_shared SHARED $<TARGET_OBJECTS:${name}>)
  set_target_properties(${name}_shared PROPERTIES
    LINKER_LANGUAGE CXX
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR})
  target_link_libraries(${name}_shared PRIVATE $<BUILD_INTERFACE:interlist_options>)
  if(NOT APPLE)
    set(exports ${CMAKE_CURRENT_SOURCE_DIR}/${arg_EXPORTS})
    target_link_options(${name}_shared PRIVATE LINKER:--version-script=${exports})
    set_property(TARGET ${name}_shared APPEND PROPERTY LINK_DEPENDS ${exports})
  endif()

  # In a system folder the libraries need a name that says whose they are.
  foreach(library ${name} ${name}_shared)
    set_target_properties(${library} PROPERTIES OUTPUT_NAME interlist-${name})
    target_sources(${library} PUBLIC FILE_SET HEADERS
      BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${arg_HEADERS})
  endforeach()

  add_library(interlist::${name}_shared ALIAS ${name}_shared)
  if(BUILD_SHARED_LIBS)
    add_library(interlist::${name} ALIAS ${name}_shared)
  else()
    add_library(interlist::${name} ALIAS ${name})
  endif()
endfunction()
