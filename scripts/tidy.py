#!/usr/bin/env python3
"""Runs clang-tidy with the compile commands of builds, but only on files that have changed.

    tidy.py CACHE_FOLDER BUILD_FOLDER... [-- FILE...]

A file is checked as the first build that has it compiles it: the rooms natively, Windows-only code with the
cross compiler's settings. Clean files are remembered by a hash of their text, the project headers that they
include, their flags, .clang-tidy and clang-tidy's version. Without FILE, all shipped files and the tools are
checked.
"""

import hashlib
import json
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from functools import cache
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(CHECKOUT / "tests/architecture"))
from includes import closure  # noqa: E402


def clang_tidy(*arguments):
    return subprocess.run(["clang-tidy", *arguments], capture_output=True, text=True)


@cache
def target_options(compiler):
    """The flags that make clang read code as the cross compiler does; none for native code."""
    target = re.search(r"\w+-w64-mingw32", compiler)
    if not target:
        return ()
    said = subprocess.run([compiler, "-E", "-v", "-x", "c++", os.devnull], check=True,
                          capture_output=True, text=True).stderr
    folders = re.search(r"<\.\.\.> search starts here:\n(.*?)End of search", said, re.S)[1].split()
    # Clang has its own versions of the headers in the compiler's plain include folder.
    return (f"--target={target[0]}",
            *(f"-isystem{folder}" for folder in folders if "/c++" in folder))


def flags(command):
    """The compile command without parts that differ between checkouts."""
    return command["command"].replace(command["directory"], "").replace(str(CHECKOUT), "")


def key(command, settings):
    parts = [settings, flags(command)]
    for file in sorted(closure(command["file"])):
        digest = hashlib.sha256(file.read_bytes()).hexdigest()
        parts.append(f"{file.relative_to(CHECKOUT)} {digest}")
    return hashlib.sha256("\n".join(parts).encode()).hexdigest()


def look_at(command, stamp):
    """clang-tidy's output for the file; empty if it is clean."""
    if stamp.exists():
        stamp.touch()  # keeps it from being forgotten
        return ""
    options = ("-Wno-unknown-warning-option", *target_options(command["command"].split()[0]))
    result = clang_tidy("--quiet", *(f"--extra-arg={option}" for option in options),
                        "-p", command["directory"], command["file"])
    if result.returncode == 0:
        stamp.touch()
        return ""
    return result.stdout or result.stderr


def is_shipped(file):
    """Skips tests: GoogleTest's macros take clang-tidy minutes per file and reveal nothing."""
    file = Path(file)
    return (file.suffix == ".cpp" and file.is_relative_to(CHECKOUT)
            and file.relative_to(CHECKOUT).parts[0] in ("src", "stand-ins", "tools"))


def commands_of(builds, only):
    """The compile command of each file, from the first build that has one."""
    commands = {}
    for build in builds:
        for command in json.loads((build / "compile_commands.json").read_text()):
            file = command["file"]
            if file in only or (not only and is_shipped(file)):
                commands.setdefault(file, command)
    return list(commands.values())


def forget_old_stamps(stamps):
    """Keeps the newest few thousand."""
    newest_first = sorted(stamps.iterdir(), key=lambda s: s.stat().st_mtime, reverse=True)
    for stamp in newest_first[5000:]:
        stamp.unlink()


def main():
    arguments = sys.argv[1:]
    cut = arguments.index("--") if "--" in arguments else len(arguments)
    stamps, *builds = map(Path, arguments[:cut])
    only = {str(Path(file).resolve()) for file in arguments[cut + 1:]}
    stamps.mkdir(parents=True, exist_ok=True)
    forget_old_stamps(stamps)
    commands = commands_of(builds, only)
    settings = (CHECKOUT / ".clang-tidy").read_text() + clang_tidy("--version").stdout
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        said = list(pool.map(lambda command: look_at(command, stamps / key(command, settings)),
                             commands))
    complaints = [text for text in said if text]
    print(*complaints, sep="\n")
    print(f"{len(commands)} files, {len(complaints)} with complaints")
    return 1 if complaints or not commands else 0


if __name__ == "__main__":
    sys.exit(main())
