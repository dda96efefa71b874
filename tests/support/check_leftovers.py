#!/usr/bin/env python3
"""Fails when something is left of the suite: check_leftovers.py PATTERN...

Each pattern names what the tests make outside their build folder, as a glob of the host.
"""
import glob
import sys


def main(patterns):
    left = sorted(path for pattern in patterns for path in glob.glob(pattern))
    for path in left:
        print("left behind:", path)
    return 1 if left else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
