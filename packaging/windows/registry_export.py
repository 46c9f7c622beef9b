"""Reads what `regedit /E` writes, and says what one export has that an earlier one has not."""

import re

TEXT = r'"((?:[^"\\]|\\.)*)"'
VALUE = re.compile(rf"^(?:@|{TEXT})=(.*)$", re.DOTALL)


def unescaped(text):
    return re.sub(r"\\(.)", r"\1", text)


def parse(text):
    """{(key, value name): value}; the default value's name is "". A key itself is (key, None): None."""
    values, key = {}, None
    for line in re.sub(r"\\\r?\n\s*", "", text).splitlines():  # long binary values go on in the next line
        if line.startswith("[") and line.endswith("]"):
            key = line[1:-1]
            values[key, None] = None
        elif key is not None and line:
            match = VALUE.match(line)
            if match is None:
                raise ValueError(f"this is no line of a registry export: {line!r}")
            name, value = match.groups()
            quoted = re.fullmatch(TEXT, value)
            values[key, unescaped(name or "")] = unescaped(quoted.group(1)) if quoted else value
    return values


def added(before, after):
    """What `after` holds and `before` does not; raises when anything of `before` is gone or changed."""
    lost = [entry for entry in before if entry not in after or before[entry] != after[entry]]
    if lost:
        raise ValueError(f"these are gone or changed: {lost}")
    return {entry: value for entry, value in after.items() if entry not in before}


def as_lines(values):
    """One line a value, in the order of keys: KEY | NAME = VALUE, and KEY alone when it has none."""
    with_values = {key for key, name in values if name is not None}
    lines = []
    for (key, name), value in sorted(values.items(), key=lambda item: (item[0][0].lower(), item[0][1] or "")):
        if name is not None:
            lines.append(f"{key} | {name or '@'} = {value}")
        elif key not in with_values:
            lines.append(key)
    return lines
