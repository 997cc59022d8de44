#!/usr/bin/env bash
# Has clang-tidy look at sources: tidy.sh [FILE...]. Without arguments at those that differ from the commit that
# NIB_TIDY_BASE names, the last one unless it is given; "all" is the whole of src/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh clang-tidy
[ -f build/asan/compile_commands.json ] || cmake --preset asan >/dev/null

if [ $# -eq 0 ]; then
    files=$(git diff --name-only --diff-filter=d "${NIB_TIDY_BASE:-HEAD~1}" -- 'src/*.cpp')
elif [ "$1" = all ]; then
    files=$(git ls-files 'src/*.cpp')
else
    files=$(printf '%s\n' "$@")
fi
[ -n "$files" ] || { echo "No source has changed."; exit 0; }
echo "$files" | xargs -P "$(nproc)" -n 4 clang-tidy -p build/asan --quiet 2>/dev/null
echo "$(echo "$files" | wc -l) sources are tidy"
