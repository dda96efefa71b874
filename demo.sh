#!/usr/bin/env bash
# Builds the library and reduces field books with it: ./demo.sh [FIELDBOOK...]
# Without an argument it takes a copy of the example's own data. The first run builds, which takes a
# minute or two; what is not a result goes to the error output.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
build=$root/build/demo

# Runs a command and shows what it prints only if it fails.
quietly() {
    local output
    output=$("$@" 2>&1) || { printf '%s\n' "$output" >&2; exit 1; }
}

# A build folder that was copied or moved with its checkout belongs to another place.
is_configured() {
    [ -e "$build/build.ninja" ] &&
        grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$build/CMakeCache.txt"
}

configure() {
    quietly cmake --fresh -G Ninja -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DJW32_TESTS=OFF -DJW32_BENCHMARKS=OFF
}

if [[ ${1:-} == --help || ${1:-} == -h ]]; then
    echo "usage: ./demo.sh [FIELDBOOK...]"
    echo "Builds the library and reduces each field book, or a copy of the example's own data."
    echo "examples/data/README.md describes the form of a field book."
    exit 0
fi

build_programs() {
    local command=(cmake --build "$build" --target fieldbook blackboard)
    is_configured || configure
    "${command[@]}" -- -n 2>&1 | grep -q 'no work to do' ||
        echo "demo: building the library, which may take a minute or two" >&2
    quietly "${command[@]}"
}

"$root/scripts/setup.sh" demo >&2
mkdir -p "$root/build"
# Of two runs at the same time, one builds and the other one waits.
(
    flock -n 9 || { echo "demo: waiting for another run that builds" >&2; flock 9; }
    build_programs
) 9>"$root/build/demo.lock"

if [ $# -eq 0 ]; then
    mkdir -p "$build/book"
    set -- "$build/book/closed_traverse.txt"
    cp "$root/examples/data/closed_traverse.txt" "$1"
fi
# A path that begins with a separator counts from the root of the current drive, which is the host's
# root unless the current directory lies in the folder of drive C:.
books=()
for book in "$@"; do
    case $book in /* | -*) books+=("$book") ;; *) books+=("$PWD/$book") ;; esac
done
cd /
exec "$build/bin/fieldbook" "${books[@]}"
