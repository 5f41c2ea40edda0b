#!/usr/bin/env bash
# The Debian package holds a command that runs where it is unpacked, with its manual page and data.
# Usage: check_package.sh BUILD_FOLDER
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$1" && cpack -G DEB -B "$work" >"$work/log" 2>&1) || { cat "$work/log"; exit 1; }
package=$(find "$work" -name '*.deb' -print -quit)
dpkg-deb -f "$package" Depends | grep -q libcairo2
dpkg-deb -x "$package" "$work/root"

# Nothing of the build folder or of the environment helps it.
torva() { env -i HOME="$work" PATH=/usr/bin:/bin "$work/root/usr/bin/torva-dxf" "$@"; }
cp "$root/examples/bracket.dxf" "$work/bracket.dxf"
torva info --json "$work/bracket.dxf" | grep -q '"stat":0'
torva convert "$work/bracket.dxf" "$work/r12.dxf" --format R12 2>"$work/told"
! grep -q "Can't read" "$work/told"
torva validate "$work/r12.dxf" | grep -q "0 errors"
torva render "$work/bracket.dxf" "$work/bracket.png" && test -s "$work/bracket.png"
zcat -f "$(find "$work/root" -name 'torva-dxf.1*')" | grep -q '^\.TH'
test -f "$work/root/usr/share/bash-completion/completions/torva-dxf"
echo "The Debian package runs"
