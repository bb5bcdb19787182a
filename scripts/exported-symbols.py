#!/usr/bin/env python3
"""Compares the dynamic symbols a shared library defines with a list kept in
the repository (demangled, sorted, one a line; blank lines and lines starting
with '#' are ignored). With --host, the framework symbols (tavrin::) it
expects the host to define instead, that is the host operations it calls;
their size_t parameters are listed as on the 32-bit target, unsigned int.

  exported-symbols.py --nm NM --library LIB --expected FILE [--host]           check
  exported-symbols.py --nm NM --library LIB --expected FILE [--host] --write   rewrite FILE
"""
import argparse
import re
import subprocess
import sys

LINE = re.compile(r"^[0-9a-fA-F]+\s+\S\s+(.*)$")


def defined_symbols(nm, library):
    out = subprocess.run([nm, "-D", "--defined-only", "-C", library],
                         check=True, capture_output=True, text=True).stdout
    return sorted({m.group(1) for m in map(LINE.match, out.splitlines()) if m})


def host_symbols(nm, library):
    out = subprocess.run([nm, "-D", "--undefined-only", "-C", library],
                         check=True, capture_output=True, text=True).stdout
    names = (line.split(None, 1)[1] for line in out.splitlines() if line.strip().startswith("U "))
    return sorted({name.replace("unsigned long", "unsigned int") for name in names if "tavrin::" in name})


def listed_symbols(path):
    with open(path, encoding="utf-8") as f:
        return sorted({line.rstrip("\n") for line in f
                       if line.strip() and not line.startswith("#")})


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--nm", required=True)
    parser.add_argument("--library", required=True)
    parser.add_argument("--expected", required=True)
    parser.add_argument("--host", action="store_true")
    parser.add_argument("--write", action="store_true")
    args = parser.parse_args()

    actual = (host_symbols if args.host else defined_symbols)(args.nm, args.library)
    if args.write:
        with open(args.expected, "w", encoding="utf-8") as f:
            if args.host:
                f.write("# Framework symbols libpluginjson.so takes from the host (nm -D --undefined-only -C,\n")
                f.write("# those naming tavrin::; size_t as unsigned int), sorted. Regenerate: make exported-symbols\n")
            else:
                f.write("# Dynamic symbols libpluginjson.so defines (nm -D --defined-only -C),\n")
                f.write("# sorted. Regenerate: make exported-symbols\n")
            f.writelines(name + "\n" for name in actual)
        print(f"wrote {len(actual)} symbols to {args.expected}")
        return 0

    expected = listed_symbols(args.expected)
    missing = sorted(set(expected) - set(actual))
    unexpected = sorted(set(actual) - set(expected))
    if not missing and not unexpected:
        print(f"{len(actual)} symbols, as listed")
        return 0
    print(f"symbols of {args.library} differ from {args.expected}:")
    for name in missing:
        print(f"  - missing:    {name}")
    for name in unexpected:
        print(f"  + unexpected: {name}")
    print("If the change is intended, regenerate the list with: make exported-symbols")
    return 1


if __name__ == "__main__":
    sys.exit(main())
