"""Holds Vilnor.dll, as built, to the shape that a host's computer expects of it."""

import json
import re
import subprocess
import unittest
from pathlib import Path

from includes import CHECKOUT, sources
from portable_executable import sections

DLL = CHECKOUT / "build/windows/bin/Vilnor.dll"
LARGEST = 600 * 1024
EXPORTS = {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"}
# What every Windows has; nothing that an installation would have to bring along.
SYSTEM_DLLS = {"advapi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll",
               "shell32.dll", "user32.dll", "version.dll"}
DYNAMIC_BASE = 0x40
NX_COMPAT = 0x100
MEMORY_EXECUTE = 0x20000000
MEMORY_WRITE = 0x80000000


class Component(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.text = subprocess.run(["i686-w64-mingw32-objdump", "-p", DLL], check=True,
                                  capture_output=True, text=True).stdout

    def number(self, name):
        return int(re.search(rf"^{name}\s+([0-9a-f]+)", self.text, re.MULTILINE).group(1), 16)

    def test_is_a_32_bit_library(self):
        self.assertIn("file format pei-i386", self.text)

    def test_exports_what_a_component_exports_and_nothing_else(self):
        table = self.text[self.text.index("[Ordinal/Name Pointer] Table"):]
        names = re.findall(r"^\s*\[\s*\d+\]\s+(\S+)$", table.split("\n\n")[0], re.MULTILINE)
        self.assertEqual(EXPORTS, set(names))

    def test_imports_system_libraries_only(self):
        imported = {name.lower() for name in re.findall(r"DLL Name: (\S+)", self.text)}
        self.assertTrue(imported)
        self.assertEqual(set(), imported - SYSTEM_DLLS)

    def test_is_at_most_600_kilobytes(self):
        self.assertLessEqual(DLL.stat().st_size, LARGEST)

    def test_may_be_loaded_anywhere(self):
        self.assertTrue(self.number("DllCharacteristics") & DYNAMIC_BASE)
        self.assertNotRegex(self.text, r"relocations stripped")
        self.assertRegex(self.text, r"Entry 5 [0-9a-f]+ (?!00000000)[0-9a-f]{8} Base Relocation")

    def test_never_runs_data(self):
        self.assertTrue(self.number("DllCharacteristics") & NX_COMPAT)

    def test_has_no_section_that_can_be_written_and_run(self):
        flags = {name: one.flags for name, one in sections(DLL.read_bytes()).items()}
        self.assertIn(".text", flags)
        both = MEMORY_EXECUTE | MEMORY_WRITE
        self.assertEqual([], [name for name, bits in flags.items() if bits & both == both])

    def test_notices_an_overrun_stack(self):
        commands = json.loads((CHECKOUT / "build/windows/compile_commands.json").read_text())
        own = [entry["command"] for entry in commands
               if Path(entry["file"]).is_relative_to(CHECKOUT / "src")]
        self.assertTrue(own)
        self.assertEqual([], [line for line in own if "-fstack-protector-strong" not in line])
        self.assertIn(b"stack smashing detected", DLL.read_bytes())

    def test_loads_no_library_by_a_name_that_is_searched_for(self):
        loading = re.compile(r"\b(LoadLibrary\w*|SearchPath\w*|SetDllDirectory\w*)\s*\(")
        self.assertEqual([], [str(file) for file in sources(CHECKOUT / "src")
                              if loading.search(file.read_text(encoding="utf-8"))])

    # Of what it writes there a user's own classes would get some, and reads would see them first.
    def test_registers_in_the_machines_classes_not_in_the_merged_view(self):
        files = sources(CHECKOUT / "src") + sources(CHECKOUT / "ado-odbc")
        merged = re.compile(r"HKEY_CLASSES_ROOT\s*[,)]|\b(Un)?RegisterTypeLib\w*\s*\(")
        self.assertEqual([], [str(file) for file in files
                              if merged.search(file.read_text(encoding="utf-8"))])

    def test_is_built_away_from_what_is_for_wine_only(self):
        steps = (DLL.parents[1] / "build.ninja").read_text()
        made = re.findall(r"^build (\S*/AdoOdbc\.dll)\b", steps, re.MULTILINE)
        self.assertEqual(["ado-odbc/AdoOdbc.dll"], made)


if __name__ == "__main__":
    unittest.main()
