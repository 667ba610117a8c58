#!/usr/bin/env python3
"""Runs the subjects in the Wine session that run began."""

import argparse
import random
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "system" / "trips"))

# pylint: disable=wrong-import-position
import kill  # noqa: E402
import leaks  # noqa: E402
import load  # noqa: E402
import server  # noqa: E402
import size  # noqa: E402
import waiting  # noqa: E402
from clinic import Clinic, Server  # noqa: E402
from computer import Computer  # noqa: E402
from databases import PostgresqlDatabase, SqliteDatabase  # noqa: E402
from trip_runner import USUAL_PLACES, Report  # noqa: E402

SUBJECTS = {"waiting": waiting.play, "kill": kill.play, "server": server.play, "load": load.play, "leaks": leaks.play,
            "size": size.play}


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bin", required=True)
    parser.add_argument("--session", required=True)
    parser.add_argument("--long", action="store_true")
    parser.add_argument("--only", choices=SUBJECTS)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1_000_000))
    return parser.parse_args()


class Run:
    """What a subject is given."""

    def __init__(self, arguments, postgresql):
        self.long = arguments.long
        self.seed = arguments.seed
        self.programs = Path(arguments.bin)
        self.computer = Computer(arguments.session, arguments.bin)
        self.computer.install()
        self.computer.set_registry(USUAL_PLACES)
        self.server = postgresql
        self.sqlite = Clinic(self.computer, SqliteDatabase(self.computer))
        self.postgresql = Clinic(self.computer, PostgresqlDatabase(postgresql.socket_folder,
                                                                   postgresql.port))
        self.clinics = (self.sqlite, self.postgresql)


def main():
    arguments = parse_arguments()
    print(f"seed {arguments.seed}", flush=True)
    postgresql = Server()
    failed = False
    try:
        run = Run(arguments, postgresql)
        for name, play in SUBJECTS.items():
            if arguments.only in (None, name):
                began = time.monotonic()
                report = Report(f"{name}: ")
                play(run, report)
                failed |= report.failed
                print(f"{name}: {time.monotonic() - began:.0f} s", flush=True)
    finally:
        postgresql.end()
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
