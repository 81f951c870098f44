# SQLite with SQLite3 Multiple Ciphers: the amalgamation that the npm package better-sqlite3-multiple-ciphers
# carries, at a pinned version and checked by its hash. SQLITE3MC_DIR names a folder with sqlite3.c and
# sqlite3.h to use instead.
set(SQLITE3MC_DIR "" CACHE PATH "Folder with the SQLite3 Multiple Ciphers amalgamation; empty: from npm")
set(SQLITE3MC_VERSION 12.11.1)
set(SQLITE3MC_SHA256 01388c78f46ce63c6aec021f67b364cc67bd637edba64f7add0c0230ce5f777a)

if(SQLITE3MC_DIR)
  set(sqlite3mc_dir ${SQLITE3MC_DIR})
else()
  set(deps_dir ${CMAKE_SOURCE_DIR}/build/deps)
  set(archive ${deps_dir}/better-sqlite3-multiple-ciphers-${SQLITE3MC_VERSION}.tgz)
  set(sqlite3mc_dir ${deps_dir}/sqlite3mc-${SQLITE3MC_VERSION}/package/deps/sqlite3)
  file(MAKE_DIRECTORY ${deps_dir})
  file(LOCK ${deps_dir}/lock TIMEOUT 300)
  if(NOT EXISTS ${archive})
    message(STATUS "Getting SQLite3 Multiple Ciphers (better-sqlite3-multiple-ciphers ${SQLITE3MC_VERSION}) by npm pack")
    execute_process(COMMAND npm pack better-sqlite3-multiple-ciphers@${SQLITE3MC_VERSION} --silent
      WORKING_DIRECTORY ${deps_dir} RESULT_VARIABLE npm_result OUTPUT_QUIET)
    if(NOT npm_result EQUAL 0)
      message(FATAL_ERROR "npm pack failed; set SQLITE3MC_DIR to a folder with sqlite3.c and sqlite3.h")
    endif()
  endif()
  file(SHA256 ${archive} archive_sha256)
  if(NOT archive_sha256 STREQUAL SQLITE3MC_SHA256)
    file(REMOVE ${archive})
    message(FATAL_ERROR "The archive of better-sqlite3-multiple-ciphers has hash ${archive_sha256}, expected ${SQLITE3MC_SHA256}")
  endif()
  if(NOT EXISTS ${sqlite3mc_dir}/sqlite3.c)
    file(ARCHIVE_EXTRACT INPUT ${archive} DESTINATION ${deps_dir}/sqlite3mc-${SQLITE3MC_VERSION}
      PATTERNS package/deps/sqlite3/*)
  endif()
  file(LOCK ${deps_dir}/lock RELEASE)
endif()

# Our C file includes the amalgamation and opens its key derivation.
add_library(sqlite3mc STATIC ${CMAKE_SOURCE_DIR}/database/engine/embedded/key_derivation.c)
target_include_directories(sqlite3mc SYSTEM PUBLIC ${sqlite3mc_dir} PRIVATE ${CMAKE_SOURCE_DIR})
# The address sanitizer sees what we do wrong to it; checking SQLite's own arithmetic as well costs two minutes a build.
target_compile_options(sqlite3mc PRIVATE -w $<IF:$<BOOL:${FIRSTSTEPS_SANITIZE}>,-fno-sanitize=undefined$<SEMICOLON>-O1,-O2>)
if(FIRSTSTEPS_FUZZ)
  # Fuzzing looks for faults of ours: SQLite has fuzzers of its own, and instrumenting it takes minutes.
  target_compile_options(sqlite3mc PRIVATE -fno-sanitize=all)
endif()
target_compile_definitions(sqlite3mc PUBLIC
  SQLITE_THREADSAFE=0 SQLITE_DQS=0 SQLITE_TEMP_STORE=3 SQLITE_OMIT_LOAD_EXTENSION SQLITE_OMIT_DEPRECATED
  SQLITE_OMIT_SHARED_CACHE SQLITE_DEFAULT_MEMSTATUS=0 SQLITE_MAX_EXPR_DEPTH=1000 SQLITE_TRUSTED_SCHEMA=0
  SQLITE_SECURE_DELETE=1 SQLITE3MC_SECURE_MEMORY=1)
if(NOT WIN32)
  target_link_libraries(sqlite3mc PUBLIC m)
endif()
