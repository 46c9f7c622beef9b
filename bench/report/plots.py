#!/usr/bin/env python3
"""Draws what script/bench has measured, by gnuplot. usage: plots.py RESULTS.json FOLDER"""

import pathlib
import subprocess
import sys

import results

TITLES = {"sqlite": "SQLite", "postgresql": "PostgreSQL", "mariadb": "MariaDB"}
COLOURS = ["#1b6ca8", "#d1495b", "#66a182", "#8d6a9f", "#edae49", "#444444"]

HEAD = """set terminal svg size {width},{height} font 'sans,12' background 'white'
set output '{file}'
set title "{title}"
set border 3
set tics nomirror
set grid {grid} lc rgb '#dddddd' lt 1
set key outside below horizontal
"""


def block(name, lines):
    """A gnuplot data block."""
    return f"${name} << EOD\n" + "".join(f"{line}\n" for line in lines) + "EOD\n"


def engines_of(rows):
    return list(dict.fromkeys(row.engine for row in rows))


def draw(folder, name, title, body, width=800, height=420, grid="y"):
    head = HEAD.format(file=folder / f"{name}.svg", title=title, width=width, height=height, grid=grid)
    subprocess.run(["gnuplot"], input=head + body, text=True, check=True)


def curves(data, style):
    """A plot command of one curve for each (title, lines)."""
    blocks = "".join(block(f"d{i}", lines) for i, (_, lines) in enumerate(data))
    parts = [f"$d{i} using 1:2 {style} lc rgb '{COLOURS[i % len(COLOURS)]}' title '{title}'"
             for i, (title, _) in enumerate(data)]
    return blocks + "plot " + ", ".join(parts) + "\n"


def calls(rows, folder):
    rows = [row for row in rows if row.kind == "call" and row.get("ratio")]
    if not rows:
        return
    methods = list(dict.fromkeys(row.subject for row in rows))
    place = {method: len(methods) - i for i, method in enumerate(methods)}
    tics = ", ".join(f'"{method}" {place[method]}' for method in methods)
    data = [(TITLES[engine], [f"{row.get('ratio')} {place[row.subject]}" for row in rows if row.engine == engine])
            for engine in engines_of(rows)]
    body = (f"set ytics ({tics})\nset yrange [0:{len(methods) + 1}]\nset xrange [0.8:*]\nset xlabel 'ratio'\n"
            "set arrow from 1.05, graph 0 to 1.05, graph 1 nohead dt 2 lc rgb '#888888'\n")
    draw(folder, "calls", "One call, beside its statements by the bare driver",
         body + curves(data, "with points pt 7 ps 0.7"), height=720, grid="x y")


def next_job(rows, folder):
    rows = [row for row in rows if row.kind == "next" and row.get("us_per_job")]
    if not rows:
        return
    data = [(f"{TITLES[engine]}, {state}",
             [f"{row.subject.split()[0]} {row.get('library_us') / 1000}" for row in rows
              if row.engine == engine and row.subject.endswith(state)])
            for engine in engines_of(rows) for state in ("QUEUED", "RUNNING")]
    body = "set logscale xy\nset xlabel 'jobs that are QUEUED or RUNNING'\nset ylabel 'milliseconds'\n"
    draw(folder, "next_job", "GetNextJob among so many jobs", body + curves(data, "with linespoints pt 7 ps 0.6"))


def hosts(rows, folder):
    rows = [row for row in rows if row.kind == "host" and "process" in row.subject]
    if not rows:
        return
    data = [(TITLES[engine], [f"{row.subject.split()[0]} {row.get('items_per_second')}" for row in rows
                              if row.engine == engine]) for engine in engines_of(rows)]
    body = "set xrange [0.5:4.5]\nset xtics (1, 2, 4)\nset yrange [0:*]\nset xlabel 'worker hosts'\nset ylabel 'items a second'\n"
    draw(folder, "hosts", "Items that do nothing, executed by worker hosts",
         body + curves(data, "with linespoints pt 7 ps 0.6"))


def bulk(rows, folder):
    rows = [row for row in rows if row.kind == "bulk"]
    if not rows:
        return
    lines = []
    for engine in engines_of(rows):
        of_engine = [row for row in rows if row.engine == engine]
        count = max(int(row.subject.split()[0]) for row in of_engine)
        roads = {row.subject.split(", ")[1]: row for row in of_engine if row.subject.startswith(f"{count} ")}
        rates = [1e6 * count / roads["fastest"].get("library_us")]
        rates += [1e6 * count / roads[road].get("driver_us") for road in ("prepared", "fastest")]
        lines.append(f'"{TITLES[engine]}, {count}" ' + " ".join(str(rate) for rate in rates))
    parts = [f"$d using {column}:xtic(1) lc rgb '{COLOURS[column - 2]}' title '{title}'" for column, title in
             ((2, "CreateSimpleJobItems"), (3, "driver, prepared batches of 100"), (4, "the fastest road"))]
    body = ("set style data histograms\nset style fill solid\nset yrange [0:*]\nset ylabel 'items a second'\n"
            + block("d", lines) + "plot " + ", ".join(parts) + "\n")
    draw(folder, "bulk", "Items added a second", body)


def main():
    rows, _ = results.read(sys.argv[1])
    folder = pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for plot in (calls, next_job, hosts, bulk):
        plot(rows, folder)


main()
