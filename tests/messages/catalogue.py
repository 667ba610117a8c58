"""docs/meddelanden.md as data: its entries, its table of error numbers, and to which of them a message
box belongs."""

import re
from dataclasses import dataclass, field

USUAL_TITLE = "Vilnor Link connection"
USUAL_ICONS = {"critical", "exclamation"}
ICONS = {"ingen": "none", "kryss": "critical", "frågetecken": "question",
         "utropstecken": "exclamation"}
PARTS = ("Vad har hänt", "Sparat", "Receptionen", "IT")

# An error's box ends with the step that failed; of one step it names the form, too.
STEP = r"in \w+|\w+: \w+"
_ERROR_LINE = re.compile(rf"(.+?) ‹beskrivning› ({STEP})")
_ERROR_BOX = re.compile(rf"(-?\d+) .* ({STEP})")
_SECTION = re.compile(r"^(#{2,3}) (.+)$", re.MULTILINE)
_BLOCK = re.compile(r"^```text\n(.*?)\n```$", re.MULTILINE | re.DOTALL)
_TITLE = re.compile(r"^Rubrik: (.+?)\. Ikon: (\w+)\.", re.MULTILINE)
_CLASS = re.compile(r"^- `(‹\w+›)`: ([-\d, ]+\d)", re.MULTILINE)
_NUMBER_ROW = re.compile(r"^\| (-?\d+|annat negativt|annat) \| \S.* \| \S.* \|$", re.MULTILINE)
_PLACEHOLDERS = {"‹nummer›": r"-?\d+", "‹beskrivning›": r".*"}


@dataclass(frozen=True)
class Box:
    """As noted: without its icon if the program that answered it cannot see icons."""

    title: str
    icon: str
    text: str

    def error(self):
        """(number, step) of an error's box, else None."""
        found = _ERROR_BOX.fullmatch(self.text) if self.title == USUAL_TITLE else None
        return (int(found[1]), found[2]) if found else None


@dataclass
class Entry:
    """`numbers` are those of an error's box, by step; else `text` is the box's pattern."""

    name: str
    title: str = USUAL_TITLE
    icons: set = field(default_factory=lambda: USUAL_ICONS)
    numbers: dict = field(default_factory=dict)
    text: re.Pattern | None = None


class Catalogue:
    def __init__(self, document: str):
        self._classes = {name: {int(number) for number in numbers.split(",")}
                         for name, numbers in _CLASS.findall(document)}
        self.numbers = _NUMBER_ROW.findall(document)
        self.problems = []
        self.entries = [entry for name, body in _sections(document)
                        for entry in [self._entry(name, body)] if entry]

    def _entry(self, name, body):
        blocks = _BLOCK.findall(body)
        if not blocks:
            return None
        entry = Entry(name)
        if found := _TITLE.search(body):
            entry.title, entry.icons = found[1], {ICONS[found[2]]}
        self.problems += [f"{name}: {part} is missing" for part in PARTS
                          if f"\n- **{part}.** " not in body]
        lines = blocks[0].split("\n")
        errors = [_ERROR_LINE.fullmatch(line) for line in lines]
        if len(blocks) > 1 or (any(errors) and not all(errors)):
            self.problems.append(f"{name}: more than one kind of box")
        elif all(errors):
            for found in errors:
                entry.numbers.setdefault(found[2], []).append(found[1])
        else:
            entry.text = _pattern(lines)
        return entry

    def entries_of(self, box: Box):
        """The names of the entries that describe the box; right is exactly one."""
        return [entry.name for entry in self.entries
                if box.title == entry.title and (not box.icon or box.icon in entry.icons)
                and self._describes(entry, box)]

    def lines_of(self, box: Box):
        """The lines ("‹nummer› in WriteNewCase") of entries that describe the error's box."""
        number, step = box.error() or (None, None)
        return {f"{word} {step}" for entry in self.entries if entry.name in self.entries_of(box)
                for word in entry.numbers.get(step, ()) if self._contains(word, number, step)}

    def lines(self):
        return [f"{word} {step}" for entry in self.entries
                for step, words in entry.numbers.items() for word in words]

    def numbers_of(self, number: int):
        """The rows of the table of numbers that explain it; right is exactly one."""
        if str(number) in self.numbers:
            return [row for row in self.numbers if row == str(number)]
        rest = "annat negativt" if number < 0 else "annat"
        return [row for row in self.numbers if row == rest]

    def steps(self):
        return {step for entry in self.entries for step in entry.numbers}

    def _describes(self, entry, box):
        if entry.text:
            return entry.text.fullmatch(box.text) is not None
        number, step = box.error() or (None, None)
        return any(self._contains(word, number, step) for word in entry.numbers.get(step, ()))

    def _contains(self, word, number, step):
        if word == "‹nummer›":
            return True
        if word == "‹annat nummer›":
            others = [other for entry in self.entries
                      for other in entry.numbers.get(step, ()) if other != word]
            return not any(self._contains(other, number, step) for other in others)
        return number in (self._classes[word] if word in self._classes else {int(word)})


def _sections(document):
    found = list(_SECTION.finditer(document))
    ends = [match.start() for match in found[1:]] + [len(document)]
    return [(match[2], document[match.end():end]) for match, end in zip(found, ends)]


def _pattern(lines):
    """Of a box's text, whose lines end as they do in a box."""
    pattern = re.escape("\\r\\n".join(lines))
    for name, expression in _PLACEHOLDERS.items():
        pattern = pattern.replace(re.escape(name), expression)
    return re.compile(pattern)


def noted_boxes(text: str):
    """The distinct boxes of a file of notes. A box without a title shows the component's name."""
    lines = {tuple(line.split("\t", 2)) for line in text.split("\n") if line}
    return {Box(title or "Vilnor", icon, content) for title, icon, content in lines}
