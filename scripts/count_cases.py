#!/usr/bin/env python3
"""Counts what a test program found: prints "PASSED FAILED", then a line for each failure.

    count_cases.py STATUS LOG [JSON]

STATUS is the program's exit code and LOG its output. With JSON, the file that GoogleTest writes at
its end, that is what counts; without it the program says "ok NAME" and "not ok NAME" in its
output. A program that crashed, that ran no test or that left one out has failed.
"""

import json
import re
import sys
from pathlib import Path

TIMEOUT_STATUSES = (124, 137)


def googletest_cases(report):
    """(name, passed) of each case; a skipped or disabled one has not passed."""
    return [(f"{suite['name']}.{case['name']}",
             case.get("result") == "COMPLETED" and not case.get("failures"))
            for suite in report["testsuites"] for case in suite["testsuite"]]


def started_cases(log):
    """The same of a GoogleTest program that did not reach its end."""
    finished = re.findall(r"\[ +(OK|FAILED) +\] ([^\s,]+)(?:, where .*)? \(\d+ ms\)", log)
    return [(name, mark == "OK") for mark, name in finished]


def script_cases(log):
    return [(name, not failed) for failed, name in re.findall(r"^(not )?ok (.+)$", log, re.MULTILINE)]


def count(status, log, json_file=None):
    """(number of passed cases, lines about the failed ones)"""
    ended = True
    if json_file is None:
        cases = script_cases(log)
    elif json_file.is_file():
        cases = googletest_cases(json.loads(json_file.read_text(encoding="utf-8")))
    else:
        cases, ended = started_cases(log), False
    failures = [name for name, passed in cases if not passed]
    if status in TIMEOUT_STATUSES:
        failures.append("ended by the time limit")
    elif not ended or (status != 0 and not failures):
        failures.append(f"ended with exit code {status} before its end")
    elif not cases:
        failures.append("ran no test")
    return len(cases) - sum(not passed for _, passed in cases), failures


def main():
    status, log = int(sys.argv[1]), Path(sys.argv[2]).read_text(encoding="utf-8", errors="replace")
    passed, failures = count(status, log, Path(sys.argv[3]) if len(sys.argv) > 3 else None)
    print(passed, len(failures))
    print("\n".join(failures))


if __name__ == "__main__":
    main()
