"""A clinic's computer: the Wine session that trips_test started, with the practice program and the
link program on its drive."""

import os
import re
import select
import shutil
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[3]

ENTER = ('source "$0/scripts/lib.sh"; source "$0/wine/session.sh"; '
         'session=$1; shift; in_wine "$@"')

PER_USER_SETTINGS = r"HKEY_CURRENT_USER\Software\VB and VBA Program Settings\KESTRA\Environment"
MACHINE = r"HKEY_LOCAL_MACHINE\SOFTWARE"
APP_PATHS = MACHINE + r"\Microsoft\Windows\CurrentVersion\App Paths"
LINK = APP_PATHS + r"\Link.exe"
HOST_FIRST = MACHINE + r"\Kestra\Kestra.Main.exe"
HOST_SECOND = APP_PATHS + r"\Kestra.Main.exe"
HOST_THIRD = APP_PATHS + r"\Kestra32.exe"
PLACES = (LINK, HOST_FIRST, HOST_SECOND, HOST_THIRD, PER_USER_SETTINGS)

RESULT_WORDS = (["result"], ["ErrCode"], ["ErrMsg"])

BOUND = 300  # seconds for one program; a result file of 50 MB takes its time


def wait_until(condition, seconds=60):
    """False if `condition` did not become true in time."""
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            return False
        time.sleep(0.05)
    return True


def names_in(exchange):
    """Sorted; the time at which a result was set aside becomes "DATE TIME"."""
    return sorted(re.sub(r" \d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d", " DATE TIME", file.name)
                  for file in exchange.iterdir())


def is_whole(copy):
    """Whether the link program's copy of a command line is complete."""
    return copy.is_file() and copy.read_bytes().endswith(b"\n")


def note_boxes(lines):
    """Adds the boxes among the host's lines to the file named by VILNOR_BOXES, as
tests/fakes/noted_boxes.h does; the host does not print icons."""
    file = os.environ.get("VILNOR_BOXES")
    boxes = [re.fullmatch(r'box "(.*?)" "(.*)" \w+', line) for line in lines]
    if file and any(boxes):
        with open(file, "a", encoding="utf-8") as notes:
            notes.writelines(f"{box[1]}\t\t{box[2]}\n".replace('\\"', '"') for box in boxes if box)


def output_of(process):
    """Its output until it ends, in pieces. The pipe stays open longer: the first program with a window
starts Wine's desktop, which inherits the pipe and stays while any other program runs."""
    ended = False
    while not ended:
        ended = process.poll() is not None
        while select.select([process.stdout], [], [], 0 if ended else 0.02)[0]:
            piece = os.read(process.stdout.fileno(), 1 << 16)
            if not piece:
                process.wait()
                return
            yield piece


@dataclass
class HostRun:
    """The practice program's exit code and output lines."""

    status: int
    lines: list[str]

    def starting_with(self, word):
        return [line.removeprefix(word) for line in self.lines if line.startswith(word)]

    @property
    def boxes(self):
        """Texts of the message boxes, each preceded by its title if that is not the usual one."""
        return [box.removeprefix('"Vilnor Link connection" ').removesuffix(" OK")
                for box in self.starting_with("box ")]

    @property
    def result(self):
        """A function's result, with a line for each output argument."""
        return [line for line in self.lines if line.split()[0:1] in RESULT_WORDS]

    @property
    def events(self):
        return self.starting_with("event ")


class Computer:
    """`folder` is the programs' current folder when they start: by default the session's, on drive Z,
whose root is not writable."""

    def __init__(self, session, programs, folder=None):
        self._enter = ["bash", "-c", ENTER, str(CHECKOUT), session]
        self.work = Path(session) / "desk"
        self.drive = Path(session) / "prefix" / "drive_c"
        self._folder = self.unix_path(folder) if folder else session
        self.is_on_drive_c = folder is not None
        self._programs = Path(programs)
        self.host_folder = self.drive / "Kestra"
        self.exchange = self.host_folder / "Vilnor"
        self.kept = self.work / "kept"

    def install(self):
        """The two programs, without any registration."""
        for folder, program in (("Kestra", "KestraHost.exe"), ("Link", "Link.exe")):
            (self.drive / folder).mkdir()
            shutil.copy(self._programs / program, self.drive / folder)
        shutil.copy(self._programs / "TripHands.exe", self.drive / "Kestra")

    def windows_path(self, path):
        path = Path(path)
        if path.is_relative_to(self.drive):
            return "C:\\" + str(path.relative_to(self.drive)).replace("/", "\\")
        return "Z:" + str(path).replace("/", "\\")

    def unix_path(self, path):
        """For a path on drive C."""
        return self.drive / path.removeprefix("C:\\").replace("\\", "/")

    def start(self, *command, plan=None, bound=BOUND, typed=None):
        """Starts a Windows program; with `plan`, the link program follows it; `typed` is its standard input."""
        environment = {name: value for name, value in os.environ.items()
                       if name != "VILNOR_LINK_PLAN"}
        environment["session_folder"] = str(self._folder)
        if plan is not None:
            environment["VILNOR_LINK_PLAN"] = plan
        keyboard = self.work / "typed"
        keyboard.write_text(f"{typed}\n" if typed else "", "utf-8")
        with keyboard.open("rb") as stream:
            return subprocess.Popen([*self._enter, "timeout", str(bound), "wine", *command],
                                    env=environment, stdin=stream,
                                    stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    @staticmethod
    def finish(process):
        output = b"".join(output_of(process))
        process.stdout.close()
        lines = output.decode("utf-8", errors="replace").splitlines()
        note_boxes(lines)
        # The link program's own log is mixed in; its lines begin with the time.
        return HostRun(process.returncode,
                       [line for line in lines if not re.match(r"\d{4}-\d\d-\d\d ", line)])

    def run(self, *command, plan=None, bound=BOUND, typed=None):
        return self.finish(self.start(*command, plan=plan, bound=bound, typed=typed))

    def host_command(self, connection, arguments):
        return [r"C:\Kestra\KestraHost.exe", "--connection", connection, *arguments]

    def set_registry(self, values):
        """`values` is {(key, name): text or number}; everything else in the places that the component reads
is removed."""
        lines = ["Windows Registry Editor Version 5.00", ""]
        lines += [f"[-{place}]" for place in PLACES]
        for (key, name), value in values.items():
            content = f"dword:{value:08x}" if isinstance(value, int) else \
                '"' + value.replace("\\", "\\\\") + '"'
            lines += ["", f"[{key}]", f'"{name}"={content}']
        script = self.work / "places.reg"
        script.write_bytes("\r\n".join([*lines, ""]).encode("utf-16"))
        run = self.run("reg", "import", self.windows_path(script))
        if run.status != 0:
            raise RuntimeError(f"reg import: {run.lines}")

    def has_key(self, key):
        return self.run("reg", "query", key).status == 0

    def registry_text(self, key, name):
        """None if the value is missing."""
        run = self.run("reg", "query", key, "/v", name)
        for line in run.lines:
            found = re.fullmatch(rf"\s+{re.escape(name)}\s+REG_SZ(?:\s+(.*))?", line)
            if found:
                return (found[1] or "").strip()
        return None

    def clear_exchange(self, exchange=None):
        shutil.rmtree(exchange or self.exchange, ignore_errors=True)
        shutil.rmtree(self.kept, ignore_errors=True)
