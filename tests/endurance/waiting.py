"""Unread results, and how a host finds them."""

import os

from clinic import SENT, WITHDRAWN
from computer import LINK
from trip_runner import USUAL_PLACES

HUNDREDS = 300
MOMENT = "2026-11-16 14.05.00"


def play(run, report):
    waiting = Waiting(run, report)
    waiting.read_at_the_start()
    waiting.read_in_their_order()
    waiting.read_in_their_order_though_killed()
    waiting.read_each_kind()
    waiting.keep_what_the_database_refuses()
    waiting.enter_nothing_twice()
    waiting.read_hundreds(HUNDREDS)
    waiting.leave_what_is_no_result()
    waiting.use_the_drive_of_a_host_without_a_registration()


class Waiting:
    def __init__(self, run, report):
        self._clinic = run.sqlite
        self._computer = run.computer
        self._folder = run.computer.exchange
        self._report = report

    def _put_aside(self, work, moment=MOMENT, age=0):
        """Written `age` seconds ago."""
        self._clinic.put([work])
        file = self._clinic.file(work)
        aside = file.with_name(f"{file.stem} {moment}.xml")
        file.rename(aside)
        os.utime(aside, (aside.stat().st_mtime - age,) * 2)
        return aside

    def _names(self):
        return sorted(file.name for file in self._folder.iterdir())

    def _hold_entered(self, name, works):
        wrong = self._clinic.unfinished(works, self._clinic.rows())
        self._report.hold(name, not wrong, "; ".join(wrong[:5]))

    def read_at_the_start(self):
        """The host was closed before the answers arrived; one of them has since been set aside."""
        self._clinic.renew()
        works = [self._clinic.new_work() for _ in range(3)]
        self._clinic.put(works[:2])
        self._put_aside(works[2])
        host = self._clinic.read_waiting()
        self._hold_entered("the host was closed before the answers came", works)
        self._report.check("what became of each is told", 3,
                           sum(line.endswith(": dealt with") for line in host.lines))
        host = self._clinic.read_waiting()
        self._report.check("nothing waits", 1, host.count("no result waits"))

    def _put_three_of_one_patient(self):
        """A case sent, another sent, the first one withdrawn."""
        self._clinic.renew()
        first, second = self._clinic.new_work(), self._clinic.new_work()
        second.pid = first.pid
        withdrawn = self._clinic.new_work(WITHDRAWN, linked_case=first.case)
        withdrawn.pid, withdrawn.case = first.pid, first.case
        self._put_aside(second, "2026-11-16 14.05.00", age=60)
        self._put_aside(first, "2026-11-17 08.00.00", age=120)
        self._clinic.put([withdrawn])
        return first, second

    def _check_three(self, name, first, second):
        host = self._clinic.read_waiting()
        rows = self._clinic.rows()
        self._report.check(f"three results of one patient, {name}", (True, False, [], []),
                           (self._clinic.is_entered(second, rows), str(first.case) in rows.cases,
                            self._names(), host.boxes))

    def read_in_their_order(self):
        self._check_three("the oldest first", *self._put_three_of_one_patient())

    def read_in_their_order_though_killed(self):
        for entered in (0, 1, 2):
            cases = self._put_three_of_one_patient()
            host = self._clinic.start_reading_waiting()
            host.wait_for_work()
            if entered:
                host.wait_for("event ", entered)
            host.kill()
            self._check_three(f"killed after {entered} of them", *cases)

    def read_each_kind(self):
        self._clinic.renew()
        head = "<?xml version='1.0' encoding='ISO-8859-1'?>"
        texts = {"OutNewFHP77 2026-11-16 14.05.00.xml":
                 "<a><Status>5</Status><UserDefData>4711&amp;12&amp;3&amp;77&amp;2026-077"
                 "</UserDefData><Id>9002</Id><UserName>anna</UserName></a>",
                 "OutExistCase103.xml": "<a><Status>7</Status><Id>2073</Id></a>"}
        for name, text in texts.items():
            (self._folder / name).write_text(head + text, "latin-1")
        self._clinic.read_waiting()
        rows = self._clinic.rows()
        self._report.check("an application and an opened case", ("1", False, []),
                           (rows.cases.get("9002", {}).get("CaseType"), "2073" in rows.cases,
                            self._names()))

    def keep_what_the_database_refuses(self):
        clinic = self._clinic
        clinic.renew()
        works = [clinic.new_work() for _ in range(2)]
        self._put_aside(works[0])
        clinic.put(works[1:])
        before = self._names()
        host = self._read_with("Driver=NoSuchDriver;Database=none")
        self._report.check("the database cannot be opened: each is told and keeps its name",
                           (2, before, 2),
                           (len(host.boxes), self._names(), host.count("waiting ")))
        # This driver opens a missing database and fails at the first statement.
        host = self._read_with("Driver=SQLite3;Database=C:\\none\\none.db")
        again = sum(": set aside again as OutNewCase" in line for line in host.lines)
        self._report.check("statements fail: each is told and set aside again", (2, 2, True),
                           (again, len(self._names()), len(host.boxes) >= 2))
        clinic.read_waiting()
        self._hold_entered("once the database is back all are entered", works)

    def _read_with(self, connection):
        usual, self._clinic.connection = self._clinic.connection, connection
        host = self._clinic.read_waiting()
        self._clinic.connection = usual
        return host

    def enter_nothing_twice(self):
        """The file could not be deleted after its rows were written."""
        clinic = self._clinic
        clinic.renew()
        work = clinic.new_work()
        clinic.put([work])
        clinic.file(work).chmod(0o444)
        clinic.read([work])
        left = list(self._folder.iterdir())
        for file in left:
            file.chmod(0o644)
        host = clinic.read_waiting()
        self._hold_entered("entered but not deleted is not entered twice", [work])
        self._report.check("it has a name that nobody reads", (1, [], True),
                           (len(left), host.boxes, left[0].name.startswith("DoneNewCase")))

    def read_hundreds(self, count):
        self._clinic.renew()
        works = [self._clinic.new_work(SENT) for _ in range(count)]
        for number, work in enumerate(works):
            self._put_aside(work, age=count - number)
        self._clinic.read_waiting()
        self._hold_entered(f"{count} set aside are entered", works)

    def leave_what_is_no_result(self):
        self._clinic.renew()
        texts = {"OutNewCase1.xml": "no xml",
                 "OutNewCase2 2026-11-16 14.05.00.xml": "<a><Status>3</Status>"
                                                        "<UserDefData>2&amp;1&amp;1</UserDefData></a>",
                 "OutNewCase99999999999.xml": "<a/>", "OutOfOrder.xml": "<a/>",
                 "OutNewCase3.xml.bak": "<a/>", "InNewCase4.xml": "<a/>"}
        for name, text in texts.items():
            (self._folder / name).write_text(text, "latin-1")
        host = self._clinic.read_waiting()
        self._report.check("what is no result is left as it is",
                           ({name: text for name, text in texts.items()}, 2),
                           ({file.name: file.read_text("latin-1")
                             for file in self._folder.iterdir()},
                            sum(line.endswith(": left as it is") for line in host.lines)))

    def use_the_drive_of_a_host_without_a_registration(self):
        """With an empty exchange path, requests and results are in the current drive's root."""
        self._clinic.renew()
        work = self._clinic.new_work()
        self._computer.set_registry({place: value for place, value in USUAL_PLACES.items()
                                     if place[0] == LINK})
        result = self._computer.drive / self._clinic.file(work).name
        result.write_text(work.text(), "latin-1")
        host = self._computer.run("cmd", "/c", f"C: && cd \\ && C:\\Kestra\\KestraHost.exe "
                                  f"--answer-boxes ok --connection {self._clinic.connection} "
                                  f"read-new-case {work.pid}")
        self._report.check("without a registration a result is read from the drive's root",
                           (["10001 Did not find Kestra Dental registry information in "
                             "GetVilnorOutputPath"], True, False),
                           ([box.strip('"') for box in host.boxes],
                            self._clinic.is_entered(work, self._clinic.rows()), result.exists()))
        self._computer.set_registry(USUAL_PLACES)
