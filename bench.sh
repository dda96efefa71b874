#!/usr/bin/env bash
# Builds and runs the benchmarks: ./bench.sh [GOOGLE-BENCHMARK-OPTION...]
# Runs are repeated and interleaved, so that the ratios of the medians are steady.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
scripts/setup.sh host
[ -e build/host/build.ninja ] || cmake --preset host >/dev/null
cmake --build build/host --target jw32_bench
exec build/host/bin/jw32_bench --benchmark_repetitions=9 --benchmark_enable_random_interleaving=true \
    --benchmark_min_time=0.05 --benchmark_report_aggregates_only=true "$@"
