#!/usr/bin/env bash
# An outside project finds the installed libraries, by CMake and by pkg-config, links them and imports a drawing.
# Usage: check_embedding.sh PREFIX
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
prefix=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake -S "$root/examples/embed" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/build" >/dev/null
"$work/build/embed" "$root/examples/bracket.dxf" >"$work/by-cmake"
grep -q "layer OUTLINE" "$work/by-cmake"

pc=$(dirname "$(find "$prefix" -name torva-dxf.pc)")
flags=$(PKG_CONFIG_PATH=$pc pkg-config --cflags --libs torva-dxf)
data=$(PKG_CONFIG_PATH=$pc pkg-config --variable=datadir torva-dxf)
# shellcheck disable=SC2086 # the flags are many words
c++ -std=c++20 -DTORVA_DATA="\"$data\"" "$root/examples/embed/embed.cpp" $flags -o "$work/by-pkg-config"
"$work/by-pkg-config" "$root/examples/bracket.dxf" | cmp - "$work/by-cmake"
echo "An outside program embeds the module"
