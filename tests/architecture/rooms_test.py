"""Holds src/ to the arrows between its rooms, and the check itself to finding a wrong one."""

import re
import tempfile
import unittest
from pathlib import Path

from includes import CHECKOUT, sources
from rooms import ROOMS, forbidden_arrows


class Rooms(unittest.TestCase):
    def test_every_include_follows_an_allowed_arrow(self):
        self.assertEqual([], forbidden_arrows(CHECKOUT / "src"))

    def test_every_room_of_the_table_has_sources(self):
        self.assertEqual([], [room for room in ROOMS if not sources(CHECKOUT / "src" / room)])

    def test_the_build_links_no_room_against_an_arrow(self):
        text = (CHECKOUT / "src/CMakeLists.txt").read_text(encoding="utf-8")
        linked = re.findall(r"vilnor_room\(([^)]*)\)", text)
        self.assertTrue(linked)
        for room, *used in (line.split() for line in linked):
            self.assertEqual(set(), set(used) - set(ROOMS[room]), room)


class TheCheck(unittest.TestCase):
    def violations(self, files):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in files.items():
                file = Path(folder, name)
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text, encoding="utf-8")
            return forbidden_arrows(Path(folder))

    def test_passes_own_headers_allowed_rooms_and_the_standard_library(self):
        self.assertEqual([], self.violations({
            "db/links.cpp": '#include "db/links.h"\n#include <vector>\n#include "util/session_settings.h"\n'}))

    def test_finds_an_arrow_that_the_table_does_not_have(self):
        self.assertEqual(["db/links.cpp includes host/b_vilnor.h: db/ may not use host"],
                         self.violations({"db/links.cpp": '#include "host/b_vilnor.h"\n'}))

    def test_finds_an_arrow_behind_blanks_and_in_a_header(self):
        self.assertEqual(1, len(self.violations({"util/a.h": '  #  include  "db/query.h"\n'})))

    def test_finds_an_operating_system_header_in_a_portable_room(self):
        self.assertEqual(["fhp/form.cpp includes windows.h: fhp/ may not use it"],
                         self.violations({"fhp/form.cpp": "#include <windows.h>\n"}))

    def test_finds_a_folder_that_is_no_room(self):
        self.assertEqual(1, len(self.violations({"misc/a.cpp": "#include <vector>\n"})))

    def test_finds_an_include_without_its_room(self):
        self.assertEqual(1, len(self.violations({"db/links.cpp": '#include "links.h"\n'})))


if __name__ == "__main__":
    unittest.main()
