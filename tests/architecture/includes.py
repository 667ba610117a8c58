"""Reads the #include lines of the project's C++ files."""

import re
from functools import cache
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[2]
# Where quoted includes are searched, besides the including file's own folder.
INCLUDE_FOLDERS = ("src", "stand-ins", "tools", "tests", ".")
_INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)


def sources(folder):
    """The C++ files under a folder, sorted."""
    return sorted(p for p in Path(folder).rglob("*") if p.suffix in (".h", ".cpp"))


@cache
def includes(path):
    """The includes of a file as (header, is quoted) in the order of their lines."""
    text = Path(path).read_text(encoding="utf-8")
    return tuple((name, mark == '"') for mark, name in _INCLUDE.findall(text))


def resolve(path, header):
    """The project file named by a quoted include, or None."""
    folders = [path.parent, *(CHECKOUT / folder for folder in INCLUDE_FOLDERS)]
    return next((f / header for f in folders if (f / header).is_file()), None)


def closure(path):
    """The file and all project files that it includes, directly or not."""
    found, waiting = set(), [Path(path).resolve()]
    while waiting:
        file = waiting.pop()
        if file not in found:
            found.add(file)
            headers = (resolve(file, name) for name, quoted in includes(file) if quoted)
            waiting += [header.resolve() for header in headers if header]
    return found
