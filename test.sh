#!/usr/bin/env bash
# Builds and runs the tests: ./test.sh [host|asan|windows|all]; without an argument, host.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

run() {
    local preset=$1
    echo "== $preset"
    if [ "$preset" = windows ]; then scripts/setup.sh windows; else scripts/setup.sh host; fi
    [ -e "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
    if [ "$preset" = windows ]; then
        xvfb-run -a ctest --preset "$preset"
    else
        ctest --preset "$preset"
    fi
}

case ${1:-host} in
    host | asan | windows) run "${1:-host}" ;;
    all) run host; run asan; run windows ;;
    *) echo "usage: ./test.sh [host|asan|windows|all]" >&2; exit 2 ;;
esac
