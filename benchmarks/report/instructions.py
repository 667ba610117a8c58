#!/usr/bin/env python3
"""Counts the instructions of the core's hot paths with callgrind and compares them with those kept in
benchmarks/instructions.tsv. They do not depend on what else the machine does.

    instructions.py --keep    keeps the present ones, once a change's cost is accepted
"""

import pathlib
import re
import subprocess
import sys

sys.dont_write_bytecode = True
from results import Row, Subject, table  # noqa: E402

CHECKOUT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = CHECKOUT / "build/native/bin/vilnor_instructions"
KEPT = CHECKOUT / "benchmarks/instructions.tsv"
FEW, MANY = 10, 110
SAME = 0.01
# A comparison and a jump where the call begins and where it ends, and what they need.
MOST_OF_THE_TRACE = 10


def instructions(path: str, runs: int) -> int:
    said = subprocess.run(
        ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", PROGRAM, path,
         str(runs)], capture_output=True, text=True, check=True).stderr
    return int(re.search(r"Collected : (\d+)", said)[1])


def count() -> dict[str, int]:
    """The instructions of each path taken once; what the program does only once is left out."""
    paths = subprocess.run([PROGRAM], capture_output=True, text=True, check=True).stdout
    return {path: (instructions(path, MANY) - instructions(path, FEW)) // (MANY - FEW)
            for path in paths.splitlines()}


def kept() -> dict[str, int]:
    lines = KEPT.read_text(encoding="utf-8").splitlines() if KEPT.exists() else []
    return {path: int(number) for path, number in (line.split("\t") for line in lines)}


def measure_instructions() -> Subject:
    before, now = kept(), count()
    changes = {path: number / before.get(path, number) - 1 for path, number in now.items()}
    most = max(changes, key=lambda path: changes[path])
    trace = now["a procedure"] - now["a procedure without a trace"]
    lines = [(path, before.get(path, ""), number, f"{changes[path]:+.1%}")
             for path, number in now.items()]
    return Subject(
        "Instructions",
        [Row("instructions of the core's hot paths", "those kept in the repository",
             "no more", f"at most {changes[most]:+.1%} ({most})", changes[most] <= SAME),
         Row("a procedure while nobody listens to the trace", "without a trace",
             f"at most {MOST_OF_THE_TRACE} instructions more", f"{trace} more",
             trace <= MOST_OF_THE_TRACE)],
        "Counted by callgrind; `benchmarks/report/instructions.py --keep` keeps the present ones.\n\n"
        + table(("path", "kept", "now", "change"), lines), [])


def main() -> None:
    if sys.argv[1:] != ["--keep"]:
        sys.exit(__doc__)
    KEPT.write_text("".join(f"{path}\t{number}\n" for path, number in count().items()),
                    encoding="utf-8")


if __name__ == "__main__":
    main()
