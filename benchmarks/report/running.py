"""Runs a measuring program and collects its times.

A measurement's name is "SUBJECT/…/VARIANT". Variants of one subject are measured by turns, many
times over, so that whatever else the machine does meets them alike.
"""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

# The suffixes that Google Benchmark adds to a name.
SETTINGS = re.compile(r"/(iterations|repeats|manual_time|real_time|min_time|min_warmup_time)\b.*$")

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def clock(name: str) -> str:
    """Processor time, which other programs do not lengthen, unless the program measures by itself:
    then somebody else, a server, works for it."""
    return "real_time" if "manual_time" in name else "cpu_time"


def plain_name(name: str) -> str:
    return SETTINGS.sub("", name)


def subject_of(name: str) -> str:
    return plain_name(name).rpartition("/")[0]


def subjects_of(program: pathlib.Path, wanted: str) -> list[str]:
    listed = subprocess.run([program, f"--benchmark_filter={wanted}", "--benchmark_list_tests"],
                            capture_output=True, text=True, check=True).stdout
    return list(dict.fromkeys(subject_of(name) for name in listed.splitlines()))


def measure_subject(program: pathlib.Path, subject: str, repetitions: int) -> dict[str, list[float]]:
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run(
            [program, f"--benchmark_filter=^{subject}/[^/]*(/(iterations|manual_time|"
             "real_time|min_time).*)?$", f"--benchmark_repetitions={repetitions}",
             "--benchmark_enable_random_interleaving=true", f"--benchmark_out={out.name}",
             "--benchmark_out_format=json"],
            check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        runs = json.load(out)["benchmarks"]
    times: dict[str, list[float]] = {}
    for run in runs:
        if run.get("error_occurred"):
            sys.exit(f"bench: {run['name']} failed: {run['error_message']}")
        if run["run_type"] == "iteration":
            times.setdefault(plain_name(run["name"]), []).append(
                run[clock(run["name"])] * NANOSECONDS[run["time_unit"]] / run.get("per", 1))
    return times


def measure(program: pathlib.Path, wanted: str, repetitions: int) -> dict[str, list[float]]:
    """The nanoseconds of every measurement whose name matches, one a repetition; of a measurement that
    has a counter "per", those of one of so many things."""
    times: dict[str, list[float]] = {}
    for subject in subjects_of(program, wanted):
        times |= measure_subject(program, subject, repetitions)
    return times


def variants(times: dict[str, list[float]]) -> dict[str, list[float]]:
    """The times of one subject by the names of its variants."""
    return {name.rpartition("/")[2]: values for name, values in times.items()}


def by_number(times: dict[str, list[float]]) -> dict[int, list[float]]:
    """The times of one subject whose variants are numbers, in their order."""
    return {number: values for number, values in
            sorted((int(name), values) for name, values in variants(times).items())}
