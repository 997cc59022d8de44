#!/usr/bin/env bash
# Has clang-tidy look at the sources: tidy.sh [all | FILE...]. Without arguments it looks at what has changed since the
# commit that tests/house/tidy-base names, at which the whole tree was clean; a changed header counts as the sources
# that include it by its own name. Whoever has run "all" without a finding may move that commit on.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh clang-tidy
[ -f build/asan/compile_commands.json ] || cmake --preset asan >/dev/null

all() { git ls-files 'src/*.cpp' 'bench/*.cpp' 'tests/*.cpp' | grep -v '^bench/peers/'; }
changed() {
    base=$(cat tests/house/tidy-base)
    git cat-file -e "$base^{commit}" 2>/dev/null || { all; return; }
    { git diff --name-only --diff-filter=d "$base" -- '*.cpp'
      git diff --name-only --diff-filter=d "$base" -- '*.h' | sed 's/\.h$/.cpp/'
    } | sort -u | while read -r file; do [ ! -f "$file" ] || echo "$file"; done
}
case "${1-changed}" in
    all) files=$(all) ;;
    changed) files=$(changed) ;;
    *) files=$(printf '%s\n' "$@") ;;
esac
[ -n "$files" ] || { echo "No source has changed."; exit 0; }
echo "$files" | xargs -P "$(nproc)" -n 4 clang-tidy -p build/asan --quiet 2>/dev/null
echo "$(echo "$files" | wc -l) sources are tidy"
