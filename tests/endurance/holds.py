"""Points in a result's transaction at which another database client makes the host wait."""

import contextlib
import sqlite3
import subprocess

from clinic import CHANGED, WITHDRAWN
from computer import wait_until

LINK_INSERTED = "after the link's insert"
LINE_UPDATED = "after the journal line's update"
COMMIT = "at the commit"

# PostgreSQL: triggers that wait for an advisory lock, one per point.
PLACES = {
    "before the link's insert": "trigger {} before insert on Vilnor",
    LINK_INSERTED: "trigger {} after insert on Vilnor",
    "after the journal line's insert": "trigger {} after insert on Journal",
    "after the link's update": "trigger {} after update on Vilnor",
    LINE_UPDATED: "trigger {} after update on Journal",
    "after the journal line's delete": "trigger {} after delete on Journal",
    "after the link's delete": "trigger {} after delete on Vilnor",
    COMMIT: "constraint trigger {} after insert or update or delete on Vilnor "
            "deferrable initially deferred",
}
HOLD = ("create function hold() returns trigger language plpgsql as $$ begin "
        "perform pg_advisory_xact_lock_shared(tg_argv[0]::int); return coalesce(new, old); end $$")


def work_for(clinic, place):
    """A result whose transaction reaches this point."""
    if place == LINE_UPDATED:
        return clinic.seeded_works([CHANGED])[0]
    if "delete" in place:
        return clinic.seeded_works([WITHDRAWN])[0]
    return clinic.new_work()


class PostgresqlHolds:
    """The server's list of locks shows the waiting host."""

    waiting = "select count(*) from pg_locks where not granted"

    def __init__(self, database):
        self._database = database

    def prepare(self):
        self._database.execute(HOLD)
        for number, place in enumerate(PLACES):
            self._database.execute(f"create {PLACES[place].format(f'hold_{number}')} "
                                   f"for each row execute function hold({number})")

    @contextlib.contextmanager
    def at(self, place):
        number = list(PLACES).index(place)
        with self.by(f"select pg_advisory_lock({number})"):
            yield

    @contextlib.contextmanager
    def by(self, statement):
        """Another client that has executed the statement in a transaction that stays open."""
        client = subprocess.Popen([*self._database.client, "--tuples-only"], text=True,
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL)
        client.stdin.write(f"begin; {statement}; \\echo held\n")
        client.stdin.flush()
        while client.stdout.readline().strip() != "held":
            if client.poll() is not None:
                raise RuntimeError(f"refused: {statement}")
        try:
            yield
        finally:
            # The server may have disconnected this client, too.
            with contextlib.suppress(BrokenPipeError):
                client.communicate()

    def wait_until_held(self, host):
        host.wait_for_work()
        return wait_until(lambda: self._database.number(self.waiting) > 0 or host.ended) \
            and not host.ended


SQLITE_PLACES = {"before the link's insert": "begin immediate",
                 COMMIT: "begin; select count(*) from Vilnor"}


class SqliteHolds:
    """Another client writes, or reads while the host is about to commit."""

    def __init__(self, file):
        self._file = file

    def prepare(self):
        pass

    @contextlib.contextmanager
    def at(self, place):
        client = sqlite3.connect(self._file, isolation_level=None)
        for statement in SQLITE_PLACES[place].split(";"):
            client.execute(statement).fetchall()
        try:
            yield
        finally:
            client.close()

    def wait_until_held(self, host):
        """A host waiting to commit keeps new readers out. One waiting for its first insert shows no sign, so
it gets a moment."""
        host.wait_for_work()
        return not wait_until(lambda: self._keeps_readers_out() or host.ended, 1) or not host.ended

    def _keeps_readers_out(self):
        client = sqlite3.connect(self._file, timeout=0)
        try:
            client.execute("select count(*) from Vilnor").fetchall()
            return False
        except sqlite3.OperationalError:
            return True
        finally:
            client.close()
