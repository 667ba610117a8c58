#!/usr/bin/env python3
"""Runs VilnorCheck.exe in the Wine session that diagnosis_test began."""

import argparse
import json
import sqlite3
import sys
from contextlib import contextmanager, nullcontext
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[3]
sys.path.insert(0, str(CHECKOUT / "tests/system/trips"))
sys.path.insert(0, str(CHECKOUT / "tests/release"))

from broken import CANARIES, COMPUTERS, files
from computer import HOST_FIRST, PER_USER_SETTINGS, PLACES, Computer, wait_until
from databases import SqliteDatabase
from installed import difference, parse_registry
from pictures import take_picture
from trip_runner import USUAL_PLACES, Report

CHECK = r"C:\Vilnor\1.5\VilnorCheck.exe"
HANDS = r"C:\Kestra\TripHands.exe"
EXIT_CODES = {"fine": 0, "warning": 1, "fault": 2}
TITLE = "VilnorCheck"
# Buttons of the window and of its question for the database, and the field there.
COPY, DATABASE, CLOSE, OK, CONNECTION = "1004", "1006", "2", "1", "1007"
LINES = 22


class Clinic:
    """A healthy computer, and what is needed to break it."""

    def __init__(self, options):
        self.computer = Computer(options.session, options.bin)
        self.computer.install()
        self.programs = Path(options.bin)
        self.ado = self.computer.windows_path(self.programs.parent / "ado-odbc/AdoOdbc.dll")
        self.database = SqliteDatabase(self.computer)
        self.database.renew()
        self.computer.exchange.mkdir()
        # For the user's own registration.
        copy = self.computer.drive / "windows/VilnorCopy.dll"
        copy.write_bytes((self.programs / "Vilnor.dll").read_bytes())
        local = next((self.computer.drive / "users").glob("*/AppData/Local"))
        self.local_data = self.computer.windows_path(local)

    def write(self, values):
        """{(key, name): text}; None removes the value, a name of None the key."""
        lines = ["Windows Registry Editor Version 5.00"]
        for (key, name), text in values.items():
            if text is None and not name:
                lines += ["", f"[-{key}]"]
                continue
            content = "-" if text is None else text if text.startswith("hex") else \
                '"' + text.replace("\\", "\\\\") + '"'
            lines += ["", f"[{key}]", (f'"{name}"=' if name else "@=") + content]
        script = self.computer.work / "values.reg"
        script.write_bytes("\r\n".join([*lines, ""]).encode("utf-16"))
        run = self.computer.run("reg", "import", self.computer.windows_path(script))
        if run.status != 0:
            raise RuntimeError(f"reg import: {run.lines}")

    def value(self, key, name):
        return self.registry(key).get((key.replace("\\SOFTWARE\\", "\\Software\\"), name),
                                      "").strip('"').replace("\\\\", "\\") or None

    def registry(self, key):
        file = self.computer.work / "export.reg"
        file.unlink(missing_ok=True)
        self.computer.run("reg", "export", key, self.computer.windows_path(file), "/y")
        return parse_registry(file.read_text("utf-16")) if file.is_file() else {}

    def place(self, places):
        """These registrations, and no other."""
        self.write({**{(place, None): None for place in PLACES},
                    (r"HKEY_LOCAL_MACHINE\SOFTWARE\Kestra", None): None, **places})

    def regsvr32(self, *words):
        run = self.computer.run("regsvr32", "/s", *words)
        if run.status != 0:
            raise RuntimeError(f"regsvr32 {words}: {run.lines}")

    def hands(self, *words):
        run = self.computer.run(HANDS, *words)
        if run.status != 0:
            raise RuntimeError(f"TripHands {words}: {run.status}")
        return run.lines

    @staticmethod
    def wait_for(file):
        if not wait_until(file.exists):
            raise RuntimeError(f"{file.name} does not appear")

    def state(self):
        """Registry and drive, to be compared."""
        entries = {**self.registry(r"HKLM\Software"), **self.registry("HKCU")}
        drive = self.computer.drive
        paths = {(str(path.relative_to(drive)), path.stat().st_size, path.stat().st_mtime_ns)
                 for path in drive.rglob("*") if not path.is_symlink() and path.is_file()}
        folders = {str(path.relative_to(drive)) for path in drive.rglob("*") if path.is_dir()}
        return set(entries.items()), paths | folders


