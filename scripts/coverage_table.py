#!/usr/bin/env python3
"""Prints the line and branch coverage of each room from llvm-cov's summary.

    coverage_table.py SUMMARY LEAST_LINES LEAST_BRANCHES ROOM...

The last two lines say "ok" or "not ok" for all rooms together, and the exit code agrees.
"""

import json
import sys
from pathlib import Path

KINDS = ("lines", "branches")


def room_of(filename):
    parts = Path(filename).parts
    return parts[parts.index("src") + 1]


def percent(covered, count):
    return 100 * covered / count if count else 100.0


def main():
    files = json.loads(Path(sys.argv[1]).read_text(encoding="utf-8"))["data"][0]["files"]
    least = dict(zip(KINDS, map(float, sys.argv[2:4])))
    rooms = sys.argv[4:]
    sums = {room: {kind: [0, 0] for kind in KINDS} for room in rooms}
    for file in files:
        for kind in KINDS:
            sums[room_of(file["filename"])][kind][0] += file["summary"][kind]["covered"]
            sums[room_of(file["filename"])][kind][1] += file["summary"][kind]["count"]
    print(f"{'room':12}{'lines':>16}{'branches':>18}")
    for room in rooms:
        if not sums[room]["lines"][1]:
            sys.exit(f"coverage_table.py: nothing is known of {room}")
        cells = [f"{percent(*sums[room][kind]):6.1f} % of {sums[room][kind][1]:4}" for kind in KINDS]
        print(f"{room:12}{cells[0]:>16}{cells[1]:>18}")
    held = True
    for kind in KINDS:
        share = percent(*(sum(sums[room][kind][part] for room in rooms) for part in (0, 1)))
        good = share >= least[kind]
        held &= good
        print(f"{'ok' if good else 'not ok'} {share:.1f} % of the {kind} of the core rooms, "
              f"at least {least[kind]:.0f} %")
    return 0 if held else 1


if __name__ == "__main__":
    sys.exit(main())
