#!/usr/bin/env python3
"""Budgets of the house: no file above 800 lines (900 is the wall), tests a quarter to a third of the code.

Exceptions stand in house_exceptions.txt, each with its reason.
"""
import pathlib
import subprocess
import sys

root = pathlib.Path(__file__).resolve().parents[2]
files = subprocess.run(["git", "-C", str(root), "ls-files", "*.cpp", "*.h"], capture_output=True, text=True,
                       check=True).stdout.split()
exceptions = {}
for line in (root / "tests/scripts/house_exceptions.txt").read_text().splitlines():
    if line.strip() and not line.startswith("#"):
        name, _, reason = line.partition(" ")
        exceptions[name] = reason

problems = []
code = tests = 0
for name in files:
    lines = (root / name).read_text().splitlines()
    filled = sum(1 for line in lines if line.strip())
    if name.startswith(("dxf/", "host/", "tool/", "words/")):
        code += filled
        if len(lines) > 800 and name not in exceptions:
            problems.append(f"{name}: {len(lines)} lines, more than 800")
    elif name.startswith("tests/"):
        tests += filled

print(f"code {code} lines, tests {tests} lines: {100 * tests // max(code, 1)}%")
ratio = 100 * tests // max(code, 1)
if code > 2000 and not 25 <= ratio <= 33:
    print("note: test lines are to stay between a quarter and a third of the code lines")
if code > 2000 and not 15 <= ratio <= 40:
    problems.append("test lines are far from the aim")
print("\n".join(problems))
sys.exit(1 if problems else 0)
