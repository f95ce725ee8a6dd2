# What every target of the project shares: the language level, the warnings and
# the sanitizers, and one function for each kind of thing that is built.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_library(interlist_options INTERFACE)
target_compile_options(interlist_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(INTERLIST_SANITIZE)
  target_compile_options(interlist_options INTERFACE
    -fsanitize=${INTERLIST_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(interlist_options INTERFACE -fsanitize=${INTERLIST_SANITIZE})
endif()

# interlist_target(<target>): the settings above, and includes from the root
# of the tree ("support/filename.h").
function(interlist_target target)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:interlist_options>)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
endfunction()

# interlist_program(<name> <source>...): one of the programs that users call. They lie
# together in bin/ of the build folder.
function(interlist_program name)
  add_executable(${name} ${ARGN})
  interlist_target(${name})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endfunction()

# interlist_test(<name> [THREADS] [TIMEOUT s] SOURCES ... [LIBRARIES ...] [DEFINITIONS ...])
# A GoogleTest program, run as one test. THREADS marks it for the tsan preset.
function(interlist_test name)
  cmake_parse_arguments(arg "THREADS" "TIMEOUT" "SOURCES;LIBRARIES;DEFINITIONS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  interlist_target(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE ${arg_DEFINITIONS})
  add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 600)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT})
  if(arg_THREADS)
    set_tests_properties(${name} PROPERTIES LABELS threads)
    if(NOT TARGET thread_tests)
      add_custom_target(thread_tests)
    endif()
    add_dependencies(thread_tests ${name})
  endif()
endfunction()

# interlist_benchmark(<name> SOURCES ... [LIBRARIES ...])
function(interlist_benchmark name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  interlist_target(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} benchmark::benchmark)
endfunction()

# interlist_fuzzer(<name> SOURCES ... [LIBRARIES ...])
# A libFuzzer program; its seeds lie in fuzz/corpus/<name>.
function(interlist_fuzzer name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  interlist_target(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endfunction()
