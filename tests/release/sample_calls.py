"""Finds what a sample of the kit calls, in each of its languages."""

import re
from dataclasses import dataclass

# The variables that all samples use for the two objects.
OBJECTS = {"vilnor": "_BVilnor", "fvilnor": "_BVilnor", "vilnor_": "_BVilnor",
           "database": "_DBVilnor"}
# Of every object, whatever its interface; and what follows "Vilnor." in the name of a class.
OTHERS = ("QueryInterface", "AddRef", "Release", "BVilnor", "DBVilnor")
_CALL = re.compile(r"(?<![\w\"])(\w+)(?:\.|->)([A-Z]\w*)")
_COMMENTS = {"vbs": r"(?m)'[^\n]*$", "cls": r"(?m)'[^\n]*$", "bas": r"(?m)'[^\n]*$",
             "frm": r"(?m)'[^\n]*$", "ps1": r"(?m)#[^\n]*$", "cpp": r"//[^\n]*",
             "cs": r"//[^\n]*", "dpr": r"//[^\n]*"}


@dataclass
class Call:
    interface: str
    operation: str
    arguments: list  # as written, without blanks at the ends


def code_of(text, suffix):
    """Without texts and comments; continued lines are one."""
    text = text.replace("\r\n", "\n")
    if suffix in ("dpr", "ps1"):
        text = re.sub(r"'[^'\n]*'", "''", text)
    if suffix != "dpr":
        text = re.sub(r'"[^"\n]*"', '""', text)
    return re.sub(r" _\n\s*", " ", re.sub(_COMMENTS[suffix], "", text))


def _in_parentheses(text):
    """Up to the parenthesis that closes the first one."""
    depth = 0
    for at, letter in enumerate(text):
        depth += {"(": 1, ")": -1}.get(letter, 0)
        if depth == 0:
            return text[1:at]
    raise ValueError(f"not closed: {text[:60]}")


def _arguments(rest):
    inside = _in_parentheses(rest) if rest.startswith("(") else re.split(r"[\n;:]", rest)[0]
    return [one.strip() for one in inside.split(",") if one.strip()]


def calls(text, suffix):
    code = code_of(text, suffix)
    for found in _CALL.finditer(code):
        interface = OBJECTS.get(found[1].lower())
        if interface and found[2] not in OTHERS:
            yield Call(interface, found[2], _arguments(code[found.end():]))


def variable(argument):
    """The variable that is passed: "&pid", "ref pid", "[ref]$pid" and "pid" are the same."""
    return re.sub(r"^(&|ref |\[ref\])?\$?", "", argument)


def declared_types(text, suffix):
    """{variable in lower case: types} where a language does not check them itself."""
    pattern = {"ps1": r"\[(int16|int|string)\]\s*\$(\w+)"}.get(suffix, r"(\w+) As (\w+)")
    types = {}
    for one, other in re.findall(pattern, code_of(text, suffix)):
        name, kind = (other, one) if suffix == "ps1" else (one, other)
        types.setdefault(name.lower(), set()).add(kind)
    return types
