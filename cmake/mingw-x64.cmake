# Windows, 64 bit.
set(mingw_processor x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
