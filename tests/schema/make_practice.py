#!/usr/bin/env python3
"""Makes the host's database of a large practice, or of a part of it.

    make_practice.py --product sqlite --percent 1 --database clinic.db
    make_practice.py --product postgresql --percent 100 | psql -v ON_ERROR_STOP=1 clinic

Tables, indexes and sample data are those of host_schema.sql; the added rows have keys from FIRST_KEY
on. The whole practice has 50,000 patients, each with an application, four links to cases and eight
journal lines, and everything else in proportion. The same part always contains the same rows. Rows are
written visit by visit, as over the years, so that one patient's rows are far apart. The product's
statistics are up to date.
"""

import argparse
import itertools
import sqlite3
import sys
from collections.abc import Iterator
from typing import NamedTuple

sys.dont_write_bytecode = True
from make_schema import PRODUCTS, statements  # noqa: E402

WHOLE_PRACTICE = 50_000  # patients
FIRST_KEY = 100_000
LINKS_PER_PATIENT = 4  # the application's, then three ordinary cases
LINES_PER_PATIENT = 8  # each link's, each after a note by the clinic
ESTIMATE_ROWS = 5  # an application has fewer than these, on average two

# Address records of practitioners and companies.
FIRST_PRACTITIONER_ADDRESS = 30_000
FIRST_COMPANY_ADDRESS = 40_000

FIRST_NAMES = ("Åsa", "René", "Anna", "Göte", "Éva", "Per", "Siv", "Jörgen", "Elsa", "Nils", "Zoë")
LAST_NAMES = ("Öberg", "Lindqvist", "Berg", "Ångström", "Wärn", "Ek", "Nygård", "Holm", "Åhlén")
STREETS = ("Ängsvägen", "Storgatan", "Kyrkbacken", "Sjövägen", "Åkergränd", "Ågatan", "Nygatan")
TOWNS = ("Malmö", "Växjö", "Göteborg", "Linköping", "Karlstad", "Västerås", "Östersund", "Umeå")


class Table(NamedTuple):
    name: str
    columns: str
    rows: Iterator[tuple]


def date(day: int) -> str:
    """A date and time since 2010; a larger `day` gives a later date."""
    year, rest = divmod(day, 336)
    month, day = divmod(rest, 28)
    return f"{2010 + year % 16}-{month + 1:02}-{day + 1:02} {8 + day % 9:02}:{day * 2:02}:00"


def birth_date(patient: int) -> str:
    return f"{1930 + patient % 85}-{patient % 12 + 1:02}-{patient % 28 + 1:02} 00:00:00"


def case_id(link: int) -> str:
    return str(26_000_000 + link)


