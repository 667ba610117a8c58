"""The host is killed in the middle of its work."""

import random
import statistics
import time

from clinic import CHANGED, SENT, WITHDRAWN
from holds import COMMIT, PLACES, SQLITE_PLACES, PostgresqlHolds, SqliteHolds, work_for

BATCH = 9
ENOUGH = 10  # hosts per kill: some end before they can be killed
REQUESTS = 12
LONG_NAME = 1500


def play(run, report):
    print(f"kill: seed {run.seed}", flush=True)
    for clinic in run.clinics:
        RandomKills(run, report, clinic).play(300 if run.long else 20)
    held_kills(run.sqlite, SqliteHolds(run.sqlite.database.file), SQLITE_PLACES, report,
               10 if run.long else 1)
    held_kills(run.postgresql, PostgresqlHolds(run.postgresql.database), PLACES, report,
               10 if run.long else 1)
    RequestKills(run, report).play(300 if run.long else 10)


class RandomKills:
    """A host reads results of all kinds until it is killed. The next one reads the unfinished results
and new ones, until it is killed, too. Every other host reads what waits, as at its start, including
results that were set aside."""

    def __init__(self, run, report, clinic):
        self._report = report
        self._clinic = clinic
        self._random = random.Random(f"{run.seed} {clinic.product}")
        self._all = []
        self._wrong = []
        self._rounds = self.killed = self.before = self.between = 0

    def play(self, kills):
        clinic = self._clinic
        clinic.renew()
        usual = self._usual_time()
        pending = []
        while self.killed < kills and self._rounds < ENOUGH * kills:
            pending += self._new_batch(BATCH - len(pending))
            host = self._start_reading(pending)
            host.wait_for_work()
            self._rounds += 1
            if self._rounds % 4:
                time.sleep(self._random.uniform(0, usual))
            else:
                # It reports the entered rows just before it deletes the file.
                host.wait_for("event ", self._random.randint(1, BATCH))
            self.killed += host.kill()
            pending = self._look_after_a_kill(pending)
        clinic.read_waiting()
        rows = clinic.rows()
        self._wrong += clinic.unfinished(self._all, rows)
        name = f"{clinic.product}, {kills} random moments"
        print(f"{name} of {usual * 1000:.0f} ms: {self.killed} of {self._rounds} hosts killed, "
              f"{len(self._all)} results; files found not entered {self.before}, entered "
              f"{self.between}", flush=True)
        self._report.check(f"{name}: hosts killed at work", (kills, True),
                           (self.killed, self.before > 0))
        self._report.hold(f"{name}: nothing is lost, halved or doubled", not self._wrong,
                          "; ".join(self._wrong[:5]))

    def _start_reading(self, works):
        under_own_names = all(self._clinic.file(work).exists() for work in works)
        if self._rounds % 2 and under_own_names:
            return self._clinic.start_reading(works)
        for work in works[::3]:
            set_aside(self._clinic.file(work))
        return self._clinic.start_reading_waiting()

    def _new_batch(self, count):
        statuses = self._random.choices([SENT, SENT, CHANGED, WITHDRAWN], k=count)
        batch = [self._clinic.new_work() for status in statuses if status == SENT]
        batch += self._clinic.seeded_works([status for status in statuses if status != SENT])
        self._random.shuffle(batch)
        self._clinic.put(batch)
        self._all += batch
        return batch

    def _usual_time(self):
        """For a host that is not killed."""
        return statistics.median(self._clinic.read(self._new_batch(BATCH)).seconds_at_work
                                 for _ in range(3))

    def _look_after_a_kill(self, works):
        clinic = self._clinic
        rows = clinic.rows()
        self._wrong += clinic.wrong_with(works, rows)
        left = [work for work in works if clinic.waits(work)]
        self.before += sum(not clinic.is_entered(work, rows) for work in left)
        self.between += sum(clinic.is_entered(work, rows) for work in left)
        return left


