#!/usr/bin/env python3
"""Puts what one piece of script/proof has tried into its part of the page; the other parts stay as they are.
usage: write_page.py PAGE PIECE FOLDER COMMAND    FOLDER holds PIECE.log, and the piece's tables in FOLDER/PIECE/*.md"""

import datetime
import os
import pathlib
import platform
import re
import sys

PIECES = "models faults statements sequences fuzz picks security branches mutants soak".split()


def parts(page):
    """{piece: its part, without the marks}"""
    found = re.findall(r"<!-- piece (\w+) -->\n(.*?)\n<!-- end -->", page, re.DOTALL)
    return dict(found)


def part_of(piece, folder, command):
    log = (folder / f"{piece}.log").read_text(encoding="utf-8", errors="replace")
    counts = re.findall(r"^proof: (.*): (\d+) \(least (\d+)\)$", log, re.MULTILINE)
    lines = [f"## {piece}", "",
             f"`{command}`, {datetime.datetime.now(datetime.timezone.utc):%F}, on {distribution()} with {os.cpu_count()} processors.",
             "", "| what | count | at least |", "|---|--:|--:|", *(f"| {what} | {count} | {least} |" for what, count, least in counts)]
    for table in sorted((folder / piece).glob("*.md")):
        lines += ["", re.sub(r"^## ", "### ", table.read_text(encoding="utf-8").strip(), flags=re.MULTILINE)]
    return "\n".join(lines)


def distribution():
    release = platform.freedesktop_os_release()
    return f"{release['ID'].capitalize()} {pathlib.Path('/etc/debian_version').read_text(encoding='utf-8').strip()}"


def main():
    page, piece, folder, command = pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3]), sys.argv[4]
    text = page.read_text(encoding="utf-8")
    known = parts(text) | {piece: part_of(piece, folder, command)}
    head = text.split("<!-- piece ")[0].rstrip()
    body = [f"<!-- piece {name} -->\n{known[name]}\n<!-- end -->" for name in PIECES if name in known]
    page.write_text("\n\n".join([head, *body]) + "\n", encoding="utf-8")


main()
