"""What the tests measured: docs/edge-cases/effects.md, and the statements in database.md."""

import re
from dataclasses import dataclass, field

NOTHING = "–"


@dataclass
class Effects:
    """Of one operation, over all its cases."""
    rows: set = field(default_factory=set)    # "+ Vilnor"
    files: set = field(default_factory=set)   # "InNewCase written"
    starts: set = field(default_factory=set)  # "alone", "InNewCase"
    events: set = field(default_factory=set)  # how often UpdateJournal was raised
    exclamation: set = field(default_factory=set)  # procedures named in boxes
    critical: set = field(default_factory=set)
    own_texts: set = field(default_factory=set)    # 'question "first line"'


def _rows(document):
    """The cells of each row of the document's last table."""
    lines = document.rstrip("\n").split("\n\n")[-1].splitlines()
    return [[cell.strip() for cell in line.strip("|").split(" | ")] for line in lines[2:]]


def _cell(text):
    return set() if text == NOTHING else set(text.split(", "))


def word_of(file):
    """ "InNewCase4711.xml written" and "InNewCase{PID}.xml written" are both "InNewCase written"."""
    return re.sub(r"(\{\w+\}|[\d-]+)\.xml", "", file)


def read_effects(document):
    """{("BVilnor" or "DBVilnor", operation): Effects}"""
    all_effects = {}
    for name, rows, files, starts, events, exclamation, critical, own_texts in _rows(document):
        class_, _, called = name.rpartition(".")
        operation = re.match(r"\w+", called)[0]
        effects = all_effects.setdefault((class_ or "BVilnor", operation), Effects())
        effects.rows |= _cell(rows)
        effects.files |= {word_of(file) for file in _cell(files)}
        effects.starts |= {word_of(file) for file in _cell(starts)}
        effects.events.add(int(events))
        effects.exclamation |= _cell(exclamation)
        effects.critical |= _cell(critical)
        effects.own_texts |= _cell(own_texts)
    _add_search_for_program(all_effects)
    return all_effects


def _add_search_for_program(all_effects):
    """Only OpenVilnor is measured in every way in which Link.exe may be found. The others that start
    it search in the same way."""
    alone = all_effects["BVilnor", "OpenVilnor"]
    for effects in all_effects.values():
        if effects.starts:
            effects.critical |= alone.critical
            effects.own_texts |= alone.own_texts


def read_statements(document, operations):
    """{operation: [statement]}, each once, with the sample values of the tests."""
    statements = {name: [] for name in operations}
    for case, _, statement in _rows(document):
        name = max((one for one in operations if case.startswith(one)), key=len)
        if statement and statement not in statements[name]:
            statements[name].append(statement.strip("`"))
    return statements
