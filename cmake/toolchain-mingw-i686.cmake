# Cross-builds for 32-bit Windows with mingw-w64 and runs the results under Wine.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(mingw i686-w64-mingw32)
set(bits 32)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw.cmake)
