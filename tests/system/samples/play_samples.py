#!/usr/bin/env python3
"""Plays the samples in the Wine session that samples_test began."""

import argparse
import contextlib
import os
import re
import socket
import sys
from dataclasses import dataclass
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "trips"))

from computer import Computer, names_in, wait_until
from databases import Changes, SqliteDatabase
from trip_runner import USUAL_PLACES, Report
from trips import NEW_JOURNAL, NEW_LINK, TOO_MANY_MEASURES

FOLDER, HANDS = r"C:\Kestra\Vilnor", r"C:\Kestra\TripHands.exe"
HEAD = "<?xml version='1.0' encoding='ISO-8859-1'?>"
READY, RELEASED = "Vilnor is ready.", "Vilnor is released."
EVENT = "Event UpdateJournal: a host shows its journal again."
NO_EVENTS = "This script host receives no events: "
BOX, OK_BUTTON = "Vilnor sample", "1"
NOT_32_BIT = "Vilnor.dll is 32-bit, and a 64-bit process cannot load it"
NOT_REGISTERED = "Vilnor.dll is not registered on this computer; an administrator installs "
NO_DATABASE = "the database cannot be opened; check the connection string: "
USAGE, NOT_32, NO_COMPONENT, NOT_OPENED = 1, 2, 3, 4


def result(status, case):
    return f"{HEAD}<a><Status>{status}</Status><UserDefData>4712&amp;12&amp;3</UserDefData>" \
           f"<Id>{case}</Id><UserName>anna</UserName></a>"


# Three answers for one patient: a case sent, another sent, the first one withdrawn. Only in this order
# do they leave the second case alone.
FIRST, SECOND = "OutNewCase4713 2026-11-17 08.00.00.xml", "OutNewCase4713 2026-11-16 14.05.00.xml"
# While another program holds the older answer, the newer one, which withdraws a case, must wait.
HELD = "OutNewCase4714 2026-11-16 15.00.00.xml"
NO_DOCUMENT = "OutExistCase103.xml"
# Name, text, age in seconds.
WAITING = [(FIRST, result(5, 9001), 180), (SECOND, result(5, 9002), 120),
           (HELD, result(5, 9003), 90), ("OutNewCase4713.xml", result(7, 9001), 60),
           ("OutNewCase4714.xml", result(7, 2073), 50), (NO_DOCUMENT, "no document", 30)]
LEFT = [NO_DOCUMENT, "OutNewCase4714 DATE TIME.xml", "OutNewCase4714 waiting 1.xml"]


LINK_105 = ("+ Vilnor 105: PID=4713 BID=12 RID=3 CaseId=9002 CaseType=9 Journal_ID=506 StatusCode=5 "
            "VilnorUser=anna RegDate=now")
# The withdrawn case had the first free number.
ROWS = [LINK_105, NEW_LINK.replace("Vilnor 104", "Vilnor 106").replace("505", "507"),
        "+ Journal 506: PID=4713 Tekst=Ärende upprättat i Vilnor Link ref.nr 9002 BID=12 RID=3 "
        "Dato=now KODE=22302 Status=U Fakturert=0 RefTBID=105",
        NEW_JOURNAL.replace("Journal 505", "Journal 507").replace("104", "106")]


@dataclass
class Sample:
    name: str
    file: str
    fhp_id: str
    answer: list  # what OKToSend says

    @property
    def is_script(self):
        return self.file.endswith(".vbs")

    def lines(self):
        """What it prints on a trip; a script host in Wine receives no events."""
        event = [] if self.is_script else [EVENT]
        stays = "stays: a person must look at it"
        end = "The box is closed" if self.is_script else "The answer has been read"
        wait = "answer" if self.is_script else "answer (Ctrl+C ends this sample)"
        return [READY, *event, f"{FIRST} is dealt with", *event, f"{SECOND} is dealt with",
                f"{HELD} {stays}", *event, "OutNewCase4713 waiting 1.xml is dealt with",
                f"{NO_DOCUMENT} {stays}", *self.answer,
                f"A new case for patient 4711: waiting for Vilnor Link's {wait}.",
                f"{end}: a host shows its journal again.", RELEASED]


FITS = ["OKToSend 77: yes"]
FITS_NOT = ["OKToSend 80: no, 100 " + TOO_MANY_MEASURES.split('"')[1].split("\\r\\n")[0],
            TOO_MANY_MEASURES.split("\\r\\n")[1][:-1]]
SAMPLES = [Sample("C++", "cpp/vilnor_sample.exe", "77", FITS),
           Sample("Object Pascal", "pascal/VilnorSample.exe", "80", FITS_NOT),
           Sample("VBScript", "vbscript/vilnor_sample.vbs", "80", FITS_NOT)]


