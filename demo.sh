#!/usr/bin/env bash
# Builds the library and reduces a field book with it: ./demo.sh [FIELDBOOK]
# Without an argument it takes a copy of the example's own data.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

"$root/scripts/setup.sh" host
[ -e "$root/build/host/build.ninja" ] || (cd "$root" && cmake --preset host >/dev/null)
cmake --build "$root/build/host" --target fieldbook blackboard

book=${1:-}
if [ -z "$book" ]; then
    mkdir -p "$root/build/demo"
    book=$root/build/demo/closed_traverse.txt
    cp "$root/examples/data/closed_traverse.txt" "$book"
fi
# A path that begins with a separator counts from the root of the current drive: Z:, the host's root.
case $book in /*) cd / ;; esac
exec "$root/build/host/bin/fieldbook" "$book"
