# The compile options that every target of the project shares.
option(JW32_WERROR "Treat warnings as errors" OFF)
set(JW32_SANITIZE "" CACHE STRING "Sanitizers to build with: address,undefined or thread")
option(JW32_COVERAGE "Count the lines and branches that run" OFF)
option(JW32_BENCHMARKS "Build the benchmarks" OFF)
option(JW32_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL})
option(JW32_EXAMPLES "Build the examples" ${PROJECT_IS_TOP_LEVEL})

# Warnings, and the flags that keep floating-point results equal in every build.
add_library(jw32_options INTERFACE)
target_compile_features(jw32_options INTERFACE cxx_std_20)
target_compile_options(jw32_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wundef -Wnon-virtual-dtor
    $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>  # which GCC does not count as a conversion
    $<$<BOOL:${JW32_WERROR}>:-Werror>
    -ffp-contract=off)
if(WIN32)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        target_compile_options(jw32_options INTERFACE -msse2 -mfpmath=sse)
    endif()
    # Exceptions cross the DLL's boundary, so every module uses the one shared runtime.
    target_link_options(jw32_options INTERFACE -shared-libgcc)
    target_compile_definitions(jw32_options INTERFACE _WIN32_WINNT=0x0601 WINVER=0x0601)
endif()
if(JW32_SANITIZE)
    target_compile_options(jw32_options INTERFACE
        -fsanitize=${JW32_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(jw32_options INTERFACE -fsanitize=${JW32_SANITIZE})
endif()
if(JW32_COVERAGE)
    target_compile_options(jw32_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(jw32_options INTERFACE --coverage)
endif()
