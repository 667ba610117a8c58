#!/usr/bin/env python3
"""Plays the trips in the Wine session that trips_test began."""

import argparse
import sys

import page
from computer import Computer
from databases import SERVERS, SqliteDatabase
from places import PLACES_TABLE, PlaceRunner
from results import RESULTS, ResultRunner
from trip_runner import USUAL_PLACES, Report, TripRunner
from trips import TRIPS

DECIMAL_SEPARATORS = {"swedish": ",", "us": "."}


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--locale", choices=DECIMAL_SEPARATORS, required=True)
    parser.add_argument("--bin", required=True)
    parser.add_argument("--session", required=True)
    for server in SERVERS:
        parser.add_argument(f"--{server}", nargs=2, required=True)
    parser.add_argument("--drive-c", action="store_true")
    parser.add_argument("--only", default="")
    parser.add_argument("--write", action="store_true")
    return parser.parse_args()


class Run:
    """Everything that runs in one locale."""

    def __init__(self, arguments):
        self._arguments = arguments
        self._computer = Computer(arguments.session, arguments.bin,
                                  r"C:\Kestra" if arguments.drive_c else None)
        self._computer.install()
        self.failed = False

    def play(self):
        servers = [database(*getattr(self._arguments, server))
                   for server, (_, database) in SERVERS.items()]
        for database in (SqliteDatabase(self._computer), *servers):
            report = Report(f"{self._arguments.locale} {database.product}: ")
            trips = self._play_trips(database, report)
            # Once is enough if neither the locale nor the database matters; this run also provides the
# page's tables.
            if self._arguments.locale == "swedish" and database.product == "sqlite":
                self._play_the_rest(trips, database, report)
            self.failed |= report.failed

    def _play_trips(self, database, report):
        self._computer.set_registry(USUAL_PLACES)
        runner = TripRunner(self._computer, database, report,
                            DECIMAL_SEPARATORS[self._arguments.locale],
                            pictures=self._arguments.write and database.product == "sqlite")
        return self._all_of(runner, [trip for trip in TRIPS if self._belongs(trip, database)])

    def _play_the_rest(self, trips, database, report):
        results = self._all_of(ResultRunner(self._computer, database, report), RESULTS)
        places = self._all_of(PlaceRunner(self._computer, database, report), PLACES_TABLE)
        if not self._arguments.only and not self._arguments.drive_c:
            page.check({"trips": page.trips_table(trips), "results": page.results_table(results),
                        "places": page.places_table(places)}, report, self._arguments.write)

    def _all_of(self, runner, cases):
        return [(case, runner.play(case)) for case in cases if self._arguments.only in case.name]

    def _belongs(self, trip, database):
        in_locale = self._arguments.locale == "swedish" or "u" in trip.where
        return in_locale and (database.product == "sqlite" or "p" in trip.where)


def main():
    run = Run(parse_arguments())
    run.play()
    return 1 if run.failed else 0


if __name__ == "__main__":
    sys.exit(main())
