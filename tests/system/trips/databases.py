"""The host's database for one trip: new, with sample data; and what the trip changed in it."""

import csv
import datetime
import io
import re
import shutil
import sqlite3
import subprocess
import sys

from computer import CHECKOUT

# Table and key column.
TABLES = {"Vilnor": "VilnorId", "Journal": "ID", "VilnorPasient": "PID"}


def schema(product):
    return subprocess.run(
        [sys.executable, CHECKOUT / "tests/schema/make_schema.py", "--product", product],
        check=True, stdout=subprocess.PIPE).stdout.decode("utf-8")


class SqliteDatabase:
    product = "sqlite"
    db_type = "1"

    def __init__(self, computer):
        self._template = computer.work / "template.db"
        self.file = computer.host_folder / "kestra.db"
        with sqlite3.connect(self._template) as connection:
            connection.executescript(schema("sqlite"))
        connection.close()
        self.connection = rf"Driver=SQLite3;Database={computer.windows_path(self.file)}"

    def renew(self):
        shutil.copy(self._template, self.file)

    def execute(self, statement):
        connection = sqlite3.connect(self.file)
        with connection:
            connection.execute(statement)
        connection.close()

    def rows(self, table):
        connection = sqlite3.connect(self.file)
        cursor = connection.execute(f"select * from {table}")
        columns = [column[0] for column in cursor.description]
        rows = [dict(zip(columns, ["NULL" if v is None else str(v) for v in row]))
                for row in cursor]
        connection.close()
        return rows


class PostgresqlDatabase:
    product = "postgresql"
    db_type = "2"

    def __init__(self, socket_folder, port):
        self._server = ["-h", socket_folder, "-p", port, "-U", "vilnor"]
        self.client = ["psql", *self._server, "-d", "clinic", "--quiet", "--no-psqlrc"]
        self._psql("postgres", "create database template_clinic")
        self._psql("template_clinic", schema("postgresql"))
        self.connection = (f"Driver=PostgreSQL Unicode;Server=127.0.0.1;Port={port};"
                           "Database=clinic;Uid=vilnor;ConnSettings=SET DateStyle TO 'ISO, MDY'")

    def _psql(self, database, script):
        return subprocess.run(
            ["psql", *self._server, "-d", database, "--quiet", "--no-psqlrc", "--csv",
             "-P", "null=NULL", "-v", "ON_ERROR_STOP=1"],
            input=script.encode("utf-8"), check=True, stdout=subprocess.PIPE).stdout.decode("utf-8")

    def renew(self):
        self._psql("postgres", "set client_min_messages to warning; "
                   "drop database if exists clinic with (force)")
        self._psql("postgres", "create database clinic template template_clinic")

    def execute(self, statement):
        self._psql("clinic", statement)

    def number(self, query):
        return int(self._psql("clinic", query).split()[1])

    def rows(self, table):
        names = column_names(table)
        answer = csv.DictReader(io.StringIO(self._psql("clinic", f"select * from {table}")))
        return [{names[name]: value for name, value in row.items()} for row in answer]


class MariadbDatabase:
    product = "mariadb"
    db_type = "2"

    def __init__(self, socket, port):
        self._client = ["mariadb", "--no-defaults", f"--socket={socket}", "--user=root", "--batch",
                        "--default-character-set=utf8mb4"]
        self.connection = (f"Driver=MariaDB Unicode;Server=127.0.0.1;Port={port};"
                           "Database=clinic;Uid=vilnor")

    def _run(self, script, *options):
        return subprocess.run([*self._client, *options], input=script.encode("utf-8"), check=True,
                              stdout=subprocess.PIPE).stdout.decode("utf-8")

    def renew(self):
        self._run("drop database if exists clinic; create database clinic")
        self._run(schema("mariadb"), "clinic")

    def execute(self, statement):
        self._run(statement, "clinic")

    def rows(self, table):
        answer = self._run(f"select * from {table}", "clinic")
        return list(csv.DictReader(io.StringIO(answer), delimiter="\t", quoting=csv.QUOTE_NONE))


# The servers' display names, by the options of run_trips.py that locate them.
SERVERS = {"postgresql": ("PostgreSQL", PostgresqlDatabase), "mariadb": ("MariaDB", MariadbDatabase)}


def column_names(table):
    """As spelled in the schema, by their lower-case form, which is all that PostgreSQL returns."""
    source = (CHECKOUT / "tests/schema/host_schema.sql").read_text(encoding="utf-8")
    body = re.search(rf"CREATE TABLE {table} \((.*?)\n\);", source, re.DOTALL)[1]
    return {name.lower(): name for name in re.findall(r"^  (\w+) ", body, re.MULTILINE)}


class Changes:
    """Changes to the tables between its creation and list()."""

    def __init__(self, database):
        self._database = database
        self._began = datetime.datetime.now().replace(microsecond=0)
        self._before = self._all()

    def _all(self):
        return {(table, row[key]): row for table, key in TABLES.items()
                for row in self._database.rows(table)}

    def _value(self, text):
        """A time during the trip becomes "now"."""
        if re.fullmatch(r"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d", text):
            moment = datetime.datetime.fromisoformat(text)
            if self._began <= moment <= datetime.datetime.now():
                return "now"
        return text

    def _columns(self, row, other):
        return " ".join(f"{name}={self._value(value)}" for name, value in row.items()
                        if value != other.get(name, "NULL"))

    def list(self):
        after = self._all()
        lines = []
        for (table, key), row in after.items():
            before = self._before.get((table, key))
            if before is None:
                rest = {name: value for name, value in row.items() if name != TABLES[table]}
                lines.append(f"+ {table} {key}: {self._columns(rest, {})}")
            elif before != row:
                lines.append(f"~ {table} {key}: {self._columns(row, before)}")
        lines += [f"- {table} {key}" for table, key in self._before if (table, key) not in after]
        return lines
