#!/usr/bin/env python3
"""Prints the bytes of a request file whose readable form stands in expected/.

    expected_file.py --exchange 'C:\\Kestra\\Vilnor' --today 2026-11-16 expected/1001-empty.txt

The readable form is UTF-8. The blanks at the start of a line and the line's end are not part of the
file; a line feed of the file is written as U+240A. {exchange} stands for the exchange directory,
{today} for the day of writing in the user's date form. Every other character is the byte of
ISO-8859-1; one that has none is an error, since the file spells it as a reference.
"""

import argparse
import sys
from pathlib import Path

LINE_FEED = "\u240a"


def file_bytes(readable: str, exchange: str, today: str) -> bytes:
    text = "".join(line.lstrip(" ") for line in readable.split("\n"))
    text = text.replace("{exchange}", exchange).replace("{today}", today)
    return text.replace(LINE_FEED, "\n").encode("iso-8859-1")


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--exchange", required=True, help="the exchange directory")
    parser.add_argument("--today", required=True, help="the day of writing, as the file has it")
    parser.add_argument("readable", type=Path)
    arguments = parser.parse_args()
    readable = arguments.readable.read_bytes().decode("utf-8")
    sys.stdout.buffer.write(file_bytes(readable, arguments.exchange, arguments.today))


if __name__ == "__main__":
    main()
