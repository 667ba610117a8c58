"""The full application's document beside the XML libraries that one would otherwise take."""

import pathlib

from figures import ratio
from results import Plot, Row, Subject, table
from running import measure, variants

REPETITIONS = 60

BAR_CHART = """
set style data histogram
set style histogram errorbars gap 2 lw 1
set style fill solid 0.6
set yrange [0:*]
set ylabel "time / Vilnor's"
set key outside top center horizontal
plot 1 with lines dashtype 2 linecolor "gray" title "Vilnor", \\
  $memory using 2:3:4:xtic(1) title "into memory", $file using 2:3:4 title "into a file"
"""

LIBRARIES = ("libxml2", "pugixml")


def measure_document(program: pathlib.Path) -> Subject:
    places = {place: variants(measure(program, f"^document/{place}/", REPETITIONS))
              for place in ("memory", "file")}
    beside = {place: {name: ratio(times, all_times["Vilnor"]) for name, times in all_times.items()}
              for place, all_times in places.items()}
    saved, built = beside["file"], beside["memory"]
    lines = [(name, built[name], saved[name]) for name in LIBRARIES]
    lines.append(("Vilnor, from the records", "", saved["Vilnor from records"]))
    return Subject(
        "The document of a full application, natively",
        [Row("building the full application's document", "libxml2", "at least 5 times faster",
             f"{built['libxml2']} times; with its file {saved['libxml2']}",
             built["libxml2"].at_least(5)),
         Row("the same", "pugixml", "at least 1.5 times faster",
             f"{built['pugixml']} times; with its file {saved['pugixml']}",
             built["pugixml"].at_least(1.5))],
        "Both forms, forty rows: the same elements and texts are added one by one to the component's\n"
        "buffer and to each library's tree, which is then written as ISO-8859-1; into memory, and\n"
        "into a file in memory. The libraries get their texts in UTF-8. The component's file is put\n"
        "in place whole. The last line also makes the texts from the database's records.\n\n"
        + table(("time / Vilnor's", "into memory", "into a file"), lines),
        [Plot("document", "The document of a full application", BAR_CHART,
              {place: [(name, *beside[place][name]) for name in LIBRARIES] for place in beside})])
