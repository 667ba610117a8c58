#!/usr/bin/env python3
"""Measures every subject, writes benchmarks/results.md and shows its table. Called by ./bench, which
has built the programs and made the databases.

    bench.py [SUBJECT...]    only these; results.md is left as it is then
"""

import os
import pathlib
import sys

sys.dont_write_bytecode = True
from document import measure_document  # noqa: E402
from instructions import measure_instructions  # noqa: E402
from new_case import measure_new_case  # noqa: E402
from practice import measure_practice  # noqa: E402
from request import measure_request  # noqa: E402
from result import measure_result  # noqa: E402
from scan import measure_scan  # noqa: E402
from wine import measure_trips, measure_wine  # noqa: E402
from writing import show, write  # noqa: E402

NATIVE = pathlib.Path(__file__).resolve().parents[2] / "build/native/bin/vilnor_bench"

SUBJECTS = {
    "document": lambda: measure_document(NATIVE),
    "request": lambda: measure_request(NATIVE),
    "scan": lambda: measure_scan(NATIVE),
    "result": lambda: measure_result(NATIVE),
    "new-case": lambda: measure_new_case(NATIVE),
    "practice": lambda: measure_practice(NATIVE),
    "instructions": measure_instructions,
    "wine": lambda: measure_wine(os.environ["VILNOR_BENCH_WINE"]),
    "trips": lambda: measure_trips(os.environ["VILNOR_BENCH_WINE"]),
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
