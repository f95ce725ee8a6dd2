# interlist_sources(<target> [OUTPUT_DIRECTORY <dir>] [OPTIONS <option>...]
#                   [SOURCE_MAPS <OLD=NEW>...] [EXCLUDE_FROM_ALL])
#
# Adds to the build a listing of each C and C++ source of <target>: its assembly with
# the source lines merged in. Call it after the target has got its sources.
#
#   OUTPUT_DIRECTORY  where the listings go, as <path of the source>.cl; by default
#                     <target>_listings in the current binary directory
#   OPTIONS           options for interlist, such as -p or -b
#   SOURCE_MAPS       --source-map rules for gas2interlist
#   EXCLUDE_FROM_ALL  makes listings only when <target>_listings is built
#
# The target <target>_listings stands for all of them. Each source is compiled for its
# listing as the target compiles it: include directories, definitions, options and
# features, those that come from libraries included, once the target is built. Every
# listing is a step of its own to the build tool, so that they are made in parallel, and
# only again when the source, a header that it includes or an option has changed.
include_guard(GLOBAL)

# What else of a target shows in the code that its sources give.
set(_interlist_target_properties
  C_EXTENSIONS C_STANDARD C_STANDARD_REQUIRED C_VISIBILITY_PRESET
  CXX_EXTENSIONS CXX_STANDARD CXX_STANDARD_REQUIRED CXX_VISIBILITY_PRESET
  VISIBILITY_INLINES_HIDDEN COMPILE_FLAGS PRECOMPILE_HEADERS)

# What a folder says of one of its sources, in the order of the compiler's command line.
# It does not reach other folders by itself, so there it becomes the library's.
function(_interlist_source_properties library target source)
  get_source_file_property(generated ${source} TARGET_DIRECTORY ${target} GENERATED)
  if(generated)
    set_source_files_properties(${source} PROPERTIES GENERATED TRUE)
  endif()
  get_source_file_property(language ${source} TARGET_DIRECTORY ${target} LANGUAGE)
  cmake_path(GET source EXTENSION LAST_ONLY extension)
  string(SUBSTRING "${extension}" 1 -1 extension)
  if(NOT extension IN_LIST CMAKE_${language}_SOURCE_FILE_EXTENSIONS)
    set_source_files_properties(${source} PROPERTIES LANGUAGE ${language})
  endif()
  foreach(property COMPILE_FLAGS COMPILE_OPTIONS COMPILE_DEFINITIONS INCLUDE_DIRECTORIES)
    get_source_file_property(value ${source} TARGET_DIRECTORY ${target} ${property})
    if(NOT value)
      continue()
    endif()
    if(property STREQUAL COMPILE_FLAGS)
      set_property(TARGET ${library} APPEND_STRING PROPERTY COMPILE_FLAGS " ${value}")
    else()
      set_property(TARGET ${library} APPEND PROPERTY ${property} ${value})
    endif()
  endforeach()
endfunction()

# A library of the one source, compiled as in <target> but to assembly. It takes the
# place of the object file, so that CMake knows all there is to know about the step,
# the headers included.
function(_interlist_assembly library target source)
  add_library(${library} OBJECT EXCLUDE_FROM_ALL ${source})
  # What the target's sources need is there when the target is: headers that commands
  # make, what its dependencies make, those that are added later included.
  add_dependencies(${library} ${target})
  foreach(property IN LISTS _interlist_target_properties)
    get_target_property(value ${target} ${property})
    if(NOT value MATCHES "-NOTFOUND$")
      set_property(TARGET ${library} PROPERTY ${property} "${value}")
    endif()
  endforeach()
  foreach(property COMPILE_DEFINITIONS COMPILE_FEATURES INCLUDE_DIRECTORIES)
    set_property(TARGET ${library} PROPERTY ${property} "$<TARGET_PROPERTY:${target},${property}>")
  endforeach()
  # For what comes from libraries, and for which include directories are the system's.
  target_link_libraries(${library} PRIVATE "$<TARGET_PROPERTY:${target},LINK_LIBRARIES>")

  get_target_property(type ${target} TYPE)
  get_target_property(position_independent ${target} POSITION_INDEPENDENT_CODE)
  if(type MATCHES "SHARED|MODULE" AND position_independent MATCHES "-NOTFOUND$")
    set(position_independent ON)
  endif()
  if(NOT position_independent MATCHES "-NOTFOUND$")
    set_target_properties(${library} PROPERTIES POSITION_INDEPENDENT_CODE ${position_independent})
  endif()
  if(type MATCHES "SHARED|MODULE")
    get_target_property(symbol ${target} DEFINE_SYMBOL)
    if(NOT symbol)
      string(MAKE_C_IDENTIFIER ${target}_EXPORTS symbol)
    endif()
    set_property(TARGET ${library} APPEND PROPERTY COMPILE_DEFINITIONS ${symbol})
  endif()

  set_property(TARGET ${library} PROPERTY COMPILE_OPTIONS
    "$<TARGET_PROPERTY:${target},COMPILE_OPTIONS>")
  get_target_property(target_dir ${target} SOURCE_DIR)
  if(NOT target_dir STREQUAL CMAKE_CURRENT_SOURCE_DIR)
    _interlist_source_properties(${library} ${target} ${source})
  endif()
  # Last, so that nothing takes them back: assembly, with line numbers. Warnings come
  # from the target's own compilation.
  set_property(TARGET ${library} APPEND PROPERTY COMPILE_OPTIONS -S -g -fno-lto -w)
  set_target_properties(${library} PROPERTIES
    INTERPROCEDURAL_OPTIMIZATION OFF
    UNITY_BUILD OFF
    EXPORT_COMPILE_COMMANDS OFF
    C_CLANG_TIDY "" CXX_CLANG_TIDY "" C_CPPCHECK "" CXX_CPPCHECK "")
