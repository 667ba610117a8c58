"""Finding the link program and the exchange directory with the real registry, per-user setting and
folders: what is registered, and what the component does with it."""

import shutil
from dataclasses import dataclass, field, replace

from computer import (HOST_FIRST, HOST_SECOND, HOST_THIRD, LINK, PER_USER_SETTINGS, PLACES,
                      is_whole, wait_until)
from trip_runner import COMMAND_TAIL, like

NOT_FOUND = ('"Kunde inte hitta Vilnor Link programmet (Link.exe)\\r\\n\\r\\n'
             'Ange sökvägen manuellt under menyalternativet:\\r\\n'
             'Verktyg/Inställningar - Denna arbetsplats/Generellt"')
NOT_STARTED = '"53 File not found in StartVilnor"'
NO_HOST = '"10001 Did not find Kestra Dental registry information in GetVilnorOutputPath"'
NO_FOLDER = '"76 Path not found in GetVilnorOutputPath"'
LINK_PROGRAM = r"C:\Link\Link.exe"
# The component does not quote the path; the system does after finding the program.
LINK_WITH_BLANKS = r'"C:\Vilnor Link\Link.exe"'
REQUEST = "Search19850312-1234.xml"

LINK_THERE = {(LINK, "Path"): r"C:\Link"}
HOST_THERE = {(HOST_FIRST, "Path"): "C:\\Kestra\\"}


# The request goes to the root of the current drive, where the link program receives it.
IN_THE_ROOT = {"alone": False}


def setting(text):
    return {(PER_USER_SETTINGS, "Vilnor"): text}


@dataclass
class Place:
    name: str
    registry: dict
    exchange: str = r"C:\Kestra\Vilnor"  # the exchange directory afterwards; "" for none
    started: str = LINK_PROGRAM          # the program in the command line; "" when nothing started
    boxes: list = field(default_factory=list)
    setting: str | None = None           # the per-user setting afterwards; None when there is none
    request_stays: bool = False
    created: tuple = ()                  # keys that were created empty
    alone: bool = False                  # started without arguments
    call: str = "search 4711"
    on_drive_c: dict = field(default_factory=dict)  # what differs when the current drive is C

    def __post_init__(self):
        self.name = "places: " + self.name


PLACES_TABLE = [
    # --- The host's registrations.
    Place("the first registration of the host counts before the others",
          {(HOST_FIRST, "Path"): "C:\\One\\", (HOST_SECOND, "Path"): "C:\\Two\\",
           (HOST_THIRD, "Path"): "C:\\Three\\", **LINK_THERE}, exchange=r"C:\One\Vilnor"),
    Place("the second registration of the host counts when the first is missing",
          {(HOST_SECOND, "Path"): "C:\\Two\\", (HOST_THIRD, "Path"): "C:\\Three\\", **LINK_THERE},
          exchange=r"C:\Two\Vilnor", created=(HOST_FIRST,)),
    Place("the third registration of the host counts when the others are missing",
          {(HOST_THIRD, "Path"): "C:\\Three\\", **LINK_THERE},
          exchange=r"C:\Three\Vilnor", created=(HOST_FIRST, HOST_SECOND)),
    Place("a registration with an empty path does not count",
          {(HOST_FIRST, "Path"): "", (HOST_SECOND, "Path"): "C:\\Two\\", **LINK_THERE},
          exchange=r"C:\Two\Vilnor"),
    Place("a registration whose path is a number does not count",
          {(HOST_FIRST, "Path"): 7, (HOST_SECOND, "Path"): "C:\\Two\\", **LINK_THERE},
          exchange=r"C:\Two\Vilnor"),
    Place("no separator is put between the host's path and the directory",
          {(HOST_FIRST, "Path"): r"C:\One", **LINK_THERE}, exchange=r"C:\OneVilnor"),
    Place("a host's path with blanks and Swedish letters",
          {(HOST_FIRST, "Path"): "C:\\Tandläkare vid Ån\\", **LINK_THERE},
          exchange=r"C:\Tandläkare vid Ån\Vilnor"),
    Place("without any registration of the host the link program is started alone",
          LINK_THERE, exchange="", boxes=[NO_HOST, "* in WriteSearchPatient"], alone=True,
          created=(HOST_FIRST, HOST_SECOND, HOST_THIRD),
          on_drive_c={**IN_THE_ROOT, "boxes": [NO_HOST]}),
    Place("a missing parent folder is not made, and the link program is started alone",
          {(HOST_FIRST, "Path"): "C:\\Nowhere\\Kestra\\", **LINK_THERE}, exchange="", alone=True,
          boxes=[NO_FOLDER, "* in WriteSearchPatient"],
          on_drive_c={**IN_THE_ROOT, "boxes": [NO_FOLDER]}),

    # --- The link program's registration.
    Place("the link program's registration without a backslash", {**HOST_THERE, **LINK_THERE}),
    Place("the link program's registration with a backslash",
          {**HOST_THERE, (LINK, "Path"): "C:\\Link\\"}),
    Place("a link program's path with blanks is not quoted and is started",
          {**HOST_THERE, (LINK, "Path"): r"C:\Vilnor Link"},
          started=LINK_WITH_BLANKS),
    Place("a registered link program that is not there cannot be started",
          {**HOST_THERE, (LINK, "Path"): r"C:\Gone"}, started="", boxes=[NOT_STARTED],
          request_stays=True),
    Place("a registered link program that is no program cannot be started",
          {**HOST_THERE, (LINK, "Path"): r"C:\NoProgram"}, started="",
          boxes=['"5 Invalid procedure call or argument in StartVilnor"'], request_stays=True),
    Place("the registration counts before the per-user setting",
          {**HOST_THERE, **LINK_THERE, **setting(r"C:\Gone\Link.exe")},
          setting=r"C:\Gone\Link.exe"),

    # --- The per-user setting.
    Place("the per-user setting counts when the registration is missing",
          {**HOST_THERE, **setting(r"C:\Vilnor Link\Link.exe")}, started=LINK_WITH_BLANKS,
          setting=r"C:\Vilnor Link\Link.exe", created=(LINK,)),
    Place("the per-user setting counts when the registration is empty",
          {**HOST_THERE, (LINK, "Path"): "", **setting(r"C:\Link\Link.exe")},
          setting=r"C:\Link\Link.exe"),
    Place("a stale setting is cleared, told of, and tried all the same",
          {**HOST_THERE, **setting(r"C:\Gone\Link.exe")}, started="",
          boxes=[NOT_FOUND, NOT_STARTED], setting="", request_stays=True, created=(LINK,)),
    Place("a setting that names an empty file is told of and kept",
          {**HOST_THERE, **setting(r"C:\Empty\Link.exe")}, started="", boxes=[NOT_FOUND],
          setting=r"C:\Empty\Link.exe", created=(LINK,)),
    Place("a setting that names a folder is told of and kept",
          {**HOST_THERE, **setting(r"C:\Link")}, started="", boxes=[NOT_FOUND],
          setting=r"C:\Link", created=(LINK,)),
    Place("without registration and setting the user is told once, and the directory is made",
          HOST_THERE, started="", boxes=[NOT_FOUND], created=(LINK,)),
    Place("opening Vilnor Link alone asks for no exchange directory",
          {}, started="", boxes=[NOT_FOUND], exchange="", created=(LINK,), call="open"),
]

