#!/usr/bin/env python3
"""Prints what the command takes for large drawings: table.py BUILD_FOLDER [MEGABYTES] [RUNS].

Seconds are those that the process computes, the best of several runs, for other work on the machine disturbs; the
ratio is to the floor of the same file (see lib/floor.h), measured in between. MB is the most memory in use.
"""
import os
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROWS = [
    ("import: LINE, ARC, CIRCLE", "linework", ["info", "IN"]),
    ("import: LWPOLYLINE, TEXT", "outlines", ["info", "IN"]),
    ("import: INSERTs with uneven scales", "inserts", ["info", "IN"]),
    ("render to PNG, 2000 pixels", "linework", ["render", "--size", "2000", "IN", "out.png"]),
    ("render to SVG", "linework", ["render", "IN", "out.svg"]),
    ("convert", "linework", ["convert", "IN", "out.dxf", "--format", "ACAD24"]),
]


def run(command, folder):
    """Seconds of computing and the most memory, in MB."""
    with open(os.devnull, "w", encoding="ascii") as nothing:
        process = subprocess.Popen(command, cwd=folder, stdout=nothing, stderr=nothing)
        _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{' '.join(command)}: exit status {process.returncode}")
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    megabytes = sys.argv[2] if len(sys.argv) > 2 else "100"
    runs = int(sys.argv[3]) if len(sys.argv) > 3 else 3
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.executable, HERE / "make_inputs.py", folder, megabytes], check=True)
        print("| Work | Seconds | × floor | MB |\n|---|---|---|---|")
        for title, name, arguments in ROWS:
            path = f"{folder}/{name}.dxf"
            command = [str(build / "tool/torva-dxf"), arguments[0], "-q"] + [path if a == "IN" else a for a in arguments[1:]]
            best, memory, floor = 1e9, 0, 1e9
            for _ in range(runs):
                measured = subprocess.run([build / "benchmarks/bench_floor", path], check=True, capture_output=True)
                floor = min(floor, float(measured.stdout))
                seconds, used = run(command, folder)
                best, memory = min(best, seconds), max(memory, used)
            print(f"| {title} | {best:.2f} | {best / floor:.1f} | {memory:.0f} |", flush=True)


if __name__ == "__main__":
    main()
