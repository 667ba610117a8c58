"""Checks that tests and files named in the documents exist."""

import re
import unittest

from includes import CHECKOUT, sources
from rooms import ROOMS

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

    def test_link_to_every_picture(self):
        pictures = {file.name for file in (CHECKOUT / "docs/images").iterdir()}
        documents = [*DOCUMENTS, *CHECKOUT.glob("sdk/*.md"), *CHECKOUT.glob("tools/*/*.md")]
        linked = {name for document in documents for name in
                  re.findall(r"images/([\w-]+\.png)\)", document.read_text(encoding="utf-8"))}
        self.assertEqual(pictures, linked)

    def test_edge_cases_are_each_held_by_something(self):
        for document in CHECKOUT.glob("docs/edge-cases/*.md"):
            self.assertTrue(named_tests(document), document)

    def test_the_room_tables_are_those_of_the_check(self):
        rows = re.findall(r"^\| `(\w+)` \| .* \| (nothing|[`\w, ]+) \|$",
                          read("docs/architecture.md"), re.MULTILINE)
        self.assertEqual(ROOMS, {room: tuple(re.findall(r"`(\w+)`", allowed))
                                 for room, allowed in rows})

    def test_the_ports_are_those_of_the_platform(self):
        told = re.search(r"eleven small abstract classes in `platform/`: (.*?)\. They",
                         read("docs/architecture.md"), re.DOTALL)[1]
        ports = re.findall(r"^  (\w+)& \w+;", read("src/platform/platform.h"), re.MULTILINE)
        self.assertEqual(11, len(ports))
        self.assertEqual(set(ports), set(re.findall(r"`(\w+)`", told)))

    def test_the_interfaces_have_as_many_operations_as_is_said(self):
        told = dict(re.findall(r"`(_\w+)` \((\d+) operations\)", read("typelib/README.md")))
        self.assertEqual({"_BVilnor", "_DBVilnor"}, set(told))
        for name, count in told.items():
            body = re.search(rf"interface {name} : IDispatch\s*{{(.*?)\n  }}",
                             read("typelib/Vilnor.idl"), re.DOTALL)[1]
            self.assertEqual(int(count), len(re.findall(r"\[id\(", body)), name)


def read(file):
    return (CHECKOUT / file).read_text(encoding="utf-8")


if __name__ == "__main__":
    unittest.main()
