"""AddNewCase on PostgreSQL beside the same statements over bare ODBC."""

import pathlib

from figures import ratio
from results import Row, Subject
from running import measure, variants

MARK = 1.10
REPETITIONS = 60


def measure_new_case(program: pathlib.Path) -> Subject:
    times = variants(measure(program, "^new-case/", REPETITIONS))
    figure = ratio(times["Vilnor"], times["bare ODBC"])
    return Subject(
        "Adding a case on PostgreSQL",
        [Row("`AddNewCase` on PostgreSQL", "the same statements through bare ODBC", "at most 1.10",
             str(figure), figure.at_most(MARK))],
        "Two inserts, two questions for the new key and an update, in a transaction, on the large\n"
        "practice; the bare program knows the statements' texts beforehand.\n", [])
