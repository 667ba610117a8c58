"""The statements for products that are not at hand, taken back to SQLite's: they must make the same rows."""

import re
import sqlite3
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from make_schema import statements

MARKED_TEXT = re.compile(r"'(?:[^']|'')*'")


def rows(script):
    """Of all tables, after the statements."""
    database = sqlite3.connect(":memory:")
    for statement in script:
        database.execute(statement)
    tables = [name for name, in database.execute("select name from sqlite_master where type='table'")]
    found = {name: database.execute(f"select * from {name}").fetchall() for name in tables}
    database.close()
    return found


def from_access(statement):
    statement = re.sub(r"#(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)#", r"'\1'", statement)
    return statement.replace("COUNTER PRIMARY KEY", "INTEGER PRIMARY KEY")


def from_sqlserver(statement):
    statement = re.sub(r"SET IDENTITY_INSERT \w+ (ON; |OFF)", "", statement).rstrip("; ")
    statement = statement.replace("integer IDENTITY PRIMARY KEY", "INTEGER PRIMARY KEY")
    statement = statement.replace("nvarchar(max)", "text")
    # The mark in front of a text, never inside one.
    return "".join(part.removesuffix("N") if index % 2 == 0 else part for index, part in
                   enumerate(re.split(r"('(?:[^']|'')*')", statement)))


class MadeSchema(unittest.TestCase):
    def setUp(self):
        self.expected = rows(statements("sqlite"))
        self.assertEqual(9, len(self.expected))

    def test_of_access_makes_the_same_rows(self):
        script = [from_access(one) for one in statements("access")
                  if not one.startswith(("ALTER TABLE", "DROP TABLE"))]
        self.assertEqual(self.expected, rows(script))

    def test_of_access_has_one_row_for_each_statement(self):
        inserted = [one for one in statements("access") if one.startswith("INSERT")]
        self.assertEqual(sum(map(len, self.expected.values())), len(inserted))

    def test_of_access_has_words_that_it_knows(self):
        text = MARKED_TEXT.sub("", "\n".join(statements("access")))
        for word in ("IF EXISTS", "boolean", "timestamp", " text", "double precision", "IDENTITY"):
            self.assertNotIn(word, text)

    def test_of_sqlserver_makes_the_same_rows(self):
        script = [from_sqlserver(one) for one in statements("sqlserver")
                  if not one.startswith(("SET DATEFORMAT", "DBCC", "IF OBJECT_ID"))]
        self.assertEqual(self.expected, rows(script))

    def test_of_sqlserver_has_words_that_it_knows(self):
        text = MARKED_TEXT.sub("", "\n".join(statements("sqlserver")))
        for word in ("IF EXISTS", "boolean", "timestamp", " text", "TRUE", "FALSE", "PREDECESSOR"):
            self.assertNotIn(word, text)

    def test_gives_out_the_keys_that_the_trips_expect(self):
        self.assertIn("DBCC CHECKIDENT ('Journal', RESEED, 504)", statements("sqlserver"))
        self.assertIn("ALTER TABLE Journal ALTER COLUMN ID COUNTER(505, 1)", statements("access"))


if __name__ == "__main__":
    sys.exit(unittest.main())
