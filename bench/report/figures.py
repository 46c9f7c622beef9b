"""How figures are written, in tables of either kind."""


def time_text(microseconds):
    """Three digits of a time, in the unit that suits it."""
    if microseconds is None:
        return ""
    for unit, size in (("s", 1e6), ("ms", 1e3), ("us", 1)):
        if microseconds >= size:
            return f"{microseconds / size:.3g} {unit}"
    return f"{microseconds * 1000:.3g} ns"


def count_text(number):
    """A whole number with a mark at the thousands, or a small one with three digits."""
    if number is None:
        return ""
    return f"{number:,.0f}" if number >= 100 else f"{number:.3g}"
