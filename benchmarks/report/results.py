"""What a subject's measurements come to."""

from typing import NamedTuple, Optional


class Row(NamedTuple):
    """A line of the table. `reached` is None where the noise is too large to tell."""
    what: str
    beside: str
    mark: str
    measured: str
    reached: Optional[bool]

    def verdict(self) -> str:
        return {True: "yes", False: "**no**", None: "unclear"}[self.reached]


class Plot(NamedTuple):
    """A picture by gnuplot: its file's name, its commands, its data blocks by name."""
    name: str
    title: str
    commands: str
    data: dict[str, list[tuple]]


class Subject(NamedTuple):
    title: str
    rows: list[Row]
    # Markdown: what the rows are made of, and where the time goes.
    details: str
    plots: list[Plot]


def table(heads: tuple, lines: list[tuple]) -> str:
    """A Markdown table."""
    rows = [heads, tuple("---" for _ in heads), *lines]
    return "".join("| " + " | ".join(map(str, row)) + " |\n" for row in rows)
