"""Checks that the built Vilnor.dll is what a host's computer expects."""

import json
import re
import subprocess
import unittest
from pathlib import Path

from includes import CHECKOUT, sources
from portable_executable import sections

DLL = CHECKOUT / "build/windows/bin/Vilnor.dll"
LARGEST = 560 * 1024
# Also for its tools.
BINARIES = [DLL, DLL.parents[1] / "ado-odbc/AdoOdbc.dll",
            *(DLL.with_name(name) for name in ("Link.exe", "KestraHost.exe", "TripHands.exe",
                                               "LongSession.exe"))]
EXPORTS = {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"}
# Part of every Windows, so nothing has to be installed.
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

    def test_is_at_most_560_kilobytes(self):
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

    # In the merged view, some writes would go to the user's own classes, and reads would see those first.
    def test_registers_in_the_machines_classes_not_in_the_merged_view(self):
        files = sources(CHECKOUT / "src") + sources(CHECKOUT / "stand-ins")
        merged = re.compile(r"HKEY_CLASSES_ROOT\s*[,)]|\b(Un)?RegisterTypeLib\w*\s*\(")
        self.assertEqual([], [str(file) for file in files
                              if merged.search(file.read_text(encoding="utf-8"))])

    # Neither the checkout's path nor that in which the compiler's libraries were built, nor a source name from
# the compiler cache.
    def test_no_binary_tells_where_it_was_built(self):
        path = re.compile(rb"(?:[A-Z]:)?(?:/(?:root|home|usr|build|tmp|work)|\.\.)/[ -~]*|"
                          + re.escape(str(CHECKOUT).encode()) + rb"[ -~]*")
        for binary in BINARIES:
            image = binary.read_bytes()
            # Also as wide text, at any byte offset.
            for text in (image, image[::2], image[1::2]):
                self.assertEqual(set(), set(path.findall(text)), binary.name)

    def test_is_built_away_from_what_is_for_wine_only(self):
        steps = (DLL.parents[1] / "build.ninja").read_text()
        made = re.findall(r"^build (\S*/AdoOdbc\.dll)\b", steps, re.MULTILINE)
        self.assertEqual(["ado-odbc/AdoOdbc.dll"], made)


class HostInTheReadme(unittest.TestCase):
    def test_compiles_without_a_warning(self):
        code = re.search(r"```cpp\n(.*?)```", (CHECKOUT / "README.md").read_text(), re.DOTALL)[1]
        header = DLL.parents[1] / "typelib/include"
        said = subprocess.run(
            ["i686-w64-mingw32-g++-win32", "-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
             "-fsyntax-only", f"-I{header}", "-x", "c++", "-"],
            input=code, capture_output=True, text=True)
        self.assertEqual("", said.stderr)
        self.assertEqual(0, said.returncode)


if __name__ == "__main__":
    unittest.main()
