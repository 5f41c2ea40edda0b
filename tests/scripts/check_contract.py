#!/usr/bin/env python3
"""Checks in the compilation database given that the module is compiled with dxf/inc and host/inc as its only
include directories: what a real CAD program would have to offer."""
import json
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parents[2]
wanted = {str(root / "dxf/inc"), str(root / "host/inc")}
seen = 0
bad = []
for entry in json.loads(pathlib.Path(sys.argv[1]).read_text()):
    path = pathlib.Path(entry["file"])
    if not path.is_relative_to(root / "dxf"):
        continue
    seen += 1
    folders = set(re.findall(r"-(?:I|isystem)\s*(\S+)", entry["command"]))
    if folders != wanted:
        bad.append(f"{path.relative_to(root)}: {sorted(folders)}")
if not seen:
    bad.append("no file of the module in the database")
print("\n".join(bad))
sys.exit(1 if bad else 0)
