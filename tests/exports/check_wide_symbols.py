#!/usr/bin/env python3
"""Fails when a shared object refers to code that believes in wide characters of 32 bits.

check_wide_symbols.py NM LIBRARY...

The objects are compiled with wide characters of 16 bits, and the host's libraries are not: its wide
functions, wide strings and wide streams must not be called. Templates of the standard library that
only hold wide characters, such as vectors, are the object's own code and harmless.
"""
import os
import re
import subprocess
import sys

# Functions of <wchar.h>, <wctype.h> and the wide ones of <stdlib.h>, plain or with checked bounds.
LIBC = re.compile(
    r"(__(isoc\d+_)?)?(wcs\w+|wmem\w+|mbs(r|nr)?towcs|mbsinit|mbr?towc|mbr?len|wcr?tomb|btowc|wctob"
    r"|v?[fs]?w(printf|scanf)|(f|un)?[gp][eu]tw(c|char)|f[gp][eu]tws|isw\w+|tow(upper|lower|ctrans)"
    r"|wc(trans|type)(_l)?|wcwidth|fwide|open_wmemstream)(_chk)?")
# Strings, views, traits, streams and facets of the standard library over wide characters.
LIBSTDCXX = re.compile(
    r"_Z\w*(basic_string(_view)?|char_traits|basic_\w*(ios|stream|buf)|ctype|codecvt|collate|messages"
    r"|num(_get|_put|punct)|money(_get|_put|punct)|time(_get|_put))I(cw|w)|_ZSt\d(wcin|wcout|wcerr|wclog)")


def symbols_of(nm, *arguments):
    command = (nm, "--format=posix", *arguments)
    output = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    return {line.split()[0].split("@")[0] for line in output.splitlines()}


def wide_symbols(nm, library):
    undefined = symbols_of(nm, "--dynamic", "--undefined-only", library)
    every = undefined | symbols_of(nm, library) | symbols_of(nm, "--dynamic", library)
    if not undefined:
        sys.exit(f"{library} refers to nothing at all: no library to judge")
    return sorted({name for name in undefined if LIBC.fullmatch(name)}
                  | {name for name in every if LIBSTDCXX.match(name)})


def main(nm, *libraries):
    found = [(library, name) for library in libraries for name in wide_symbols(nm, library)]
    for library, name in found:
        print(f"{os.path.basename(library)} refers to {name}")
    return 1 if found or not libraries else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
