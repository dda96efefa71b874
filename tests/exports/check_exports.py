#!/usr/bin/env python3
"""Holds the names that a library exports against the list of those it shall export.

check_exports.py LIST LIBRARY TOOL DEMANGLER: TOOL is nm for a shared object, objdump for a DLL.
"""
import re
import subprocess
import sys

# The listed types as each build's compiler knows them.
WINDOWS_TYPES = {"DWORD": "unsigned long", "LONG": "long"}
LINUX_TYPES = {"DWORD": "unsigned int", "LONG": "int"}


def output_of(*command, text=None):
    return subprocess.run(command, input=text, capture_output=True, text=True, check=True).stdout


def exported_by_dll(library, objdump):
    table = output_of(objdump, "-p", library).split("[Ordinal/Name Pointer] Table", 1)[1]
    return re.findall(r"^\s*\[\s*\d+\]\s+(\S+)$", table.split("\n\n", 1)[0], re.MULTILINE)


def exported_by_shared_object(library, nm):
    return [line.split()[-1] for line in output_of(nm, "-D", "--defined-only", library).splitlines()]


def listed(path, types):
    with open(path, encoding="utf-8") as file:
        names = {line.strip() for line in file} - {""}
    names = {name for name in names if not name.startswith("#")}
    return {re.sub(r"\b(DWORD|LONG)\b", lambda match: types[match[0]], name) for name in names}


def without_typeinfo(names, expected):
    """Type information belongs to a class, and counts only where the class is not exported."""
    classes = {name.removeprefix("vtable for ") for name in expected if name.startswith("vtable")}
    ignored = {f"typeinfo{part} for {name}" for name in classes for part in ("", " name")}
    return names - ignored


def main(list_path, library, tool, demangler):
    is_dll = library.lower().endswith(".dll")
    symbols = exported_by_dll(library, tool) if is_dll else exported_by_shared_object(library, tool)
    expected = listed(list_path, WINDOWS_TYPES if is_dll else LINUX_TYPES)
    # Several symbols of one constructor or destructor demangle to one name.
    demangled = set(output_of(demangler, text="\n".join(symbols)).splitlines())
    actual = without_typeinfo(demangled, expected)
    for name in sorted(expected - actual):
        print("missing:", name)
    for name in sorted(actual - expected):
        print("not listed:", name)
    print(f"{len(actual)} names exported, {len(expected)} listed")
    return 0 if actual == expected else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
