"""Everything that the page is made of."""

import re
import tomllib
from dataclasses import dataclass
from pathlib import Path

from interfaces import read_interfaces

from .facts import Effects, read_effects, read_statements
from .idl import read_help

CONTENT = Path(__file__).resolve().parents[1] / "content"
# Each class, its interface, its file of texts; the name of its object in the examples.
CLASSES = (("BVilnor", "_BVilnor", "session", "vilnor"), ("DBVilnor", "_DBVilnor", "database", "database"))
EVENTS = "__BVilnor"
NO_EFFECTS = Effects()
_KIND = re.compile(r'case (\w+):\s*return \{\{\.requestWord = u"\\\\(\w+)",\s*\.resultWord = u"\\\\(\w+)",')
_MESSAGE = re.compile(r"^  (\w+) = (\d+),\s*// key: (.+)$", re.MULTILINE)


@dataclass(frozen=True)
class RequestKind:
    name: str
    message: int
    key: str
    request_word: str
    result_word: str


@dataclass
class Sources:
    interfaces: dict   # {name: packaging's Interface}
    help: dict         # {(class, operation): help string}
    texts: dict        # {"session", "database", "events": {operation: its texts}}
    boxes: dict
    guide: str         # Markdown
    effects: dict
    statements: dict
    kinds: list


def _read_kinds(rooms):
    words = {name: (request, result) for name, request, result
             in _KIND.findall((rooms / "request_kinds.cpp").read_text("utf-8"))}
    return [RequestKind(name, int(message), key, *words[name]) for name, message, key
            in _MESSAGE.findall((rooms / "request_kinds.h").read_text("utf-8"))]


def _toml(name):
    return tomllib.loads((CONTENT / f"{name}.toml").read_text("utf-8"))


def read_sources(checkout):
    documents = checkout / "docs/edge-cases"
    interfaces = {one.name: one for one in read_interfaces().interfaces}
    names = [operation.name for operation in interfaces["_DBVilnor"].operations]
    return Sources(
        interfaces=interfaces,
        help=read_help((checkout / "typelib/Vilnor.idl").read_text("utf-8")),
        texts={name: _toml(name) for name in ("session", "database", "events")},
        boxes=_toml("boxes"),
        guide=(CONTENT / "before-you-start.md").read_text("utf-8"),
        effects=read_effects((documents / "effects.md").read_text("utf-8")),
        statements=read_statements((documents / "database.md").read_text("utf-8"), names),
        kinds=_read_kinds(checkout / "src/exchange"))
