"""Reads an exchange file without trusting it."""

import xml.etree.ElementTree as ElementTree
from pathlib import Path

LARGEST_FILE = 64 * 1024 * 1024
# Exchange files have seven levels; more than these are no file of ours and would only cost stack.
DEEPEST_LEVEL = 50


class UnreadableFile(Exception):
    """Why the file cannot be shown, in words for its user."""


class _Builder(ElementTree.TreeBuilder):
    """Refuses a document type: it is the door to entities, inside and outside of the file."""

    def __init__(self):
        super().__init__()
        self._level = 0

    def doctype(self, name, public_id, system_id):
        raise UnreadableFile("it declares a document type, which exchange files never do")

    def start(self, tag, attributes):
        self._level += 1
        if self._level > DEEPEST_LEVEL:
            raise UnreadableFile(f"its elements are nested more than {DEEPEST_LEVEL} levels deep")
        return super().start(tag, attributes)

    def end(self, tag):
        self._level -= 1
        return super().end(tag)


def read_file(path: Path) -> bytes:
    """Raises UnreadableFile."""
    try:
        if path.stat().st_size > LARGEST_FILE:
            raise UnreadableFile(f"it is larger than {LARGEST_FILE // 1024 // 1024} MB")
        return path.read_bytes()
    except OSError as error:
        raise UnreadableFile(error.strerror or "it cannot be read") from error


def parse(content: bytes) -> ElementTree.Element:
    """The root element. Raises UnreadableFile."""
    if not content.strip():
        raise UnreadableFile("it is empty")
    parser = ElementTree.XMLParser(target=_Builder())
    try:
        parser.feed(content)
        return parser.close()
    except ElementTree.ParseError as error:
        line, column = error.position
        raise UnreadableFile(
            f"it is no XML: {error.msg.split(':')[0]} in line {line}, column {column + 1}"
        ) from error
    except (LookupError, ValueError) as error:
        raise UnreadableFile(f"its encoding is not known: {error}") from error
