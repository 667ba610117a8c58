#!/usr/bin/env python3
"""Runs clang-tidy over the native compile commands, and only over files that have changed.

    tidy.py BUILD_FOLDER CACHE_FOLDER [FILE...]

A file that was found clean is remembered by a hash of its text, the project's headers that it
includes, its flags, .clang-tidy and clang-tidy's version. Without FILE all files that are shipped,
and the tools, are looked at.
"""

import hashlib
import json
import os
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(CHECKOUT / "tests/architecture"))
from includes import closure  # noqa: E402


def clang_tidy(*arguments):
    return subprocess.run(["clang-tidy", *arguments], capture_output=True, text=True)


def flags(command, build):
    """The compile command without what differs from one checkout to another."""
    return command["command"].replace(str(build), "").replace(str(CHECKOUT), "")


def key(command, build, settings):
    parts = [settings, flags(command, build)]
    for file in sorted(closure(command["file"])):
        digest = hashlib.sha256(file.read_bytes()).hexdigest()
        parts.append(f"{file.relative_to(CHECKOUT)} {digest}")
    return hashlib.sha256("\n".join(parts).encode()).hexdigest()


def look_at(command, build, stamp):
    """What clang-tidy says about the file; empty when it is clean."""
    if stamp.exists():
        stamp.touch()  # keeps it from being forgotten
        return ""
    result = clang_tidy("--quiet", "--extra-arg=-Wno-unknown-warning-option", "-p", str(build),
                        command["file"])
    if result.returncode == 0:
        stamp.touch()
        return ""
    return result.stdout or result.stderr


def is_shipped(file):
    """Tests are left out: GoogleTest's macros take clang-tidy minutes a file and teach nothing."""
    return Path(file).relative_to(CHECKOUT).parts[0] in ("src", "stand-ins", "tools")


def forget_old_stamps(cache):
    """Keeps the newest few thousand."""
    stamps = sorted(cache.iterdir(), key=lambda s: s.stat().st_mtime, reverse=True)
    for stamp in stamps[5000:]:
        stamp.unlink()


def main():
    build, cache = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
    only = {str(Path(file).resolve()) for file in sys.argv[3:]}
    cache.mkdir(parents=True, exist_ok=True)
    forget_old_stamps(cache)
    commands = [command for command in json.loads((build / "compile_commands.json").read_text())
                if command["file"] in only or (not only and is_shipped(command["file"]))]
    settings = (CHECKOUT / ".clang-tidy").read_text() + clang_tidy("--version").stdout
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        said = list(pool.map(
            lambda command: look_at(command, build, cache / key(command, build, settings)),
            commands))
    complaints = [text for text in said if text]
    print(*complaints, sep="\n")
    print(f"{len(commands)} files, {len(complaints)} with complaints")
    return 1 if complaints or not commands else 0


if __name__ == "__main__":
    sys.exit(main())
