"""Reading a result file while its size is doubled from 1 KB to 64 MB: time, and memory."""

import os
import pathlib
import statistics
from itertools import pairwise

from figures import ratio
from results import Plot, Row, Subject, table
from running import by_number, measure

REPETITIONS = 5
# From here on the cost per file no longer shows, the program's own memory is negligible, and the
# document outgrows any processor's cache.
LARGE = 16 << 20
MARK = 1.15

LINE_CHART = """
set logscale xy 2
set format x "%.0f"
set xlabel "kilobytes"
set ylabel "beside 1 KB"
set key top left
plot x with lines dashtype 2 linecolor "gray" title "linear", \\
  $times with linespoints linewidth 2 pointtype 7 title "time", \\
  $memory with linespoints linewidth 2 pointtype 5 title "memory"
"""


def peak_memory(program: pathlib.Path, size: int) -> int:
    """The most bytes that a process ever had which reads one result of that size."""
    process = os.posix_spawn(
        program, [program, f"--benchmark_filter=^result/byte/{size}/", "--benchmark_min_time=0"],
        os.environ, file_actions=[(os.POSIX_SPAWN_OPEN, 1, os.devnull, os.O_WRONLY, 0),
                                  (os.POSIX_SPAWN_OPEN, 2, os.devnull, os.O_WRONLY, 0)])
    _, status, usage = os.wait4(process, 0)
    if status != 0:
        raise RuntimeError("a measurement of memory failed")
    return usage.ru_maxrss * 1024


def measure_result(program: pathlib.Path) -> Subject:
    costs = by_number(measure(program, "^result/", REPETITIONS))
    sizes = list(costs)
    memory = {size: peak_memory(program, size) for size in sizes}
    # Leaves out the program's own memory.
    per_byte = {larger: (memory[larger] - memory[size]) / (larger - size)
                for size, larger in pairwise(sizes)}
    largest = ratio(costs[sizes[-1]], costs[LARGE])
    memory_ratio = per_byte[sizes[-1]] / per_byte[LARGE]
    doublings = {larger: ratio(costs[larger], costs[size]) for size, larger in pairwise(sizes)}
    lines = [(f"{size >> 10} KB", doublings.get(size, ""),
              f"{per_byte[size]:.1f}" if size >= LARGE else "") for size in sizes]
    first = statistics.median(costs[sizes[0]]) * sizes[0]
    return Subject(
        "Reading a result file",
        [Row("reading a result file, time per byte", "16 MB; 64 MB", "linear", str(largest),
             largest.at_most(MARK)),
         Row("the same, memory per byte", "16 MB; 64 MB", "linear", f"{memory_ratio:.2f}",
             memory_ratio <= MARK)],
        "`ReadNewCase` of a result whose status leaves the database as it is, the answer behind a\n"
        "form of the given size, whose notes are long; it is looked through and loaded twice. Up to\n"
        "some hundred KB opening the file and the like still count, so that a byte becomes cheaper.\n"
        "The document in memory is larger than the file: where it outgrows the processor's own\n"
        "cache a byte becomes dearer, which says nothing about the component.\n\n"
        + table(("file", "time per byte beside half the file", "memory for each byte more"), lines),
        [Plot("result", "Reading a result file", LINE_CHART,
              {"times": [(size >> 10, statistics.median(costs[size]) * size / first)
                         for size in sizes],
               "memory": [(size >> 10, memory[size] / memory[sizes[0]]) for size in sizes]})])
