"""The send check's and the document's scan of per-tooth texts: a character's cost while the text grows,
and in Wine beside one pass of memchr."""

import pathlib

from figures import Ratio, ratio
from results import Plot, Row, Subject, table
from running import measure, variants

MARK = 8
FLAT = 0.15
REPETITIONS = 40
SCANS = ("send check", "document")

LINE_CHART = """
set logscale x
set yrange [0:*]
set xlabel "characters"
set ylabel "time per character / that of 100"
set key bottom left
plot $check with yerrorlines linewidth 2 pointtype 7 title "send check", \\
  $document with yerrorlines linewidth 2 pointtype 5 title "document"
"""


def by_size(costs: dict[str, list[float]], what: str) -> dict[int, list[float]]:
    return dict(sorted((int(name.split()[-1]), times) for name, times in costs.items()
                       if name.startswith(what)))


def grown(costs: dict[str, list[float]]) -> dict[str, dict[int, Ratio]]:
    """Of each scan, by size: the cost of a character beside that in the shortest text."""
    scans = {what: by_size(costs, what) for what in SCANS}
    return {what: {size: ratio(times, sizes[min(sizes)]) for size, times in sizes.items()}
            for what, sizes in scans.items()}


def beside_memchr(costs: dict[str, list[float]]) -> dict[str, dict[int, Ratio]]:
    memchr = by_size(costs, "memchr")
    return {what: {size: ratio(times, memchr[size])
                   for size, times in by_size(costs, what).items()} for what in SCANS}


def highest(figures: dict[str, dict[int, Ratio]]) -> Ratio:
    return max((figure for sizes in figures.values() for figure in sizes.values()),
               key=lambda figure: figure.median)


def flat_row(costs: dict[str, list[float]], where: str) -> Row:
    most = highest(grown(costs))
    return Row(f"send check and per-tooth scan, per character, {where}",
               "100 characters; up to 32,000", "flat", f"at most {most}", most.at_most(1 + FLAT))


def memchr_row(costs: dict[str, list[float]], where: str) -> Row:
    furthest = highest(beside_memchr(costs))
    return Row(f"the same, {where}", "one pass of memchr", "within 8 times",
               f"at most {furthest} times", furthest.at_most(MARK))


def scan_table(figures: dict[str, dict[int, Ratio]]) -> str:
    return table(("characters", *SCANS),
                 [(size, *(figures[what][size] for what in SCANS)) for size in figures[SCANS[0]]])


def measure_scan(program: pathlib.Path) -> Subject:
    costs = variants(measure(program, "^scan/", REPETITIONS))
    figures = grown(costs)
    return Subject(
        "Scanning per-tooth texts", [flat_row(costs, "natively")],
        "A text of runs of twenty characters (`<11>304 305 306</11>`), whose blanks are counted as\n"
        "the send check does; the time of a character, divided by that in the shortest text.\n\n"
        + scan_table(figures),
        [Plot("scan", "The cost of a scanned character", LINE_CHART,
              {name: [(size, *figure) for size, figure in figures[what].items()]
               for name, what in (("check", "send check"), ("document", "document"))})])
