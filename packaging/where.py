#!/usr/bin/env python3
"""Says where in the source an address of Vilnor.dll is, as a crash report gives it.

  where.py 0x1a2b3                        an offset into the DLL ("Fault offset", "Felförskjutning")
  where.py --base 0x72a00000 0x72a1a2b3   an address in a process in which the DLL lay at that base

It needs Vilnor.dll.debug beside itself, of the same release as the DLL that crashed, and binutils
(Debian: binutils, or binutils-mingw-w64-i686)."""

import argparse
import re
import shutil
import subprocess
import sys
from pathlib import Path

DEBUG = Path(__file__).resolve().parent / "Vilnor.dll.debug"
TOOLS = ("i686-w64-mingw32-", "")


def tool(name):
    for prefix in TOOLS:
        if shutil.which(prefix + name):
            return prefix + name
    sys.exit(f"where.py: {name} is not there; install binutils")


def image_base():
    headers = subprocess.run([tool("objdump"), "-p", DEBUG], check=True, capture_output=True,
                             text=True).stdout
    return int(re.search(r"^ImageBase\s+([0-9a-f]+)", headers, re.MULTILINE)[1], 16)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--base", type=lambda text: int(text, 16), default=0)
    parser.add_argument("address", type=lambda text: int(text, 16), nargs="+")
    options = parser.parse_args()
    if not DEBUG.is_file():
        sys.exit(f"where.py: {DEBUG} is not there")
    base = image_base()
    addresses = [hex(address - options.base + base) for address in options.address]
    subprocess.run([tool("addr2line"), "-e", DEBUG, "--functions", "--demangle", "--inlines",
                    "--pretty-print", *addresses], check=True)


if __name__ == "__main__":
    main()
