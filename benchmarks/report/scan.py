"""The send check's and the document's scan of per-tooth texts, beside one pass of memchr."""

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


def scan_rows(costs: dict[str, list[float]], where: str) -> tuple[list[Row], str, dict]:
    """The rows of one program's measurements, their table, and the plot's data."""
    memchr = by_size(costs, "memchr")
    beside: dict[str, list[Ratio]] = {}
    grown: dict[str, list[Ratio]] = {}
    for what in SCANS:
        scans = by_size(costs, what)
        beside[what] = [ratio(scans[size], memchr[size]) for size in scans]
        grown[what] = [ratio(scans[size], scans[min(scans)]) for size in scans]
    furthest = max((figure for figures in beside.values() for figure in figures),
                   key=lambda figure: figure.median)
    most = max((figure for figures in grown.values() for figure in figures),
               key=lambda figure: figure.median)
    rows = [Row(f"send check and per-tooth scan, {where}", "one pass of memchr",
                "within 8 times", f"at most {furthest} times", furthest.at_most(MARK)),
            Row(f"the same, per character, {where}", "100 characters; up to 32,000", "flat",
                f"at most {most}", most.at_most(1 + FLAT))]
    lines = list(zip(memchr, *(figures for what in SCANS for figures in (beside[what], grown[what]))))
    text = table(("characters", "send check / memchr", "per character", "document / memchr",
                  "per character"), lines)
    data = {name: [(size, *figure) for size, figure in zip(memchr, grown[what])]
            for name, what in (("check", "send check"), ("document", "document"))}
    return rows, text, data


def measure_scan(program: pathlib.Path) -> Subject:
    rows, text, data = scan_rows(variants(measure(program, "^scan/", REPETITIONS)), "natively")
    return Subject(
        "Scanning per-tooth texts", rows,
        "A text of runs of twenty characters (`<11>304 305 306</11>`), whose blanks are counted as\n"
        "the send check does. `memchr` goes over the same bytes for one that is not there.\n\n"
        + text
        + "\nNatively `memchr` is the C library's vector code, which takes 32 characters in one step\n"
        "while a run has twenty. A run costs two searches for its marks, a third for its end and the\n"
        "count of its blanks: no part of it is long enough for vectors.\n",
        [Plot("scan", "The cost of a scanned character", LINE_CHART, data)])
