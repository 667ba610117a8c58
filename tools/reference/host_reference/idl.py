"""The automation interfaces, as typelib/Vilnor.idl declares them."""

import re
from dataclasses import dataclass

_BLOCK = re.compile(r"\[([^\]]*)\]\s*(?:interface|dispinterface) (_+\w+)[^{;]*{(.*?)\n  };", re.DOTALL)
_MEMBER = re.compile(r"\[id\((\w+)\),\s*helpstring\(\"([^\"]*)\"\)\]\s*\w+ (\w+)\((.*?)\);", re.DOTALL)
_ARGUMENT = re.compile(r"\[([^\]]*)\]\s*(\w+)(\**) (\w+)")


@dataclass(frozen=True)
class Argument:
    name: str
    type: str  # as in the IDL, without the pointer of an argument by reference
    by_reference: bool
    optional: bool


@dataclass(frozen=True)
class Operation:
    name: str
    id: int
    slot: int  # 0 for an event
    help: str
    arguments: tuple
    result: str  # its type, "" for a procedure


@dataclass(frozen=True)
class Interface:
    name: str
    operations: tuple


def _arguments(text):
    """([Argument], type of the result)"""
    arguments, result = [], ""
    for attributes, type_, stars, name in _ARGUMENT.findall(text):
        if "retval" in attributes:
            result = type_ + stars[1:]
        else:
            arguments.append(Argument(name, type_, stars == "*", "optional" in attributes))
    return tuple(arguments), result


def _operations(body, first_slot):
    found = []
    for number, (id_, help_, name, text) in enumerate(_MEMBER.findall(body)):
        arguments, result = _arguments(text)
        slot = first_slot + number if first_slot else 0
        found.append(Operation(name, int(id_, 0), slot, help_, arguments, result))
    return tuple(found)


def read_interfaces(idl):
    """{name: Interface}, in the file's order."""
    dual_slots = 7  # after those of IUnknown and IDispatch
    return {name: Interface(name, _operations(body, dual_slots if "dual" in attributes else 0))
            for attributes, name, body in _BLOCK.findall(idl)}
