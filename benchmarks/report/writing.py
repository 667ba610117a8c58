"""Writes benchmarks/results.md and its plots, and shows the table in the terminal."""

import pathlib
import subprocess
import textwrap

from results import Plot, Row, Subject, table

FOLDER = pathlib.Path(__file__).resolve().parents[1]

HEAD = """# Measured

Written by `./bench`. Figures are ratios of medians over interleaved repetitions; in brackets
between which two values the middle half of ten rounds lies. Where the mark lies between those two it
is unclear whether it was reached. Times of one machine are no result, so there are none here.

"""


def draw(plot: Plot) -> None:
    data = "".join(
        f"${name} << END\n" + "".join(" ".join(map(str, line)) + "\n" for line in lines) + "END\n"
        for name, lines in plot.data.items())
    folder = FOLDER / "plots"
    folder.mkdir(exist_ok=True)
    for terminal, suffix in (("svg size 900,480 font 'sans,12'", "svg"),
                             ("pngcairo size 900,480 font 'sans,11'", "png")):
        script = (f"set terminal {terminal} background 'white'\n"
                  f"set output '{folder / plot.name}.{suffix}'\n"
                  f"set title \"{plot.title}\"\nset grid ytics\n{data}{plot.commands}")
        subprocess.run(["gnuplot", "-"], input=script, text=True, check=True)


def summary(rows: list[Row]) -> str:
    return table(("what", "beside", "to reach", "measured", "reached"),
                 [(row.what, row.beside, row.mark, row.measured, row.verdict()) for row in rows])


def write(subjects: list[Subject]) -> None:
    rows = [row for subject in subjects for row in subject.rows]
    text = HEAD + summary(rows)
    for subject in subjects:
        text += f"\n## {subject.title}\n\n{subject.details}"
        for plot in subject.plots:
            draw(plot)
            text += f"\n![{plot.title}](plots/{plot.name}.svg)\n"
    (FOLDER / "results.md").write_text(text, encoding="utf-8")


def show(subjects: list[Subject]) -> None:
    for row in (row for subject in subjects for row in subject.rows):
        print(row.what + (f", beside {row.beside}" if row.beside else "")
              + f"; {row.mark}: {row.verdict().strip('*')}")
        print(textwrap.indent(textwrap.fill(row.measured, 92), "    "))