class Player:
    def __init__(self, options):
        self._computer = Computer(options.session, options.bin)
        self._kit = Path(options.kit)
        # The next Wine gives each process its own architecture, as Windows does, and its ODBC says
        # "Unspecified error" whatever the reason.
        self._is_first_wine = not options.next
        self._out = Path(options.out)
        self.report = Report("")
        self._database = None

    def unregistered(self):
        for sample in SAMPLES:
            self._refuse("without a registration", sample, arguments(sample, "none"),
                         NO_COMPONENT, NOT_REGISTERED)

    def registered(self):
        self._computer.install()
        self._computer.set_registry(USUAL_PLACES)
        self._database = SqliteDatabase(self._computer)
        for sample in SAMPLES:
            self._refuse("without arguments", sample, [], USAGE, "usage: ")
            self._refuse("with a wrong connection string", sample,
                         arguments(sample, "Driver=NoSuchDriver;Database=none"), NOT_OPENED,
                         NO_DATABASE)
            port = closed_port()
            server = f"Driver=PostgreSQL Unicode;Server=127.0.0.1;Port={port};Database=none"
            # A script host keeps the reason to itself.
            reason = str(port) if self._is_first_wine and not sample.is_script else ""
            self._refuse("without a database", sample, arguments(sample, server), NOT_OPENED,
                         NO_DATABASE, reason)
            if sample.is_script and self._is_first_wine:
                self._refuse("as if in a 64-bit process", sample, arguments(sample, "none"), NOT_32,
                             NOT_32_BIT, before=["cmd", "/c", "set PROCESSOR_ARCHITECTURE=AMD64&&"])
            self._play(sample)

    def _command(self, sample):
        return [*(["cscript", "//nologo"] if sample.is_script else []),
                self._computer.windows_path(self._kit / sample.file)]

    @staticmethod
    def _lines(run):
        """Without letters beyond ASCII, for which each host has its own bytes."""
        return [plain(line) for line in run.lines if not line.startswith(NO_EVENTS)]

    def _refuse(self, what, sample, words, code, begins, has="", before=()):
        """One line says what is wrong and why."""
        run = self._computer.run(*before, *self._command(sample), *words)
        errors = [line for line in self._lines(run) if line not in (READY, RELEASED)]
        program = Path(sample.file).stem
        good = len(errors) == 1 and errors[0].startswith(f"{program}: {begins}") \
            and has in errors[0]
        self.report.hold(f"{sample.name} {what}: one line", good and run.status == code,
                         f"exit code {run.status}, {run.lines!r}")

    def _put_waiting(self):
        self._computer.exchange.mkdir()
        for name, text, age in WAITING:
            file = self._computer.exchange / name
            file.write_text(text, "latin-1")
            os.utime(file, (file.stat().st_mtime - age,) * 2)

    @contextlib.contextmanager
    def _held(self, name):
        computer = self._computer
        ready, release = computer.work / "ready", computer.work / "release"
        for file in (ready, release):
            file.unlink(missing_ok=True)
        holder = computer.start(HANDS, "hold", "none", *map(
            computer.windows_path, (computer.exchange / name, ready, release)))
        self.report.hold(f"{name} is held", wait_until(ready.exists), "nobody holds it")
        try:
            yield
        finally:
            release.touch()
            computer.finish(holder)

    def _play(self, sample):
        self._database.renew()
        self._computer.clear_exchange()
        self._put_waiting()
        with self._held(HELD):
            self._play_trip(sample)

    def _play_trip(self, sample):
        computer = self._computer
        changes = Changes(self._database)
        process = computer.start(*self._command(sample),
                                 *arguments(sample, self._database.connection),
                                 plan="outcome=sent;caseid=26100417;user=anna;wait=30000")
        if sample.is_script:
            answered = wait_until(lambda: changes.list() == ROWS)
            self.report.hold(f"{sample.name}: the answer is read while its box is open", answered,
                             f"rows: {changes.list()}")
            computer.run(HANDS, "press", BOX, OK_BUTTON)
        run = computer.finish(process)
        self._keep(sample, run)
        report = self.report
        report.check(f"{sample.name}: exit code", 0, run.status)
        report.check(f"{sample.name}: what it prints", [*map(plain, sample.lines())],
                     self._lines(run))
        report.check(f"{sample.name}: rows", ROWS, changes.list())
        report.check(f"{sample.name}: files left", LEFT, names_in(computer.exchange))

    def _keep(self, sample, run):
        self._out.mkdir(parents=True, exist_ok=True)
        (self._out / f"{sample.name}.txt").write_text("\n".join([*run.lines, ""]), "utf-8")


def plain(text):
    return re.sub(r"[^\t -~]+", "", text)


def arguments(sample, connection):
    return [connection, "1", FOLDER, "4711", "12", "3", sample.fhp_id]


def closed_port():
    with socket.socket() as taken:
        taken.bind(("127.0.0.1", 0))
        return taken.getsockname()[1]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("--bin", "--session", "--kit", "--out"):
        parser.add_argument(name, required=True)
    parser.add_argument("--next", action="store_true")
    parser.add_argument("what", choices=("unregistered", "registered"))
    options = parser.parse_args()
    player = Player(options)
    getattr(player, options.what)()
    return 1 if player.report.failed else 0


if __name__ == "__main__":
    sys.exit(main())
