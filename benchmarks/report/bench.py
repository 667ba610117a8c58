#!/usr/bin/env python3
"""Measures every subject, writes benchmarks/results.md and shows its table. Called by ./bench, which
has built the programs and made the databases.

    bench.py [SUBJECT...]    only these; results.md is left as it is then
"""

import pathlib
import sys

sys.dont_write_bytecode = True
from practice import measure_practice  # noqa: E402
from writing import show, write  # noqa: E402

NATIVE = pathlib.Path(__file__).resolve().parents[2] / "build/native/bin/vilnor_bench"

SUBJECTS = {
    "practice": lambda: measure_practice(NATIVE),
}


def main() -> None:
    wanted = sys.argv[1:] or list(SUBJECTS)
    measured = []
    for name in wanted:
        if name not in SUBJECTS:
            sys.exit(f"bench: there is no subject {name}; there are {', '.join(SUBJECTS)}")
        print(f"{name} ...", flush=True)
        measured.append(SUBJECTS[name]())
    if not sys.argv[1:]:
        write(measured)
    show(measured)


if __name__ == "__main__":
    main()
