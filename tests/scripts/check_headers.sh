#!/usr/bin/env bash
# Each header compiles alone. One that stands first in a source file of its own name does so in the build already
# (the release build has no precompiled headers).
set -euo pipefail
cd "$(dirname "$0")/../.."
one() {
    local own="${1%.h}.cpp"
    [ -f "$own" ] && grep -m1 '^#include' "$own" | grep -q "[\"/]$(basename "$1")\"" && return 0
    case "$1" in
        dxf/*) flags=(-Idxf/inc -Ihost/inc) ;;
        tool/validate/*) flags=(-Itool/validate -Iwords) ;;
        tool/repair/*) flags=(-Itool/validate -Itool/repair -Iwords) ;;
        tool/*) flags=(-Itool -Idxf/inc -Ihost/inc -Ihost/cpp -Itool/validate -Iwords) ;;
        words/*) flags=(-Iwords) ;;
        *) flags=(-Ihost/inc -Ihost/cpp -I/usr/include/polyclipping $(pkg-config --cflags cairo freetype2)) ;;
    esac
    echo "#include \"$PWD/$1\"" | g++ -std=c++20 -fsyntax-only "${flags[@]}" -x c++ - || { echo "$1 doesn't compile alone"; exit 1; }
}
export -f one
git ls-files 'dxf/*.h' 'host/*.h' 'tool/*.h' 'words/*.h' | xargs -P "$(nproc)" -I{} bash -c 'one {}'
