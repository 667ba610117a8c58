#!/usr/bin/env python3
"""Counts what a test program found: prints "PASSED FAILED", then a line for each failure.

    count_cases.py STATUS LOG [--json FILE] [--differences FILE PROGRAM]

STATUS is the program's exit code and LOG its output. With --json, the file that GoogleTest writes at
its end, that is what counts; without it the program says "ok NAME" and "not ok NAME: REASON" in its
output. A program that crashed, that ran no test or that left one out has failed. With --differences,
a Markdown table, a case of PROGRAM that stands there counts as passed when it failed as it says there,
and as failed when it did anything else.
"""

import argparse
import json
import re
from dataclasses import dataclass
from pathlib import Path

TIMEOUT_STATUSES = (124, 137)


@dataclass
class Case:
    name: str
    failures: tuple = ()  # messages


def googletest_cases(report):
    """A skipped or disabled case does not count as passed."""
    for suite in report["testsuites"]:
        for case in suite["testsuite"]:
            failures = tuple(each.get("failure", "") for each in case.get("failures", ()))
            if not failures and case.get("result") != "COMPLETED":
                failures = ("not run",)
            yield Case(f"{suite['name']}.{case['name']}", failures)


def started_cases(log):
    """For a GoogleTest program that did not finish."""
    finished = re.findall(r"\[ +(OK|FAILED) +\] ([^\s,]+)(?:, where .*)? \(\d+ ms\)", log)
    return [Case(name, () if mark == "OK" else ("failed",)) for mark, name in finished]


def script_cases(log):
    return [Case(name, (reason,) if failed else ()) for failed, name, reason in
            re.findall(r"^(not )?ok (.+?)(?(1)(?:: (.*))?)$", log, re.MULTILINE)]


def listed_differences(table, program):
    """{case: text of its only failure}"""
    rows = re.findall(r"^\| (\S+) (.+?) \| (.+?) \| .+ \|$", table, re.MULTILINE)
    return {name: text for owner, name, text in rows if owner == program}


def objection(case, difference):
    """The problem with a case, or None. `difference` is the text of its only expected failure."""
    if difference is None:
        return case.name if case.failures else None
    if not case.failures:
        return f"{case.name} passes: its row in the table of differences is out of date"
    if len(case.failures) > 1 or difference not in case.failures[0]:
        return f"{case.name} does not fail as the table of differences says"
    return None


def count(status, log, json_file=None, differences=None):
    """(number of passed cases, lines about the failed ones)"""
    ended, differences = True, differences or {}
    if json_file is None:
        cases = script_cases(log)
    elif json_file.is_file():
        cases = list(googletest_cases(json.loads(json_file.read_text(encoding="utf-8"))))
    else:
        cases, ended = started_cases(log), False
    objections = [objection(case, differences.get(case.name)) for case in cases]
    failures = [each for each in objections if each]
    passed = len(cases) - len(failures)
    failures += [f"{name} was not run: its row in the table of differences is out of date"
                 for name in differences if name not in {case.name for case in cases}]
    explained = {0, 1} if any(case.failures for case in cases) else {0}
    if status in TIMEOUT_STATUSES:
        failures.append("ended by the time limit")
    elif not ended or status not in explained:
        failures.append(f"ended with exit code {status} before its end")
    elif not cases:
        failures.append("ran no test")
    return passed, failures


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("status", type=int)
    parser.add_argument("log", type=Path)
    parser.add_argument("--json", type=Path)
    parser.add_argument("--differences", nargs=2, metavar=("FILE", "PROGRAM"))
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    differences = {}
    if arguments.differences:
        table, program = arguments.differences
        differences = listed_differences(Path(table).read_text(encoding="utf-8"), program)
    log = arguments.log.read_text(encoding="utf-8", errors="replace")
    passed, failures = count(arguments.status, log, arguments.json, differences)
    print(passed, len(failures))
    print("\n".join(failures))


if __name__ == "__main__":
    main()
