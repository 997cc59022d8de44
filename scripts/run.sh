#!/usr/bin/env bash
# Installs, builds and starts the editor: on the sample account, or with the arguments given.
# Without a display the editor runs under a virtual one, a picture of it goes to build/run.png, and the script ends.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

"$root/scripts/install-deps.sh"
"$root/scripts/build.sh" release nibpad71

editor=$root/build/release/bin/nibpad71
[ $# -gt 0 ] || set -- '/H=*' /A=DEMO /F=BP /I=INVOICE

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    exec "$editor" "$@"
fi

echo "No display here: running the editor under a virtual one."
work=$(mktemp -d)
pids=()
finish() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

exec 3<>"$work/display"
Xvfb -displayfd 3 -screen 0 1280x860x24 -nolisten tcp 2>"$work/xvfb.log" &
pids+=($!)
for _ in $(seq 100); do
    [ -s "$work/display" ] && break
    sleep 0.1
done
DISPLAY=:$(tr -d '\n' <"$work/display")
export DISPLAY
openbox --config-file /dev/null 2>/dev/null &
pids+=($!)

"$editor" "$@" &
editor_pid=$!
pids=("$editor_pid" "${pids[@]}")
for _ in $(seq 200); do
    kill -0 "$editor_pid" 2>/dev/null || { echo "The editor ended before its window came up." >&2; exit 1; }
    xdotool search --onlyvisible --pid "$editor_pid" --name . >/dev/null 2>&1 && break
    sleep 0.1
done
sleep 1.5
import -window root "$root/build/run.png"
echo "$root/build/run.png"
