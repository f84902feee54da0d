#!/usr/bin/env bash
# Installs what Tillery needs on Debian (when it is missing), then configures
# and builds it in build/. Sourced by run.sh and test.sh.
set -euo pipefail

tillery_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
tillery_build="$tillery_root/build"

tillery_install_missing_packages() {
    local packages=(cmake make g++ qt6-base-dev qt6-svg-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools mercurial git python3 xvfb xauth dpkg-dev appstream desktop-file-utils qtkeychain-qt6-dev gnome-keyring dbus-daemon)
    local missing=() package
    for package in "${packages[@]}"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
            missing+=("$package")
        fi
    done
    ((${#missing[@]} == 0)) && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}"
}

tillery_build() {
    cmake -S "$tillery_root" -B "$tillery_build" \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTILLERY_WARNINGS_AS_ERRORS=ON >/dev/null
    cmake --build "$tillery_build" -j2
}

tillery_install_missing_packages
tillery_build
