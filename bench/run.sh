#!/usr/bin/env bash
# Builds and runs the benchmarks and prints their tables. Arguments: --smoke (small sizes, for a check that they
# still run), or names of benchmarks (reader, import, …).
set -euo pipefail
root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
cd "$root"
cmake/install-packages.sh
[ -f build/release/build.ninja ] || cmake --preset release >/dev/null
cmake --build --preset release >build/release/build.log 2>&1 || { cat build/release/build.log; exit 1; }
names=(); smoke=()
for argument in "$@"; do
    case "$argument" in
        --smoke) smoke=(--smoke) ;;
        *) names+=("build/release/bench/bench_$argument") ;;
    esac
done
[ ${#names[@]} -gt 0 ] || names=(build/release/bench/bench_*)
for program in "${names[@]}"; do
    [ -f "$program" ] && [ -x "$program" ] || continue
    echo "== $(basename "$program")"
    "$program" "${smoke[@]}"
done
