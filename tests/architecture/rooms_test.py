"""Checks the arrows between the rooms, and that the check itself finds a wrong one."""

import re
import tempfile
import unittest
from contextlib import contextmanager
from pathlib import Path

import drawing
from includes import sources
from rooms import (COMPONENT, GENERATED, OUTSIDE, ROOMS, STAND_INS, forbidden_arrows,
                   unused_permissions)


class Rooms(unittest.TestCase):
    def test_every_include_follows_an_allowed_arrow(self):
        self.assertEqual([], forbidden_arrows(COMPONENT, STAND_INS))

    def test_every_permission_is_used(self):
        self.assertEqual([], unused_permissions(ROOMS, OUTSIDE, COMPONENT, STAND_INS))

    def test_every_room_of_the_table_has_sources(self):
        self.assertEqual([], [room for room in ROOMS
                              if not sources(COMPONENT / room) + sources(STAND_INS / room)])

    def test_there_is_no_circle(self):
        behind = set(GENERATED)
        for room, used in ROOMS.items():
            self.assertEqual(set(), set(used) - behind, room)
            behind.add(room)

    def test_no_room_of_the_component_uses_a_stand_in(self):
        for room in ROOMS:
            if (COMPONENT / room).is_dir():
                self.assertEqual([], [used for used in ROOMS[room] if (STAND_INS / used).exists()])

    def test_the_build_links_the_rooms_by_their_arrows(self):
        for tree in (COMPONENT, STAND_INS):
            text = (tree / "CMakeLists.txt").read_text(encoding="utf-8")
            linked = re.findall(r"vilnor_room\(([^)]*)\)", text)
            self.assertTrue(linked)
            for room, *used in (line.split() for line in linked):
                self.assertEqual(set(ROOMS[room]), set(used), room)

    def test_the_document_s_table_names_every_room_and_what_it_may_use(self):
        text = drawing.DOCUMENT.read_text(encoding="utf-8")
        rows = re.findall(r"^\| `(\w+)` \| .* \| ([^|]*) \|$", text, re.MULTILINE)
        self.assertEqual({room: set(used) for room, used in ROOMS.items()},
                         {room: set(re.findall(r"`(\w+)`", used)) for room, used in rows})

    # tests/architecture/drawing.py draws it again.
    def test_the_document_s_drawing_is_of_these_arrows(self):
        self.assertEqual(drawing.drawing(),
                         drawing.drawn(drawing.DOCUMENT.read_text(encoding="utf-8")))


class TheCheck(unittest.TestCase):
    @contextmanager
    def tree(self, files):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in files.items():
                file = Path(folder, name)
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(text, encoding="utf-8")
            yield Path(folder)

    def violations(self, files):
        with self.tree(files) as folder:
            return forbidden_arrows(folder)

    def test_passes_own_headers_allowed_rooms_and_the_standard_library(self):
        self.assertEqual([], self.violations({
            "db/links.cpp": '#include "db/links.h"\n#include <vector>\n#include "util/session_settings.h"\n'}))

    def test_finds_an_arrow_that_the_table_does_not_have(self):
        self.assertEqual(["db/links.cpp includes host/b_vilnor.h: db/ may not use host"],
                         self.violations({"db/links.cpp": '#include "host/b_vilnor.h"\n'}))

    def test_finds_an_arrow_behind_blanks_and_in_a_header(self):
        self.assertEqual(1, len(self.violations({"util/a.h": '  #  include  "db/query.h"\n'})))

    def test_finds_an_operating_system_header_in_a_plain_room(self):
        self.assertEqual(["fhp/form.cpp includes windows.h: fhp/ may not use it"],
                         self.violations({"fhp/form.cpp": "#include <windows.h>\n"}))

    def test_finds_a_folder_that_is_no_room(self):
        self.assertEqual(1, len(self.violations({"misc/a.cpp": "#include <vector>\n"})))

    def test_finds_an_include_without_its_room(self):
        self.assertEqual(1, len(self.violations({"db/links.cpp": '#include "links.h"\n'})))

    def test_finds_an_arrow_that_no_file_needs(self):
        rooms = {"db": ("util", "platform"), "util": ()}
        with self.tree({"db/links.cpp": '#include "util/session.h"\n', "util/a.h": ""}) as folder:
            self.assertEqual(["db -> platform"], unused_permissions(rooms, {}, folder))

    def test_finds_an_outside_header_that_no_file_needs(self):
        outside = {"native": ("fcntl.h", "libxml/", "unistd.h")}
        files = {"native/a.cpp": "#include <fcntl.h>\n#include <libxml/tree.h>\n"}
        with self.tree(files) as folder:
            self.assertEqual(["native <unistd.h>"], unused_permissions({}, outside, folder))


if __name__ == "__main__":
    unittest.main()
