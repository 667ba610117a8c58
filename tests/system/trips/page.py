"""docs/trips.md: its tables come from a run, and every run is compared with them."""

from computer import CHECKOUT
from databases import SERVERS

PAGE = CHECKOUT / "docs" / "trips.md"

ON_SERVERS = ", ".join(name for name, _ in SERVERS.values())
ALSO = {"s": "", "sp": ON_SERVERS, "su": "US English", "spu": f"{ON_SERVERS}, US English"}


def cell(texts):
    """Markdown of one cell, with each text on its own line."""
    texts = [texts] if isinstance(texts, str) else texts
    return "<br>".join(text.replace("|", "\\|") for text in texts) or "–"


def code(texts):
    return [f"`{text}`" for text in texts]


def table(header, rows):
    lines = [header, ["---"] * len(header), *([cell(each) for each in row] for row in rows)]
    return "".join(f"| {' | '.join(line)} |\n" for line in lines)


def trips_table(outcomes):
    return table(
        ["trip", "the host's call", "its result", "Vilnor Link's answer", "rows", "files left",
         "boxes", "events", "also played on"],
        [[trip.name, code([trip.call]), code(outcome.result), answer_of(trip),
          code(outcome.changes), outcome.left,
          outcome.boxes, str(outcome.events), ALSO[trip.where]] for trip, outcome in outcomes])


def answer_of(trip):
    if trip.person:
        return "a person: Skickat"
    return code([trip.plan]) if trip.plan and trip.waits else "–"


def results_table(outcomes):
    return table(
        ["result file", "rows", "files left", "boxes", "events"],
        [[result.name.removeprefix("result file "), code(outcome.changes), outcome.left,
          outcome.boxes, str(outcome.events)] for result, outcome in outcomes])


def places_table(outcomes):
    return table(
        ["case", "exchange directory", "program started", "boxes", "per-user setting afterwards"],
        [[place.name.removeprefix("places: "), code(outcome.exchange), code(outcome.started),
          outcome.boxes, "none" if outcome.setting is None else code([outcome.setting or '""'])]
         for place, outcome in outcomes])


def check(tables, report, write):
    """`tables` is {name: Markdown}; the page contains each between two comments."""
    page = PAGE.read_text(encoding="utf-8")
    for name, content in tables.items():
        start, end = f"<!-- {name}, from a run -->\n", f"<!-- end of {name} -->"
        head, rest = page.split(start)
        known, tail = rest.split(end)
        if write:
            page = head + start + content + end + tail
        else:
            lines = known.splitlines()
            wrong = [line for line in content.splitlines() if line not in lines]
            report.hold(f"docs/trips.md tells what is left: {name}", known == content,
                        f"taken from a run with --write it would read {wrong!r}")
    if write:
        PAGE.write_text(page, encoding="utf-8")
