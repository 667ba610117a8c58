"""Bad result files, read by the real parser: how the component handles them.

The host reads each directly, so that it receives the component's events. `content` is written where
the link program leaves its result."""

import socket
from dataclasses import dataclass, field

from computer import names_in, wait_until
from databases import Changes
from trip_runner import Outcome, like
from trips import NEW_JOURNAL, NEW_LINK, box

LATIN = "<?xml version='1.0' encoding='ISO-8859-1'?>"
BODY = ("<Result><Cancelled>0</Cancelled><Status>5</Status><UserDefData>4711&amp;12&amp;3"
        "</UserDefData><Id>26100417</Id><UserName>anna</UserName></Result>")
SECRET = "the secret of another file"
ENTERED = [NEW_LINK, NEW_JOURNAL]
DENIED = box("70 Permission denied in ReadNewCase")

# The withdrawn results of the other two readers.
APPLICATION = {"call": "read-new-fhp 71", "file": "OutNewFHP71.xml"}
APPLICATION_BODY = ("<Result><Cancelled>0</Cancelled><Status>7</Status><UserDefData>"
                    "4712&amp;12&amp;3&amp;71&amp;2026-071</UserDefData><Id>2071</Id></Result>")
APPLICATION_GONE = ["- Vilnor 101", "- Journal 501"]
EXISTING = {"call": "read-exist-case 103", "file": "OutExistCase103.xml"}
EXISTING_BODY = "<Result><Status>7</Status><Id>2073</Id></Result>"
EXISTING_GONE = ["- Vilnor 103", "- Journal 503"]


def with_part(name, content):
    """The usual result with one element's content replaced; None leaves the element out."""
    start, end = BODY.index(f"<{name}>"), BODY.index(f"</{name}>")
    element = f"<{name}>{content}" if content is not None else ""
    rest = BODY[end:] if content is not None else BODY[end + len(f"</{name}>"):]
    return (LATIN + BODY[:start] + element + rest).encode("latin-1")


@dataclass
class Result:
    name: str
    content: bytes | None        # None: there is no file
    changes: list = field(default_factory=list)
    stays: bool = False
    renamed: bool = False        # processed, but it could not be deleted
    boxes: list = field(default_factory=list)
    events: int = 0
    call: str = "read-new-case 4711"
    file: str = "OutNewCase4711.xml"
    held: str = ""               # another program keeps the file open with this sharing mode
    read_only: bool = False

    def __post_init__(self):
        self.name = "result file " + self.name

    @property
    def left(self):
        if self.renamed:
            return [self.file.replace("Out", "Done").replace(".xml", " DATE TIME.xml")]
        return [self.file] if self.stays else []


def entered(name, content, **more):
    return Result(name, content, changes=ENTERED, events=1, **more)


def ignored(name, content, **more):
    """Not a document, or not a possible result: no box, and nothing lost."""
    return Result(name, content, stays=True, **more)


def refused(name, content, text):
    return Result(name, content, stays=True, boxes=[box(text + " in XMLReadNewCase")])


def as_it_is(text):
    return (LATIN + text).encode("latin-1")


def with_notes(count):
    """The usual result, preceded by this many notes of a million letters each."""
    return as_it_is(BODY.replace("<Result>", "<Result>" + f"<Note>{'x' * 1_000_000}</Note>" * count))


ENTITY = ('<!DOCTYPE Result [<!ENTITY x SYSTEM "file:///C:/Kestra/secret.txt">]>'
          + BODY.replace("anna", "anna&x;"))
# PORT is replaced by that of a listener on this machine, which nobody may contact.
PORT = b"@PORT@"
CALLING = (f'<!DOCTYPE Result SYSTEM "http://127.0.0.1:{PORT.decode()}/result.dtd" '
           f'[<!ENTITY x SYSTEM "http://127.0.0.1:{PORT.decode()}/x">]>'
           + BODY.replace("anna", "anna&x;"))
CALLING_TYPE = f'<!DOCTYPE Result SYSTEM "http://127.0.0.1:{PORT.decode()}/result.dtd">' + BODY
OUTSIDE_TYPE = '<!DOCTYPE Result SYSTEM "file:///C:/Kestra/secret.dtd">' + BODY
DOUBLINGS = "".join(f'<!ENTITY d{i} "&d{i - 1};&d{i - 1};">' for i in range(1, 31))
BOMB = (f'<!DOCTYPE Result [<!ENTITY d0 "lots">{DOUBLINGS}]>' + BODY.replace("anna", "&d30;"))

NESTED = ("<Envelope><A><Cancelled>0</Cancelled><B><Status>5</Status></B></A><Id>26100417</Id>"
          "<C><UserDefData>4711&amp;12&amp;3</UserDefData><UserName>anna</UserName></C></Envelope>")
REPEATED = BODY.replace(
    "</Result>", "<Status>7</Status><Id>1</Id><Cancelled>1</Cancelled></Result>")

