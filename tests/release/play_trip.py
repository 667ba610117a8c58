#!/usr/bin/env python3
"""Plays one whole trip in a Wine session, with whatever makes the component be found there."""

import argparse
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "system/trips"))

from computer import Computer
from databases import SqliteDatabase
from trip_runner import USUAL_PLACES, Report, TripRunner
from trips import TRIPS


def play(computer, database, name):
    """A new case, from the practice program to the link program and into the database. Whether it
    went wrong."""
    report = Report(f"{name}: ")
    TripRunner(computer, database, report, ",").play(TRIPS[0])
    return report.failed


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bin", required=True)
    parser.add_argument("--session", required=True)
    parser.add_argument("--install-only", action="store_true",
                        help="the practice program and the link program, without a trip")
    options = parser.parse_args()
    computer = Computer(options.session, options.bin)
    if options.install_only:
        computer.install()
        return 0
    computer.set_registry(USUAL_PLACES)
    return 1 if play(computer, SqliteDatabase(computer), "trip") else 0


if __name__ == "__main__":
    sys.exit(main())
