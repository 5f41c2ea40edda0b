#!/usr/bin/env python3
"""What the documentation claims of the command is so.

Usage: check_docs.py TORVA_DXF [FOLDER]
Runs each line "$ torva-dxf ..." and "./torva-dxf ..." of README.md and docs/*.md, and each example of the
command's own help, in a folder of its own, where plan.dxf and the like are
examples, and holds what `info --json` tells of the examples, and of the drawings in FOLDER, against
docs/info.schema.json.
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import jsonschema

ROOT = pathlib.Path(__file__).resolve().parents[2]
TOOLS = ("jq", "sqlite3")  # lines with a program that isn't here are passed over, and told


def documents():
    yield ROOT / "README.md"
    yield from sorted((ROOT / "docs").glob("*.md"))


def command_lines(document):
    inside = False
    for number, line in enumerate(document.read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("```"):
            inside = not inside
        elif inside and re.match(r"\$ .*torva-dxf|\./torva-dxf", line):
            yield number, re.split(r"\s{2,}#", line.removeprefix("$ "))[0]


def help_lines(program):
    """Examples of `COMMAND --help`. Those of solid models need a file that isn't among the examples."""
    own = subprocess.run([program, "--help", "--lang", "en"], capture_output=True, text=True, check=True).stdout
    for command in re.findall(r"^  ([a-z]+) {2,}", own.split("Subcommands:")[1].split("Examples:")[0], re.M):
        text = subprocess.run([program, command, "--help", "--lang", "en"], capture_output=True, text=True,
                              check=True).stdout
        for number, line in enumerate(text.split("Examples:")[-1].splitlines()):
            if line.startswith("  torva-dxf ") and command != "sat":
                yield f"{command} --help", number, re.split(r"\s{2,}", line.strip())[0]


def prepare(folder, program):
    shutil.copytree(ROOT / "examples", folder / "examples")
    for name in ("plan", "old", "new", "r12", "drawing"):
        shutil.copy(ROOT / "examples/bracket.dxf", folder / f"{name}.dxf")
    subprocess.run([program, "import", "plan.dxf", "-o", "plan.tdw", "-q"], cwd=folder, check=True)


def run_lines(program):
    failed = told = 0
    lines = [(document.name, number, line) for document in documents() for number, line in command_lines(document)]
    for source, number, line in [*lines, *help_lines(program)]:
        missing = [tool for tool in TOOLS if re.search(rf"\b{tool} ", line) and not shutil.which(tool)]
        if missing:
            print(f"{source}:{number}: not run, {missing[0]} isn't installed")
            continue
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            prepare(folder, program)
            line = re.sub(r"(^|[\s|;(])(?:\./)?torva-dxf ", rf"\1{program} ", line)
            done = subprocess.run(["bash", "-c", line], cwd=folder, capture_output=True, text=True,
                                  stdin=open(folder / "plan.dxf"))
        told += 1
        # diff says 1 where files differ, validate where it finds errors.
        if done.returncode > (1 if re.search(r"\b(diff|validate) ", line) else 0):
            failed += 1
            print(f"{source}:{number}: {line}\n{done.stderr}")
    print(f"{told} command lines of documentation and help run")
    return failed


def check_json(program, folders):
    schema = json.loads((ROOT / "docs/info.schema.json").read_text(encoding="utf-8"))
    validator = jsonschema.Draft7Validator(schema)
    drawings = [path for folder in folders for path in sorted(folder.rglob("*.dxf"))]
    drawings.append(ROOT / "no such file.dxf")
    failed = 0
    for path in drawings:
        out = subprocess.run([program, "info", "--json", path], capture_output=True).stdout
        errors = list(validator.iter_errors(json.loads(out)))
        for error in errors[:3]:
            print(f"{path}: {'/'.join(map(str, error.path))}: {error.message[:300]}")
        failed += bool(errors)
    print(f"info --json of {len(drawings)} drawings held against its schema")
    return failed


def main():
    program = os.path.abspath(sys.argv[1])
    folders = [ROOT / "examples"] + [pathlib.Path(name) for name in sys.argv[2:]]
    return 1 if run_lines(program) + check_json(program, folders) else 0


sys.exit(main())
