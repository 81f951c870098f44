# Windows, 32 bit.
set(mingw_processor i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
# Every Windows 10 has SSE2; with it, numbers round as in the 64-bit program.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
