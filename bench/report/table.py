#!/usr/bin/env python3
"""Prints what script/bench has measured. usage: table.py RESULTS.json"""

import sys

import results
from figures import time_text

HANDLED = {"driver_us", "library_us", "ratio", "ratio_25", "ratio_75", "at_most", "at_least", "bytes_at_most"}


def wanted_text(row):
    return ", ".join(wish + ("" if met else " MISSED") for wish, met in row.wishes())


def ratio_text(row):
    if row.get("ratio") is None:
        return ""
    spread = f" ({row.get('ratio_25'):.2f} to {row.get('ratio_75'):.2f})" if row.get("ratio_25") is not None else ""
    return f"{row.get('ratio'):.3f}{spread}"


def main():
    rows, context = results.read(sys.argv[1])
    if context:
        print(f"load when it began: {context['load_avg'][0]:.1f} on {context['num_cpus']} processors")
    kind = None
    for row in rows:
        if row.kind != kind:
            kind = row.kind
            print(f'\n{kind:<52} {"driver":>9} {"library":>9}  {"ratio (middle half)":<24} {"wanted":<16}')
        others = "  ".join(f"{name} {value:g}" for name, value in row.counters.items() if name not in HANDLED)
        print(f"{row.engine + ' ' + row.subject:<52} {time_text(row.get('driver_us')):>9} "
              f"{time_text(row.get('library_us')):>9}  {ratio_text(row):<24} {wanted_text(row):<16} {row.error or others}".rstrip())
    wishes = [met for row in rows for _, met in row.wishes()]
    print(f"\n{wishes.count(False)} of {len(wishes)} wishes are not met")
    return 1 if any(row.error for row in rows) else 0


sys.exit(main())
