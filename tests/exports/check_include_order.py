#!/usr/bin/env python3
"""Checks that no folder of the platform includes one that is above it.

The list below goes from the lowest folder to the highest. The folders of the system modules share
the highest level, and do not include each other.
"""
import pathlib
import re
import sys

LEVELS = [
    "include", "text", "host", "core", "names", "files", "tree", "memory", "modules", "compound",
    "security", "registry", "processes", "desktop", "sound",
]
SYSTEM_MODULES = {
    "kernel32", "user32", "advapi32", "shell32", "shlwapi", "ole32", "oleaut32", "version",
    "winmm", "runtime",
}
INCLUDE = re.compile(r'^#include "([a-z0-9_]+)/', re.MULTILINE)


def level(folder):
    return len(LEVELS) if folder in SYSTEM_MODULES else LEVELS.index(folder)


def faults(root):
    for file in sorted(root.glob("*/*.[ch]*")):
        folder = file.parent.name
        if folder == "windows":
            continue
        if folder not in LEVELS and folder not in SYSTEM_MODULES:
            yield f"{folder}: not in the list of levels"
            continue
        for other in INCLUDE.findall(file.read_text(encoding="utf-8")):
            same = other == folder
            if not same and level(other) >= level(folder):
                yield f"{folder}/{file.name} includes {other}/"


def main():
    root = pathlib.Path(sys.argv[1])
    found = list(faults(root))
    for fault in found:
        print(fault)
    files = len(list(root.glob("*/*.cpp")))
    if files == 0:
        print("no sources found in", root)
    return 1 if found or files == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
