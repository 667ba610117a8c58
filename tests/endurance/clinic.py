"""A clinic under stress: starting, watching and killing hosts, the results that they must enter, and
what must always hold in the database."""

import collections
import contextlib
import os
import signal
import subprocess
import threading
import time
from dataclasses import dataclass, field
from pathlib import Path

from computer import BOUND, note_boxes, output_of, wait_until
from databases import PostgresqlDatabase

KESTRA_HOST = "C:\\Kestra\\KestraHost.exe"
JOURNAL_CODE = "22302"
ORDINARY_CASE = 9
SENT, CHANGED, WITHDRAWN = 5, 1, 7
OTHER_CLIENTS = ("select count(*) from pg_stat_activity where datname = 'clinic' "
                 "and backend_type = 'client backend' and pid <> pg_backend_pid()")


def descendants(pid):
    children = collections.defaultdict(list)
    for entry in Path("/proc").iterdir():
        if entry.name.isdigit():
            try:
                # The name in parentheses may contain anything.
                parent = (entry / "stat").read_text("utf-8", "replace").rpartition(")")[2].split()[1]
            except OSError:
                continue
            children[int(parent)].append(int(entry.name))
    found = [pid]
    for each in found:
        found += children[each]
    return found


def is_kestra_host(pid):
    return Path(f"/proc/{pid}/cmdline").read_bytes().startswith(KESTRA_HOST.encode())


class Host:
    """A running host process; its lines are collected while it runs."""

    def __init__(self, computer, command):
        self._process = computer.start(*command)
        self.lines = []
        self._times = []
        self._news = threading.Condition()
        self._handle = None
        self._pid = None
        self._reader = threading.Thread(target=self._read)
        self._reader.start()

    def _read(self):
        rest = b""
        for piece in output_of(self._process):
            *lines, rest = (rest + piece).split(b"\n")
            for line in lines:
                self._add(line.decode("utf-8", "replace").rstrip("\r"))
        self._process.stdout.close()
        self._add("")

    def _add(self, line):
        note_boxes([line])
        with self._news:
            self.lines.append(line)
            self._times.append(time.monotonic())
            self._news.notify_all()

    def count(self, word):
        return sum(line.startswith(word) for line in self.lines)

    @property
    def seconds_at_work(self):
        """From its first call to the return of the last one."""
        times = [moment for line, moment in zip(self.lines, self._times)
                 if line.startswith(("call ", "return"))]
        return times[-1] - times[0]

    @property
    def boxes(self):
        return [line for line in self.lines if line.startswith("box ")]

    @property
    def ended(self):
        return self._process.poll() is not None

    def wait_for(self, word, count=1):
        """Waits for this many lines with this beginning; false if the host ends without them."""
        with self._news:
            self._news.wait_for(lambda: self.count(word) >= count or "" in self.lines, BOUND)
        return self.count(word) >= count

    def wait_for_work(self):
        """Waits for its first call; from then on it can be killed at any time."""
        self.wait_for("call ")
        with contextlib.suppress(OSError, StopIteration):  # it has ended already
            self._pid = next(filter(is_kestra_host, descendants(self._process.pid)))
            self._handle = os.pidfd_open(self._pid)

    def peak_memory(self):
        """Its peak memory so far in bytes, 0 if it has ended."""
        with contextlib.suppress(OSError):
            for line in Path(f"/proc/{self._pid}/status").read_text("utf-8").splitlines():
                if line.startswith("VmHWM:"):
                    return int(line.split()[1]) * 1024
        return 0

    def kill(self):
        """Kills it without a chance to clean up. False if it had already ended."""
        if self._handle is not None:
            with contextlib.suppress(ProcessLookupError):
                signal.pidfd_send_signal(self._handle, signal.SIGKILL)
            os.close(self._handle)
        return self.finish() == -signal.SIGKILL

    def finish(self):
        self._process.wait(BOUND)
        self._reader.join()
        return self._process.returncode


@dataclass
class Work:
    """A result file and the rows that it concerns."""

    pid: int
    case: int
    status: int = SENT
    bid: int = 12
    rid: int = 3
    user: str = "anna"
    linked_case: int = 0  # of the changed or withdrawn link

    def text(self):
        return ("<?xml version='1.0' encoding='ISO-8859-1'?><Result><Cancelled>0</Cancelled>"
                f"<Status>{self.status}</Status><UserDefData>{self.pid}&amp;{self.bid}&amp;{self.rid}"
                f"</UserDefData><Id>{self.case}</Id><UserName>{self.user}</UserName></Result>")

    def link(self):
        """Columns of the new link."""
        return {"PID": str(self.pid), "CaseId": str(self.case), "BID": str(self.bid),
                "RID": str(self.rid), "VilnorUser": self.user, "StatusCode": str(SENT)}


@dataclass
class Rows:
    links: list
    journal: list
    cases: dict = field(default_factory=dict)

    def __post_init__(self):
        self.cases = {link["CaseId"]: link for link in self.links}


