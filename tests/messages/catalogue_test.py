"""Checks docs/meddelanden.md against the sources, and that its test would notice a gap."""

import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from catalogue import STEP, Box, Catalogue, noted_boxes

CHECKOUT = Path(__file__).resolve().parents[2]
DOCUMENT = (CHECKOUT / "docs/meddelanden.md").read_text(encoding="utf-8")
PARTS = "\n".join(f"- **{part}.** x" for part in ("Vad har hänt", "Sparat", "Receptionen", "IT"))


def document(*entries):
    return "- `‹filnummer›`: 70, 75\n" + "".join(
        f"\n### {name}\n\n```text\n{text}\n```\n\n{PARTS}\n" for name, text in entries)


def names(box, *entries):
    return Catalogue(document(*entries)).entries_of(box)


def error(text, icon="critical"):
    return Box("Vilnor Link connection", icon, text)


class Messages(unittest.TestCase):
    def test_every_step_of_the_component_has_an_entry_and_no_other(self):
        source = "\n".join(file.read_text(encoding="utf-8") for file in CHECKOUT.glob("src/*/*.cpp"))
        self.assertEqual(set(re.findall(rf'u" ({STEP})(?:\\0\w+)?"', source)), Catalogue(DOCUMENT).steps())

    def test_every_entry_is_complete(self):
        catalogue = Catalogue(DOCUMENT)
        self.assertEqual([], catalogue.problems)
        self.assertGreater(len(catalogue.entries), 25)
        self.assertEqual(len(set(catalogue.numbers)), len(catalogue.numbers))

    def test_no_two_entries_describe_the_same_number_of_a_step(self):
        catalogue = Catalogue(DOCUMENT)
        numbers = {int(row) for row in catalogue.numbers if row.lstrip("-").isdigit()} | {1, -1}
        for step in catalogue.steps():
            for number in numbers:
                self.assertEqual(1, len(catalogue.entries_of(error(f"{number} x {step}", ""))),
                                 f"{number} {step}")

    def test_the_words_of_the_trace_are_those_that_its_page_explains(self):
        words = [word for told in re.findall(r"spåret: ((?:`\w+`(?:, )?)+)", DOCUMENT)
                 for word in re.findall(r"\w+", told)]
        page = (CHECKOUT / "docs/trace.md").read_text(encoding="utf-8")
        self.assertGreater(len(words), 10)
        self.assertEqual([], [word for word in words if f"| `{word}` |" not in page])

    def test_what_the_trace_calls_silent_is_among_the_silent_ends(self):
        page = (CHECKOUT / "docs/trace.md").read_text(encoding="utf-8")
        silent = re.findall(r"^\| `(\w+)` \| .*\bsilent\b.* \|$", page, re.MULTILINE)
        ends = DOCUMENT.partition("\n## Ingenting hände\n")[2]
        self.assertGreater(len(silent), 10)
        self.assertEqual([], [word for word in silent if f"`{word}`" not in ends])

    def test_the_lines_of_a_box_are_those_with_its_number_and_step(self):
        catalogue = Catalogue(document(("A", "‹filnummer› ‹beskrivning› in X\n13 ‹beskrivning› in X\n"
                                             "13 ‹beskrivning› in Y")))
        self.assertEqual(["‹filnummer› in X", "13 in X", "13 in Y"], catalogue.lines())
        for text, lines in (("70 x in X", {"‹filnummer› in X"}), ("13 x in Y", {"13 in Y"}),
                            ("6 x in X", set()), ("En text", set())):
            self.assertEqual(lines, catalogue.lines_of(error(text)), text)

    def test_an_entry_describes_the_boxes_of_its_pattern_alone(self):
        entries = (("A", "‹filnummer› ‹beskrivning› in X\n13 ‹beskrivning› in X"),
                   ("B", "‹annat nummer› ‹beskrivning› in X"), ("C", "En text\n\nmed ‹nummer›"))
        for text, expected in (("70 x in X", ["A"]), ("13 x in X", ["A"]), ("-1 x in X", ["B"]),
                               ("70 x in Y", []), ("x in X", []), ("5 x in Z in X", ["B"]),
                               (r"En text\r\n\r\nmed -7", ["C"]), ("En text", [])):
            self.assertEqual(expected, names(error(text), *entries), text)

    def test_a_box_with_another_title_or_icon_is_not_described(self):
        entry = ("A", "13 ‹beskrivning› in X")
        self.assertEqual([], names(Box("Vilnor", "critical", "13 x in X"), entry))
        self.assertEqual([], names(error("13 x in X", "question"), entry))

    def test_a_box_of_two_entries_is_found_twice(self):
        self.assertEqual(["A", "B"], names(error("13 x in X"), ("A", "13 ‹beskrivning› in X"),
                                           ("B", "‹nummer› ‹beskrivning› in X")))

    def test_a_missing_part_is_a_problem(self):
        self.assertEqual(["A: IT is missing"], Catalogue(
            document(("A", "13 ‹beskrivning› in X")).replace("**IT.**", "IT:")).problems)

    def test_notes_are_read_as_they_are_written(self):
        self.assertEqual({Box("Vilnor", "none", r"a\r\nb"), Box("T", "", "c\td")},
                         noted_boxes("\tnone\ta\\r\\nb\nT\t\tc\td\nT\t\tc\td\n"))

    def test_nothing_noted_is_a_failure(self):
        with tempfile.TemporaryDirectory() as folder:
            run = subprocess.run([Path(__file__).with_name("messages_test"), folder], check=False,
                                 capture_output=True, text=True)
        self.assertEqual(1, run.returncode)
        self.assertIn("not ok boxes of swedish-com_tests: it noted none", run.stdout)
        self.assertNotIn("\nok entry", run.stdout)


if __name__ == "__main__":
    unittest.main()
