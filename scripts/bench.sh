#!/usr/bin/env bash
# Builds and runs the benchmarks. "peers": what a person waits for beside the same in public text components, one table;
# "read": the same while an assistive tool listens and while none does; "bad": texts of bad size. Anything else runs the
# benches of our own parts, with these arguments (for example --benchmark_filter=Load).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
case ${1:-} in
peers | bad | read)
    scripts/build.sh release nib_peer_bench >/dev/null
    bench=build/release/bin/nib_peer_bench
    grep -m1 '^model name' /proc/cpuinfo
    echo "$(nproc) processors; $(. /etc/os-release && echo "$PRETTY_NAME"); $(uname -r)"
    [ "$1" = read ] || exec $bench "--$1"
    export QT_QPA_PLATFORM=xcb
    echo "While nobody listens:"
    xvfb-run -a -s '-screen 0 1280x860x24' $bench --alone
    echo "While an assistive tool listens and reads:"
    QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 dbus-run-session -- \
        xvfb-run -a -s '-screen 0 1280x860x24' /usr/bin/python3 bench/peers/listen.py $bench --alone
    exit
    ;;
esac
scripts/build.sh release nib_bench nib_print_bench
build/release/bin/nib_bench "$@"
build/release/bin/nib_print_bench "$@"
