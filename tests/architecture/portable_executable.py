"""Reads from a DLL's bytes what the tests need."""

import struct
from dataclasses import dataclass


@dataclass
class Section:
    name: str
    address: int  # relative to the image's base
    size: int
    flags: int
    content: bytes


def sections(image):
    """{name: Section}, without debug sections."""
    header = struct.unpack_from("<I", image, 0x3C)[0]
    count, optional = struct.unpack_from("<6xH12xH", image, header)
    found = {}
    for at in range(header + 24 + optional, header + 24 + optional + 40 * count, 40):
        name = image[at:at + 8].rstrip(b"\0").decode("ascii")
        size, address, raw, place = struct.unpack_from("<IIII", image, at + 8)
        flags = struct.unpack_from("<I", image, at + 36)[0]
        # Names longer than eight letters are stored elsewhere; only debug sections have them.
        if not name.startswith("/"):
            found[name] = Section(name, address, size, flags,
                                  image[place:place + min(raw, size)])
    return found


def exported(image):
    """{name: address relative to the image's base}"""
    header = struct.unpack_from("<I", image, 0x3C)[0]
    table = struct.unpack_from("<I", image, header + 24 + 96)[0]
    at = _reader(image)
    count, functions, names, ordinals = struct.unpack("<IIII", at(table + 24, 16))
    found = {}
    for i in range(count):
        name = at(struct.unpack("<I", at(names + 4 * i, 4))[0], 64).split(b"\0")[0].decode("ascii")
        ordinal = struct.unpack("<H", at(ordinals + 2 * i, 2))[0]
        found[name] = struct.unpack("<I", at(functions + 4 * ordinal, 4))[0]
    return found


def _reader(image):
    places = sections(image).values()

    def read(address, size):
        section = next(one for one in places if one.address <= address < one.address + one.size)
        return section.content[address - section.address:][:size]
    return read


def version_numbers(image):
    """The file's and the product's version, as texts."""
    at = image.index(struct.pack("<I", 0xFEEF04BD))
    words = struct.unpack_from("<8H", image, at + 8)
    return tuple(".".join(str(words[i]) for i in (one + 1, one, one + 3, one + 2)) for one in (0, 4))


def version_text(image, name):
    """A text from the version resource. The language's table has each name once."""
    key = (name + "\0").encode("utf-16-le")
    at = image.index(key) + len(key)
    at += -at % 4 if image[at:at + 2] == b"\0\0" else 0
    text = image[at:at + 400].decode("utf-16-le", errors="replace").lstrip("\0")
    return text.split("\0")[0]
