#!/usr/bin/env python3
"""Starts the field tests in the Wine session that field_tests_test began, and reads their report."""

import argparse
import os
import re
import shutil
import sqlite3
import subprocess
import sys
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(CHECKOUT / "tests/system/trips"), str(CHECKOUT / "tests")]

from computer import HOST_FIRST, LINK, PER_USER_SETTINGS, Computer, wait_until
from html_page import Page
from installed import difference, parse_registry
from trip_runner import USUAL_PLACES, Report

PASSED, FAILED, NOT_BEGUN = 0, 1, 2
CANARY = "canary-7391"
# What a computer with the practice program and Vilnor Link has: it must survive.
REAL_PLACES = {(HOST_FIRST, "Path"): "D:\\Real Kestra\\", (HOST_FIRST, "Number"): 7,
               (LINK, "Path"): r"D:\Real Link", (PER_USER_SETTINGS, "Vilnor"): r"D:\Real\Link.exe"}
# Wine's own housekeeping.
CHANGES_BY_ITSELF = re.compile(r"\\(Wine|Explorer|Volatile Environment|Video)\b|\\Hardware\\", re.I)
LONG = 1800  # seconds


class Kit:
    """The unpacked folder, and runs of it."""

    def __init__(self, computer, release):
        self.computer = computer
        self.folder = computer.drive / "Fältprov för Åsa"
        shutil.copytree(release / "field-tests", self.folder)
        self.database = computer.drive / "empty.db"
        self.connection = rf"Driver=SQLite3;Database=C:\empty.db;Pwd={CANARY}"

    def start(self, *arguments):
        for report in self.folder.glob("report-*.html"):
            report.unlink()
        # A file of commands, whose quotation marks nobody changes. Its letters are ASCII.
        batch = self.computer.drive / "go.bat"
        # Without "call", which loses the exit code in Wine.
        batch.write_text(f'@"%VILNOR_KIT%\\run.cmd" {" ".join(arguments)}\r\n', "ascii")
        os.environ["VILNOR_KIT"] = self.computer.windows_path(self.folder)
        return self.computer.start("cmd", "/c", r"C:\go.bat", bound=LONG)

    def run(self, *arguments):
        return self.computer.finish(self.start(*arguments))

    def report(self):
        files = list(self.folder.glob("report-*.html"))
        return files[0].read_text("utf-8") if len(files) == 1 else ""

    def registry(self):
        entries = {}
        for root in ("HKLM", "HKCU"):
            file = self.computer.work / "export.reg"
            file.unlink(missing_ok=True)
            self.computer.run("reg", "export", root, self.computer.windows_path(file), "/y")
            entries |= parse_registry(file.read_text("utf-16"))
        return {entry: value for entry, value in entries.items()
                if not CHANGES_BY_ITSELF.search(entry[0])}

    def files(self):
        drive = self.computer.drive
        paths = (str(file.relative_to(drive)) for file in drive.rglob("*"))
        return {path for path in paths if not re.search(r"/report-.*\.html$|^go\.bat$|windows/temp/", path)}

    def tables(self):
        connection = sqlite3.connect(self.database)
        names = [row[0] for row in connection.execute(
            "select name from sqlite_master where name not like 'sqlite%'")]
        connection.close()
        return names


def counts_of(page):
    """Passed, failed, not run: the three boxes at the top."""
    found = [re.fullmatch(r"(\d+) (passed|failed|not run)", box["text"]) for box in page.of("div")]
    return [int(each[1]) for each in found if each]


def last_line(lines):
    return lines[-1] if lines else ""


