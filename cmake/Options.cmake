# The options for every file of ours. Third-party code does not link this target.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # With this setting, ccache can cache compilations that use a precompiled header.
  set(launcher ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE_PROGRAM})
  set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

add_library(firststeps_options INTERFACE)
target_include_directories(firststeps_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(firststeps_options INTERFACE -Wall -Wextra -Wconversion -Werror)
# In joined sources, functions of one source have variables of another one around them. Only GCC's warning can leave
# those out.
if(NOT CMAKE_UNITY_BUILD)
  target_compile_options(firststeps_options INTERFACE -Wshadow)
elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(firststeps_options INTERFACE -Wshadow=local)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 warns of overlapping copies in every assignment of a short literal to a std::string (its bug 105651).
  target_compile_options(firststeps_options INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()

if(FIRSTSTEPS_SANITIZE)
  # Frames stay on the stack: a test looks for keys that were left there, and else finds them in the sanitizer's own
  # memory.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fsanitize-address-use-after-return=never
    -fno-omit-frame-pointer -g1)
  add_link_options(-fsanitize=address,undefined)
  add_compile_definitions(FIRSTSTEPS_SANITIZED)
  # Only GCC's warnings are errors.
  target_compile_options(firststeps_options INTERFACE -Wno-error)
endif()

if(WIN32)
  # UNICODE: calls without a suffix are the W calls. A calls are written with their suffix.
  target_compile_definitions(firststeps_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
    _WIN32_WINNT=0x0A00 WINVER=0x0A00)
  add_link_options(-Wl,--dynamicbase,--nxcompat)
  # On a terminal server, a program without this flag gets a Windows folder for each user.
  add_link_options(-Wl,--tsaware)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    add_link_options(-Wl,--high-entropy-va)
  endif()
endif()

# The adapters' folder of this platform.
if(WIN32)
  set(FIRSTSTEPS_PLATFORM win32)
else()
  set(FIRSTSTEPS_PLATFORM posix)
endif()

# The options for every library of ours.
add_library(library_options INTERFACE)
target_link_libraries(library_options INTERFACE firststeps_options)
if(FIRSTSTEPS_SANITIZE)
  # The fuzzers see which branches were taken.
  target_compile_options(library_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# header_target(NAME): a target without sources of ours, for headers that are compiled once.
function(header_target name)
  if(NOT EXISTS ${CMAKE_BINARY_DIR}/${name}.cpp)
    file(WRITE ${CMAKE_BINARY_DIR}/${name}.cpp "")
  endif()
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/${name}.cpp)
endfunction()

# Headers of others are read once for all libraries. Where each source is read alone, each is also read with nothing but
# its own headers.
if(CMAKE_UNITY_BUILD)
  header_target(library_headers)
  target_link_libraries(library_headers PRIVATE library_options fmt)
  target_precompile_headers(library_headers PRIVATE <algorithm> <array> <charconv> <chrono> <cmath> <cstdint> <filesystem> <functional>
    <iterator> <limits> <map> <memory> <optional> <ostream> <set> <span> <string> <string_view> <utility> <variant> <vector> <fmt/format.h>)
endif()

# A change of one source compiles all that are joined with it; so few are joined where one changes and builds often.
set(FIRSTSTEPS_JOINED_SOURCES 32 CACHE STRING "How many sources of a library are joined")

# firststeps_library(NAME FOLDERS … [LIBRARIES …]): one library of all sources that lie directly in the folders. A
# folder that does not exist on this platform is treated as empty.
function(firststeps_library name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;LIBRARIES" ${ARGN})
  set(sources)
  foreach(folder IN LISTS ARG_FOLDERS)
    file(GLOB found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND sources ${found})
  endforeach()
  if(sources)
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PRIVATE library_options PUBLIC ${ARG_LIBRARIES})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
    set_target_properties(${name} PROPERTIES UNITY_BUILD_BATCH_SIZE ${FIRSTSTEPS_JOINED_SOURCES})
    if(TARGET library_headers)
      target_precompile_headers(${name} REUSE_FROM library_headers)
    endif()
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ${ARG_LIBRARIES})
  endif()
endfunction()

# firststeps_programs(NAME FOLDER): a target that builds every program of the folder and of the folders below it.
function(firststeps_programs name folder)
  add_custom_target(${name})
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(program_folder IN LISTS folders)
    get_property(targets DIRECTORY ${program_folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
      get_target_property(type ${target} TYPE)
      if(type STREQUAL EXECUTABLE)
        add_dependencies(${name} ${target})
      endif()
    endforeach()
  endforeach()
endfunction()
