#!/usr/bin/env python3
"""Writes the figures into a page, between its lines <!-- figures NAME --> and <!-- end -->; the text around them is
written by hand. A part of which nothing was measured stays as it is.
usage: page.py FOLDER PAGE.md    FOLDER holds results.json, and counts.json and windows.json where there are any"""

import json
import pathlib
import re
import sys

import results
from figures import count_text, time_text

TITLES = {"sqlite": "SQLite", "postgresql": "PostgreSQL", "mariadb": "MariaDB"}


def table(head, lines):
    rule = ["---"] + ["--:"] * (len(head) - 1)
    return "\n".join("| " + " | ".join(cells) + " |" for cells in [head, rule, *lines])


def marked(row):
    """The ratio; bold where it is not what is wanted."""
    ratio = row.get("ratio")
    if ratio is None:
        return ""
    missed = any(not met for wish, met in row.wishes() if not wish.startswith("bytes"))
    return f"**{ratio:.2f}**" if missed else f"{ratio:.2f}"


def by_engine(rows, cells, empty):
    """One line a subject, for every engine the cells that `cells` makes of its row."""
    engines = list(dict.fromkeys(row.engine for row in rows))
    for subject in dict.fromkeys(row.subject for row in rows):
        line = [subject]
        for engine in engines:
            row = next((row for row in rows if (row.engine, row.subject) == (engine, subject)), None)
            line += cells(row) if row else [""] * empty
        yield line


def head(rows, first, columns):
    engines = dict.fromkeys(row.engine for row in rows)
    return [first] + [f"{TITLES[engine]}{column}" for engine in engines for column in columns]


def calls(rows):
    def cells(row):
        return [count_text(row.get("statements")) or "0", time_text(row.get("library_us")), marked(row)]
    return table(head(rows, "method", [": statements", ": a call", ": ratio"]), by_engine(rows, cells, 3))


def paired(first):
    def make(rows):
        def cells(row):
            return [time_text(row.get("driver_us")), time_text(row.get("library_us")), marked(row)]
        return table(head(rows, first, [": driver", ": kxJob", ": ratio"]), by_engine(rows, cells, 3))
    return make


def memory(rows):
    rows = [row for row in rows if row.get("bytes_per_row") is not None]
    lines = [[f"{row.subject}, {TITLES[row.engine]}", count_text(row.get("rows")), count_text(row.get("bytes_per_row")),
              count_text(row.get("most_bytes_per_row"))] for row in rows]
    return table(["result", "rows", "bytes a row beyond its text", "at the most, while it is read"], lines)


def hosts(rows):
    def cells(row):
        return [count_text(row.get("items_per_second")), count_text(row.get("statements_per_item")), marked(row)]
    return table(head(rows, "hosts", [": items a second", ": statements an item", ": ratio"]), by_engine(rows, cells, 3))


def bound(rows):
    lines = [[row.subject, time_text(row.get("driver_us")), time_text(row.get("library_us")), marked(row)] for row in rows]
    return table(["call", "native", "this way", "ratio"], lines)


def counts(methods):
    lines = []
    for method, sides in methods.items():
        library, driver = sides["library"], sides.get("driver", {})
        ratio = f'{library["instructions"] / driver["instructions"]:.2f}' if driver else ""
        lines.append([method, count_text(driver.get("instructions")), count_text(library["instructions"]), ratio,
                      count_text(driver.get("allocations")), count_text(library["allocations"])])
    return table(["method", "driver: instructions", "kxJob: instructions", "ratio", "driver: allocations",
                  "kxJob: allocations"], lines)


def run(context):
    sizes = "small sizes (--quick)" if context.get("sizes") == "quick" else "full sizes"
    return (f"Measured {context['date'][:10]} on {context['num_cpus']} processors of {context['mhz_per_cpu']} MHz; "
            f"load when it began: {context['load_avg'][0]:.1f}; {sizes}.")


def parts(rows, context, methods):
    """The text of every part that was measured, and when and how it was."""
    kinds = {"call": calls, "bulk": paired("items, base"), "large": paired("call"), "next": paired("jobs"),
             "host": hosts, "com": bound}
    made = {}
    for kind, make in kinds.items():
        if of_kind := [row for row in rows if row.kind == kind]:
            made[kind] = make(of_kind) + "\n\n" + run(context)
    if any(row.get("bytes_per_row") is not None for row in rows):
        made["memory"] = memory(rows) + "\n\n" + run(context)
    if methods:
        made["counts"] = counts(methods)
    return made


def main():
    folder, page = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    rows, context = results.read(folder / "results.json")
    if (folder / "windows.json").exists():
        rows += results.read(folder / "windows.json")[0]
    counted = folder / "counts.json"
    methods = json.loads(counted.read_text(encoding="utf-8")) if counted.exists() else {}
    text = page.read_text(encoding="utf-8")
    for name, figures in parts(rows, context, methods).items():
        place = re.compile(rf"(<!-- figures {name} -->\n).*?(\n<!-- end -->)", re.DOTALL)
        text, found = place.subn(lambda match, new=figures: match.group(1) + new + match.group(2), text)
        if found != 1:
            sys.exit(f"{page}: there is no part for the figures {name}")
    page.write_text(text, encoding="utf-8")


main()
