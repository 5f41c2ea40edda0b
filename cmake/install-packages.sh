#!/usr/bin/env bash
# Installs the Debian packages of packages.txt that are missing. Quiet and quick when nothing is.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
missing=()
while read -r package; do
    case "$package" in ''|'#'*) continue ;; esac
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
    [ "$status" = "install ok installed" ] || missing+=("$package")
done < "$here/packages.txt"
[ ${#missing[@]} -eq 0 ] && exit 0

run=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Missing packages (install them as root): ${missing[*]}" >&2; exit 1; }
    run=(sudo)
fi
echo "Installing: ${missing[*]}" >&2
"${run[@]}" apt-get update -qq >&2
DEBIAN_FRONTEND=noninteractive "${run[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
