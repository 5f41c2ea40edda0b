#!/usr/bin/env bash
# Each header compiles alone.
set -euo pipefail
cd "$(dirname "$0")/../.."
one() {
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
