"""Checks docs/trace.md against the trace: its provider, its words and its event's fields."""

import hashlib
import re
import unittest
from xml.etree import ElementTree
import uuid

from includes import CHECKOUT

# The namespace from which tracing tools compute a provider's id by its name.
_NAMES = uuid.UUID("482c2db2-c390-47c8-87f8-1a15bfc130fb")


def read(file):
    return (CHECKOUT / file).read_text(encoding="utf-8")


def id_by_name(name):
    digest = bytearray(hashlib.sha1(_NAMES.bytes + name.upper().encode("utf-16-be")).digest()[:16])
    digest[7] = digest[7] & 0x0F | 0x50
    return uuid.UUID(bytes_le=bytes(digest))


def id_in_source():
    text = re.search(r"GUID kTraceProvider = \{(.*?)\};", read("src/windows/etw_trace.h"), re.DOTALL)[1]
    first, second, third, *rest = (int(number, 16) for number in re.findall(r"0x(\w+)", text))
    return uuid.UUID(fields=(first, second, third, rest[0], rest[1],
                             int.from_bytes(bytes(rest[2:]), "big")))


def words(enumeration):
    body = re.search(rf"enum class {enumeration} : \S+ {{(.*?)}};", read("src/platform/trace.h"),
                     re.DOTALL)[1]
    return [word for word in re.findall(r"\w+", body) if word != "None"]


def rows(heading):
    """The first column of the table below a heading of the document."""
    section = read("docs/trace.md").split(f"\n## {heading}\n")[1].split("\n## ")[0]
    return re.findall(r"^\| `(\w+)` \|", section, re.MULTILINE)


class TraceDocument(unittest.TestCase):
    def test_the_provider_is_found_by_its_name(self):
        self.assertEqual(id_by_name("Vilnor"), id_in_source())
        self.assertIn('Described("Vilnor\\0")', read("src/windows/etw_trace.cpp"))

    def test_the_documents_name_this_provider_and_no_other(self):
        for file in ("docs/trace.md", "docs/rollout.md", "docs/vilnor.wprp"):
            named = re.findall(r"\w{8}(?:-\w{4}){3}-\w{12}", read(file))
            self.assertTrue(named, file)
            self.assertEqual({str(id_in_source())}, {name.lower() for name in named}, file)

    def test_the_recorders_profile_records_this_provider_alone(self):
        profile = ElementTree.parse(CHECKOUT / "docs/vilnor.wprp").getroot()
        recorded = {element.tag for element in profile.iter()
                    if element.tag.endswith(("Collector", "Provider"))}
        self.assertEqual({"EventCollector", "EventProvider"}, recorded)
        self.assertEqual(1, len(profile.findall(".//EventProvider")))

    def test_every_word_is_explained(self):
        for enumeration, heading in (("TracedFile", "File"), ("Ending", "Ending"),
                                     ("Reason", "Reason")):
            self.assertGreater(len(words(enumeration)), 2)
            self.assertEqual(words(enumeration), rows(heading), enumeration)

    def test_every_word_is_shown_by_its_own_name(self):
        shown = re.findall(r'case \w+::(\w+):\s+return "(\w+)";', read("src/platform/trace.cpp"))
        self.assertEqual([(word, word) for enumeration in ("TracedFile", "Ending", "Reason")
                          for word in words(enumeration)], shown)

    def test_every_field_is_explained(self):
        event = re.search(r"kEvent = Described\((.*?)\);", read("src/windows/etw_trace.cpp"),
                          re.DOTALL)[1]
        fields = re.findall(r'"(\w+)\\0\\x\w\w"', event)
        self.assertEqual(7, len(fields))
        self.assertEqual(fields, rows("The event"))


if __name__ == "__main__":
    unittest.main()
