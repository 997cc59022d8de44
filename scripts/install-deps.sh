#!/usr/bin/env bash
# Installs what building, running and testing need: the one list of packages, and those named as arguments. Asks
# nothing; does nothing when all is there.
set -euo pipefail

packages=(
    # building
    build-essential cmake ninja-build ccache pkg-config git
    libicu-dev libacl1-dev libsqlite3-dev libgit2-dev nlohmann-json3-dev
    qt6-base-dev qt6-base-dev-tools qt6-l10n-tools qtkeychain-qt6-dev
    # running
    fonts-dejavu-core fonts-dejavu-extra breeze-icon-theme libqt6svg6 libsecret-1-0 qt6-translations-l10n
    # a display where there is none, and a window manager and pictures for it
    xvfb xauth openbox xdotool x11-utils imagemagick
    # a session manager that ends sessions
    x11-session-utils x11-xserver-utils
    # tests
    libgtest-dev libbenchmark-dev python3 acl attr procps poppler-utils
    # a private bus for the tests of automation, and clients for it
    dbus-daemon libglib2.0-bin python3-gi
    # an assistive tool's side of the desktop
    at-spi2-core gir1.2-atspi-2.0
    # a desktop's store of secrets
    gnome-keyring
    # a client of the language server
    nodejs neovim
    # the desktop's validators, and the Debian package
    desktop-file-utils appstream shared-mime-info libxml2-utils man-db bash-completion lintian
    # a public text component to be measured against
    libqscintilla2-qt6-dev
    # the sanitized build and the fuzzers
    clang libclang-rt-dev
    "$@"
)

# Some sources of nodejs bring npm along, and refuse Debian's.
command -v npm >/dev/null || packages+=(npm)

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Installing packages needs root or sudo: ${missing[*]}" >&2; exit 1; }
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq update </dev/null
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq install -y --no-install-recommends "${missing[@]}" \
    </dev/null >/dev/null
