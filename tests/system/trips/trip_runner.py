"""Runs a trip and reports the findings."""

import fnmatch
import xml.etree.ElementTree as tree
from dataclasses import dataclass, field

from computer import HOST_FIRST, LINK, is_whole, names_in, wait_until
from databases import Changes
from pictures import take_picture
from trips import CASE_FIELD, QUESTION_TITLE, SENT_BUTTON, TITLE, USER_FIELD

USUAL_PLACES = {(HOST_FIRST, "Path"): "C:\\Kestra\\", (LINK, "Path"): r"C:\Link"}
COMMAND_TAIL = " version=2 caller=KestraDental removefiles=1"


class Report:
    """The lines of the run, and whether one of them is a failure."""

    def __init__(self, prefix):
        self._prefix = prefix
        self.failed = False

    def check(self, name, expected, found):
        self.hold(name, expected == found, f"expected {expected!r}, found {found!r}")

    def hold(self, name, holds, reason):
        self.failed |= not holds
        line = f"ok {self._prefix}{name}" if holds else f"not ok {self._prefix}{name}: {reason}"
        print(line, flush=True)


@dataclass
class Outcome:
    """The host's results, and what one trip left behind."""

    changes: list
    left: list
    boxes: list
    events: int
    result: list = field(default_factory=list)


def form_fields(file):
    """From all forms in an application, by key; a key that occurs twice has both texts."""
    fields = {}
    for item in tree.parse(file).iter("FormItem"):
        key, value = item.findtext("FormItemKey"), item.findtext("FormItemValue")
        fields[key] = f"{fields[key]} {value}" if key in fields else value
    return fields


def like(patterns, texts):
    """Whether each text equals the one in the same position; after a leading "*", only the end must match."""
    return len(patterns) == len(texts) and all(
        fnmatch.fnmatchcase(text, "*" + pattern[1:] + "*") if pattern.startswith("*")
        else pattern == text for pattern, text in zip(patterns, texts))


class TripRunner:
    """With `pictures`, the trips that have one are photographed for docs/images."""

    def __init__(self, computer, database, report, decimal_separator, pictures=False):
        self._computer = computer
        self._decimal_separator = decimal_separator
        self._pictures = pictures
        self._database = database
        self._report = report

    def _plan_of(self, trip):
        if trip.person:
            return None
        return f"{trip.plan};wait=30000;keep={self._computer.windows_path(self._computer.kept)}"

    def _host_command(self, trip, *options):
        waiting = ["--wait-result", "60"] if trip.waits else []
        return self._computer.host_command(
            self._database.connection,
            ["--dbtype", self._database.db_type, *options, *waiting, *trip.call.split()])

    def play(self, trip):
        computer = self._computer
        self._database.renew()
        computer.clear_exchange()
        changes = Changes(self._database)
        pictured = self._pictures and trip.picture
        # The boxes of a pictured trip stay until the picture is taken; then OK or No is clicked.
        seen = computer.work / "seen"
        seen.unlink(missing_ok=True)
        boxes = ["--keep-boxes", "--release-boxes", computer.windows_path(seen)] if pictured else \
            ["--answer-boxes", trip.answer]
        host = computer.start(*self._host_command(trip, *boxes), plan=self._plan_of(trip))
        if pictured:
            take_picture(TITLE if trip.person else QUESTION_TITLE, trip.picture)
            seen.touch()
        if trip.person:
            pressed = computer.run(r"C:\Kestra\TripHands.exe", "press", TITLE, str(SENT_BUTTON),
                                   f"{CASE_FIELD}=26100417", f"{USER_FIELD}=anna")
            self._report.check(f"{trip.name}: the window takes the button", 0, pressed.status)
        run = computer.finish(host)
        self._report.check(f"{trip.name}: the host ends well", (0, run.lines[-1:]),
                           (run.status, [f"notification {self._message(trip)} handled"]
                            if trip.waits else ["return"]))
        self._check_start(trip)
        self._check_fields(trip)
        outcome = Outcome(changes.list(), self._files(), run.boxes, len(run.events), run.result)
        self._check_outcome(trip, outcome, run)
        return outcome

    @staticmethod
    def _message(trip):
        return {"new-case": 10002, "new-fhp": 10001}.get(trip.call.split()[0], 10009)

    def _files(self):
        exchange = self._computer.exchange
        return names_in(exchange) if exchange.is_dir() else []

    def _check_start(self, trip):
        """How the component started the link program, and the end of a trip without an answer."""
        if trip.person:
            return
        computer = self._computer
        if trip.request is None:
            self._report.check(f"{trip.name}: nothing is started", False, computer.kept.exists())
            return
        stem = trip.request.removesuffix(".xml") + "." if trip.request else ""
        kept = computer.kept / f"{stem}commandline.txt"
        came = wait_until(lambda: is_whole(kept))
        path = f' path="C:\\Kestra\\Vilnor\\{trip.request}"{COMMAND_TAIL}' if trip.request else ""
        self._report.check(f"{trip.name}: command line", rf"C:\Link\Link.exe{path}",
                           kept.read_text("utf-8").strip() if came else "no start")
        if trip.request and not trip.waits:
            wait_until(lambda: not (computer.exchange / trip.request).exists())

    def _check_fields(self, trip):
        if trip.fields:
            request = self._computer.kept / trip.request
            found = form_fields(request) if request.is_file() else {}
            expected = {key: value and value.format(point=self._decimal_separator)
                        for key, value in trip.fields.items()}
            self._report.check(f"{trip.name}: form fields", expected,
                               {key: found.get(key) for key in expected})

    def _check_outcome(self, trip, outcome, run):
        name, report = trip.name, self._report
        report.check(f"{name}: result", trip.result, outcome.result)
        report.check(f"{name}: rows", trip.changes, outcome.changes)
        report.check(f"{name}: files left", trip.left, outcome.left)
        report.hold(f"{name}: boxes", like(trip.boxes, outcome.boxes),
                    f"expected {trip.boxes!r}, found {outcome.boxes!r}")
        report.check(f"{name}: events", ["UpdateJournal"] * trip.events, run.events)
