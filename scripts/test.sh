#!/usr/bin/env bash
# Installs, builds and runs all tests: those of the logic and of the widgets under sanitizers, and each fuzzer for a
# minute; then the tests that drive the program as users get it, and whether it is as fast as it was.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
export CTEST_PARALLEL_LEVEL=${CTEST_PARALLEL_LEVEL:-$(nproc)}

scripts/build.sh asan nib_logic_tests nib_widget_tests nib_network_tests nib_fuzzers nibpad71
ctest --preset asan --label-exclude fuzz
# What the last commit changed, or all since NIB_TIDY_BASE.
if git rev-parse -q --verify "${NIB_TIDY_BASE:-HEAD~1}" >/dev/null; then scripts/tidy.sh; fi
# Side by side, however few processors there are: their time is told by the clock.
CTEST_PARALLEL_LEVEL=4 ctest --preset asan --label-regex fuzz

scripts/build.sh release nibpad71 nib-debuglog nib-basic nib-lsp nib_faults package_files nib_peer_bench nib_probe
ctest --preset release --label-regex 'system|bench'
