"""Building a request: what a row costs while rows and per-tooth fields are doubled."""

import pathlib
import re
import subprocess
from itertools import pairwise

from figures import ratio
from results import Plot, Row, Subject, table
from running import by_number, measure

MARK = 0.01
REPETITIONS = 50
# Large enough that the measuring program, slow under callgrind, is content with one building.
FEW, MORE, MOST = 160, 640, 2560

LINE_CHART = """
set logscale x 2
set xtics (40, 80, 160, 320, 640, 1280, 2560)
set yrange [0:*]
set xlabel "estimate rows, and teeth in two columns"
set ylabel "time per field / that with 40 rows"
unset key
plot $fields with yerrorlines linewidth 2 pointtype 7
"""


def instructions(program: pathlib.Path, rows: int) -> int:
    said = subprocess.run(
        ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
         "--toggle-collect=benchmarks::Application::Build*", program,
         f"--benchmark_filter=^request/field/{rows}/"], capture_output=True, text=True, check=True)
    # Built once to measure and once to count the fields.
    if not re.search(r" 1 per=", said.stdout):
        raise RuntimeError(f"request/field/{rows} was built more than once: {said.stdout}")
    return int(re.search(r"Collected : (\d+)", said.stderr)[1])


def per_added_row(counted: dict[int, int], fewer: int, more: int) -> float:
    return (counted[more] - counted[fewer]) / (more - fewer)


def measure_request(program: pathlib.Path) -> Subject:
    counted = {rows: instructions(program, rows) for rows in (FEW, MORE, MOST)}
    growth = per_added_row(counted, MORE, MOST) / per_added_row(counted, FEW, MORE) - 1
    costs = by_number(measure(program, "^request/", REPETITIONS))
    rows = list(costs)
    grown = {row: ratio(costs[row], costs[rows[0]]) for row in rows}
    doublings = [f"{ratio(costs[larger], costs[row])}" for row, larger in pairwise(rows)]
    return Subject(
        "Building a request",
        [Row("building a request, instructions of an added row",
             f"rows {FEW + 1} to {MORE}; {MORE + 1} to {MOST}", f"flat within {MARK:.0%}",
             f"{growth:+.1%}", abs(growth) <= MARK)],
        "An application's two forms, built from its records and turned into bytes: rows of the\n"
        "estimate and teeth of two per-tooth columns are doubled together. The instructions are\n"
        "counted by callgrind. For the time there is no mark, because it also measures\n"
        "the machine: it grows without more instructions, probably because records and document\n"
        "of thousands of rows do not fit into a processor's cache.\n"
        "It is divided by the document's fields, then by that of the first line, in which the\n"
        "forms' own fields, which cost less than a row's, have the largest share.\n\n"
        + table(("rows", "time of a field", "beside half as many"),
                list(zip(rows, grown.values(), ["", *doublings]))),
        [Plot("request", "The time of a field", LINE_CHART,
              {"fields": [(row, *figure) for row, figure in grown.items()]})])
