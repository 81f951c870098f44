# {fmt}: the target fmt, a library of one source. Debian has no build of it for MinGW, and keeps its headers among those
# of the building machine. So the headers are copied to a folder of their own. FMT_DIR names another folder to copy
# from.
set(FMT_DIR "" CACHE PATH "Folder that holds fmt/core.h; empty: wherever it is found")

if(FMT_DIR)
  set(fmt_headers ${FMT_DIR})
else()
  find_path(FMT_HEADERS fmt/core.h PATHS $ENV{MINGW_PREFIX}/include /usr/include /usr/local/include DOC "Folder that holds fmt/core.h"
    NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(fmt_headers ${FMT_HEADERS})
endif()
file(COPY ${fmt_headers}/fmt DESTINATION ${CMAKE_BINARY_DIR}/fmt_headers FILES_MATCHING PATTERN *.h)

add_library(fmt STATIC ${CMAKE_SOURCE_DIR}/cmake/fmt_library.cpp)
target_include_directories(fmt SYSTEM PUBLIC ${CMAKE_BINARY_DIR}/fmt_headers)
set_target_properties(fmt PROPERTIES UNITY_BUILD OFF)
