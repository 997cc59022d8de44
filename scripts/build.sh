#!/usr/bin/env bash
# Configures (when needed) and builds a preset: build.sh PRESET [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."

# What ccache needs to know of precompiled headers.
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros}

preset=$1
shift
[ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
targets=()
[ $# -eq 0 ] || targets=(--target "$@")
cmake --build "build/$preset" "${targets[@]}"
