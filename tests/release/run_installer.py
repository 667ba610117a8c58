#!/usr/bin/env python3
"""Plays the installer's life in the Wine session that installer_test began."""

import argparse
import json
import shutil
import subprocess
import sys
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(CHECKOUT / "tests/system/trips"))

from computer import HOST_FIRST, LINK, Computer
from databases import SqliteDatabase
from installed import Installed, added, classes, difference, dll_at
from play_trip import play
from trip_runner import USUAL_PLACES, Report

DONE, FAILED = 0, 1603
WITHOUT_HOST = {(LINK, "Path"): r"C:\Link"}
OWN_KEY = "HKEY_LOCAL_MACHINE\\Software\\Vilnor\\Installer"
# Fails after the transaction has begun but before anything is changed: what was done to the older version
# until then is not rolled back.
BREAK_AT = 1510
BROKEN = ("INSERT INTO `CustomAction` (`Action`, `Type`, `Target`) VALUES ('Break', 19, 'Fel')",
          f"INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('Break', {BREAK_AT})")


class Life:
    def __init__(self, options):
        self.report = Report("installer: ")
        self.computer = Computer(options.session, options.bin)
        self.computer.install()
        self.installed = Installed(self.computer)
        self.database = SqliteDatabase(self.computer)
        self.first, self.second = options.first, options.second
        self.describe = options.describe
        self.installed.put(self._msi(self.first), "first.msi")
        self.installed.put(self._msi(self.second), "second.msi")
        self.installed.put(self._msi(self.second), "broken.msi")
        subprocess.run(["msibuild", self.installed.drive / "broken.msi", "-q", *BROKEN], check=True)
        self.versions = [self._msi(one).stem.removeprefix("Vilnor-") + ".0"
                         for one in (self.first, self.second)]
        self.programs = self.installed.drive / "Program Files/Vilnor"
        self.registered = {}

    @staticmethod
    def _msi(release):
        return next(release.glob("*.msi"))

    def msiexec(self, name, code, *arguments):
        self.report.check(f"{name}: exit code", code, self.installed.msiexec(*arguments))

    def trip(self, name):
        self.report.failed |= play(self.computer, self.database, f"installer: {name}")
        shutil.rmtree(self.computer.kept, ignore_errors=True)

    def same_programs(self, name, release, folder):
        for program in ("Vilnor.dll", "VilnorCheck.exe"):
            file = dll_at(folder).with_name(program)
            found = file.read_bytes() if file.is_file() else b""
            self.report.hold(f"{name}: {program} is that of {release.name}",
                             (release / program).read_bytes() == found,
                             f"{len(found)} bytes of another at {file}")

    def finds_itself(self, name):
        """The installed VilnorCheck.exe, and the DLL beside it."""
        check = self.computer.windows_path(dll_at(self.programs).with_name("VilnorCheck.exe"))
        run = self.computer.run(check, "/json")
        states = {one["id"]: one["state"] for one in json.loads("\n".join(run.lines))["findings"]}
        self.report.check(f"{name}: VilnorCheck.exe finds the component", ["fine"] * 3,
                          [states.get(part) for part in ("component", "component-version",
                                                         "component-signature")])

    def same_state(self, name, before):
        entries, files = self.installed.state()
        self.report.check(f"{name}: the registry is as before", [],
                          difference(before[0].items(), entries.items())[:20])
        self.report.check(f"{name}: the files are as before", [],
                          difference(before[1], files)[:20])

    def same_classes(self, name, before):
        found = classes(added(before[0], self.installed.registry()))
        self.report.check(f"{name}: the classes are those of regsvr32", [],
                          difference(self.registered.items(), found.items())[:20])

    def learn_registration(self, before):
        """What regsvr32 registers for the DLL in the installer's location."""
        file = dll_at(self.programs)
        file.parent.mkdir(parents=True)
        shutil.copy(self.first / "Vilnor.dll", file)
        path = self.computer.windows_path(file)
        self.computer.run("regsvr32", "/s", path)
        self.registered = classes(added(before[0], self.installed.registry()))
        self.report.hold("regsvr32 enters the component", len(self.registered) > 30,
                         f"{len(self.registered)} entries only")
        self.computer.run("regsvr32", "/u", "/s", path)
        shutil.rmtree(self.programs)

    def plain(self):
        """A computer with a registered host; no options."""
        self.computer.set_registry(USUAL_PLACES)
        before = self.installed.state()
        self.learn_registration(before)
        self.msiexec("installation", DONE, "/i", r"C:\first.msi")
        self.same_classes("installation", before)
        self.same_programs("installation", self.first, self.programs)
        self.finds_itself("installation")
        self.report.check("installation: no exchange folder without a group", False,
                          self.computer.exchange.exists())
        self.report.check("installation: it says where the host is",
                          {self.versions[0]: '"Kestra Dental är registrerat: C:\\\\Kestra\\\\"'},
                          self.installed.products())
        self.interfaces()
        self.trip("after the installation")
        self.msiexec("upgrade", DONE, "/i", r"C:\second.msi")
        self.after_upgrade(before)
        self.repair(before)
        self.msiexec("removal", DONE, "/x", r"C:\second.msi")
        shutil.rmtree(self.computer.exchange, ignore_errors=True)
        self.same_state("removal", before)

    def interfaces(self):
        run = self.computer.run(self.computer.windows_path(self.describe), "interfaces",
                                self.computer.windows_path(dll_at(self.programs)))
        last = (CHECKOUT / "packaging/interfaces.txt").read_text("ascii").splitlines()
        self.report.check("the interfaces are those of the last release", last, run.lines)

    def after_upgrade(self, before):
        self.same_programs("upgrade", self.second, self.programs)
        self.same_classes("upgrade", before)
        self.report.check("upgrade: one version is left", [self.versions[1]],
                          list(self.installed.products()))
        self.trip("after the upgrade")

    def repair(self, before):
        dll_at(self.programs).unlink()
        self.computer.run("reg", "delete", r"HKLM\Software\Classes\Vilnor.BVilnor", "/f")
        self.msiexec("repair", DONE, "/i", r"C:\second.msi", "REINSTALL=ALL", "REINSTALLMODE=amus")
        self.same_programs("repair", self.second, self.programs)
        self.same_classes("repair", before)
        self.trip("after the repair")

    def refusals(self, before):
        self.msiexec("a host's path without backslash", FAILED, "/i", r"C:\first.msi",
                     r"HOSTPATH=C:\Kestra", "EXCHANGEGROUP=Users")
        self.msiexec("a host's path without a group", FAILED, "/i", r"C:\first.msi",
                     "HOSTPATH=C:\\Kestra\\")
        self.same_state("a refused installation", before)

    def configured(self):
        """A computer without a registered host; with its path, a group and another folder as options."""
        self.computer.set_registry(WITHOUT_HOST)
        # If empty, it would be deleted with the last value that the installer removes from it.
        self.computer.run("reg", "delete", r"HKLM\Software\Kestra", "/f")
        before = self.installed.state()
        self.refusals(before)
        folder = self.installed.drive / "Egen mapp"
        self.msiexec("installation with options", DONE, "/i", r"C:\first.msi",
                     r'INSTALLDIR="C:\Egen mapp"', "HOSTPATH=C:\\Kestra\\", "EXCHANGEGROUP=Users")
        self.has_options("installation with options", self.first, folder)
        self.trip("after the installation with options")
        self.msiexec("upgrade without options", DONE, "/i", r"C:\second.msi")
        self.has_options("upgrade without options", self.second, folder)
        self.trip("after the upgrade without options")
        waiting = self.computer.exchange / "OutNewCase4711.xml"
        waiting.write_text("<x/>")
        self.msiexec("removal with options", DONE, "/x", r"C:\second.msi")
        self.report.check("removal with options: a result that waits is left", True,
                          waiting.is_file())
        shutil.rmtree(self.computer.exchange)
        self.same_state("removal with options", before)

    def has_options(self, name, release, folder):
        self.same_programs(name, release, folder)
        self.report.check(f"{name}: the host's path", "C:\\Kestra\\",
                          self.computer.registry_text(HOST_FIRST, "Path"))
        self.report.check(f"{name}: the exchange folder is made", True,
                          self.computer.exchange.is_dir())

    def without_host(self):
        before = self.installed.state()
        self.msiexec("installation without a host", DONE, "/i", r"C:\first.msi",
                     "EXCHANGEGROUP=Users")
        said = self.installed.products().get(self.versions[0], "")
        self.report.hold("installation without a host: it says so", "inte registrerat" in said, said)
        self.report.check("installation without a host: no exchange folder is made", [],
                          [path for path in self.installed.files() - before[1]
                           if path.endswith("Vilnor") and not path.startswith("Program Files")])
        self.report.check("installation without a host: no registration of it is written", None,
                          self.computer.registry_text(HOST_FIRST, "Path"))
        self.msiexec("removal without a host", DONE, "/x", r"C:\first.msi")
        self.same_state("removal without a host", before)

    def empty_folder(self):
        self.computer.set_registry(USUAL_PLACES)
        before = self.installed.state()
        self.msiexec("installation with a group", DONE, "/i", r"C:\first.msi", "EXCHANGEGROUP=Users")
        self.report.check("installation with a group: the exchange folder is made", True,
                          self.computer.exchange.is_dir())
        self.msiexec("removal with a group", DONE, "/x", r"C:\first.msi")
        self.same_state("removal with a group", before)

    def downgrade(self):
        """For a version that was not installed by an upgrade: when Wine removes an older version, it forgets
how to find the newer one."""
        before = self.installed.state()
        self.msiexec("installation of the next version", DONE, "/i", r"C:\second.msi")
        self.msiexec("downgrade", FAILED, "/i", r"C:\first.msi")
        self.same_programs("downgrade", self.second, self.programs)
        self.same_classes("downgrade", before)
        self.msiexec("removal of the next version", DONE, "/x", r"C:\second.msi")
        self.same_state("removal of the next version", before)

    def failing_upgrade(self):
        """The last one, because Wine does not roll back what was done until then."""
        before = self.installed.state()
        self.msiexec("installation before a failing upgrade", DONE, "/i", r"C:\first.msi")
        self.msiexec("failing upgrade", FAILED, "/i", r"C:\broken.msi")
        self.report.check("failing upgrade: the older version is still installed", True,
                          self.versions[0] in self.installed.products())
        self.same_classes("failing upgrade", before)
        self.trip("after the failing upgrade")

    def play(self):
        self.plain()
        self.downgrade()
        self.configured()
        self.without_host()
        self.empty_folder()
        self.failing_upgrade()
        return self.report.failed


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bin", required=True)
    parser.add_argument("--session", required=True)
    parser.add_argument("--first", type=Path, required=True)
    parser.add_argument("--second", type=Path, required=True)
    parser.add_argument("--describe", type=Path, required=True)
    return 1 if Life(parser.parse_args()).play() else 0


if __name__ == "__main__":
    sys.exit(main())
