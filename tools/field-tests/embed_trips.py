#!/usr/bin/env python3
"""Writes the trips of tests/system/trips/trips.py as a C++ source.

    embed_trips.py OUTPUT
"""

import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tests/system/trips"))

from trips import TRIPS  # noqa: E402


def text(value):
    return "std::nullopt" if value is None else f'R"trip({value})trip"'


def texts(values):
    return "{" + ", ".join(map(text, values)) + "}"


def row(trip):
    fields = ", ".join(f"{{{text(key)}, {text(value)}}}" for key, value in trip.fields.items())
    # TripRunner's plan without "keep", whose folder is known only later.
    return ",\n ".join((
        f"{{.name = {text(trip.name)}", f".call = {text(trip.call)}",
        f".request = {text(trip.request)}", f".plan = {text(trip.plan)}",
        f".answer = {text(trip.answer)}", f".waits = {str(trip.waits).lower()}",
        f".result = {texts(trip.result)}", f".changes = {texts(trip.changes)}",
        f".left = {texts(trip.left)}", f".boxes = {texts(trip.boxes)}",
        f".events = {trip.events}", f".fields = {{{fields}}}}}"))


def main():
    # A person's trip needs somebody at the window.
    rows = ",\n".join(row(trip) for trip in TRIPS if not trip.person)
    Path(sys.argv[1]).write_text(
        '#include "field-tests/core/trip.h"\n\n'
        "namespace field_tests {\n\n"
        "const std::vector<Trip>& Trips() {\n"
        f"static const std::vector<Trip> trips = {{\n{rows}}};\nreturn trips;\n}}\n\n"
        "}  // namespace field_tests\n", encoding="utf-8")


if __name__ == "__main__":
    main()
