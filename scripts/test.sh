#!/usr/bin/env bash
# Installs, builds and runs all tests: the sanitized logic and widget tests first, then everything in the release build,
# then each fuzzer for a minute.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
export CTEST_PARALLEL_LEVEL=${CTEST_PARALLEL_LEVEL:-$(nproc)}

scripts/build.sh asan nib_logic_tests nib_widget_tests
ctest --preset asan

scripts/build.sh release
ctest --preset release

scripts/build.sh fuzz nib_fuzzers
ctest --preset fuzz
