"""A clinic's computer on which an installer runs: the contents of its registry and drive."""

import re
import shutil
from pathlib import Path

# Wine's own installer leaves these keys empty after the last product is removed.
BOOKKEEPING = ("HKEY_LOCAL_MACHINE\\Software\\Classes\\Installer",
               "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Installer")
UNINSTALL = "\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
CLASSES = "HKEY_LOCAL_MACHINE\\Software\\Classes\\"
# Things that change by themselves, and the practice program's own folders.
_OTHERS = ("windows/Installer", "windows/temp", "windows/system32", "users", "Kestra/kestra.db")
_VALUE = re.compile(r'^(@|"(?:[^"\\]|\\.)*")=(.*)$')


def _key(text):
    """Windows ignores case, and Wine has "Typelib"."""
    return text.replace("\\Typelib\\", "\\TypeLib\\").replace("\\SOFTWARE\\", "\\Software\\")


def parse_registry(text):
    """{(key, name): value}, and each key by (key, None)."""
    entries, key = {}, ""
    for line in text.replace("\r", "").replace("\\\n  ", "").split("\n"):
        if line.startswith("["):
            key = _key(line[1:-1])
            entries[key, None] = ""
        elif found := _VALUE.match(line):
            entries[key, found[1].strip('"').replace("@", "")] = found[2]
    return entries


class Installed:
    """Wraps the Computer of tests/system/trips."""

    def __init__(self, computer):
        self._computer = computer
        self.drive = computer.drive

    def registry(self):
        file = self._computer.work / "export.reg"
        file.unlink(missing_ok=True)
        run = self._computer.run("reg", "export", r"HKLM\Software",
                                 self._computer.windows_path(file), "/y")
        if run.status != 0:
            raise RuntimeError(f"reg export: {run.lines}")
        return parse_registry(file.read_text("utf-16"))

    def files(self):
        paths = (str(file.relative_to(self.drive)) for file in self.drive.rglob("*"))
        return {path for path in paths if not path.startswith(_OTHERS)}

    def state(self):
        entries = {entry: value for entry, value in self.registry().items()
                   if not (entry[1] is None and entry[0].startswith(BOOKKEEPING))}
        return entries, self.files()

    def put(self, msi, name):
        shutil.copy(msi, self.drive / name)

    def msiexec(self, *arguments):
        """Its exit code. By a file of commands: the code is too large for a Unix process."""
        batch = self.drive / "msiexec.bat"
        batch.write_text("@msiexec " + " ".join(arguments) + " /qn\r\n@echo code %errorlevel%\r\n")
        run = self._computer.run("cmd", "/c", r"C:\msiexec.bat")
        batch.unlink()
        found = [line for line in run.lines if line.startswith("code ")]
        return int(found[-1].split()[1]) if found else run.lines

    def products(self):
        """{version: comments} of Vilnor in the list of installed programs."""
        registry = self.registry()
        keys = {key for key, _ in registry if UNINSTALL in key}
        found = [key for key in keys if registry.get((key, "DisplayName")) == '"Vilnor"']
        return {registry[key, "DisplayVersion"].strip('"'): registry.get((key, "Comments"), "")
                for key in found}


def added(before, after):
    """Of two registries."""
    return {entry: value for entry, value in after.items() if before.get(entry) != value}


def classes(entries):
    """What concerns the component: all classes except the installer's own entries."""
    return {entry: value for entry, value in entries.items()
            if entry[0].startswith(CLASSES) and not entry[0].startswith(BOOKKEEPING)}


def difference(one, other):
    """Both ways, for a message; empty when there is none."""
    return [f"- {entry}" for entry in sorted(set(one) - set(other), key=str)] + \
        [f"+ {entry}" for entry in sorted(set(other) - set(one), key=str)]


def dll_at(folder):
    return Path(folder) / "1.5" / "Vilnor.dll"
