#!/usr/bin/env bash
# Builds and runs the benchmarks. "peers": what a person waits for beside the same in public text components, one table;
# "read": the same while an assistive tool listens and while none does; "bad": texts of bad size. Anything else runs the
# benches of our own parts, with these arguments (for example --benchmark_filter=Load).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
case ${1:-} in
peers | read | bad)
    scripts/build.sh release nib_peer_bench >/dev/null
    grep -m1 '^model name' /proc/cpuinfo
    echo "$(nproc) processors; $(. /etc/os-release && echo "$PRETTY_NAME"); $(uname -r)"
    exec build/release/bin/nib_peer_bench "--$1"
    ;;
esac
scripts/build.sh release nib_bench nib_print_bench
build/release/bin/nib_bench "$@"
build/release/bin/nib_print_bench "$@"
