#!/usr/bin/env bash
# Builds and runs the benchmarks; arguments go to the benchmark program (for example --benchmark_filter=Load).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
scripts/build.sh release nib_bench
exec build/release/bin/nib_bench "$@"
