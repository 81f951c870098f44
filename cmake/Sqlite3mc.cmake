# SQLite with SQLite3 Multiple Ciphers: the amalgamation in the npm package better-sqlite3-multiple-ciphers, at a pinned
# version and checked by its hash. SQLITE3MC_DIR names a folder with sqlite3.c and sqlite3.h to use instead.
set(SQLITE3MC_DIR "" CACHE PATH "Folder with the SQLite3 Multiple Ciphers amalgamation; empty: from npm")

if(SQLITE3MC_DIR)
  set(sqlite3mc_dir ${SQLITE3MC_DIR})
else()
  npm_package(sqlite3mc-12.11.1 better-sqlite3-multiple-ciphers 12.11.1
    01388c78f46ce63c6aec021f67b364cc67bd637edba64f7add0c0230ce5f777a sqlite3mc_package
    HINT "SQLITE3MC_DIR may name a folder with sqlite3.c and sqlite3.h.")
  set(sqlite3mc_dir ${sqlite3mc_package}/deps/sqlite3)
endif()

# git patches the amalgamation, and fails if the patch does not fit. Reading and writing the file first turns its line
# ends into plain ones.
find_package(Git REQUIRED)
set(patched_dir ${CMAKE_BINARY_DIR}/sqlite3mc)
set(patch ${CMAKE_SOURCE_DIR}/cmake/sqlite3mc_failed_reads.patch)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${sqlite3mc_dir}/sqlite3.c ${patch})
file(READ ${sqlite3mc_dir}/sqlite3.c amalgamation)
file(WRITE ${patched_dir}/new/sqlite3.c "${amalgamation}")
# Without the ceiling, git would take the folder for a part of our repository and ignore the file.
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env GIT_CEILING_DIRECTORIES=${patched_dir} ${GIT_EXECUTABLE} apply ${patch}
  WORKING_DIRECTORY ${patched_dir}/new RESULT_VARIABLE patch_result)
if(NOT patch_result EQUAL 0)
  message(FATAL_ERROR "${patch} does not fit the amalgamation in ${sqlite3mc_dir}")
endif()
configure_file(${patched_dir}/new/sqlite3.c ${patched_dir}/sqlite3.c COPYONLY)

# Our C file includes the amalgamation and makes its key derivation accessible.
add_library(sqlite3mc STATIC ${CMAKE_SOURCE_DIR}/database/engine/embedded/key_derivation.c)
target_include_directories(sqlite3mc SYSTEM PRIVATE ${patched_dir} PUBLIC ${sqlite3mc_dir} PRIVATE ${CMAKE_SOURCE_DIR})
# The address sanitizer finds our mistakes in using SQLite. SQLite's own arithmetic and its branches are left to its own
# tests.
target_compile_options(sqlite3mc PRIVATE -w)
if(FIRSTSTEPS_SANITIZE)
  target_compile_options(sqlite3mc PRIVATE -fno-sanitize=undefined)
endif()
target_compile_definitions(sqlite3mc PUBLIC
  SQLITE_THREADSAFE=0 SQLITE_DQS=0 SQLITE_TEMP_STORE=3 SQLITE_OMIT_LOAD_EXTENSION SQLITE_OMIT_DEPRECATED
  SQLITE_OMIT_SHARED_CACHE SQLITE_DEFAULT_MEMSTATUS=0 SQLITE_MAX_EXPR_DEPTH=1000 SQLITE_TRUSTED_SCHEMA=0
  SQLITE_SECURE_DELETE=1 SQLITE3MC_SECURE_MEMORY=1)
# Only the cipher that we use is built; it is CODEC_TYPE 4.
target_compile_definitions(sqlite3mc PRIVATE CODEC_TYPE=4 HAVE_CIPHER_SQLCIPHER=1 HAVE_CIPHER_AEGIS=0
  HAVE_CIPHER_AES_128_CBC=0 HAVE_CIPHER_AES_256_CBC=0 HAVE_CIPHER_ASCON128=0 HAVE_CIPHER_CHACHA20=0 HAVE_CIPHER_RC4=0)
if(NOT WIN32)
  target_link_libraries(sqlite3mc PUBLIC m)
endif()
