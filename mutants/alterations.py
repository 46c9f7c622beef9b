"""What can be altered in a C++ source, and where: each alteration is a span of the file and the text put in its place."""

import dataclasses
import re

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#[^\n]*)
      | (?P<text>"(?:[^"\\\n]|\\.)*")
      | (?P<char>'(?:[^'\\\n]|\\.)+')
      | (?P<number>\b\d[\d'.]*(?:[eE][+-]?\d+)?[uUlLfF]*\b|\b0[xX][\da-fA-F']+[uUlL]*\b)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<space>\s+)
      | (?P<operator><<=|>>=|<=>|->|::|\+\+|--|&&|\|\||[=!<>+\-*/%&|^]=|<<|>>|.)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)

LEVELS = {"kWarning": "kDecision", "kDecision": "kProgress", "kProgress": "kDecision"}
WORDS = {"true": "false", "false": "true"}
OPERATORS = {
    "==": "!=", "!=": "==", "<=": "<", ">=": ">", "&&": "||", "||": "&&",
    "++": "--", "--": "++", "+=": "-=", "-=": "+=",
}  # fmt: skip
SPACED = {"<": "<=", ">": ">=", "+": "-", "-": "+", "*": "/"}  # with a blank on either side: not a template's, not a sign
# What is done for its effect: a call, or something assigned or joined.
EFFECT = re.compile(r"(?:\w+(?:\.|->)\w+\(|\w+\(|\w+ (?:<<|[-+]?=) |\w+(?:\.|->)\w+ [-+]?= |\+\+)")


@dataclasses.dataclass(frozen=True)
class Alteration:
    kind: str
    start: int
    end: int
    replacement: str

    def applied_to(self, source):
        return source[: self.start] + self.replacement + source[self.end :]

    def line_in(self, source):
        return source.count("\n", 0, self.start) + 1

    def told(self, source):
        """The place before and after, on one line each, blanks joined."""
        first = source.rfind("\n", 0, self.start) + 1
        last = source.find("\n", self.end)
        before = source[first:last]
        after = source[first : self.start] + self.replacement + source[self.end : last]
        return " ".join(before.split()), " ".join(after.split())


def tokens_of(source):
    return [(match.lastgroup, match.start(), match.end(), match.group()) for match in TOKEN.finditer(source)]


def inner_text(literal):
    """A literal's other forms: a blank less at an end, or another letter within."""
    content = literal[1:-1]
    if not content:
        return ['"x"']
    found = []
    if content.startswith(" "):
        found.append(f'"{content[1:]}"')
    if content.endswith(" "):
        found.append(f'"{content[:-1]}"')
    plain = re.sub(r"\\.", "  ", content)  # as long, without escapes
    letters = [place for place, sign in enumerate(plain) if sign.isalnum()]
    if letters:
        place = letters[len(letters) // 2]
        found.append(f'"{content[:place]}{"q" if content[place] != "q" else "z"}{content[place + 1 :]}"')
    elif content.strip():
        found.append(f'"{content}x"')
    return found


def of_tokens(source, tokens):
    for place, (kind, start, end, text) in enumerate(tokens):
        if kind == "text":
            for other in inner_text(text):
                yield Alteration("text", start, end, other)
        elif kind == "number" and text.isdigit():
            if source[start - 2 : end + 1] == "= 0;":  # a pure virtual function, or what a member begins with
                continue
            yield Alteration("number", start, end, str(int(text) + 1))
        elif kind == "word" and text in LEVELS:
            yield Alteration("level", start, end, LEVELS[text])
        elif kind == "word" and text in WORDS:
            yield Alteration("condition", start, end, WORDS[text])
        elif kind == "operator" and text in OPERATORS:
            yield Alteration("condition" if text in ("==", "!=", "<=", ">=", "&&", "||") else "number", start, end, OPERATORS[text])
        elif kind == "operator" and text in SPACED and source[start - 1] == " " and source[end : end + 1] == " ":
            if text == "+" and "text" in (tokens[place - 2][0], tokens[place + 2][0]):  # joins texts: nothing else compiles
                continue
            yield Alteration("condition" if text in "<>" else "number", start, end, SPACED[text])
        elif kind == "operator" and text == "!" and tokens[place + 1][0] in ("word", "operator"):
            yield Alteration("condition", start, end, "")


def closing(source, tokens, place):
    """The token that closes the bracket at `place`."""
    depth = 0
    for at in range(place, len(tokens)):
        kind, text = tokens[at][0], tokens[at][3]
        if kind == "operator":
            depth += (text in "([{") - (text in ")]}")
            if depth == 0:
                return at
    raise ValueError(f"an open bracket in {source[tokens[place][1] :][:60]}")


def of_conditions(source, tokens):
    for place, (kind, _, _, text) in enumerate(tokens):
        if kind == "word" and text in ("if", "while"):
            opening = next(at for at in range(place + 1, len(tokens)) if tokens[at][0] != "space")
            if tokens[opening][3] != "(":  # if constexpr
                continue
            begin, end = tokens[opening][2], tokens[closing(source, tokens, opening)][1]
            condition = source[begin:end]
            if "; " not in condition:
                yield Alteration("condition", begin, end, f"!({condition})")


def statements(source, tokens):
    """The spans of the statements that are done for their effect."""
    begin = None
    depth = 0
    for kind, start, end, text in tokens:
        if kind in ("comment", "directive"):
            begin = end
        elif kind == "operator" and text in "{}":
            begin, depth = end, 0
        elif kind == "operator" and text in "([":
            depth += 1
        elif kind == "operator" and text in ")]":
            depth -= 1
        elif kind == "operator" and text == ";" and depth <= 0:
            if begin is not None:
                lead = len(source[begin:start]) - len(source[begin:start].lstrip())
                if EFFECT.match(source[begin + lead : start]):
                    yield begin + lead, end
            begin, depth = end, 0


def of_statements(source, tokens):
    found = list(statements(source, tokens))
    for begin, end in found:
        yield Alteration("left out", begin, end, ";")
    for (begin, end), (next_begin, next_end) in zip(found, found[1:]):
        if not source[end:next_begin].strip() and source[begin:end] != source[next_begin:next_end]:
            between = source[end:next_begin]
            yield Alteration("order", begin, next_end, source[next_begin:next_end] + between + source[begin:end])


def alterations_of(source):
    tokens = tokens_of(source)
    found = [*of_tokens(source, tokens), *of_conditions(source, tokens), *of_statements(source, tokens)]
    return sorted(set(found), key=lambda one: (one.start, one.end, one.kind, one.replacement))
