"""Building a request: what a field costs while rows and per-tooth fields are doubled."""

import pathlib
from itertools import pairwise

from figures import ratio
from results import Plot, Row, Subject, table
from running import by_number, measure

MARK = 0.10
REPETITIONS = 50

LINE_CHART = """
set logscale x 2
set xtics (40, 80, 160, 320, 640, 1280, 2560)
set yrange [0:*]
set xlabel "estimate rows, and teeth in two columns"
set ylabel "time per field / that with 40 rows"
unset key
plot $fields with yerrorlines linewidth 2 pointtype 7
"""


def measure_request(program: pathlib.Path) -> Subject:
    costs = by_number(measure(program, "^request/", REPETITIONS))
    rows = list(costs)
    grown = {row: ratio(costs[row], costs[rows[0]]) for row in rows}
    most = max(grown.values(), key=lambda figure: figure.median)
    doublings = [f"{ratio(costs[larger], costs[row])}" for row, larger in pairwise(rows)]
    return Subject(
        "Building a request",
        [Row("building a request, per field", "40 rows; doubled six times", "flat within 10 %",
             f"at most {most}", most.at_most(1 + MARK))],
        "An application's two forms, built from its records and turned into bytes: rows of the\n"
        "estimate and teeth of two per-tooth columns are doubled together. The time is divided by\n"
        "the document's fields, then by that of the first line.\n\n"
        + table(("rows", "cost of a field", "beside half as many"),
                list(zip(rows, grown.values(), ["", *doublings]))),
        [Plot("request", "The cost of a field", LINE_CHART,
              {"fields": [(row, *figure) for row, figure in grown.items()]})])
