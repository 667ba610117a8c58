"""The rooms of the C++ source and the allowed arrows between them."""

from includes import CHECKOUT, includes, sources

# The parts of Vilnor.dll, and the stand-ins for parts of Windows where they are missing.
COMPONENT = CHECKOUT / "src"
STAND_INS = CHECKOUT / "stand-ins"

# The other rooms that a room may use. Each room comes after all that it uses, so there is no cycle.
ROOMS = {
    "automation": (),
    "platform": ("automation",),
    "parser_limits": ("automation",),
    "util": ("automation", "platform"),
    "registry": ("automation", "platform"),
    "db": ("automation", "platform", "util"),
    "exchange": ("automation", "platform", "util", "db"),
    "fhp": ("automation", "platform", "util", "db", "exchange"),
    "host": ("automation", "platform", "util", "registry", "db", "exchange", "fhp"),
    "com": ("automation",),
    "windows": ("automation", "platform", "parser_limits", "com"),
    "vilnor_dll": ("automation", "platform", "db", "exchange", "host", "com", "windows", "typelib"),
    "odbc": ("automation",),
    "native": ("automation", "platform", "parser_limits", "odbc"),
    "ado_dll": ("automation", "com", "odbc"),
}
# Compiled from the IDL by the build; not one of our rooms.
GENERATED = {"typelib"}

# Headers from outside the C++ standard library that a room may use; "folder/" allows all of one.
OUTSIDE = {
    "com": ("windows.h", "oleauto.h", "olectl.h", "ntsecapi.h"),
    "windows": ("adoint.h", "evntprov.h", "msxml.h"),
    "odbc": ("sql.h", "sqlext.h", "windows.h"),
    "native": ("fcntl.h", "libxml/"),
    "ado_dll": ("ado_interfaces.h",),
}


def forbidden_arrows(*trees):
    """One line for each include in the trees that the tables do not allow."""
    return [f"{name} includes {header}{reason}" for name, header, quoted in _all_includes(trees)
            if (reason := objection(name.parts[0], header, quoted))]


def objection(room, header, quoted):
    """The problem with the room's use of the header, or an empty text."""
    if room not in ROOMS:
        return f": {room}/ is no room"
    if quoted:
        target = _room_of(header) or "(a file beside it)"
        return "" if target in (room, *ROOMS[room]) else f": {room}/ may not use {target}"
    if not header.endswith(".h"):
        return ""
    allowed = any(_permits(name, header) for name in OUTSIDE.get(room, ()))
    return "" if allowed else f": {room}/ may not use it"


def unused_permissions(rooms, outside, *trees):
    """One line for each arrow and outside header in the tables that no include needs."""
    arrows, headers = arrows_between(*trees), {}
    for name, header, quoted in _all_includes(trees):
        if not quoted:
            headers.setdefault(name.parts[0], set()).add(header)
    unused = [f"{room} -> {target}" for room, allowed in rooms.items()
              for target in allowed if target not in arrows.get(room, ())]
    return unused + [f"{room} <{name}>" for room, allowed in outside.items() for name in allowed
                     if not any(_permits(name, header) for header in headers.get(room, ()))]


def arrows_between(*trees):
    """{room: other rooms included by its files}."""
    arrows = {}
    for name, header, quoted in _all_includes(trees):
        used = arrows.setdefault(name.parts[0], set())
        if quoted and _room_of(header) not in ("", name.parts[0]):
            used.add(_room_of(header))
    return arrows


def _all_includes(trees):
    return [(file.relative_to(tree), header, quoted) for tree in trees for file in sources(tree)
            for header, quoted in includes(file)]


def _room_of(header):
    return header.split("/")[0] if "/" in header else ""


def _permits(name, header):
    return header == name or (name.endswith("/") and header.startswith(name))
