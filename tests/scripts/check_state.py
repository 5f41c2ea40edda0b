#!/usr/bin/env python3
"""Lists the module's mutable data (symbols of .data and .bss in the static library given) and checks that each
stands in a state file: <subsystem>_state.cpp or one of the few files listed here, which own a piece of state
that is set and reset in one place."""
import re
import subprocess
import sys

ALLOWED = {
    "dx_documents.cpp.o",   # DxDocuments, the manager of open files
    "dx_reader.cpp.o",      # the current pair
    "dx_protocol.cpp.o",    # the protocol's stream and list
    "dx_select.cpp.o",      # the started flag: lives as long as the library
    "dx_elem_queue.cpp.o",  # the element queue
}
# Constants with addresses in them stand in .data.rel.ro, which is read-only once the program has started.
SYMBOL = re.compile(r"^[0-9a-f]+ .{7} \.(?:bss|data(?!\.rel\.ro))\S*\s+[0-9a-f]+ +(?:\.hidden )?(.+)$")
out = subprocess.run(["objdump", "-t", "-C", sys.argv[1]], capture_output=True, text=True, check=True).stdout
problems = []
obj = ""
for line in out.splitlines():
    if ":     file format" in line:
        obj = line.split(":")[0]
        continue
    m = SYMBOL.match(line)
    if not m or obj.endswith("_state.cpp.o") or obj in ALLOWED:
        continue
    name = m.group(1)
    if name.startswith("."):  # the section itself
        continue
    if name.startswith(("guard variable", "typeinfo", "vtable", "VTT", "DW.ref", "std::__ioinit", "__odr_asan",
                        "__sancov", "_GLOBAL_")):
        continue
    problems.append(f"{obj}: {name}")
print("\n".join(problems))
sys.exit(1 if problems else 0)