class Examination:
    def __init__(self, options):
        self.clinic = Clinic(options)
        self.computer = self.clinic.computer
        self.report = Report("diagnosis: ")
        self.write = options.write
        self.said = ""

    def run(self, *options, typed=None):
        run = self.computer.run(CHECK, *options, typed=typed)
        self.said += "\n".join(run.lines)
        return run

    def check(self, name, expected, says="", options=("/json",), typed=None, lines=None):
        run = self.run(*options, typed=typed)
        try:
            # The question for the connection string comes first.
            report = json.loads("{" + "\n".join(run.lines).partition("{")[2])
        except ValueError:
            self.report.hold(name, False, f"exit code {run.status}, {run.lines}")
            return
        found = {one["id"]: one["state"] for one in report["findings"] if one["state"] != "fine"}
        texts = " ".join(one["text"] for one in report["findings"])
        worst = max([*expected.values(), "fine"], key=EXIT_CODES.get)
        self.report.check(f"{name}: findings", expected, found)
        self.report.check(f"{name}: exit code and state", (EXIT_CODES[worst], worst),
                          (run.status, report["state"]))
        if says:
            self.report.hold(f"{name}: it says so", says in texts, f"{says!r} is not in {texts!r}")
        if lines:
            self.report.check(f"{name}: lines", lines, len(report["findings"]))

    def healthy(self):
        self.clinic.place(USUAL_PLACES)
        self.check("a healthy computer", {}, lines=LINES)

    def broken(self):
        for each in COMPUTERS:
            self.clinic.place(each.places)
            with each.breaking(self.clinic) if each.breaking else nullcontext(), \
                    self.unchanged(each.name):
                self.check(each.name, each.expected, each.says)
        self.clinic.place(USUAL_PLACES)
        self.check("everything is mended", {}, lines=LINES)

    @contextmanager
    def unchanged(self, name):
        before = self.clinic.state()
        yield
        after = self.clinic.state()
        self.report.hold(f"{name}: there is a registry to compare", len(before[0]) > 1000,
                         f"{len(before[0])} entries")
        self.report.check(f"{name}: the registry is as before", [],
                          difference(before[0], after[0])[:10])
        self.report.check(f"{name}: files and folders are as before", [],
                          difference(before[1], after[1])[:10])

    def changes_nothing(self):
        """Where the component would create a key and the folder, and clear the setting."""
        self.clinic.place({(PER_USER_SETTINGS, "Vilnor"): r"C:\Gone\Link.exe",
                           (HOST_FIRST.replace("Kestra.Main", "Other"), "x"): "y"})
        self.computer.exchange.rmdir()
        for name, places in (("nothing registered", {}), ("no folder", {
                (HOST_FIRST, "Path"): "C:\\Kestra\\"})):
            self.clinic.write(places)
            with self.unchanged(name):
                self.run("/json", "/databas", typed=self.clinic.database.connection)
        self.computer.exchange.mkdir()
        self.clinic.place(USUAL_PLACES)

    def database(self):
        options, database = ("/json", "/databas"), self.clinic.database
        before = Path(database.file).read_bytes()
        self.check("a healthy database", {}, options=options, typed=database.connection,
                   lines=LINES + 2)
        self.report.check("a healthy database: it is as before", before,
                          Path(database.file).read_bytes())
        self.check("a database that cannot be opened", {"database": "fault"}, options=options,
                   typed="Driver=None;UID=anna.andersson;PWD=hemligt-lösen")
        with sqlite3.connect(database.file) as connection:
            connection.execute("alter table Journal rename column RefTBID to Other")
            connection.execute("drop table VilnorPasient")
        connection.close()
        self.check("a database without a table and a column", {"database-tables": "fault"},
                   says="Journal (RefTBID); VilnorPasient", options=options,
                   typed=database.connection)

    def command_line(self):
        run = self.run("/josn")
        self.report.check("a wrong option: exit code", 3, run.status)
        self.report.hold("a wrong option: help", "/databas" in " ".join(run.lines), run.lines)
        # `canaries` looks for it.
        run = self.run("/databas", "DSN=x;PWD=" + CANARIES[2])
        self.report.check("a connection string as an option: exit code", 3, run.status)

    def window(self, name, places, code, picture):
        """Opens the window, copies the report, on the healthy computer tries the database, and closes it."""
        self.clinic.place(places)
        text = self.run("/text").lines
        started = self.computer.start(CHECK)
        if self.write:
            take_picture(TITLE, picture)
        self.copy(f"{name}: the copy is the text of /text", lambda lines: lines[1:] == text[1:])
        if code == 0:
            self.try_database(name)
        self.clinic.hands("press", TITLE, CLOSE)
        self.report.check(f"{name}: exit code of the window", code,
                          self.computer.finish(started).status)

    def copy(self, name, is_right):
        """Presses the button until the copied report is right; the first one takes its time."""
        copied = []

        def is_copied():
            self.clinic.hands("press", TITLE, COPY)
            copied[:] = self.computer.run(HANDS, "clipboard").lines
            return is_right(copied)
        self.report.hold(name, wait_until(is_copied), copied)

    def try_database(self, name):
        self.clinic.hands("press", TITLE, DATABASE)
        self.clinic.hands("press", "Prova databasen", OK,
                          f"{CONNECTION}={self.clinic.database.connection}")
        self.copy(f"{name}: the database is tried from the window",
                  lambda lines: any("Databas: Anslutningen fungerar." in line for line in lines))

    def windows(self):
        self.window("a healthy computer", USUAL_PLACES, 0, "vilnorcheck-fine.png")
        waiting = {"OutNewCase19710315.xml": 3, "InNewFHP77.xml": 2}
        with files(self.clinic, waiting):
            self.window("a broken computer", {(HOST_FIRST, "Path"): "C:\\Kestra\\"}, 2,
                        "vilnorcheck-findings.png")
        self.clinic.place(USUAL_PLACES)

    def canaries(self):
        self.report.hold("there are texts to look through", len(self.said) > 10_000,
                         f"{len(self.said)} characters")
        self.report.check("no report has a patient's data or a password", [],
                          [word for word in CANARIES if word.lower() in self.said.lower()])


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bin", required=True)
    parser.add_argument("--session", required=True)
    parser.add_argument("--healthy", action="store_true")
    parser.add_argument("--write", action="store_true")
    options = parser.parse_args()
    examination = Examination(options)
    examination.healthy()
    if not options.healthy:
        examination.changes_nothing()
        examination.broken()
        examination.windows()
        examination.database()
        examination.command_line()
        examination.canaries()
    return 1 if examination.report.failed else 0


if __name__ == "__main__":
    sys.exit(main())
