"""What is measured in Wine: the component for Windows beside MSXML, ADO and direct calls."""

import pathlib
import statistics
import subprocess

from figures import ratio
from results import Plot, Row, Subject, table
from running import by_number, variants
from scan import FLAT, beside_memchr, flat_row, memchr_row, scan_table

CHECKOUT = pathlib.Path(__file__).resolve().parents[2]
LIBRARY = CHECKOUT / "build/windows/bin/Vilnor.dll"
LARGEST_LIBRARY = 560 * 1024
FEW_ALLOCATIONS = 3
FEW_ALLOCATIONS_OF_A_REQUEST = 20
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


def document_rows(figures: Times) -> list[Row]:
    saved = of_subject(figures, "document")
    built = of_subject(figures, "document-memory")
    faster = ratio(built["MSXML"], built["Vilnor"])
    with_file = ratio(saved["MSXML"], saved["Vilnor"])
    allocations = of_subject(figures, "allocations")["both forms"][0]
    return [
        Row("building the full application's document, in Wine", "MSXML's DOM, node by node",
            "at least 10 times faster", f"{faster} times", faster.at_least(10)),
        Row("the same with its file", "the same with its save", "at least 5 times faster",
            f"{with_file} times", with_file.at_least(5)),
        Row("its heap allocations, from the records", "", "fewer than 20", f"{allocations:.0f}",
            allocations < FEW_ALLOCATIONS_OF_A_REQUEST)]


def document_parts(figures: Times) -> str:
    whole = of_subject(figures, "document")["Vilnor"]
    parts = {"building it": of_subject(figures, "document-memory")["Vilnor"],
             **of_subject(figures, "document-parts")}
    return table(("part", "of Vilnor's time for the document with its file"),
                 [(name, ratio(times, whole)) for name, times in parts.items()])


REQUEST = "`OpenWithNewFHP` in Wine, without the process's start"
RESULT = "a new case's result in Wine, message to deleted file"


def trip_row(figures: Times, subject: str, what: str, variant: str, beside: str,
             mark: float) -> Row:
    times = of_subject(figures, subject)
    figure = ratio(times["Vilnor"], times[variant])
    return Row(what, beside, f"at most {mark:.2f}", str(figure), figure.at_most(mark))


def script_row(figures: Times, subject: str, what: str) -> Row:
    times = of_subject(figures, subject)
    figure = ratio(times["script"], times["Vilnor"])
    return Row(what, "a late-bound automation client, by name", "at least 2 times faster",
               f"{figure} times", figure.at_least(2))


def trip_rows(figures: Times) -> list[Row]:
    return [
        trip_row(figures, "request", REQUEST, "ADO",
                 "its bare statements through ADO, one write", 1.10),
        trip_row(figures, "request", "the same", "ADO, reading",
                 "the same, each field read once, by its number", 1.10),
        script_row(figures, "request", "the same"),
        trip_row(figures, "result", RESULT, "ADO",
                 "its bare statements through ADO, one parse, one delete", 1.15),
        script_row(figures, "result", "the same")]


# The parts of a request and of a result.
PARTS_OF_BOTH = ("paths from the registry", "connecting")
PARTS_OF_REQUEST = ("connecting, reading the application's records",
                    "building both forms from the records", "putting the request in place")
PARTS_OF_RESULT = ("connecting, the statements of a result", "parsing the result once")


def parts_table(figures: Times) -> str:
    """Where the time goes: parts of the two operations beside the whole of them."""
    parts = of_subject(figures, "parts")
    request = of_subject(figures, "request")["Vilnor"]
    result = of_subject(figures, "result")["Vilnor"]
    return table(("part", "of a request", "of a result"),
                 [(name, ratio(parts[name], request), ratio(parts[name], result))
                  for name in PARTS_OF_BOTH]
                 + [(name, ratio(parts[name], request), "") for name in PARTS_OF_REQUEST]
                 + [(name, "", ratio(parts[name], result)) for name in PARTS_OF_RESULT])


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
    return Row("size of `Vilnor.dll`", "", "at most 560 KB", f"{size / 1024:.0f} KB",
               size <= LARGEST_LIBRARY)


def registry_row(figures: Times) -> Row:
    costs = by_number(of_subject(figures, "registry"))
    fewest = min(costs)
    most = max((ratio(times, costs[fewest]) for times in costs.values()),
               key=lambda figure: figure.median)
    return Row("loading a registry key in Wine, per value",
               f"{fewest} values; doubled six times", "flat", f"at most {most}",
               most.at_most(1 + FLAT))


def loading_rows(figures: Times) -> list[Row]:
    times = of_subject(figures, "loading")
    figure = ratio(times["Vilnor"], times["bare server"])
    return [Row("loading `Vilnor.dll` and making its first object", "a bare in-process server",
                "at most 2 times", f"{figure} times", figure.at_most(2))]


def measure_wine(database: str) -> Subject:
    # Loading must be measured in a process that has not loaded the component.
    figures = (run_in_wine(database, ["loading"])
               | run_in_wine(database, ["calls", "document", "registry", "scan", "trips"]))
    loading = of_subject(figures, "loading")
    scans = of_subject(figures, "scan")
    return Subject(
        "In Wine",
        [*document_rows(figures), *trip_rows(figures), flat_row(scans, "in Wine"),
         memchr_row(scans, "in Wine"), registry_row(figures), call_row(figures), size_row(),
         *loading_rows(figures)],
        "The component as it is built for Windows, 32 bits and optimised for size, on the small\n"
        "practice on SQLite. A scan's time, divided by that of `memchr`, which is that of the C\n"
        "library which the component runs with:\n\n"
        + scan_table(beside_memchr(scans))
        + "\n### The document\n\n"
        + document_parts(figures)
        + "\nThe file is put in place whole: made under another name, written, flushed, renamed;\n"
        "renaming is half of it. Simply writing over the old one would leave half a request behind a\n"
        "crash.\n\n"
        "### A request and a result\n\n"
        "The bare statements are those of the operation; they enter the same rows. The late-bound client does the same steps as a script does, which the bare\n"
        "statements do not: paths by `WScript.Shell`, the exchange folder by the file-system object,\n"
        "each lookup by a recordset, each field by `rows.Fields(name).Value`, the document by MSXML's\n"
        "DOM, node by node, and its `save`; the result by two loads, as the component has it. Each use\n"
        "of a member asks for its number by its name (`GetIDsOfNames`) and calls it by `Invoke`; no\n"
        "number is remembered. What is only reckoned between is the component's own code, which a\n"
        "script engine would be slower at. Before anything is measured its request must be the\n"
        "component's to the last byte, and the rows that it enters must be the same.\n\n"
        + parts_table(figures)
        + "\nEach of a request's records is read in one call (`GetRows`). A result is loaded twice, as it always has been, from memory; the bare program and the client give\n"
        "the parser the file's name, as one usually does, for which it goes through the internet\n"
        "library. Most of a result is connecting and the statements, where the time is the driver's\n"
        "and the database's: the component is not twice as fast as a client that has to wait for\n"
        "them as long.\n\n"
        "### Loading\n\n"
        f"Loading and unloading alone takes {ratio(loading['Vilnor, no object'], loading['Vilnor'])} "
        "of the time; the rest is the\nfirst `BVilnor` with its notification window, there from an "
        "object's making on, since Vilnor Link\nfinds it by its class. Beside a bare server that also "
        "makes a message-only window it is\n"
        f"{ratio(loading['Vilnor'], loading['bare server and a window'])} times as long.\n", [])


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