endfunction()

function(interlist_sources target)
  cmake_parse_arguments(PARSE_ARGV 1 arg
    "EXCLUDE_FROM_ALL" "OUTPUT_DIRECTORY" "OPTIONS;SOURCE_MAPS")
  if(NOT TARGET ${target})
    message(FATAL_ERROR "interlist_sources: no target is named \"${target}\"")
  endif()
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "interlist_sources: unknown argument \"${arg_UNPARSED_ARGUMENTS}\"")
  endif()
  if(NOT arg_OUTPUT_DIRECTORY)
    set(arg_OUTPUT_DIRECTORY ${target}_listings)
  endif()
  cmake_path(ABSOLUTE_PATH arg_OUTPUT_DIRECTORY BASE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  list(TRANSFORM arg_SOURCE_MAPS PREPEND --source-map=)

  get_target_property(target_dir ${target} SOURCE_DIR)
  get_target_property(target_build_dir ${target} BINARY_DIR)
  get_target_property(sources ${target} SOURCES)
  set(listings)
  foreach(source_name IN LISTS sources)
    set(source ${source_name})
    if(source MATCHES "^\\$<")
      message(WARNING "interlist_sources: no listing of ${source}")
      continue()
    endif()
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${target_dir} NORMALIZE)
    if(NOT EXISTS ${source})
      # A source that the build makes may be named from the build's folder.
      cmake_path(ABSOLUTE_PATH source_name BASE_DIRECTORY ${target_build_dir} NORMALIZE
        OUTPUT_VARIABLE source)
    endif()
    get_source_file_property(language ${source} TARGET_DIRECTORY ${target} LANGUAGE)
    get_source_file_property(header_only ${source} TARGET_DIRECTORY ${target} HEADER_FILE_ONLY)
    if(NOT language MATCHES "^(C|CXX)$" OR header_only)
      continue()
    endif()
    if(NOT CMAKE_${language}_COMPILER_ID MATCHES "GNU|Clang")
      message(FATAL_ERROR "interlist_sources: needs a compiler that takes GCC's options")
    endif()

    # A source outside the target's folder goes by its name and a mark of its path.
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${target_dir} OUTPUT_VARIABLE name)
    if(name MATCHES "^\\.\\./")
      string(MD5 mark ${source})
      string(SUBSTRING ${mark} 0 8 mark)
      cmake_path(GET source FILENAME name)
      string(PREPEND name ${mark}/)
    endif()
    string(MAKE_C_IDENTIFIER ${target}_listing_${name} library)
    _interlist_assembly(${library} ${target} ${source})

    # A precompiled header counts among the objects.
    set(assembly $<FILTER:$<TARGET_OBJECTS:${library}>,EXCLUDE,cmake_pch>)
    set(listing ${arg_OUTPUT_DIRECTORY}/${name}.cl)
    set(prepared ${arg_OUTPUT_DIRECTORY}/${name}.asm)
    cmake_path(GET listing PARENT_PATH folder)
    add_custom_command(
      OUTPUT ${listing}
      BYPRODUCTS ${prepared}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
      COMMAND interlist::gas2interlist ${arg_SOURCE_MAPS} -o ${prepared} ${assembly}
      COMMAND interlist::interlist ${arg_OPTIONS} ${prepared} ${listing}
      DEPENDS ${library} ${assembly} interlist::gas2interlist interlist::interlist
      WORKING_DIRECTORY ${target_dir}
      COMMENT "Listing ${name}.cl"
      VERBATIM)
    list(APPEND listings ${listing})
  endforeach()

  set(all ALL)
  if(arg_EXCLUDE_FROM_ALL)
    set(all)
  endif()
  add_custom_target(${target}_listings ${all} DEPENDS ${listings})
endfunction()
