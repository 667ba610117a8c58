"""The help strings of typelib/Vilnor.idl. All else about the interfaces is read from
packaging/interfaces.txt."""

import re

_BLOCK = re.compile(r"(?:interface|dispinterface) _+(\w+)[^{;]*{(.*?)\n  };", re.DOTALL)
_MEMBER = re.compile(r"\[id\(\w+\),\s*helpstring\(\"([^\"]*)\"\)\]\s*\w+ (\w+)\(")


def read_help(idl):
    """{(class, operation or event): help string}"""
    return {(class_, name): help_ for class_, body in _BLOCK.findall(idl)
            for help_, name in _MEMBER.findall(body)}
