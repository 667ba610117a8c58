"""The limits that a result must keep for Vilnor.dll to parse it, src/parser_limits, and the five values that it
reads."""

import re
from xml.parsers import expat

LARGEST = 64 << 20
MOST_PARTS = 100_000
MOST_ATTRIBUTES = 1_000
MOST_LEVELS = 256
MOST_LOOKUPS = 100_000_000
LOOKUPS_AT_LEAST = 20
BUFFER = 300
LONGEST_VALUE = 65_536
MOST_PIECES = 1_000

VALUES = ("Cancelled", "Status", "UserDefData", "Id", "UserName")


class NotAccepted(Exception):
    """Why the component leaves the file unread, in Swedish."""


def first_values(content: bytes):
    """The text of the first element of each name in VALUES that is there; None if it is longer than any real
value. Raises NotAccepted."""
    if len(content) > LARGEST:
        raise NotAccepted("filen är större än 64 MB")
    parser = _Parser(content)
    try:
        parser.run()
    except expat.ExpatError as error:
        raise NotAccepted(f"filen är ingen hel XML: {expat.errors.messages[error.code]}, rad "
                          f"{error.lineno}") from error
    except (LookupError, ValueError) as error:
        raise NotAccepted("filens teckenkodning är okänd") from error
    return parser.values


class _Parser:
    def __init__(self, content):
        self.values = {}
        self._content = content
        self._open = []       # of the elements around: (name, where its value's pieces go, or None)
        self._taking = {}     # name: [pieces of text, number of nodes]
        self._parts = self._attributes = self._levels = 0
        self._in_text = self._in_section = False

    def run(self):
        parser = expat.ParserCreate()
        parser.buffer_text = True
        parser.StartDoctypeDeclHandler = self._doctype
        parser.StartElementHandler = self._start
        parser.EndElementHandler = self._end
        parser.CharacterDataHandler = self._text
        parser.StartCdataSectionHandler = lambda: self._section(True)
        parser.EndCdataSectionHandler = lambda: self._section(False)
        parser.CommentHandler = parser.XmlDeclHandler = lambda *_: self._part()
        parser.ProcessingInstructionHandler = lambda *_: self._part()
        parser.Parse(self._content, True)
        lookups = ((len(re.findall(rb"[&\r]", self._content)) + len(self._content) // BUFFER)
                   * (self._attributes + self._levels + LOOKUPS_AT_LEAST))
        if lookups > MOST_LOOKUPS:
            raise NotAccepted("filen har för många tecken som måste slås upp")

    def _part(self):
        self._in_text = False
        self._parts += 1
        if self._parts > MOST_PARTS:
            raise NotAccepted(f"filen har fler än {MOST_PARTS} element och texter")
        for taken in self._taking.values():
            taken[1] += 1

    def _doctype(self, _name, _system, _public, has_subset):
        if has_subset:
            raise NotAccepted("filen har en dokumenttyp med egna deklarationer")
        self._part()

    def _start(self, name, attributes):
        self._part()
        self._attributes += len(attributes)
        if self._attributes > MOST_ATTRIBUTES:
            raise NotAccepted(f"filen har fler än {MOST_ATTRIBUTES} attribut")
        local = name.rsplit(":", 1)[-1]
        self._open.append(local)
        self._levels = max(self._levels, len(self._open))
        if self._levels > MOST_LEVELS:
            raise NotAccepted(f"filen har element i fler än {MOST_LEVELS} nivåer")
        if local in VALUES and local not in self.values and local not in self._taking:
            self._taking[local] = [[], 0, len(self._open)]

    def _end(self, name):
        self._in_text = False
        local = name.rsplit(":", 1)[-1]
        taken = self._taking.get(local)
        if taken and taken[2] == len(self._open):
            text = "".join(taken[0])
            units = len(text.encode("utf-16-le")) // 2
            fits = units <= LONGEST_VALUE and taken[1] <= MOST_PIECES
            self.values[local] = text if fits else None
            del self._taking[local]
        self._open.pop()

    def _section(self, begins):
        self._in_section = begins
        if begins:
            self._part()
        self._in_text = begins

    def _text(self, text):
        if not self._in_text:
            self._part()
            self._in_text = True
        for taken in self._taking.values():
            taken[0].append(text)
