"""Puts many alterations into one compilation, each behind a switch: the program does the one whose number it is told.

What cannot be switched while a program runs (an operator, an order, what the compiler has to know) is compiled by itself."""

import collections
import re

# Included first into every source.
DECLARATION = """
extern int kxjobAlteration;
template <typename Thing>
inline Thing kxjobPick(int number, Thing usual, Thing altered) { return kxjobAlteration == number ? altered : usual; }
inline bool kxjobFlip(int number, bool condition) { return (kxjobAlteration == number) != condition; }
"""
DEFINITION = """
#include <cstdlib>
static int Told() { const char* told = std::getenv("KXJOB_ALTERATION"); return told == nullptr ? 0 : std::atoi(told); }
int kxjobAlteration = Told();
"""


LITERAL = r'"(?:[^"\\\n]|\\.)*"'
RUN = re.compile(rf"{LITERAL}(?:\s+{LITERAL})*")  # literals that follow each other are one


def span_of(alteration, source):
    """What has to be put behind the switch."""
    if alteration.kind == "text":
        for run in RUN.finditer(source, source.rfind(";", 0, alteration.start) + 1):
            if run.start() <= alteration.start < run.end():
                return run.span()
    return alteration.start, alteration.end


def switch_of(alteration, number, source):
    """What stands before and behind it, or None."""
    original = source[alteration.start : alteration.end]
    if alteration.kind == "text":
        start, end = span_of(alteration, source)
        altered = source[start : alteration.start] + alteration.replacement + source[alteration.end : end]
        return f"kxjobPick<const char*>({number}, ", f", {' '.join(altered.splitlines())})"
    if alteration.kind == "number" and original.isdigit():
        return f"kxjobPick({number}, ", f", {alteration.replacement})"
    if alteration.kind == "condition" and alteration.replacement == f"!({original})":
        return f"kxjobFlip({number}, (", "))"
    if alteration.kind == "left out":
        return f"if (kxjobAlteration != {number}) {{ ", " }"
    return None


def switched(source, numbered):
    """The source with these (number, alteration) behind switches; no line moves."""
    before, behind = collections.defaultdict(list), collections.defaultdict(list)
    for number, one in numbered:
        prefix, suffix = switch_of(one, number, source)
        start, end = span_of(one, source)
        before[start].append((-end, number, prefix))  # what reaches farther stands outside
        behind[end].append((-start, -number, suffix))
    pieces, done = [], 0
    for place in sorted(before.keys() | behind.keys()):
        pieces.append(source[done:place])
        pieces += [text for _, _, text in sorted(behind[place])] + [text for _, _, text in sorted(before[place])]
        done = place
    return "".join(pieces) + source[done:]
