"""What Vilnor.dll would do with a result file, by its own rules; tests/results/decisions.tsv holds both to the
same cases."""

import re
from dataclasses import dataclass
from enum import Enum

from exchange_page import limits

# Numbers of the component's errors.
INVALID_CALL, OVERFLOW, OUT_OF_MEMORY, TYPE_MISMATCH = 5, 6, 7, 13
KINDS = ("NewCase", "NewFHP", "ExistCase")
INT32 = range(-2**31, 2**31)

_NAME = re.compile(r"(Out|Done)(NewFHP|NewCase|ExistCase)(-?\d+)"
                   r"(?: (\d{4}-\d\d-\d\d) (\d\d)\.(\d\d)\.(\d\d)(?: \d+)?)?\.xml")
# A number as a Swedish Windows writes it.
_NUMBER = re.compile(r"([-+]?)((?:[0-9][0-9\xa0 ]*)?)(?:,([0-9]*))?(?:[eE]([-+]?[0-9]+))?")


class Do(Enum):
    """The value is the word in decisions.tsv."""

    UNREADABLE = "unreadable"  # stays, without a box
    NOTHING = "nothing"        # stays, without a box
    BOX = "box"                # stays; a box says why
    REMOVE = "removed"         # nothing happened in Vilnor Link
    ADD = "sent"
    UPDATE = "changed"
    DELETE = "withdrawn"
    ASK = "asks"


@dataclass(frozen=True)
class Decision:
    do: Do
    error: int = 0
    element: str = ""  # whose value could not be read

    def __str__(self):
        return f"box {self.error}" if self.do is Do.BOX else self.do.value


@dataclass(frozen=True)
class Name:
    """A result file's name. `moment` is when it was set aside; `is_done` if it has been entered."""

    kind: str
    key: str
    moment: str = ""
    is_done: bool = False


class _Refused(Exception):
    """(error number, element)"""


def name_of(file_name: str):
    """None if the component gives no result this name."""
    found = _NAME.fullmatch(file_name)
    if not found:
        return None
    word, kind, key, day, *time = found.groups()
    return Name(kind, key, f"{day} {':'.join(time)}" if day else "", word == "Done")


def decide(content: bytes, kind: str) -> Decision:
    """For a result under its own name, if the database and the folder work."""
    try:
        values = limits.first_values(content)
    except limits.NotAccepted:
        return Decision(Do.UNREADABLE)
    try:
        return (_decide_existing if kind == "ExistCase" else _decide_new)(values, kind)
    except _Refused as refusal:
        return Decision(Do.BOX, *refusal.args)


def _decide_new(values, kind):
    if _number(values, "Cancelled", 99) == 1:
        return Decision(Do.REMOVE)
    status = _whole(values, "Status", 0)
    data = _text(values, "UserDefData")
    _text(values, "Id")
    _text(values, "UserName")
    _check_data(data, kind)
    return Decision({1: Do.UPDATE, 5: Do.ADD, 7: Do.DELETE}.get(status, Do.NOTHING))


def _decide_existing(values, _kind):
    cancelled = _whole(values, "Cancelled", 99)
    if 0 <= cancelled <= 2:
        return Decision(Do.REMOVE)
    if cancelled == 3:
        return Decision(Do.ASK)
    status = _whole(values, "Status", 0)
    for name in ("Id", "UserName", "UserDefData"):
        _text(values, name)
    return Decision({1: Do.UPDATE, 7: Do.DELETE}.get(status, Do.NOTHING))


def _check_data(data, kind):
    """The numbers that the request sent along: of an application the first three fields, all ended by a
separator; of a case the second and third."""
    if kind == "NewFHP":
        fields = data.split("&", 3)
        numbers, complete = fields[:-1], len(fields) == 4
    else:
        fields = data.split("&", 2)
        complete = len(fields) == 3
        numbers = fields[1:] if complete else []
    for number in numbers:
        _to_whole(number, "UserDefData")
    if not complete:
        raise _Refused(INVALID_CALL, "UserDefData")


def _text(values, name):
    value = values.get(name, "")
    if value is None:
        raise _Refused(OUT_OF_MEMORY, name)
    return value


def _number(values, name, missing):
    return _to_number(_text(values, name), name) if name in values else missing


def _whole(values, name, missing):
    return _to_whole(_text(values, name), name) if name in values else missing


def _to_whole(text, name):
    """Rounds half to even."""
    whole = round(_to_number(text, name))
    if whole not in INT32:
        raise _Refused(OVERFLOW, name)
    return whole


def _to_number(text, name):
    found = _NUMBER.fullmatch(text.strip(" \t\n\v\f\r"))
    if not found or not re.search("[0-9]", found[2] + (found[3] or "")):
        raise _Refused(TYPE_MISMATCH, name)
    sign, whole, part, exponent = found.groups()
    plain = f"{sign}{re.sub('[^0-9]', '', whole) or 0}.{part or 0}e{exponent or 0}"
    number = float(plain)
    if number in (float("inf"), float("-inf")):
        raise _Refused(OVERFLOW, name)
    return number
