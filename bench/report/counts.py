#!/usr/bin/env python3
"""Puts together what the benchmark program counted under callgrind, and prints it.
usage: counts.py FOLDER OUT.json    FOLDER holds `allocations` and callgrind's dumps"""

import json
import pathlib
import re
import sys


def instructions(dump):
    """How many instructions a dump counted."""
    text = dump.read_text(encoding="utf-8", errors="replace")
    return int(re.search(r"^summary: (\d+)", text, re.MULTILINE).group(1))


def main():
    folder = pathlib.Path(sys.argv[1])
    methods = {}
    for number, line in enumerate((folder / "allocations").read_text(encoding="utf-8").splitlines(), 1):
        method, side, runs, allocations = line.split("\t")
        methods.setdefault(method, {})[side] = {
            "instructions": instructions(folder / f"dump.{number}") / int(runs),
            "allocations": float(allocations),
        }
    with open(sys.argv[2], "w", encoding="utf-8") as file:
        json.dump(methods, file, indent=1)
    print(f'\n{"a call, on SQLite":<40} {"instructions":>12} {"driver":>10} {"ratio":>6} {"allocations":>12} {"driver":>7}')
    for method, sides in methods.items():
        library, driver = sides["library"], sides.get("driver")
        beside = (f'{driver["instructions"]:>10.0f} {library["instructions"] / driver["instructions"]:>6.2f}'
                  if driver else f'{"":>17}')
        allocated = f'{driver["allocations"]:>7.1f}' if driver else ""
        print(f'{method:<40} {library["instructions"]:>12.0f} {beside} {library["allocations"]:>12.1f} {allocated}'.rstrip())


main()
