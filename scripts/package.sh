#!/usr/bin/env bash
# Installs what is needed, builds the release and makes the Debian package from it: build/package/nibpad71_*.deb.
# Fails when lintian finds an error or a warning.
set -euo pipefail
cd "$(dirname "$0")/.."
umask 022

scripts/install-deps.sh
scripts/build.sh release nibpad71 nib-debuglog nib-basic nib-lsp package_files

rm -rf build/package
log=build/release/package.log
cpack --config build/release/CPackConfig.cmake -B build/package >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
rm -rf build/package/_CPack_Packages
package=$(ls build/package/nibpad71_*.deb)
as_root=()
[ "$(id -u)" -ne 0 ] || as_root=(--allow-root)
lintian "${as_root[@]}" --fail-on error,warning "$package"
echo "$package"
