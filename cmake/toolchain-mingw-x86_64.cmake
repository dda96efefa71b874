# Cross-builds for 64-bit Windows with mingw-w64 and runs the results under Wine.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(mingw x86_64-w64-mingw32)
set(bits 64)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw.cmake)
