"""Holds the documents to naming only tests that are there, and files that are there."""

import re
import unittest

from includes import CHECKOUT, sources

DOCUMENTS = sorted([CHECKOUT / "README.md", *CHECKOUT.glob("*.md"), *CHECKOUT.glob("docs/**/*.md")])
_MACRO = re.compile(r"^(?:TYPED_)?TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)", re.MULTILINE)
# `Suite.SaysWhatHolds`, perhaps with an instantiation's name in front.
_TEST = re.compile(r"`(?:\w+/)?([A-Z]\w+)\.([A-Z]\w{11,})(?:/\w+)?`")
_LINK = re.compile(r"\]\(([^)#:]+)(?:#[^)]*)?\)")


def tests():
    return {pair for file in sources(CHECKOUT / "tests")
            for pair in _MACRO.findall(file.read_text(encoding="utf-8"))}


def named_tests(document):
    return set(_TEST.findall(document.read_text(encoding="utf-8")))


class Documents(unittest.TestCase):
    def test_name_tests_that_are_there(self):
        there = tests()
        self.assertGreater(len(there), 500)
        self.assertEqual([], [f"{document.relative_to(CHECKOUT)}: {suite}.{name}"
                              for document in DOCUMENTS
                              for suite, name in sorted(named_tests(document) - there)])

    def test_link_to_files_that_are_there(self):
        self.assertEqual([], [f"{document.relative_to(CHECKOUT)}: {target}"
                              for document in DOCUMENTS
                              for target in _LINK.findall(document.read_text(encoding="utf-8"))
                              if not (document.parent / target).exists()])

    def test_edge_cases_are_each_held_by_something(self):
        for document in CHECKOUT.glob("docs/edge-cases/*.md"):
            self.assertTrue(named_tests(document), document)


if __name__ == "__main__":
    unittest.main()
