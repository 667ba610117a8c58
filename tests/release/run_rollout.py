#!/usr/bin/env python3
"""Runs the blocks of docs/rollout.md that are marked "wine", in order, in the Wine session that rollout_test
began."""

import argparse
import re
import shutil
import sys
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(CHECKOUT / "tests/system/trips"))

from computer import Computer
from trip_runner import USUAL_PLACES, Report

DOCUMENT = CHECKOUT / "docs/rollout.md"
CLASS = r"HKEY_CLASSES_ROOT\Vilnor.BVilnor"
# Whether the component is registered after the block that begins so.
REGISTERED_AFTER = {"msiexec /i Vilnor": True, "msiexec /x Vilnor": False}
FENCE = re.compile(r"^```(.*)\n((?:.*\n)*?)```\n\n(.*)$", re.MULTILINE)


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("--bin", "--session", "--release"):
        parser.add_argument(name, type=Path, required=True)
    return parser.parse_args()


class Rollout:
    def __init__(self, options):
        self.report = Report("rollout: ")
        self._computer = Computer(options.session, options.bin, "C:\\")
        self._computer.install()
        self._computer.set_registry(USUAL_PLACES)
        self._computer.exchange.mkdir()
        self._result = self._computer.exchange / "OutNewCase4711.xml"
        self._result.write_text("<r/>")
        installer = next(options.release.glob("*.msi"))
        self._version = installer.stem.removeprefix("Vilnor-")
        shutil.copy(installer, self._computer.drive / installer.name)
        self._settings = []

    def play(self):
        blocks = FENCE.findall(DOCUMENT.read_text(encoding="utf-8"))
        marks = [mark for mark, _, _ in blocks]
        self.report.check("the marks", {"bat wine", "bat windows"}, set(marks))
        self.report.hold("blocks for Wine", marks.count("bat wine") > 5, f"only {marks}")
        for mark, commands, after in blocks:
            name = commands.split("\n")[0]
            if mark == "bat wine":
                self._run(name, commands)
            else:
                self.report.hold(f"{name}: why it is not run", after.startswith("Not run in Wine: "),
                                 after)

    def _run(self, name, commands):
        """In a batch file that ends with the line number of the first command that fails. What a block sets
stays set for the next ones."""
        lines = commands.replace("1.5.N", self._version).splitlines()
        checked = [f"{line}\r\nif errorlevel 1 exit /b {number}"
                   for number, line in enumerate(lines, 1)]
        batch = self._computer.drive / "block.bat"
        batch.write_text("\r\n".join(["@echo off", *self._settings, *checked, "exit /b 0", ""]),
                         encoding="ascii", newline="")
        run = self._computer.run("cmd", "/c", r"C:\block.bat")
        self.report.hold(name, run.status == 0,
                         f"line {run.status} ({lines[run.status - 1]}): {run.lines[-3:]}"
                         if 0 < run.status <= len(lines) else f"exit code {run.status}: {run.lines[-3:]}")
        self._settings += [line for line in lines if line.startswith("set ")]
        for beginning, registered in REGISTERED_AFTER.items():
            if name.startswith(beginning):
                self.report.check(f"{name}: registered afterwards", registered,
                                  self._computer.has_key(CLASS))
                self.report.hold(f"{name}: the unread result is there", self._result.is_file(),
                                 "it is gone")


def main():
    rollout = Rollout(parse_arguments())
    rollout.play()
    return 1 if rollout.report.failed else 0


if __name__ == "__main__":
    sys.exit(main())
