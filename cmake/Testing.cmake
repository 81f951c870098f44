# GoogleTest is Debian's library natively, and Debian's sources for Windows. firststeps_test(NAME SOURCES … LIBRARIES …
# [DEFINITIONS …] [WITH_PROGRAMS] [WITH_SOURCES]) adds a test program NAME and its tests. Only tests WITH_PROGRAMS may use
# other built programs and the demo; the others are not told where those are. Only tests WITH_SOURCES may read C++ sources.
# What takes long to build or to run has the label "long" and is built by long_checks alone.
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

# compile_quickly(TARGET …): clang compiles the code of tests, if it is there: it takes a third of GCC's time. GCC compiles
# and links what is tested. For 32-bit Windows, the two do not return values in the same way.
find_program(CLANG_PROGRAM clang++-16 DOC "A compiler that takes less time than GCC for the tests")
set(clang_launcher)
if(CLANG_PROGRAM AND CMAKE_SIZEOF_VOID_P EQUAL 8 AND NOT FIRSTSTEPS_SANITIZE AND NOT CMAKE_HOST_WIN32)
  # The options name some warnings that only GCC knows.
  set(clang ${CLANG_PROGRAM} -Qunused-arguments -Wno-unknown-warning-option)
  if(CMAKE_CROSSCOMPILING)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=include OUTPUT_VARIABLE gcc_headers
      OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    # libstdc++ is GCC's. It holds the comparison of types that clang would compile anew, and finds the variables of a
    # thread in GCC's way.
    list(APPEND clang --target=${mingw_name} -D__GXX_TYPEINFO_EQUALITY_INLINE=0 -femulated-tls -nostdinc++ -isystem ${gcc_headers}/c++
      -isystem ${gcc_headers}/c++/${mingw_name} -isystem ${gcc_headers}/c++/backward)
  endif()
  set(clang_launcher ${CMAKE_SOURCE_DIR}/cmake/compile_by_clang ${CMAKE_CXX_COMPILER_LAUNCHER} ${clang} --)
endif()
function(compile_quickly)
  if(clang_launcher)
    set_target_properties(${ARGN} PROPERTIES CXX_COMPILER_LAUNCHER "${clang_launcher}")
  endif()
endfunction()

# The common header of the tests is compiled once for all of them.
header_target(common_header)
target_link_libraries(common_header PRIVATE firststeps_options GTest::gmock)
target_compile_options(common_header PRIVATE -O0)
target_precompile_headers(common_header PRIVATE <gmock/gmock.h>)
compile_quickly(common_header)
if(CMAKE_CROSSCOMPILING)
  compile_quickly(gtest gmock gmock_main)
  foreach(target IN ITEMS gtest gmock gmock_main)
    target_compile_options(${target} PRIVATE -O0)
  endforeach()
endif()

# link_quickly(TARGET …): test programs are linked by lld, if it is there; shipped programs never are.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_HOST_WIN32)
  find_program(LLD_PROGRAM ld.lld-16 DOC "A linker that takes less time than GNU's")
endif()
function(link_quickly)
  if(LLD_PROGRAM)
    foreach(target IN LISTS ARGN)
      target_link_options(${target} PRIVATE -wrapper ${CMAKE_SOURCE_DIR}/cmake/link_by_lld)
    endforeach()
  endif()
endfunction()

# test_library(NAME SOURCES … LIBRARIES …): what several test programs share.
function(test_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_library(${name} OBJECT ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE firststeps_options PUBLIC ${ARG_LIBRARIES} GTest::gmock)
  target_compile_options(${name} PRIVATE -O0)
  target_compile_definitions(${name} PRIVATE TEST_DATA_DIR="${host_drive}${CMAKE_SOURCE_DIR}/tests/data")
  target_precompile_headers(${name} REUSE_FROM common_header)
  compile_quickly(${name})
endfunction()

function(firststeps_test name)
  cmake_parse_arguments(ARG "WITH_PROGRAMS;WITH_SOURCES" "" "SOURCES;LIBRARIES;DEFINITIONS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE firststeps_options ${ARG_LIBRARIES} GTest::gmock_main)
  # Test programs spend most time in the code that they test, and compiling them takes long; so they are not optimised.
  target_compile_options(${name} PRIVATE -O0)
  target_precompile_headers(${name} REUSE_FROM common_header)
  compile_quickly(${name})
  link_quickly(${name})
  target_compile_definitions(${name} PRIVATE
    TEST_DATA_DIR="${host_drive}${CMAKE_SOURCE_DIR}/tests/data" SOURCE_DIR="${host_drive}${CMAKE_SOURCE_DIR}"
    ${ARG_DEFINITIONS})
  # Each test program runs as one process: its tests are quick, but starting a process under Wine is not.
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  # 32-bit programs may run in an emulator, which takes ten times as long.
  set(seconds 900)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(seconds 3600)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${seconds} ENVIRONMENT UBSAN_OPTIONS=print_stacktrace=1)
  if(ARG_WITH_SOURCES)
    set_property(TEST ${name} APPEND PROPERTY LABELS with_sources)
  endif()
  if(ARG_WITH_PROGRAMS)
    set_property(TEST ${name} APPEND PROPERTY LABELS with_programs)
    target_compile_definitions(${name} PRIVATE BUILD_DIR="${host_drive}${CMAKE_BINARY_DIR}")
  endif()
endfunction()

# runs_long(TEST …): tests that take longest with "./test --all"; they begin first, so that others run beside them.
function(runs_long)
  set_tests_properties(${ARGN} PROPERTIES COST 100)
endfunction()

# portable_tests(TEST …): tests that reach little of Windows' own code. "./test" builds and runs them natively only,
# "./test --all" for Windows, too.
function(portable_tests)
  if(CMAKE_CROSSCOMPILING)
    set_property(TEST ${ARGN} APPEND PROPERTY LABELS long)
    foreach(name IN LISTS ARGN)
      if(TARGET ${name})
        long_check(${name})
      endif()
    endforeach()
  endif()
endfunction()
