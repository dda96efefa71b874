#!/usr/bin/env bash
# Builds and runs the benchmarks: ./bench.sh [GOOGLE-BENCHMARK-OPTION...]
# Runs are repeated and interleaved, so that the ratios of the medians are steady. Prints a table of
# medians and ratios, and keeps every run in build/bench.json.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
scripts/setup.sh host
[ -e build/host/build.ninja ] || cmake --preset host >/dev/null
cmake --build build/host --target jw32_bench >build/bench.log || { cat build/bench.log; exit 1; }
build/host/bin/jw32_bench --benchmark_repetitions=9 --benchmark_enable_random_interleaving=true \
    --benchmark_min_time=0.05 --benchmark_display_aggregates_only=true \
    --benchmark_out=build/bench.json --benchmark_out_format=json "$@"
echo "every run: build/bench.json"