class Checks:
    def __init__(self, options):
        self.options = options
        self.report = Report("field tests: ")
        self.computer = Computer(options.session, options.bin)
        self.kit = Kit(self.computer, Path(options.release))
        self.sample = [] if options.all else ["/quick"]

    def _page(self, name, html):
        page = Page(html)
        self.report.check(f"{name}: the page loads nothing", [], page.loading_or_running())
        for private in (CANARY, self.kit.connection, "empty.db", r"C:\users\root"):
            self.report.hold(f"{name}: the page does not tell {private}", private not in html,
                             "it does")
        return page

    def with_a_database(self):
        name, kit = "with a database", self.kit
        self.computer.set_registry(REAL_PLACES)
        self.computer.run("reg", "query", "HKCU")  # Wine's desktop has started
        kit.database.write_bytes(b"")
        before = kit.registry(), kit.files()
        run = kit.run(f'"{kit.connection}"', *self.sample)
        after = kit.registry(), kit.files()
        self.report.check(f"{name}: exit code", PASSED, run.status)
        html = kit.report()
        page = self._page(name, html)
        passed, failed, left = counts_of(page)
        self.report.check(f"{name}: last line", f"{passed} passed, {failed} failed",
                          last_line(run.lines))
        self.report.hold(f"{name}: tests passed", passed > 60, f"{passed} only")
        self.report.hold(f"{name}: what was not run is counted and shown",
                         f"NOT RUN {left} tests; the report says why." in run.lines,
                         repr(run.lines[-8:]))
        self.report.hold(f"{name}: Wine is no Windows", "This is Wine, not Windows." in html, "")
        self.report.hold(f"{name}: nothing differed from Wine",
                         "every test that was run ended as it does in Wine" in html, "see the page")
        facts = {row["text"] for table in page.of("table", "computer")
                 for row in page.of("tr", within=table)}
        for fact, value in {"ANSI code page": "1252", "Short date": "yyyy-MM-dd", "ADO": "AdoOdbc.dll",
                            "MSXML": "msxml3.dll", "Regional settings": "sv-SE",
                            "Test database": "SQLite: Driver=SQLite3"}.items():
            self.report.hold(f"{name}: the page tells {fact}",
                             any(text.startswith(fact) and value in text for text in facts),
                             repr(facts))
        self.report.check(f"{name}: the registry is as before", [],
                          difference(before[0].items(), after[0].items())[:20])
        self.report.check(f"{name}: the files are as before", [],
                          difference(before[1], after[1])[:20])
        self.report.check(f"{name}: the database is empty", [], kit.tables())
        return html

    def ended_by_force(self):
        """What it leaves in the registry, the next start puts back; the tables, the next run."""
        name, kit = "ended by force", self.kit
        self.computer.set_registry(REAL_PLACES)
        before = kit.registry()
        work = self.computer.drive / "users/Public/VilnorFieldTests"
        process = kit.start(f'"{kit.connection}"')
        began = wait_until(lambda: (work / "output.txt").is_file())
        self.report.hold(f"{name}: it had begun", began, "it had not")
        self.computer.run("taskkill", "/f", "/im", "FieldTests.exe")
        self.computer.finish(process)
        self.computer.set_registry(USUAL_PLACES)
        run = kit.run("/restore")
        self.report.check(f"{name}: exit code of /restore", PASSED, run.status)
        self.report.hold(f"{name}: it is said", "An earlier run was ended." in "\n".join(run.lines),
                         repr(run.lines))
        self.report.check(f"{name}: the registry is as before", [],
                          difference(before.items(), kit.registry().items())[:20])
        self.report.check(f"{name}: the folder is gone", False, work.exists())
        self.report.check(f"{name}: the tables are marked", True,
                          "VilnorFieldTests" in kit.tables())

    def as_a_user_with_a_broken_program(self):
        """Without the machine's keys; one program crashes, and is missing a test."""
        name, kit = "broken", self.kit
        self.computer.set_registry({})
        programs = kit.folder / "bin"
        shutil.copy(programs / "Link.exe", programs / "windows_tests.exe")
        run = kit.run(f'"{kit.connection}"', "/quick", "/user")
        shutil.copy(Path(self.options.release) / "field-tests/bin/windows_tests.exe", programs)
        self.report.check(f"{name}: exit code", FAILED, run.status)
        page = self._page(name, kit.report())
        passed, failed, _ = counts_of(page)
        self.report.check(f"{name}: the broken program is the only failure", 1, failed)
        self.report.hold(f"{name}: it is named", "FAILED  windows_tests: start" in run.lines,
                         repr(run.lines[-8:]))
        self.report.check(f"{name}: last line", f"{passed} passed, 1 failed", last_line(run.lines))
        self.report.check(f"{name}: it is the difference from Wine",
                          [["windows_tests", "start", "passed", "failed"]],
                          page.rows("differences"))
        trips = [row for row in page.rows("programs") if row[0].startswith("trips")]
        self.report.check(f"{name}: trips are made by the user's setting", ["4", "0"],
                          trips[0][1:3] if trips else [])
        self.report.check(f"{name}: no link program was named for the computer", None,
                          self.computer.registry_text(LINK, "Path"))

    def unusable_databases(self):
        kit = self.kit
        before = kit.registry()
        for name, connection, words in (
                ("a driver that is missing", f"Driver=Nothing;Pwd={CANARY}", "cannot be opened"),
                ("words that are no connection string", CANARY, "no connection string"),
                ("a host's database", kit.connection, "already has a table Pasient")):
            if "host" in name:
                with sqlite3.connect(kit.database) as database:
                    database.execute("create table Pasient (ID integer)")
                    database.execute("insert into Pasient values (1)")
                database.close()
            run = kit.run(f'"{connection}"')
            text = "\n".join(run.lines)
            self.report.check(f"{name}: exit code", NOT_BEGUN, run.status)
            self.report.hold(f"{name}: it is said", words in text, repr(run.lines[-4:]))
            self.report.hold(f"{name}: the password is not", CANARY not in text, repr(run.lines))
            self.report.check(f"{name}: no report", "", kit.report())
        self.report.check("a host's database is as it was", ["Pasient"], kit.tables())
        self.report.check("unusable databases: the registry is as before", [],
                          difference(before.items(), kit.registry().items())[:20])

    def picture(self, html):
        page = Path(self.options.picture).with_suffix(".html")
        page.write_text(html, "utf-8")
        subprocess.run(["chromium", "--headless", "--no-sandbox", "--hide-scrollbars",
                        "--window-size=1100,1700", f"--screenshot={self.options.picture}",
                        page.as_uri()], check=True, capture_output=True)

    def run(self):
        html = self.with_a_database()
        if self.options.picture:
            self.picture(html)
        self.ended_by_force()
        self.as_a_user_with_a_broken_program()
        self.unusable_databases()
        return 1 if self.report.failed else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bin", required=True)
    parser.add_argument("--session", required=True)
    parser.add_argument("--release", required=True)
    parser.add_argument("--all", action="store_true")
    parser.add_argument("--picture")
    return Checks(parser.parse_args()).run()


if __name__ == "__main__":
    sys.exit(main())
