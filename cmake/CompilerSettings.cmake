# What every target of this project is compiled with. Link the interface target `project_settings`.

# ccache is used where it is installed. Paths below the source tree enter its hash relative to the tree, so that a
# second clone finds what the first one compiled; the sloppiness is what it needs for precompiled headers.
find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Kind of build" FORCE)
endif()

add_library(project_settings INTERFACE)
target_compile_options(project_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  # Debug information names no folder of this machine; a debugger started in the source tree finds the files.
  -fdebug-prefix-map=${PROJECT_SOURCE_DIR}=.
  # The libraries' functions are nobody else's to replace, so they may be inlined.
  -fno-semantic-interposition)
if(CONVERSATIONAPI_WARNINGS_AS_ERRORS)
  target_compile_options(project_settings INTERFACE -Werror)
endif()
if(CONVERSATIONAPI_SANITIZE)
  target_compile_options(project_settings INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # The sanitizers look after objects of the heap; what lies in the library's pool they could not tell apart.
  target_compile_definitions(project_settings INTERFACE _GLIBCXX_ASSERTIONS CONVERSATIONAPI_PLAIN_MEMORY)
  target_link_options(project_settings INTERFACE -fsanitize=address,undefined)
endif()
if(CONVERSATIONAPI_BUILD_FUZZERS)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "libFuzzer comes with clang: configure with the preset fuzz")
  endif()
  # What a fuzzer sees of an input is what the code that it runs was compiled to tell it.
  target_compile_options(project_settings INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(project_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()