class Practice:
    def __init__(self, percent: float) -> None:
        self.patients = max(1, round(WHOLE_PRACTICE * percent / 100))
        self.practitioners = max(1, self.patients // 1000)
        self.companies = max(1, self.patients // 5000)
        self.users = max(1, self.patients // 100)
        self.postcodes = max(1, self.patients // 10)

    def tables(self) -> list[Table]:
        return [
            Table("Postadresseregister", "Postnr, Poststedsnavn", self.postcode_rows()),
            Table("Pasient",
                  "ID, Fornavn, Navn, fDato, PersNr, Code1, adr1, adr2, postnr, organizationNo, "
                  "tlfPrivat",
                  itertools.chain(self.patient_rows(), self.practitioner_addresses(),
                                  self.company_addresses())),
            Table("Worker", "ID, RID, ToothSystem, ReseptID, IDArkiv", self.practitioner_rows()),
            Table("company", "id, idarkiv, levno", self.company_rows()),
            Table("SEPrerequest",
                  "SEPrerequestID, PID, BID, RID, RegDate, CaseNo, Inlay, Orthodontics, Par16, "
                  "IncreasedComp, Aids, TimeCharge, Implant, TwoStepTrial, Voluntary, Compl, LAF, "
                  "HighExpCover, LSP, NoOfXRay, NoOfOPG, SentBy, NoOfModels, NoOfPhoto, "
                  "NoOfCertificate, EstimateOfCost, PrevDentalCare, Caries, perio, Apikal, "
                  "Anamnes, PlanTreatm, PlanTreatmUJaw, PlanTreatmLJaw, TimeEstimate81, "
                  "TimeEstimateDentalTechnic, Notes",
                  self.application_rows()),
            Table("SEPreRequestEstimateRows",
                  "SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo, InternalCode, Debit, "
                  "IncrComp, NoOf, Amount, RegDate",
                  self.estimate_rows()),
            Table("Journal",
                  "ID, PID, Tekst, BID, RID, Dato, KODE, Status, Fakturert, RefTBID",
                  self.journal_rows()),
            Table("Vilnor",
                  "VilnorId, PID, BID, RID, FHP_ID, CaseId, CaseType, Journal_ID, StatusCode, "
                  "VilnorUser, RegDate",
                  self.link_rows()),
            Table("VilnorPasient", "PID, UserName", self.user_rows()),
        ]

    def practitioner(self, patient: int) -> int:
        return FIRST_KEY + patient % self.practitioners

    def company(self, patient: int) -> int:
        return FIRST_KEY + patient % self.companies

    def postcode(self, number: int) -> str:
        return str(10_001 + number % self.postcodes * 16)

    def postcode_rows(self) -> Iterator[tuple]:
        for number in range(self.postcodes):
            yield self.postcode(number), TOWNS[number % len(TOWNS)]

    def patient_rows(self) -> Iterator[tuple]:
        for n in range(self.patients):
            yield (FIRST_KEY + n, FIRST_NAMES[n % 11], LAST_NAMES[n % 9], birth_date(n),
                   f"{n % 10_000:04}", n % 30, f"{STREETS[n % 7]} {n % 90 + 1}", None,
                   self.postcode(n), None, f"031-555 {n % 100:02} {n % 89:02}")

    def practitioner_addresses(self) -> Iterator[tuple]:
        for n in range(self.practitioners):
            yield (FIRST_PRACTITIONER_ADDRESS + n, FIRST_NAMES[n % 11], LAST_NAMES[n % 9],
                   *[None] * 8)

    def company_addresses(self) -> Iterator[tuple]:
        for n in range(self.companies):
            yield (FIRST_COMPANY_ADDRESS + n, None, f"Tandläkarna {LAST_NAMES[n % 9]} AB", None,
                   None, None, f"{STREETS[n % 7]} {n + 1}", f"Box {n + 1}", self.postcode(n),
                   f"559900-{n:04}", "031-555 10 00")

    def practitioner_rows(self) -> Iterator[tuple]:
        for n in range(self.practitioners):
            yield (FIRST_KEY + n, self.company(n), 1, f"R-{n:04}", FIRST_PRACTITIONER_ADDRESS + n)

    def company_rows(self) -> Iterator[tuple]:
        for n in range(self.companies):
            yield FIRST_KEY + n, FIRST_COMPANY_ADDRESS + n, f"L-{n:04}"

    def application_rows(self) -> Iterator[tuple]:
        for n in range(self.patients):
            tooth = f"{n % 4 + 1}{n % 8 + 1}"
            yield (FIRST_KEY + n, FIRST_KEY + n, self.practitioner(n), self.company(n),
                   date(n * 5376 // self.patients), f"2026-{n}",
                   *[n % (flag + 2) == 0 for flag in range(13)], n % 6, n % 2, "brev", n % 3, n % 4,
                   n % 2, 1, f"<{tooth}>krona 1999</{tooth}><36>fyllning</36>",
                   "<14>MO</14><46>D</46>", f"<{tooth}>ficka 6 mm</{tooth}>",
                   "<22>periapikal förändring</22>",
                   "Värk vid tuggning. Överkänslig mot penicillin.",
                   f"<{tooth}>304 305</{tooth}><36>101 102 103</36>", " 501 502", "601", "90 min",
                   "3 tim", "Patienten önskar snabb handläggning.")

    def estimate_rows(self) -> Iterator[tuple]:
        key = itertools.count(FIRST_KEY)
        for n in range(self.patients):
            for row in range(n % ESTIMATE_ROWS):
                yield (next(key), FIRST_KEY + n, 801 + row, f"K{row}", "Ä", False, 1,
                       1000.5 + n % 4000, date(n * 5376 // self.patients))

    def journal_rows(self) -> Iterator[tuple]:
        for line in range(LINES_PER_PATIENT * self.patients):
            visit, n = divmod(line, self.patients)
            person = FIRST_KEY + n
            day = date(line * 5376 // (LINES_PER_PATIENT * self.patients))
            people = self.practitioner(n), self.company(n)
            if visit % 2 == 0:
                yield (FIRST_KEY + line, person, "Undersökning, inga åtgärder", *people, day, 101,
                       "U", 0, 0)
                continue
            link = visit // 2 * self.patients + n
            text = f"Ärende upprättat i Vilnor Link ref.nr {case_id(link)}"
            if visit == 1:
                text = (f"Förhandsprövning, ärendenr: 2026-{n} överförd till Vilnor Link ref.nr "
                        f"{case_id(link)}")
            yield (FIRST_KEY + line, person, text, *people, day, 22302, "U", 0, FIRST_KEY + link)

    def link_rows(self) -> Iterator[tuple]:
        for link in range(LINKS_PER_PATIENT * self.patients):
            visit, n = divmod(link, self.patients)
            line = (2 * visit + 1) * self.patients + n
            application, case_type = (FIRST_KEY + n, 1) if visit == 0 else (None, 9)
            yield (FIRST_KEY + link, FIRST_KEY + n, self.practitioner(n), self.company(n),
                   application, case_id(link), case_type, FIRST_KEY + line, 5, "bjorn.ek",
                   date(line * 5376 // (LINES_PER_PATIENT * self.patients)))

    def user_rows(self) -> Iterator[tuple]:
        for n in range(self.users):
            yield FIRST_KEY + n, f"användare.{n}"


def schema(product: str) -> tuple[list[str], list[str]]:
    """The statements before and after the rows: creating indexes is faster at the end."""
    everything = statements(product)
    indexes = [statement for statement in everything if statement.startswith("CREATE INDEX")]
    return [statement for statement in everything if statement not in indexes], indexes


def make_sqlite(practice: Practice, path: str) -> None:
    before, after = schema("sqlite")
    with sqlite3.connect(path) as database:
        database.execute("PRAGMA synchronous = OFF")
        for statement in before:
            database.execute(statement)
        for table in practice.tables():
            places = ", ".join("?" * len(table.columns.split(",")))
            database.executemany(
                f"INSERT INTO {table.name} ({table.columns}) VALUES ({places})", table.rows)
        for statement in (*after, "ANALYZE"):
            database.execute(statement)
    database.close()


def copy_field(field: object) -> str:
    return r"\N" if field is None else str(field)


def make_postgresql(practice: Practice, out) -> None:
    before, after = schema("postgresql")
    out.write(f"{PRODUCTS['postgresql']['begin']}\n")
    out.writelines(f"{statement};\n" for statement in before)
    for table in practice.tables():
        out.write(f"COPY {table.name} ({table.columns}) FROM STDIN;\n")
        out.writelines("\t".join(map(copy_field, row)) + "\n" for row in table.rows)
        out.write("\\.\n")
        key = table.columns.split(",")[0]
        if f"{key} {PRODUCTS['postgresql']['identity']}" in "\n".join(before):
            out.write(f"SELECT setval(pg_get_serial_sequence('{table.name}', lower('{key}')), "
                      f"max({key})) FROM {table.name} \\g /dev/null\n")
    out.writelines(f"{statement};\n" for statement in after)
    out.write("COMMIT;\nVACUUM ANALYZE;\n")


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--product", required=True, choices=("postgresql", "sqlite"))
    parser.add_argument("--percent", type=float, default=100, help="of the whole practice")
    parser.add_argument("--database", help="the SQLite file to make")
    arguments = parser.parse_args()
    practice = Practice(arguments.percent)
    if arguments.product == "sqlite":
        if not arguments.database:
            parser.error("--database says where SQLite's file goes")
        make_sqlite(practice, arguments.database)
    else:
        sys.stdout.reconfigure(encoding="utf-8")
        make_postgresql(practice, sys.stdout)


if __name__ == "__main__":
    main()
