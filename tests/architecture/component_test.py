"""Holds Vilnor.dll, as built, to the shape that a host's computer expects of it."""

import re
import subprocess
import unittest

from includes import CHECKOUT

DLL = CHECKOUT / "build/windows/bin/Vilnor.dll"
LARGEST = 600 * 1024
EXPORTS = {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"}
# What every Windows has; nothing that an installation would have to bring along.
SYSTEM_DLLS = {"advapi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll",
               "shell32.dll", "user32.dll", "version.dll"}
DYNAMIC_BASE = 0x40
NX_COMPAT = 0x100


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


if __name__ == "__main__":
    unittest.main()
