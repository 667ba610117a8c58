"""The rooms under src/ and the arrows between them that are allowed."""

from includes import includes, sources

# What a room may use, itself aside.
ROOMS = {
    "automation": (),
    "platform": ("automation",),
    "util": ("automation", "platform"),
    "registry": ("automation", "platform"),
    "db": ("automation", "platform", "util"),
    "exchange": ("automation", "platform", "util", "registry", "db"),
    "fhp": ("automation", "platform", "util", "registry", "db", "exchange"),
    "host": ("automation", "platform", "util", "registry", "db", "exchange", "fhp"),
    "odbc": ("automation",),
    "windows": ("automation", "platform"),
    "com": ("automation", "platform", "util", "registry", "db", "exchange", "fhp", "host",
            "windows", "typelib"),
    "portable": ("automation", "platform", "odbc"),
}

# Headers from outside the C++ standard library that a room may use; "folder/" allows all of one.
OUTSIDE = {
    "odbc": ("sql.h", "sqlext.h", "windows.h"),
    "windows": ("windows.h", "adoint.h", "msxml.h", "ntsecapi.h", "oleauto.h", "olectl.h"),
    "portable": ("fcntl.h", "libxml/"),
}


def forbidden_arrows(src):
    """One line for each include under src/ that the tables do not allow."""
    found = []
    for file in sources(src):
        name = file.relative_to(src)
        found += [f"{name} includes {header}{reason}" for header, quoted in includes(file)
                  if (reason := objection(name.parts[0], header, quoted))]
    return found


def objection(room, header, quoted):
    """What is wrong with the room's use of the header; empty when nothing is."""
    if room not in ROOMS:
        return f": {room}/ is no room"
    if quoted:
        target = header.split("/")[0] if "/" in header else "(a file beside it)"
        return "" if target in (room, *ROOMS[room]) else f": {room}/ may not use {target}"
    if not header.endswith(".h"):
        return ""
    allowed = any(header == name or (name.endswith("/") and header.startswith(name))
                  for name in OUTSIDE.get(room, ()))
    return "" if allowed else f": {room}/ may not use it"
