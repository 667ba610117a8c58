"""The tests that a mutant must face: those of each program in two sittings, quick and slow."""

import json
import os
import subprocess
from dataclasses import dataclass

_SLOW = 0.1  # seconds of one test
_LONGEST = 300


@dataclass(frozen=True)
class Sitting:
    program: object
    tests: str  # GoogleTest's filter
    seconds: float
    is_quick: bool

    def limit(self):
        """Anything longer counts as a hang."""
        return 3 + 5 * self.seconds


def sittings(build, scratch):
    """The sittings of all programs, quickest first; a program that fails unmutated ends the run."""
    found = [sitting for program in build.programs for sitting in _of_program(build, program, scratch)]
    return sorted(found, key=lambda sitting: sitting.seconds)


def _of_program(build, program, scratch):
    report = scratch / "report.json"
    if not passes(build.folder / "bin" / program.name, "*", scratch, _LONGEST, report):
        raise SystemExit(f"{program.name} fails as it is")
    times = {f"{suite['name']}.{test['name']}": float(test["time"].removesuffix("s"))
             for suite in json.loads(report.read_text())["testsuites"] for test in suite["testsuite"]}
    slow = [test for test, seconds in times.items() if seconds > _SLOW]
    of_slow = sum(times[test] for test in slow)
    yield Sitting(program, "-" + ":".join(slow) if slow else "*", sum(times.values()) - of_slow,
                  program.name.startswith("unit_"))
    if slow:
        yield Sitting(program, ":".join(slow), of_slow, False)


def passes(program, tests, temporary, limit, report=None):
    """Whether a test program's tests pass in time; the first failure ends it."""
    output = [f"--gtest_output=json:{report}"] if report else []
    process = subprocess.Popen(
        [program, f"--gtest_filter={tests}", "--gtest_fail_fast", "--gtest_brief=1", *output],
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        env=os.environ | {"TMPDIR": str(temporary)}, cwd=temporary)
    try:
        return process.wait(limit) == 0
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()
        return False
