"""What the field tests refuse, and that nothing has changed then."""

import os
import shutil
import sqlite3
from contextlib import contextmanager

from computer import HOST_FIRST, wait_until
from field_tests_kit import CANARY, FAILED, NOT_BEGUN, PASSED, REAL_PLACES
from installed import difference

RUNNING = "A practice program is running. Close it and Vilnor Link on this desktop first."
# The unusable databases, one made from the other.
TABLES_OF = {
    "a host's database": ("create table Pasient (ID integer)", "insert into Pasient values (1)"),
    "a host's database with a mark": ("create table VilnorFieldTests (TableName varchar(50))",
                                      "insert into VilnorFieldTests values ('Journal')"),
    "a database with a table Trial": ("drop table Pasient", "drop table VilnorFieldTests",
                                      "create table Trial (ID integer)"),
    "a table that cannot be read": ("drop table Trial", "create view Pasient as select * from Gone")}
TABLES_LEFT = {"a host's database": ["Pasient"],
               "a host's database with a mark": ["Pasient", "VilnorFieldTests"],
               "a database with a table Trial": ["Trial"],
               "a table that cannot be read": ["Pasient"]}


def last_line(lines):
    return lines[-1] if lines else ""


class Refusals:
    def __init__(self, kit, user_line, hands, report):
        """`user_line` is the first line of this user's notes."""
        self.computer = kit.computer
        self.kit = kit
        self.user_line = user_line
        self.hands = kit.computer.windows_path(hands)
        self.report = report

    def run(self):
        self.beside_a_practice_program()
        self.practice_program_started_meanwhile()
        self.notes_of_others()
        self.folders_of_others()
        self.note_of_an_earlier_version()
        self.unreadable_key()
        self.test_program_alone()
        self.unusable_databases()

    def beside_a_practice_program(self):
        name, kit = "beside a practice program", self.kit
        with self._practice_program():
            before = kit.registry(), kit.files()
            run = kit.run(f'"{kit.connection}"', "/quick")
            after = kit.registry(), kit.files()
        self.report.check(f"{name}: exit code", NOT_BEGUN, run.status)
        self.report.check(f"{name}: it is said", RUNNING, last_line(run.lines))
        self.report.check(f"{name}: the registry is as before", [],
                          difference(before[0].items(), after[0].items())[:20])
        self.report.check(f"{name}: the files are as before", [],
                          difference(before[1], after[1])[:20])

    def practice_program_started_meanwhile(self):
        name, kit = "a practice program started meanwhile", self.kit
        before = kit.registry()
        output = self.computer.drive / "users/Public/VilnorFieldTests/output.txt"
        process = kit.start(f'"{kit.connection}"', "/quick")
        wait_until(output.is_file)
        with self._practice_program():
            run = self.computer.finish(process)
        self.report.check(f"{name}: exit code", FAILED, run.status)
        self.report.check(f"{name}: it is said once", 1, run.lines.count(RUNNING))
        self.report.check(f"{name}: no trip was begun", [],
                          [line for line in run.lines if line.startswith("trips")])
        self.report.check(f"{name}: the registry is as before", [],
                          difference(before.items(), kit.registry().items())[:20])

    @contextmanager
    def _practice_program(self):
        """Another program with the window to which results are posted."""
        ready, release = (self.computer.drive / word for word in ("ready", "release"))
        window = self.computer.start(self.hands, "listen", "KestraToVilnor", r"C:\ready",
                                     r"C:\release")
        self.report.hold("the practice program runs", wait_until(ready.is_file), "it does not")
        yield
        release.touch()
        self.computer.finish(window)
        ready.unlink()
        release.unlink()

    def notes_of_others(self):
        """A note in the folder of all users that this user's tests did not write."""
        kit = self.kit
        self.computer.set_registry(REAL_PLACES)
        folder = self.computer.drive / "users/Public/VilnorFieldTests"
        note = folder / "registry before.txt"
        values = f"value 1 x50617468 x{'E:'.encode('utf-16-le').hex()}0000"
        real = HOST_FIRST.replace("HKEY_LOCAL_MACHINE", "HKLM")
        for name, first, key, words in (
                ("another user's note", "user S-1-5-21-1-2-3-1001", f"key {real}",
                 "Start run.cmd as the user who started it first"),
                ("a note of other keys", self.user_line, r"key HKLM\SOFTWARE\Classes",
                 r"names the key HKLM\SOFTWARE\Classes,"),
                ("a note of a key above", self.user_line, r"key HKLM\SOFTWARE",
                 r"names the key HKLM\SOFTWARE,")):
            folder.mkdir()
            note.write_text(f"{first}\n{key}\n{values}\nend\n", "ascii")
            before = kit.registry()
            run = kit.run("/restore")
            self.report.check(f"{name}: exit code", NOT_BEGUN, run.status)
            self.report.hold(f"{name}: it is said", words in last_line(run.lines), repr(run.lines))
            self.report.check(f"{name}: the registry is as before", [],
                              difference(before.items(), kit.registry().items())[:20])
            self.report.hold(f"{name}: it is still there", note.is_file(), "it is not")
            shutil.rmtree(folder)

    def folders_of_others(self):
        """With a note that would change the host's key, if it were believed."""
        kit, nobody = self.kit, 65534
        self.computer.set_registry(REAL_PLACES)
        folder = self.computer.drive / "users/Public/VilnorFieldTests"
        real = HOST_FIRST.replace("HKEY_LOCAL_MACHINE", "HKLM")
        for name, owner, mode in (("a folder of another user", nobody, 0o755),
                                  ("a folder that everyone can write", os.getuid(), 0o777)):
            folder.mkdir()
            (folder / "registry before.txt").write_text(
                f"{self.user_line}\nmissing {real}\nend\n", "ascii")
            folder.chmod(mode)
            os.chown(folder, owner, -1)
            before = kit.registry()
            run = kit.run("/restore")
            self.report.check(f"{name}: exit code", NOT_BEGUN, run.status)
            self.report.hold(f"{name}: it is said", "is not this user's alone" in last_line(run.lines),
                             repr(run.lines))
            self.report.check(f"{name}: the registry is as before", [],
                              difference(before.items(), kit.registry().items())[:20])
            shutil.rmtree(folder)

    def note_of_an_earlier_version(self):
        """What it does not mention is left alone."""
        name, kit = "a note without the host's key", self.kit
        self.computer.set_registry(REAL_PLACES)
        folder = self.computer.drive / "users/Public/VilnorFieldTests"
        folder.mkdir()
        (folder / "registry before.txt").write_text(
            f"{self.user_line}\nmissing HKCU\\Software\\Vilnor contract\nend\n", "ascii")
        before = kit.registry()
        run = kit.run("/restore")
        self.report.check(f"{name}: exit code", PASSED, run.status)
        self.report.check(f"{name}: the registry is as before", [],
                          difference(before.items(), kit.registry().items())[:20])
        self.report.check(f"{name}: the folder is gone", False, folder.exists())

    def unreadable_key(self):
        name, kit = "a key that may not be read", self.kit
        key = HOST_FIRST.removeprefix("HKEY_LOCAL_MACHINE\\")
        self.computer.run(self.hands, "hide", key)
        run = kit.run(f'"{kit.connection}"', "/quick")
        self.computer.run(self.hands, "release", key)
        self.report.check(f"{name}: exit code", NOT_BEGUN, run.status)
        self.report.hold(f"{name}: it is said", "cannot be read (error 5)" in last_line(run.lines),
                         repr(run.lines))
        self.report.check(f"{name}: it is as it was", REAL_PLACES[HOST_FIRST, "Path"],
                          self.computer.registry_text(HOST_FIRST, "Path"))

    def test_program_alone(self):
        """As by a double-click on a Windows."""
        name, kit = "com_tests alone", self.kit
        program = self.computer.windows_path(kit.folder / "bin/com_tests.exe")
        before = kit.registry()
        run = self.computer.run(program, "--as-in-windows", "--gtest_filter=Creation.*")
        self.report.check(f"{name}: exit code", NOT_BEGUN, run.status)
        self.report.hold(f"{name}: it is said", "Start run.cmd" in last_line(run.lines), repr(run.lines))
        self.report.check(f"{name}: the registry is as before", [],
                          difference(before.items(), kit.registry().items())[:20])

    def unusable_databases(self):
        kit = self.kit
        before = kit.registry()
        for name, connection, words in (
                ("a driver that is missing", f"Driver=Nothing;Pwd={CANARY}", "cannot be opened"),
                ("words that are no connection string", CANARY, "no connection string"),
                ("a host's database", kit.connection, "already has a table Pasient"),
                ("a host's database with a mark", kit.connection, "already has a table Pasient"),
                ("a database with a table Trial", kit.connection, "already has a table Trial"),
                ("a table that cannot be read", kit.connection, "Pasient cannot be told")):
            for statement in TABLES_OF.get(name, ()):
                with sqlite3.connect(kit.database) as database:
                    database.execute(statement)
                database.close()
            run = kit.run(f'"{connection}"')
            text = "\n".join(run.lines)
            self.report.check(f"{name}: exit code", NOT_BEGUN, run.status)
            self.report.hold(f"{name}: it is said", words in text, repr(run.lines[-4:]))
            self.report.hold(f"{name}: the password is not", CANARY not in text, repr(run.lines))
            self.report.check(f"{name}: no report", "", kit.report())
            if name in TABLES_LEFT:
                self.report.check(f"{name}: is as it was", TABLES_LEFT[name], kit.tables())
        self.report.check("unusable databases: the registry is as before", [],
                          difference(before.items(), kit.registry().items())[:20])
