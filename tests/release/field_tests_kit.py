"""The unpacked folder field-tests on a clinic's computer."""

import os
import re
import shutil
import sqlite3

from computer import HOST_FIRST, LINK, PER_USER_SETTINGS
from installed import parse_registry

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
