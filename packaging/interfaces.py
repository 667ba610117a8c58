"""Reads packaging/interfaces.txt: what hosts are built against."""

import re
from dataclasses import dataclass, field

from product import CHECKOUT

FILE = CHECKOUT / "packaging/interfaces.txt"
_TITLE = re.compile(r"(library|interface|class) (\{[0-9A-F-]{36}\}) (\w+)(?: ([\d.]+) (\d+))?")
_OPERATION = re.compile(r"  (\d+) ([0-9a-f]+) (\w+)\((.*)\)")
_IMPLEMENTED = re.compile(r"  (\d+) (\w+)")
_EVENTS = 2  # flag of an implemented interface: the class calls it


@dataclass
class Parameter:
    direction: str  # "in", "inout", "inoutopt"
    type: str       # "I2", "I4", "BSTR", "BOOL", "IDispatch*"
    name: str

    @property
    def by_reference(self):
        return self.direction != "in"

    @property
    def optional(self):
        return self.direction.endswith("opt")


@dataclass
class Operation:
    slot: int
    id: int
    name: str
    parameters: list
    result: str  # its type, "" if it has none


@dataclass
class Interface:
    identifier: str
    name: str
    operations: list = field(default_factory=list)

    @property
    def is_events(self):
        """Called by id only, and by the component."""
        return all(one.slot == 0 for one in self.operations)

    def operation(self, name):
        """None if there is none of this name."""
        return next((one for one in self.operations if one.name == name), None)


@dataclass
class Class:
    identifier: str
    name: str
    interface: str = ""
    events: str = ""


@dataclass
class Library:
    identifier: str
    name: str
    version: str
    locale: int
    interfaces: list = field(default_factory=list)
    classes: list = field(default_factory=list)

    def interface(self, name):
        return next(one for one in self.interfaces if one.name == name)


def _parameter(text):
    direction, kind, name = text.split()
    # Everything but a plain "in" is passed by reference.
    return Parameter(direction, kind if direction == "in" else kind.removesuffix("*"), name)


def _operation(line):
    slot, number, name, arguments = _OPERATION.fullmatch(line).groups()
    parameters = [_parameter(one) for one in arguments.split(", ") if one]
    result = ""
    if parameters and parameters[-1].direction == "outret":
        result = parameters.pop().type
    return Operation(int(slot), int(number, 16), name, parameters, result)


def _implement(described, line):
    flags, name = _IMPLEMENTED.fullmatch(line).groups()
    if int(flags) & _EVENTS:
        described.events = name
    else:
        described.interface = name


def read_interfaces(file=FILE):
    library = part = None
    for line in file.read_text("ascii").splitlines():
        title = _TITLE.fullmatch(line)
        if title is None:
            if isinstance(part, Interface):
                part.operations.append(_operation(line))
            else:
                _implement(part, line)
        elif title[1] == "library":
            library = Library(title[2], title[3], title[4], int(title[5]))
        elif title[1] == "interface":
            part = Interface(title[2], title[3])
            library.interfaces.append(part)
        else:
            part = Class(title[2], title[3])
            library.classes.append(part)
    return library