def set_aside(file):
    if file.exists():
        file.rename(file.with_name(f"{file.stem} 2026-11-16 14.05.00.xml"))


def held_kills(clinic, holds, places, report, times):
    clinic.renew()
    holds.prepare()
    for place in places:
        wrong = []
        for _ in range(times):
            wrong += killed_at(clinic, holds, place)
        report.hold(f"{clinic.product}, held {place}, {times} times", not wrong, "; ".join(wrong[:5]))


def killed_at(clinic, holds, place):
    work = work_for(clinic, place)
    clinic.put([work])
    with holds.at(place):
        host = clinic.start_reading([work])
        held = holds.wait_until_held(host)
        host.kill()
    if not held:
        return [f"the host was not held: {host.lines}"]
    rows = clinic.rows()
    wrong = clinic.wrong_with([work], rows)
    # A server that was asked to commit does so even if the client is gone.
    if place != COMMIT and clinic.is_entered(work, rows):
        wrong.append(f"case {work.case} is entered, though its transaction never ended")
    clinic.read_waiting()
    return wrong + clinic.unfinished([work], clinic.rows())


class RequestKills:
    """Existing requests are rewritten with other names."""

    def __init__(self, run, report):
        self._clinic = run.sqlite
        self._report = report
        self._random = random.Random(f"{run.seed} requests")
        self._folder = run.computer.exchange

    def _start(self, letter):
        names = f"{letter * LONG_NAME} {letter * 9}"
        path = self._clinic.computer.windows_path(self._folder)
        return self._clinic.start_host(
            [f"write-new-case {pid} 12 3 19850312-1234 {names} {path}"
             for pid in range(1, REQUESTS + 1)])

    def _contents(self):
        return {file.name: file.read_bytes() for file in self._folder.glob("*.xml")}

    def _written(self, letter):
        host = self._start(letter)
        host.finish()
        return self._contents(), host.seconds_at_work

    def play(self, kills):
        self._clinic.renew()
        old, _ = self._written("a")
        new, usual = self._written("b")
        torn, rounds, killed, early, unfinished = [], 0, 0, 0, 0
        while killed < kills and rounds < ENOUGH * kills:
            rounds += 1
            for name, content in old.items():
                (self._folder / name).write_bytes(content)
            host = self._start("b")
            host.wait_for_work()
            self._wait_for_the_moment(rounds, host, usual)
            killed += host.kill()
            found = self._contents()
            torn += [name for name in old if found.get(name) not in (old[name], new[name])]
            early += sum(found[name] == old[name] for name in old)
            unfinished += any(self._folder.glob("*.tmp"))
        again, _ = self._written("b")
        name = f"requests, {kills} moments"
        print(f"{name} of {usual * 1000:.0f} ms: {killed} of {rounds} hosts killed, "
              f"{rounds * REQUESTS} requests; files found as they were {early}, hosts killed with a "
              f"file half written {unfinished}", flush=True)
        self._report.check(f"{name}: there are two contents", (REQUESTS, True),
                           (len(old), all(old[name] != new[name] for name in old)))
        self._report.check(f"{name}: hosts killed at work", (kills, True), (killed, unfinished > 0))
        self._report.check(f"{name}: old or new, never torn", [], torn)
        self._report.check(f"{name}: written again, and nothing left beside them", (new, []),
                           (again, list(self._folder.glob("*.tmp"))))

    def _wait_for_the_moment(self, number, host, usual):
        """Every other time: as soon as a file is being written."""
        if number % 2:
            time.sleep(self._random.uniform(0, usual))
        else:
            time.sleep(self._random.uniform(0, usual / 2))
            wait_until_there(self._folder, host)


def wait_until_there(folder, host):
    """Without a pause, because the file exists for only a few milliseconds."""
    while not host.ended and not any(folder.glob("*.tmp")):
        pass
