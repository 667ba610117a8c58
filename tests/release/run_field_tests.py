#!/usr/bin/env python3
"""Starts the field tests in the Wine session that field_tests_test began, and reads their report."""

import argparse
import re
import shutil
import subprocess
import sys
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(CHECKOUT / "tests/system/trips"), str(CHECKOUT / "tests")]

from computer import LINK, Computer, wait_until
from field_tests_kit import CANARY, FAILED, PASSED, REAL_PLACES, Kit
from field_tests_refusals import Refusals, last_line
from html_page import Page
from installed import difference
from trip_runner import USUAL_PLACES, Report


def counts_of(page):
    """Passed, failed, not run: the three boxes at the top."""
    found = [re.fullmatch(r"(\d+) (passed|failed|not run)", box["text"]) for box in page.of("div")]
    return [int(each[1]) for each in found if each]


class Checks:
    def __init__(self, options):
        self.options = options
        self.report = Report("field tests: ")
        self.computer = Computer(options.session, options.bin)
        self.hands = self.computer.drive / "TripHands.exe"
        shutil.copy(Path(options.bin) / "TripHands.exe", self.hands)
        self.kit = Kit(self.computer, Path(options.release))
        self.user_line = ""
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
        self.report.hold(f"{name}: the trace was tried in vain",
                         "Wine has no event tracing: 0 events arrived" in html, "see the page")
        self.report.hold(f"{name}: Wine registers the type library",
                         "whether the system itself registered the type library: yes" in html,
                         "see the page")
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
        self.user_line = (work / "registry before.txt").read_text("ascii").splitlines()[0]
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

    def with_a_talkative_program(self):
        """A practice program that prints the words of its command line, so that the trips' texts tell them."""
        name, kit = "talkative", self.kit
        host = kit.folder / "bin/KestraHost.exe"
        shutil.copy(self.hands, host)
        run = kit.run(f'"{kit.connection}"', "/quick", "/user")
        shutil.copy(Path(self.options.release) / "field-tests/bin/KestraHost.exe", host)
        self.report.check(f"{name}: exit code", FAILED, run.status)
        html = kit.report()
        self._page(name, html)
        self.report.hold(f"{name}: its words are there without the string",
                         "not understood: --connection (the connection string) --dbtype" in html,
                         "they are not")

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
        self.with_a_talkative_program()
        Refusals(self.kit, self.user_line, self.hands, self.report).run()
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
