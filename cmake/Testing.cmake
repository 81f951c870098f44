# GoogleTest is Debian's library natively, and Debian's sources for Windows. firststeps_test(NAME SOURCES … LIBRARIES …
# [DEFINITIONS …]) adds a test program NAME and its tests. What takes long to build or to run has the label "long" and
# is built by long_checks alone.
if(CMAKE_CROSSCOMPILING)
  set(INSTALL_GTEST OFF)
  find_path(GOOGLETEST_SOURCE_DIR googletest/CMakeLists.txt PATHS /usr/src /usr/local/src PATH_SUFFIXES googletest
    DOC "Sources of GoogleTest" NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  add_subdirectory(${GOOGLETEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  if(NOT CMAKE_HOST_WIN32)
    # How a Windows program under Wine sees the folders of the building machine.
    set(host_drive "Z:")
  endif()
else()
  find_package(GTest REQUIRED)
endif()

add_custom_target(long_checks)
# long_check(TARGET …): TARGET is built by long_checks alone.
function(long_check)
  set_target_properties(${ARGN} PROPERTIES EXCLUDE_FROM_ALL ON)
  add_dependencies(long_checks ${ARGN})
endfunction()

# The common header of the tests is compiled once for all of them.
if(NOT EXISTS ${CMAKE_BINARY_DIR}/common_header.cpp)
  file(WRITE ${CMAKE_BINARY_DIR}/common_header.cpp "")
endif()
add_library(common_header OBJECT ${CMAKE_BINARY_DIR}/common_header.cpp)
target_link_libraries(common_header PRIVATE firststeps_options GTest::gmock)
target_compile_options(common_header PRIVATE -O0)
target_precompile_headers(common_header PRIVATE <gmock/gmock.h>)

# link_quickly(TARGET …): test programs for Windows are linked by lld, if it is there; shipped programs never are.
if(CMAKE_CROSSCOMPILING AND NOT CMAKE_HOST_WIN32)
  find_program(LLD_PROGRAM ld.lld DOC "A linker that takes less time than GNU's")
endif()
function(link_quickly)
  if(LLD_PROGRAM)
    foreach(target IN LISTS ARGN)
      target_link_options(${target} PRIVATE -wrapper ${CMAKE_SOURCE_DIR}/cmake/link_by_lld)
    endforeach()
  endif()
endfunction()

function(firststeps_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;DEFINITIONS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE firststeps_options ${ARG_LIBRARIES} GTest::gmock_main)
  # Test programs spend most time in the code that they test, and compiling them takes long; so they are not optimised.
  target_compile_options(${name} PRIVATE -O0)
  target_precompile_headers(${name} REUSE_FROM common_header)
  link_quickly(${name})
  target_compile_definitions(${name} PRIVATE
    TEST_DATA_DIR="${host_drive}${CMAKE_SOURCE_DIR}/tests/data" SOURCE_DIR="${host_drive}${CMAKE_SOURCE_DIR}"
    BUILD_DIR="${host_drive}${CMAKE_BINARY_DIR}"
    ${ARG_DEFINITIONS})
  # Each test program runs as one process: its tests are quick, but starting a process under Wine is not.
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  # 32-bit programs may run in an emulator, which takes ten times as long.
  set(seconds 900)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(seconds 3600)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${seconds} ENVIRONMENT UBSAN_OPTIONS=print_stacktrace=1)
endfunction()
