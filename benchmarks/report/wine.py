"""What is measured in Wine: the component for Windows beside MSXML, ADO and direct calls."""

import pathlib
import statistics
import subprocess

from figures import ratio
from results import NOT_MEASURED, Plot, Row, Subject, table
from running import variants
from scan import scan_rows

CHECKOUT = pathlib.Path(__file__).resolve().parents[2]
LIBRARY = CHECKOUT / "build/windows/bin/Vilnor.dll"
LARGEST_LIBRARY = 600 * 1024
FEW_ALLOCATIONS = 3
FLAT_TRIPS = 0.05

TRIPS_CHART = """
set xlabel "trips"
set ylabel "beside the first hundred"
set yrange [0:*]
set key bottom left
plot $time with lines title "time of a trip", $memory with lines linewidth 2 title "memory"
"""

Times = dict[str, list[float]]


def run_in_wine(database: str, subjects: list[str]) -> Times:
    """The figures that the Windows program prints, by name."""
    printed = subprocess.run(
        [CHECKOUT / "wine/run", CHECKOUT / "build/windows/bin/vilnor_bench.exe",
         "Z:" + database.replace("/", "\\"), *subjects],
        capture_output=True, text=True, encoding="utf-8", errors="replace", check=False)
    if printed.returncode != 0:
        raise SystemExit(f"bench: {printed.stderr.strip() or 'the measurements in Wine failed'}")
    figures: Times = {}
    for line in printed.stdout.splitlines():
        name, _, value = line.partition("\t")
        figures.setdefault(name, []).append(float(value))
    return figures


def of_subject(figures: Times, subject: str) -> Times:
    return variants({name: values for name, values in figures.items()
                     if name.startswith(subject + "/")})


def document_row(figures: Times) -> Row:
    times = of_subject(figures, "document")
    figure = ratio(times["MSXML"], times["Vilnor"])
    return Row("building and saving the full application's document, in Wine",
               "MSXML's DOM, node by node, and its save", "at least 10 times faster",
               f"{figure} times", figure.at_least(10))


def trip_rows(figures: Times) -> list[Row]:
    rows = []
    for what, subject, beside, mark in (
            ("`OpenWithNewFHP` in Wine, without the process's start", "request",
             "its bare statements through ADO, one write", 1.10),
            ("a new case's result in Wine, message to deleted file", "result",
             "its bare statements through ADO, one parse, one delete", 1.15)):
        times = of_subject(figures, subject)
        figure = ratio(times["Vilnor"], times["ADO"])
        rows.append(Row(what, beside, f"at most {mark:.2f}", str(figure), figure.at_most(mark)))
    return rows


def parts_table(figures: Times) -> str:
    """Where the time goes: parts of the two operations beside the whole of them."""
    request = of_subject(figures, "request")["Vilnor"]
    result = of_subject(figures, "result")["Vilnor"]
    lines = [(name, ratio(times, request), ratio(times, result))
             for name, times in of_subject(figures, "parts").items()]
    return table(("part", "of a request", "of a result"), lines)


def call_row(figures: Times) -> Row:
    times = of_subject(figures, "calls")
    overhead = statistics.median(times["COM"]) - statistics.median(times["core"])
    allocations = times["allocations"][0]
    return Row("an early-bound call through the COM shell", "a direct call of the core",
               "less than 1 microsecond, at most 3 allocations",
               f"{ratio(times['COM'], times['core'])} times as long, "
               f"{'less' if overhead < 1000 else 'more'} than 1 microsecond more; "
               f"allocations: {allocations:.0f}",
               overhead < 1000 and allocations <= FEW_ALLOCATIONS)


def size_row() -> Row:
    size = LIBRARY.stat().st_size
    return Row("size of `Vilnor.dll`", "", "at most 600 KB", f"{size / 1024:.0f} KB",
               size <= LARGEST_LIBRARY)


def loading_row(figures: Times) -> Row:
    times = of_subject(figures, "loading")
    figure = ratio(times["Vilnor"], times["bare server"])
    return Row("loading `Vilnor.dll` and making its first object", "a bare in-process server",
               "at most 2 times", f"{figure} times", figure.at_most(2))


OPEN_ROWS = [
    Row("the same trips", "a late-bound automation client through ADO and MSXML by name",
        "at least 2 times faster", NOT_MEASURED, None),
]


def measure_wine(database: str) -> Subject:
    # Loading needs a process that has not loaded the component yet.
    figures = (run_in_wine(database, ["loading"])
               | run_in_wine(database, ["calls", "document", "scan", "trips"]))
    documents = of_subject(figures, "document")
    scans, scan_text, _ = scan_rows(of_subject(figures, "scan"), "in Wine")
    return Subject(
        "In Wine",
        [document_row(figures), *trip_rows(figures), *OPEN_ROWS, *scans, call_row(figures),
         size_row(), loading_row(figures)],
        "The component as it is built for Windows, 32 bits and optimised for size, on the small\n"
        "practice on SQLite. The bare statements are those of the operation, on recordsets that\n"
        "nobody reads. `memchr` is that of the C library which the component runs with:\n\n"
        + scan_text
        + "\nWithout its file the document takes "
        f"{ratio(documents['Vilnor without the file'], documents['Vilnor'])} of its time; the\n"
        "rest is putting the file in place: made under another name, flushed, renamed, each a\n"
        "question to Wine's server. Parts of the trips, as parts of the whole:\n\n"
        + parts_table(figures)
        + "\nA request reads some six hundred fields through ADO, which the bare statements do not;\n"
        "that is most of building the forms. A result is loaded twice, as it always has been, and\n"
        "its elements are looked up by name.\n\n"
        "Making the first `BVilnor` makes the notification window, which a bare server has not.\n", [])


def measure_trips(database: str) -> Subject:
    hundreds = of_subject(run_in_wine(database, ["many-trips"]), "trips")
    times = [time / control for time, control in zip(hundreds["time"], hundreds["control"])]
    memory = hundreds["memory"]
    # The first hundred also load what the component uses.
    early, late = times[:10], times[-10:]
    figure = ratio(late, early)
    grown = memory[-1] / memory[0]
    return Subject(
        "Many trips",
        [Row("10,000 trips in one process, time per trip", "the first 1,000", "flat within 5 %",
             str(figure), figure.at_most(1 + FLAT_TRIPS)),
         Row("the same, memory", "after the first 100", "flat", f"{grown:.2f}",
             grown <= 1 + FLAT_TRIPS)],
        "A trip is an application's request and a new case's result; the last thousand's time\n"
        "beside the first thousand's, hundred by hundred. So that others' work on the machine is not\n"
        "taken for the component's, a trip's time is divided by that of bare statements through ADO,\n"
        "made after every fifth trip.\n",
        [Plot("trips", "Ten thousand trips", TRIPS_CHART,
              {"time": [(100 * (n + 1), time / times[0]) for n, time in enumerate(times)],
               "memory": [(100 * (n + 1), size / memory[0]) for n, size in enumerate(memory)]})])
