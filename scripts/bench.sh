#!/usr/bin/env bash
# Builds and runs the benchmarks, ours and those beside public text components; arguments go to all programs (for
# example --benchmark_filter=Load).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh libqscintilla2-qt6-dev
cmake --preset release >/dev/null
scripts/build.sh release nib_bench nib_print_bench nib_peer_bench
build/release/bin/nib_bench "$@"
build/release/bin/nib_print_bench "$@"
build/release/bin/nib_peer_bench "$@"