FOLDERS = ("One", "OneVilnor", "Two", "Three", "Tandläkare vid Ån", "Vilnor Link", "NoProgram",
           "Empty", "Nowhere")
EXCHANGES = (r"C:\Kestra\Vilnor", r"C:\One\Vilnor", r"C:\OneVilnor", r"C:\Two\Vilnor",
             r"C:\Three\Vilnor", r"C:\Tandläkare vid Ån\Vilnor", r"C:\Nowhere\Kestra\Vilnor")


@dataclass
class PlaceOutcome:
    exchange: list
    started: list
    boxes: list
    setting: str | None


class PlaceRunner:
    def __init__(self, computer, database, report):
        self._computer = computer
        self._database = database
        self._report = report

    def _prepare(self, place):
        drive = self._computer.drive
        for folder in FOLDERS:
            shutil.rmtree(drive / folder, ignore_errors=True)
        for folder in ("One", "Two", "Three", "Tandläkare vid Ån", "NoProgram", "Empty"):
            (drive / folder).mkdir()
        shutil.copytree(drive / "Link", drive / "Vilnor Link")
        (drive / "NoProgram" / "Link.exe").write_text("no program")
        (drive / "Empty" / "Link.exe").touch()
        self._computer.clear_exchange()
        self._database.renew()
        self._computer.set_registry(place.registry)

    def play(self, place):
        computer, check = self._computer, self._report.check
        if computer.is_on_drive_c:
            place = replace(place, name=place.name.removeprefix("places: "), **place.on_drive_c)
        self._prepare(place)
        before = {key for key in PLACES if any(key == where for where, _ in place.registry)}
        plan = f"outcome=sent;keep={computer.windows_path(computer.kept)}"
        run = computer.run(*computer.host_command(
            self._database.connection, ["--answer-boxes", "ok", *place.call.split()]), plan=plan)
        check(f"{place.name}: the host ends well", 0, run.status)
        self._report.hold(f"{place.name}: boxes", like(place.boxes, run.boxes),
                          f"expected {place.boxes!r}, found {run.boxes!r}")
        outcome = PlaceOutcome(
            [path for path in EXCHANGES if computer.unix_path(path).is_dir()],
            self._check_start(place), run.boxes,
            computer.registry_text(PER_USER_SETTINGS, "Vilnor"))
        check(f"{place.name}: exchange directory", [place.exchange] if place.exchange else [],
              outcome.exchange)
        check(f"{place.name}: per-user setting", place.setting, outcome.setting)
        if place.created:
            check(f"{place.name}: keys that came into being", list(place.created),
                  [key for key in PLACES if key not in before and computer.has_key(key)])
        return outcome

    def _check_start(self, place):
        """A list with the program that was started, empty if none was."""
        computer = self._computer
        stem = "" if place.alone else REQUEST.removesuffix("xml")
        kept = computer.kept / f"{stem}commandline.txt"
        is_written = place.exchange or (place.started and not place.alone)
        request = computer.unix_path(place.exchange) / REQUEST if is_written else None
        if place.started:
            came = wait_until(lambda: is_whole(kept))
            wait_until(lambda: request is None or not request.exists())
            found = kept.read_text("utf-8").strip() if came else "no start"
            arguments = "" if place.alone else rf' path="{place.exchange}\{REQUEST}"{COMMAND_TAIL}'
            expected = place.started + arguments
            self._report.check(f"{place.name}: command line", expected, found)
        else:
            self._report.check(f"{place.name}: nothing is started", False, computer.kept.exists())
        if request:
            self._report.check(f"{place.name}: the request file stays", place.request_stays,
                               request.exists())
        return [place.started] if place.started and found == expected else []