class Clinic:
    def __init__(self, computer, database):
        self.computer = computer
        self.database = database
        self.product = database.product
        self.connection = database.connection
        self._next = 0
        self._seeds = 0

    def renew(self):
        self.database.renew()
        self.computer.clear_exchange()
        self.computer.exchange.mkdir()

    # --- Results.

    def new_work(self, status=SENT, **more):
        """A result for its own patient."""
        self._next += 1
        return Work(pid=100_000 + self._next, case=30_000_000 + self._next, status=status, **more)

    def seeded_works(self, statuses):
        """Results for existing links."""
        works, links, lines = [], [], []
        for status in statuses:
            self._seeds += 1
            key = -self._seeds  # the database assigns positive ones
            case = 40_000_000 + self._seeds
            work = self.new_work(status, linked_case=case)
            if status == WITHDRAWN:
                work.case = case
            works.append(work)
            links.append(f"({key}, {work.pid}, 12, 3, '{case}', {ORDINARY_CASE}, {key}, {SENT})")
            lines.append(f"({key}, {work.pid}, 'Ärende ref.nr !{case}', 12, 3, {JOURNAL_CODE}, 'U', "
                         f"0, {key})")
        if works:
            self.database.execute(
                "insert into Journal (ID, PID, Tekst, BID, RID, KODE, Status, Fakturert, RefTBID) "
                f"values {', '.join(lines)}")
            self.database.execute(
                "insert into Vilnor (VilnorId, PID, BID, RID, CaseId, CaseType, Journal_ID, "
                f"StatusCode) values {', '.join(links)}")
        return works

    def file(self, work):
        return self.computer.exchange / f"OutNewCase{work.pid}.xml"

    def waits(self, work):
        """Under its own name or set aside."""
        return any(self.computer.exchange.glob(f"OutNewCase{work.pid}*.xml"))

    def put(self, works):
        for work in works:
            self.file(work).write_text(work.text(), "latin-1")

    # --- Hosts.

    def start_host(self, calls, *options):
        """`calls` is a list of operations with their arguments, which one session makes in turn."""
        words = " --then ".join(calls).split()
        return Host(self.computer, self.computer.host_command(
            self.connection, ["--dbtype", self.database.db_type, *options, *words]))

    def start_reading(self, works, *options):
        return self.start_host([f"read-new-case {work.pid}" for work in works],
                               *(options or ("--answer-boxes", "ok")))

    def read(self, works):
        """Reads all the results completely."""
        host = self.start_reading(works)
        host.finish()
        return host

    def start_reading_waiting(self):
        return self.start_host(["read-waiting"], "--answer-boxes", "ok")

    def read_waiting(self):
        """Reads every result, as a host does when it starts."""
        host = self.start_reading_waiting()
        host.finish()
        return host

    # --- What must hold.

    def rows(self):
        self._wait_for_the_dead()
        return Rows(self.database.rows("Vilnor"), self.database.rows("Journal"))

    def _wait_for_the_dead(self):
        """The server takes a moment to notice that a client is gone."""
        if isinstance(self.database, PostgresqlDatabase):
            wait_until(lambda: self.database.number(OTHER_CLIENTS) == 0)

    def is_entered(self, work, rows):
        if work.status == SENT:
            return str(work.case) in rows.cases
        if work.status == CHANGED:
            return rows.cases.get(str(work.case), {}).get("StatusCode") == str(CHANGED)
        return str(work.linked_case) not in rows.cases

    def wrong_with(self, works, rows):
        """What must never happen, whatever became of the host: a list of sentences."""
        return [*wrong_rows(rows), *(
            f"the result of case {work.case} is lost: no rows, no file" for work in works
            if not self.is_entered(work, rows) and not self.waits(work))]

    def unfinished(self, works, rows):
        """What is wrong at the end."""
        wrong = self.wrong_with(works, rows)
        for work in works:
            if not self.is_entered(work, rows):
                wrong.append(f"case {work.case} has not been entered")
            elif work.status == SENT:
                found = rows.cases[str(work.case)]
                wrong += [f"case {work.case}: {name} is {found[name]}, not {value}"
                          for name, value in work.link().items() if found[name] != value]
            if self.waits(work):
                wrong.append(f"the file of case {work.case} is still there")
        return wrong


def wrong_rows(rows):
    lines = {line["ID"]: line for line in rows.journal}
    links = {link["VilnorId"]: link for link in rows.links}
    for key, link in links.items():
        line = lines.get(link["Journal_ID"])
        if line is None:
            yield f"link {key} has no journal line, its Journal_ID is {link['Journal_ID']}"
        elif line["RefTBID"] != key or line["PID"] != link["PID"]:
            yield f"link {key} has the journal line of another"
        elif not line["Tekst"].endswith(link["CaseId"]):
            yield f"link {key} and its journal line differ: {link['CaseId']}, {line['Tekst']}"
    for key, line in lines.items():
        if line["KODE"] == JOURNAL_CODE and line["RefTBID"] not in links:
            yield f"journal line {key} has no link"
    yield from twice("case", [(link["PID"], link["CaseId"]) for link in rows.links])
    yield from twice("journal line of link",
                     [line["RefTBID"] for line in rows.journal if line["KODE"] == JOURNAL_CODE])


def twice(what, keys):
    return [f"{what} {key} is there {count} times"
            for key, count in collections.Counter(keys).items() if count > 1]


class Server:
    """The PostgreSQL server, ended with this program."""

    def __init__(self):
        program = Path(__file__).resolve().parent / "postgresql_server"
        self._process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                         text=True)
        started = self._process.stdout.readline().split()
        if len(started) != 3:
            raise RuntimeError("PostgreSQL did not start")
        self.socket_folder, self.port, self.small_disk = started

    def order(self, word):
        """stop, crash or start"""
        self._process.stdin.write(word + "\n")
        self._process.stdin.flush()
        if self._process.stdout.readline() != "done\n":
            raise RuntimeError(f"the server did not {word}")

    def end(self):
        self._process.stdin.close()
        self._process.wait(60)
