"""While a result is entered, the database disappears, refuses or delays: the user is told, nothing of
the result is in the database, its file waits, and the same host's next result is entered."""

from holds import (COMMIT, LINE_UPDATED, LINK_INSERTED, PLACES, PostgresqlHolds, SqliteHolds,
                   work_for)

CUT = ("select count(pg_terminate_backend(pid)) from pg_locks where not granted "
       "and pid <> pg_backend_pid()")
MANY = 15  # results: more than fit into a page of the journal that is filled to a tenth


def play(run, report):
    faults = Faults(run, report)
    times = 5 if run.long else 1
    for place in PLACES if run.long else (LINK_INSERTED, LINE_UPDATED, COMMIT):
        faults.play(f"connection cut {place}", times, faults.cut, place)
    for place in PLACES if run.long else (LINK_INSERTED,):
        faults.play(f"stopped {place} and started again", times, faults.restart, place, "stop")
        faults.play(f"crashed {place} and started again", times, faults.restart, place, "crash")
        faults.play(f"stopped {place} for longer", times, faults.stay_away, place)
    for name, statement in LOCKS.items():
        faults.play(f"{name} for a while", times, faults.lock_for_a_while, statement)
        faults.play(f"{name} for too long", times, faults.lock_for_too_long, statement)
    faults.play("disk full", times, faults.fill_disk)
    report.hold("sqlite, 1 times: written by another client for too long",
                *outcome(sqlite_lock(run.sqlite)))


LOCKS = {"the journal locked": "lock table Journal in exclusive mode",
         "the links locked": "lock table Vilnor in share mode"}


def outcome(wrong):
    return not wrong, "; ".join(wrong[:5])


def told(host, count):
    """Problems with the boxes, of which each failed result must show one."""
    return [] if len(host.boxes) == count else [f"{len(host.boxes)} boxes, not {count}: {host.boxes}"]


class Faults:
    """Each fault occurs while a host is processing the first of two results. It returns what was wrong
afterwards, as a list of sentences."""

    def __init__(self, run, report):
        self._report = report
        self._server = run.server
        self._clinic = run.postgresql
        self._holds = PostgresqlHolds(run.postgresql.database)
        self._released = run.computer.work / "boxes released"

    def play(self, name, times, strike, *arguments):
        self._clinic.renew()
        self._holds.prepare()
        wrong = []
        for _ in range(times):
            wrong += strike(*arguments)
        self._report.hold(f"postgresql, {times} times: {name}", *outcome(wrong))

    def _works(self, place):
        works = [work_for(self._clinic, place), self._clinic.new_work()]
        self._clinic.put(works)
        return works

    def _held(self, host):
        return [] if self._holds.wait_until_held(host) else [f"the host was not held: {host.lines}"]

    def _look(self, works, failed, host):
        """What is wrong after the fault; then everything is read again."""
        clinic = self._clinic
        rows = clinic.rows()
        wrong = told(host, len(failed)) + clinic.wrong_with(works, rows)
        for work in works:
            if clinic.is_entered(work, rows) == (work in failed):
                wrong.append(f"case {work.case} is {'not ' if work not in failed else ''}entered")
            if clinic.waits(work) != (work in failed):
                wrong.append(f"the file of case {work.case} is {'not ' if work in failed else ''}there")
        again = clinic.read_waiting()
        return wrong + told(again, 0) + clinic.unfinished(works, clinic.rows())

    def cut(self, place):
        works = self._works(place)
        with self._holds.at(place):
            host = self._clinic.start_reading(works)
            wrong = self._held(host)
            self._clinic.database.number(CUT)
            host.wait_for("return")
        host.finish()
        return wrong + self._look(works, works[:1], host)

    def restart(self, place, word):
        works = self._works(place)
        self._released.unlink(missing_ok=True)
        with self._holds.at(place):
            host = self._clinic.start_reading(
                works, "--keep-boxes", "--release-boxes",
                self._clinic.computer.windows_path(self._released))
            wrong = self._held(host)
            self._server.order(word)
        host.wait_for("box ")
        self._server.order("start")
        self._released.touch()
        host.finish()
        return wrong + self._look(works, works[:1], host)

    def stay_away(self, place):
        works = self._works(place)
        with self._holds.at(place):
            host = self._clinic.start_reading(works)
            wrong = self._held(host)
            self._server.order("stop")
        host.finish()
        self._server.order("start")
        return wrong + self._look(works, works, host)

    def lock_for_a_while(self, statement):
        works = self._works(LINK_INSERTED)
        with self._holds.by(statement):
            host = self._clinic.start_reading(works)
            wrong = self._held(host)
        host.finish()
        return wrong + self._look(works, [], host)

    def lock_for_too_long(self, statement):
        database = self._clinic.database
        database.execute("alter database clinic set lock_timeout = 500")
        works = self._works(LINK_INSERTED)
        with self._holds.by(statement):
            host = self._clinic.start_reading(works)
            host.wait_for("return")
        host.finish()
        database.execute("alter database clinic reset lock_timeout")
        return self._look(works, works[:1], host)

    def fill_disk(self):
        clinic, database = self._clinic, self._clinic.database
        database.execute(f"create tablespace small location '{self._server.small_disk}'")
        for table in ("Vilnor", "Journal"):
            database.execute(f"alter table {table} set tablespace small")
        # The journal soon needs a new page, after a link has already been inserted.
        database.execute("alter table Journal set (fillfactor = 10)")
        database.execute("create table filler (x text) tablespace small")
        database.execute("do $$ begin "
                         "insert into filler select repeat('x', 100) from generate_series(1, 99999); "
                         "raise 'the small disk is too large'; "
                         "exception when disk_full then null; end $$")
        works = [clinic.new_work() for _ in range(MANY)]
        clinic.put(works)
        host = clinic.read(works)
        database.execute("drop table filler")
        rows = clinic.rows()
        failed = [work for work in works if not clinic.is_entered(work, rows)]
        wrong = self._look(works, failed, host)
        if not failed or "No space left" not in "".join(host.boxes):
            wrong.append(f"the disk was not full for the host: {host.boxes[:3]}")
        clinic.renew()
        database.execute("drop tablespace small")
        self._holds.prepare()
        return wrong


def sqlite_lock(clinic):
    clinic.renew()
    work = clinic.new_work()
    clinic.put([work])
    holds = SqliteHolds(clinic.database.file)
    with holds.at("before the link's insert"):
        host = clinic.read([work])
    wrong = told(host, 1) + clinic.wrong_with([work], clinic.rows())
    clinic.read_waiting()
    return wrong + clinic.unfinished([work], clinic.rows())
