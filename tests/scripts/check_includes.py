#!/usr/bin/env python3
"""Checks that includes run downward only.

dxf/    includes the standard library, host/inc, dxf/inc and its own headers, by floors (floors.txt)
host/   never includes dxf/
tool/validate  includes only its own headers, those of words/, and libraries
tool/repair    includes its own headers, the validator's and those of words/
words/         includes its own headers alone

And that the host's drawing calls stand in dxf/cpp/host alone, which keeps shift, unit and order in one place.
"""
import fnmatch
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parents[2]
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)
# Calls that put something into the drawing. Reading and settings are free.
DRAWING = re.compile(r"""(?<![\w.:>])(
      ov(draw|arc|spline|elem|copy|hatch|addtext|dim|dodim|arrow|addarrow|3dgenflaeche|3dgenepsi)
    | Uo3dWertUserToNm | UoGen3DZylinder
    )\s*\(
    | \bCi(Pat|Elem|Text|Hatch|Dim|Arrow|Bitmap|3d)\([^()]*\)\s*\.\s*(Add|Draw|Gen|Create|Insert)\w*\s*\(
    """, re.X)
problems = []


def read_floors():
    rows = []
    for line in (root / "tests/scripts/floors.txt").read_text().splitlines():
        line = line.split("#")[0].split()
        if line:
            rows.append((line[0], int(line[1])))
    return rows


FLOORS = read_floors()


def floor_of(path):
    relative = path.relative_to(root / "dxf").as_posix()
    for pattern, floor in FLOORS:
        if fnmatch.fnmatch(relative, pattern):
            return floor
    problems.append(f"{relative}: no floor")
    return 99


def sources(folder):
    return [p for p in (root / folder).rglob("*") if p.suffix in (".h", ".cpp")]


def check_module():
    inc, host_inc = root / "dxf/inc", root / "host/inc"
    for path in sources("dxf"):
        for quote, name in INCLUDE.findall(path.read_text()):
            if quote == "<":
                if "/" in name or name.endswith(".h") and name not in ("emmintrin.h", "immintrin.h", "arm_neon.h"):
                    problems.append(f"{path.relative_to(root)}: <{name}> isn't of the C++ library")
                continue
            target = next((p for p in (path.parent / name, inc / name) if p.exists()), None)
            if target:
                target = target.resolve()
                if not target.is_relative_to(root / "dxf"):
                    problems.append(f"{path.relative_to(root)}: leaves the module for {name}")
                elif floor_of(target) > floor_of(path):
                    problems.append(
                        f"{path.relative_to(root)} (floor {floor_of(path)}) includes {name} (floor {floor_of(target)})")
            elif not (host_inc / name).exists():
                problems.append(f"{path.relative_to(root)}: {name} is neither the module's nor the host API's")


def check_drawing_calls():
    for path in sources("dxf/cpp"):
        if path.is_relative_to(root / "dxf/cpp/host"):
            continue
        for number, line in enumerate(path.read_text().splitlines(), 1):
            code = line.split("//")[0]
            for call in DRAWING.finditer(code):
                problems.append(f"{path.relative_to(root)}:{number}: {call.group().strip('( ')} is a drawing call of "
                                f"the host; dxf/cpp/host has the module's own (dx_host.h)")


def check_other(folder, forbidden, why):
    for path in sources(folder):
        for quote, name in INCLUDE.findall(path.read_text()):
            if quote == '"' and forbidden(path, name):
                problems.append(f"{path.relative_to(root)}: {name} {why}")


check_module()
check_drawing_calls()
module_headers = {p.name for p in sources("dxf") if p.suffix == ".h"}
check_other("host", lambda p, n: pathlib.Path(n).name in module_headers and not (root / "host/inc" / n).exists()
            and not (root / "host/cpp" / n).exists(), "is the module's; the host never includes it")
is_words = lambda n: (root / "words" / n).exists()
check_other("words", lambda p, n: not is_words(n), "isn't of words/")
check_other("tool/validate", lambda p, n: not (p.parent / n).exists() and not is_words(n),
            "isn't the validator's own")
check_other("tool/repair", lambda p, n: not (p.parent / n).exists() and not (root / "tool/validate" / n).exists()
            and not is_words(n),
            "is neither the mender's own nor the validator's")
print("\n".join(sorted(set(problems))))
sys.exit(1 if problems else 0)
