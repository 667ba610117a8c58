"""How the operations on the host's database grow with the practice: 50,000 patients beside 500."""

import pathlib

from figures import Ratio, ratio
from results import Plot, Row, Subject, table
from running import measure, subject_of

MARK = 0.15
REPETITIONS = 150

Figures = dict[tuple[str, str, str], Ratio]  # by kind, operation, product

BAR_CHART = """
set style data histogram
set style histogram errorbars gap 2 lw 1
set style fill solid 0.6
set xtics rotate by -40 noenhanced
set yrange [0:*]
set ylabel "time at 50,000 patients / time at 500"
set key outside top center horizontal
plot 1.15 with lines dashtype 2 linecolor "gray" title "within 15 %", \\
  $ratios using 2:3:4:xtic(1) title "SQLite", \\
  $ratios using 5:6:7:xtic(1) title "PostgreSQL"
"""


def grown(times: dict[str, list[float]]) -> Figures:
    figures = {}
    for subject in dict.fromkeys(map(subject_of, times)):
        kind, operation, product = subject.split("/")
        figures[kind, operation, product] = ratio(times[f"{subject}/100%"], times[f"{subject}/1%"])
    return figures


def row(kind: str, what: str, figures: Figures) -> Row:
    mine = {key: figure for key, figure in figures.items() if key[0] == kind}
    worst = max(mine, key=lambda key: mine[key].median)
    flat = [figure.at_most(1 + MARK) for figure in mine.values()]
    reached = False if False in flat else None if None in flat else True
    return Row(what, "500 patients", "flat within 15 %",
               f"{flat.count(True)} of {len(flat)} flat within 15 %, {flat.count(None)} unclear; "
               f"most: {worst[1]}, {worst[2]} {mine[worst]}", reached)


def measure_practice(program: pathlib.Path) -> Subject:
    figures = grown(measure(program, "^(lookup|write)/", REPETITIONS))
    operations = list(dict.fromkeys(key[:2] for key in figures))
    lines = [(kind, operation, figures[kind, operation, "SQLite"],
              figures[kind, operation, "PostgreSQL"]) for kind, operation in operations]
    bars = [(f'"{operation}"', *figures[kind, operation, "SQLite"],
             *figures[kind, operation, "PostgreSQL"])
            for kind, operation in operations if kind == "lookup"]
    return Subject(
        "A large practice",
        [row("lookup", "lookups, 50,000 patients", figures),
         row("write", "writes, 50,000 patients", figures)],
        "Time with 50,000 patients, 200,000 links and 400,000 journal lines, divided by the time\n"
        "with a hundredth of them; the host's indexes, each turn another patient. An operation of\n"
        "`BVilnor`, and `InitConnection`, connects anew each time.\n\n"
        "Patients, links and journal lines are found by an index. What a lookup on SQLite costs\n"
        "more is pages: 2 MB of its own hold all of the small practice, and of the large one they\n"
        "lack the leaves of table and index, which it then copies from the system. `GetBIDById` on\n"
        "PostgreSQL joins a practitioner with their archive: the server takes half as long again to\n"
        "plan the join and to carry it out, for it merges patients with practitioners, of whom the\n"
        "large practice has 52 and the small one 3 (`EXPLAIN (ANALYZE)`).\n\n"
        + table(("", "operation", "SQLite", "PostgreSQL"), lines),
        [Plot("practice", "Lookups in a hundred times larger practice", BAR_CHART,
              {"ratios": bars})])