RESULTS = [
    entered("as it should be", as_it_is(BODY)),
    ignored("of no bytes", b""),
    Result("vanished", None),
    ignored("ending too early", as_it_is(BODY[:-4])),
    ignored("not XML at all", b"\x00\x01MZ no XML"),
    ignored("declared UTF-8 with bytes of ISO-8859-1",
            ("<?xml version='1.0' encoding='UTF-8'?>" + BODY.replace("anna", "åsa"))
            .encode("latin-1")),
    entered("in UTF-16", ("\ufeff<?xml version='1.0' encoding='UTF-16'?>" + BODY)
            .encode("utf-16-le")),
    entered("with its elements nested elsewhere", as_it_is(NESTED)),
    entered("with elements repeated, the first counts", as_it_is(REPEATED)),
    entered("without Cancelled", with_part("Cancelled", None)),
    Result("without Status", with_part("Status", None), stays=True),
    refused("with an empty Status", with_part("Status", ""), "13 Type mismatch"),
    refused("with a Status that is no number", with_part("Status", "five"), "13 Type mismatch"),
    refused("with a Status too large", with_part("Status", "70000000000"), "6 Overflow"),
    refused("with a Cancelled that is no number", with_part("Cancelled", "no"),
            "13 Type mismatch"),
    refused("with a practitioner that is no number", with_part("UserDefData", "4711&amp;x&amp;3"),
            "13 Type mismatch"),
    refused("with one separator too few", with_part("UserDefData", "4711&amp;12"),
            "5 Invalid procedure call or argument"),
    ignored("with an outside entity", as_it_is(ENTITY)),
    entered("with an outside document type, which is not read", as_it_is(OUTSIDE_TYPE)),
    entered("with a document type of a server, which is not called", as_it_is(CALLING_TYPE)),
    ignored("with an entity and a document type of a server, which is not called",
            as_it_is(CALLING)),
    ignored("with entities that grow without end", as_it_is(BOMB)),
    ignored("nested 100,000 levels deep", as_it_is("<A>" * 100_000 + BODY + "</A>" * 100_000)),
    entered("of 9 MB", with_notes(9)),
    ignored("of 100 MB, which is more than is read", with_notes(100)),
    ignored("locked by another program", as_it_is(BODY), held="none"),
    Result("being read by another program, entered and not deleted", as_it_is(BODY), held="read",
           changes=ENTERED, events=1, stays=True, boxes=[DENIED]),
    Result("read-only, entered and not deleted", as_it_is(BODY), read_only=True,
           changes=ENTERED, events=1, renamed=True, boxes=[DENIED]),
    ignored("of an application, ending too early", as_it_is(APPLICATION_BODY[:-4]), **APPLICATION),
    ignored("of an application, locked by another program", as_it_is(APPLICATION_BODY),
            held="none", **APPLICATION),
    Result("of an application, read-only, entered and not deleted", as_it_is(APPLICATION_BODY),
           read_only=True, changes=APPLICATION_GONE, events=1, renamed=True,
           boxes=[box("70 Permission denied in ReadNewFHP")], **APPLICATION),
    ignored("of an existing case, ending too early", as_it_is(EXISTING_BODY[:-4]), **EXISTING),
    ignored("of an existing case, locked by another program", as_it_is(EXISTING_BODY),
            held="none", **EXISTING),
    Result("of an existing case, read-only, entered and not deleted", as_it_is(EXISTING_BODY),
           read_only=True, changes=EXISTING_GONE, events=1, renamed=True,
           boxes=[box("70 Permission denied in ReadExistCase")], **EXISTING),
]


def was_called(listener):
    try:
        listener.accept()[0].close()
    except BlockingIOError:
        return False
    return True


class ResultRunner:
    def __init__(self, computer, database, report):
        self._computer = computer
        self._database = database
        self._report = report

    def play(self, result):
        computer, name = self._computer, result.name
        self._database.renew()
        computer.clear_exchange()
        computer.exchange.mkdir()
        (computer.host_folder / "secret.txt").write_text(SECRET)
        (computer.host_folder / "secret.dtd").write_text("<!ELEMENT broken")
        path = computer.exchange / result.file
        listener = socket.create_server(("127.0.0.1", 0))
        listener.setblocking(False)
        content = result.content
        if content is not None:
            content = content.replace(PORT, b"%d" % listener.getsockname()[1])
            path.write_bytes(content)
        if result.read_only:
            path.chmod(0o444)
        changes = Changes(self._database)
        run = self._read(result, path)
        outcome = Outcome(changes.list(), names_in(computer.exchange), run.boxes, len(run.events))
        self._report.check(f"{name}: the host ends well", 0, run.status)
        if content != result.content:
            self._report.hold(f"{name}: nobody is called", not was_called(listener), "a call came")
        listener.close()
        self._report.check(f"{name}: rows", result.changes, outcome.changes)
        self._report.check(f"{name}: files left", result.left, outcome.left)
        if result.stays and path.exists():
            self._report.hold(f"{name}: the file is as it was",
                              path.read_bytes() == content, "it is not")
        self._report.hold(f"{name}: boxes", like(result.boxes, run.boxes),
                          f"expected {result.boxes!r}, found {run.boxes!r}")
        self._report.check(f"{name}: events", ["UpdateJournal"] * result.events, run.events)
        return outcome

    def _read(self, result, path):
        computer = self._computer
        ready, release = computer.work / "held", computer.work / "release"
        holder = None
        if result.held:
            ready.unlink(missing_ok=True)
            release.unlink(missing_ok=True)
            holder = computer.start(r"C:\Kestra\TripHands.exe", "hold", result.held,
                                    *map(computer.windows_path, (path, ready, release)))
            if not wait_until(ready.exists):
                raise RuntimeError(f"nobody holds {path}")
        try:
            return computer.run(*computer.host_command(
                self._database.connection, ["--answer-boxes", "ok", *result.call.split()]))
        finally:
            if holder:
                release.touch()
                computer.finish(holder)
