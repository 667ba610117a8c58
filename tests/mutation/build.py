"""How the preset native-mutation compiles its sources and links its test programs."""

import json
import re
import shlex
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(CHECKOUT / "tests/architecture"))
from includes import closure  # noqa: E402

PRESET = "native-mutation"
_ARCHIVE = re.compile(r"src/libvilnor_(\w+)\.a")
# The standard headers that the rooms include, precompiled: they take most of a mutant's time.
_STANDARD_HEADER = re.compile(r"^#include <(\w+)>$", re.MULTILINE)


class CannotCompile(Exception):
    pass


@dataclass(frozen=True)
class Program:
    """A test program: its link command and its rooms."""
    name: str
    link: tuple
    rooms: frozenset


def room_of(source):
    return source.parent.name


class Build:
    def __init__(self):
        self.folder = CHECKOUT / "build" / PRESET
        self.programs = []
        self._commands = {}
        self._headers = {}

    def make(self, out):
        """Builds the unmutated programs and reads their build commands."""
        _run(["cmake", "--preset", PRESET], CHECKOUT)
        names = self._test_names()
        _run([CHECKOUT / "scripts/build", PRESET, *names], CHECKOUT)
        for entry in json.loads((self.folder / "compile_commands.json").read_text()):
            source = Path(entry["file"])
            if source.is_relative_to(CHECKOUT / "src"):
                self._commands[source] = shlex.split(entry["command"])
                self._headers[source] = frozenset(closure(source))
        self.programs = [self._program(name) for name in names]
        self._precompiled = self._precompile_standard_headers(out)

    def _test_names(self):
        shown = _run(["ctest", "--test-dir", self.folder, "--show-only=json-v1"], CHECKOUT)
        return [test["name"] for test in json.loads(shown)["tests"]]

    def _program(self, name):
        shown = _run(["ninja", "-C", self.folder, "-t", "commands", f"bin/{name}"], CHECKOUT)
        command = shown.splitlines()[-1].removeprefix(": && ").removesuffix(" && :")
        return Program(name, tuple(shlex.split(command)), frozenset(_ARCHIVE.findall(command)))

    def _precompile_standard_headers(self, out):
        names = sorted({name for source in self._commands
                        for name in _STANDARD_HEADER.findall(source.read_text(encoding="utf-8"))})
        header = out / "standard.h"
        header.write_text("".join(f"#include <{name}>\n" for name in names), encoding="utf-8")
        compiler = next(iter(self._commands.values()))
        _run([compiler[0], *_flags(compiler), "-x", "c++-header", header, "-o", f"{header}.pch"], out)
        return f"{header}.pch"

    def sources(self, room):
        return sorted(source for source in self._commands if room_of(source) == room)

    def dependents(self, file):
        """The sources to compile after a source or header has changed."""
        if file in self._commands:
            return [file]
        return sorted(source for source, headers in self._headers.items() if file in headers)

    def compile(self, source, shadow, from_shadow, result, optimise):
        """Compiles a source. `shadow` is an include folder searched before src/; `from_shadow` says whether
the source itself is read from there."""
        text = shadow / source.relative_to(CHECKOUT / "src") if from_shadow else source
        command = self._commands[source]
        # A precompiled header fits only its own optimisation level.
        precompiled = ["-include-pch", self._precompiled] if optimise == "-O0" else []
        finished = subprocess.run(
            [command[0], f"-I{shadow}", *_flags(command), optimise, *precompiled, "-c", text,
             "-o", result], cwd=self.folder, capture_output=True, text=True)
        if finished.returncode != 0:
            raise CannotCompile(finished.stderr)

    def link(self, program, objects, result):
        """The program with some of its objects replaced. These come first, so their definitions win over
those in the archives, which are needed only where a mutant has lost a copy of an inline
function."""
        command = list(program.link)
        command[command.index("-o") + 1] = str(result)
        _run([command[0], "-Wl,--allow-multiple-definition", *objects, *command[1:]], self.folder)


def _flags(command):
    """The relevant flags of a compile command; code that a mutant makes superfluous is not an error."""
    return [flag for flag in command if re.match(r"-(I|D|f|std)", flag)] + ["-w"]


def _run(command, folder):
    finished = subprocess.run([str(part) for part in command], cwd=folder, capture_output=True,
                              text=True)
    if finished.returncode != 0:
        raise SystemExit(f"{command[0]} failed: {finished.stderr or finished.stdout}")
    return finished.stdout
