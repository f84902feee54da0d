#!/usr/bin/env bash
# Installs the built package into a fresh Debian 12 (a minimal debootstrap
# tree, made once and kept in the given folder) with apt, as a person would,
# and runs the installed Tillery there: --version, then --screenshot of a
# new Git repository. Needs root and Debian's package servers; not part of
# the tests, which unpack the package instead.
#   packaging/check-on-fresh-debian.sh build/tillery_0.1.0_amd64.deb [/var/tmp/tillery-debian12]
set -euo pipefail

package="$(realpath "$1")"
tree="${2:-/var/tmp/tillery-debian12}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)

if [ ! -x "$tree/usr/bin/apt-get" ]; then
    command -v debootstrap >/dev/null || "${as_root[@]}" apt-get install -y -qq debootstrap
    "${as_root[@]}" debootstrap --variant=minbase bookworm "$tree" http://deb.debian.org/debian
fi
"${as_root[@]}" cp /etc/resolv.conf "$tree/etc/resolv.conf"
"${as_root[@]}" cp "$package" "$tree/tmp/tillery.deb"
"${as_root[@]}" chroot "$tree" /bin/bash -euo pipefail -c '
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq /tmp/tillery.deb >/dev/null
    export QT_QPA_PLATFORM=offscreen HOME=/tmp/home XDG_RUNTIME_DIR=/tmp/runtime
    mkdir -p "$HOME" -m 700 "$XDG_RUNTIME_DIR"
    tillery --version
    rm -rf /tmp/repository && git init -q /tmp/repository && echo one > /tmp/repository/notes.txt
    tillery --screenshot /tmp/installed.png /tmp/repository
    test -s /tmp/installed.png
    apt-get remove -y -qq tillery >/dev/null
'
echo "Installed, ran and removed; the screenshot is $tree/tmp/installed.png"
