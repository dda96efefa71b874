#!/usr/bin/env bash
# Builds and runs the tests; without an argument, those of the Linux build:
#   ./test.sh host       the Linux build
#   ./test.sh asan       the same under the address and undefined-behaviour sanitizers
#   ./test.sh tsan       the tests that start threads, under the thread sanitizer
#   ./test.sh coverage   the Linux build's tests, and how many lines and branches they reach
#   ./test.sh windows    the DLLs of 32 and 64 bits; tests of 32 bits where the machine can run them
#   ./test.sh windows64  the DLL of 64 bits and its tests under Wine
#   ./test.sh windows32  the DLL of 32 bits and its tests under Wine; fails where they cannot run
#   ./test.sh style      the layout of the sources, and their compilation by clang as well
#   ./test.sh all        style, host, asan, tsan and windows, as continuous integration does
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

build() {
    echo "== $1"
    [ -e "build/$1/build.ninja" ] || cmake --preset "$1" >/dev/null
    cmake --build --preset "$1"
}

linux() {
    scripts/setup.sh host
    build "$1"
    ctest --preset "$1"
}

style() {
    scripts/setup.sh style
    echo "== style"
    git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
    build clang
}

# The compiler's notes stay when a source is gone, and gcovr looks for it then.
forget_gone_sources() {
    local notes
    ninja -C build/coverage -t cleandead >/dev/null
    find build/coverage -name '*.gcno' | while read -r notes; do
        [ -e "${notes%.gcno}.o" ] || rm "$notes"
    done
}

# What the runs in build/coverage have reached: coverage_of NAME GCOVR-OPTION...
coverage_of() {
    local figures=build/coverage/$1.txt
    echo "== $1: the figures of each file are in $figures"
    gcovr --root . --object-directory build/coverage --exclude-unreachable-branches \
        --exclude-throw-branches --sort-percentage --print-summary -o "$figures" "${@:2}"
}

coverage() {
    scripts/setup.sh coverage
    build coverage
    find build/coverage -name '*.gcda' -delete
    forget_gone_sources
    ctest --preset coverage
    coverage_of library --exclude '(tests|examples|bench|platform)/'
    coverage_of platform --filter platform/
}

# What runs programs needs the emulator; the other tests look at what was built.
windows64() {
    scripts/setup.sh windows
    build windows64
    scripts/setup.sh wine64
    xvfb-run -a ctest --preset windows64
}

windows32() {
    scripts/setup.sh windows
    scripts/runs-32-bit || { echo "test.sh: this machine does not execute 32-bit code" >&2; exit 1; }
    build windows
    scripts/setup.sh wine32
    xvfb-run -a ctest --preset windows
}

windows() {
    windows64
    if scripts/runs-32-bit; then
        windows32
        return
    fi
    build windows
    ctest --preset windows --label-exclude runs
    local skipped
    skipped=$(ctest --preset windows --label-regex runs --show-only | sed -n 's/^Total Tests: //p')
    echo "windows: this machine does not execute 32-bit code: $skipped tests of 32 bits were skipped"
}

case ${1:-host} in
    host | asan | tsan) linux "${1:-host}" ;;
    style | coverage | windows | windows64 | windows32) "$1" ;;
    all) style; linux host; linux asan; linux tsan; windows ;;
    *) sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac
