"""Checks a release's files against docs/release.md."""

import hashlib
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as tree
from pathlib import Path

from includes import CHECKOUT
from portable_executable import exported, sections, version_numbers, version_text

FIRST, SECOND = Path(os.environ["first"]), Path(os.environ["second"])
VERSION = re.search(r"^version=(.*)$", (CHECKOUT / "VERSION").read_text("utf-8"), re.M)[1]
NEXT = f"1.5.{int(VERSION.split('.')[2]) + 1}"
DLL, DEBUG = FIRST / "Vilnor.dll", FIRST / "symbols/Vilnor.dll.debug"
CHECK = FIRST / "VilnorCheck.exe"
MSI, NEXT_MSI = FIRST / f"Vilnor-{VERSION}.msi", SECOND / f"Vilnor-{NEXT}.msi"
MANIFEST = FIRST / "registration-free/Vilnor.Component.manifest"

PROGRAMS = ("Vilnor.dll", "VilnorCheck.exe")

# These identify the product and its parts to Windows. They never change.
UPGRADE_CODE = "{DEAF2726-DF9F-5ACF-9810-F4E7A014DEBB}"
COMPONENTS = {"Server": "{19D9FF90-F6CF-57BF-BE7C-7D8D038BB9A0}",
              "Check": "{5BB92008-C10B-52FA-A1B3-C16ED40C0DB3}",
              "Notices": "{AC9F579A-2C4D-5098-AB43-CB49CA89BB2B}",
              "ExchangeFolder": "{8E6A7402-DABD-5EC9-B9E1-36F193A6FD4A}",
              "HostRegistration": "{4DAE1DC4-09F9-5F4A-8048-4791B35F3F05}"}
SET_PROPERTY = "51"


def run(*command, **more):
    return subprocess.run(command, check=True, capture_output=True, text=True, **more).stdout


def table(msi, name):
    """The rows, each {column: text}."""
    lines = run("msiinfo", "export", msi, name).replace("\r", "").split("\n")
    columns = lines[0].split("\t")
    return [dict(zip(columns, line.split("\t"))) for line in lines[3:] if line]


class Dll(unittest.TestCase):
    def test_has_one_version_everywhere(self):
        image = DLL.read_bytes()
        self.assertEqual((f"{VERSION}.0",) * 2, version_numbers(image))
        self.assertEqual(f"{VERSION}.0", version_text(image, "FileVersion"))
        self.assertEqual(f"{VERSION}.0", version_text(image, "ProductVersion"))
        self.assertEqual((f"{NEXT}.0",) * 2, version_numbers((SECOND / "Vilnor.dll").read_bytes()))

    def test_names_its_commit_and_its_maker(self):
        image = DLL.read_bytes()
        self.assertEqual("Commit " + os.environ["release_commit"], version_text(image, "Comments"))
        self.assertEqual("Vilnor", version_text(image, "CompanyName"))
        self.assertIn("Copyright", version_text(image, "LegalCopyright"))

    def test_bears_no_time_and_no_folder_of_the_machine_that_made_it(self):
        headers = run("i686-w64-mingw32-objdump", "-p", DLL)
        self.assertRegex(headers, r"Time/Date\s+Thu Jan  1 00:00:00 1970")
        self.assertRegex(headers, r"ImageBase\s+63c00000")
        for file in (DLL, DEBUG, CHECK):
            self.assertNotIn(str(CHECKOUT).encode(), file.read_bytes(), file)


class Check(unittest.TestCase):
    def test_has_the_version_and_the_commit_of_the_release(self):
        image = CHECK.read_bytes()
        self.assertEqual((f"{VERSION}.0",) * 2, version_numbers(image))
        self.assertEqual("Commit " + os.environ["release_commit"], version_text(image, "Comments"))

    def test_needs_only_windows(self):
        imported = re.findall(r"DLL Name: (\S+)", run("i686-w64-mingw32-objdump", "-p", CHECK))
        self.assertEqual({"advapi32.dll", "comctl32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
                          "oleaut32.dll", "user32.dll", "version.dll", "wintrust.dll"},
                         {name.lower() for name in imported})


class Symbols(unittest.TestCase):
    def test_have_the_sections_that_are_shipped(self):
        shipped, kept = sections(DLL.read_bytes()), sections(DEBUG.read_bytes())
        self.assertIn(".text", shipped)
        self.assertEqual(shipped, {name: kept.get(name) for name in shipped})

    def where(self, *arguments):
        return run(FIRST / "symbols/where.py", *arguments)

    def test_tell_the_line_of_an_offset(self):
        at = exported(DLL.read_bytes())["DllCanUnloadNow"]
        line = (CHECKOUT / "src/vilnor_dll/exports.cpp").read_text("utf-8")
        number = 1 + line[:line.index("STDAPI DllCanUnloadNow")].count("\n")
        self.assertIn(f"src/vilnor_dll/exports.cpp:{number}", self.where(hex(at)))
        self.assertIn("DllCanUnloadNow", self.where(hex(at)))

    def test_tell_the_line_of_an_address_in_a_process(self):
        at = exported(DLL.read_bytes())["DllCanUnloadNow"]
        self.assertEqual(self.where(hex(at)),
                         self.where("--base", "0x72a00000", hex(0x72a00000 + at)))


class Sums(unittest.TestCase):
    def test_are_those_of_all_files(self):
        lines = (FIRST / "SHA256SUMS").read_text("ascii").splitlines()
        listed = {name: digest for digest, name in (line.split("  ") for line in lines)}
        there = {str(file.relative_to(FIRST)): hashlib.sha256(file.read_bytes()).hexdigest()
                 for file in FIRST.rglob("*") if file.is_file() and file.name != "SHA256SUMS"}
        self.assertGreater(len(there), 8)
        self.assertEqual(there, listed)

    def test_release_has_no_stand_in_for_ado(self):
        self.assertEqual([], [file for file in FIRST.rglob("*") if "odbc" in file.name.lower()])


class Reference(unittest.TestCase):
    def test_is_that_of_the_release_and_loads_nothing(self):
        for folder, version in ((FIRST, VERSION), (SECOND, NEXT)):
            page = (folder / "sdk/reference.html").read_text("utf-8")
            self.assertIn(f">Vilnor {version}<", page)
            self.assertIn("default-src 'none'", page)


class FieldTests(unittest.TestCase):
    KIT = FIRST / "field-tests"

    def test_have_the_shipped_dll_and_its_manifest(self):
        for name, shipped in (("Vilnor.dll", DLL), (MANIFEST.name, MANIFEST)):
            self.assertEqual(shipped.read_bytes(), (self.KIT / "bin" / name).read_bytes())

    def test_need_nothing_but_windows(self):
        programs = list((self.KIT / "bin").glob("*.exe"))
        self.assertGreater(len(programs), 6)
        imported = {name.lower() for program in programs for name in
                    re.findall(r"DLL Name: (\S+)", run("i686-w64-mingw32-objdump", "-p", program))}
        self.assertLessEqual(imported, {
            "advapi32.dll", "comdlg32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ntdll.dll",
            "odbc32.dll", "ole32.dll", "oleaut32.dll", "shell32.dll", "user32.dll", "version.dll"})

    def test_programs_bear_no_time_and_no_folder_of_the_machine_that_made_them(self):
        for program in (self.KIT / "bin").glob("*.exe"):
            self.assertRegex(run("i686-w64-mingw32-objdump", "-p", program),
                             r"Time/Date\s+Thu Jan  1 00:00:00 1970", program)
            self.assertNotIn(str(CHECKOUT).encode(), program.read_bytes(), program)

    def test_are_started_by_a_file_that_windows_reads(self):
        for name in ("run.cmd", "README.txt", "bin/wine-outcomes.txt"):
            text = (self.KIT / name).read_bytes()
            self.assertEqual(text.count(b"\n"), text.count(b"\r\n"), name)
            text.decode("ascii")

    def test_notices_have_the_licence_of_the_test_library(self):
        notices = (self.KIT / "NOTICES.txt").read_text("utf-8")
        self.assertIn((FIRST / "NOTICES.txt").read_text("utf-8"), notices)
        self.assertIn("Google Inc.", notices)


class Bill(unittest.TestCase):
    def setUp(self):
        self.bill = json.loads((FIRST / f"Vilnor-{VERSION}.spdx.json").read_text("utf-8"))
        self.packages = {one["name"]: one for one in self.bill["packages"]}

    def linked(self, program):
        """The files that the linker reports using when it links again."""
        build = CHECKOUT / "build/release"
        target = next(line.split(": ")[0] for line in run("ninja", "-C", build, "-t", "targets",
                                                          "all").splitlines()
                      if line.startswith(f"bin/{program}:"))
        command = run("ninja", "-C", build, "-t", "commands", target).splitlines()[-1]
        with tempfile.TemporaryDirectory() as folder:
            again = command.replace(f"-o bin/{program}", f"-o {folder}/again -Wl,--trace")
            again = re.sub(r"-Wl,-Map=\S+", "", again)
            self.assertIn("--trace", again)
            trace = run("sh", "-c", again, cwd=build)
        return {os.path.realpath(file) for file in re.findall(r"^/usr/\S+\.[ao]$", trace, re.M)}

    def test_has_every_library_that_was_linked_in(self):
        for program, start in zip(PROGRAMS, ("dllcrt2.o", "crt2u.o")):
            linked = self.linked(program)
            self.assertLessEqual({"libstdc++.a", "libgcc_eh.a", "libmingwex.a", start},
                                 {Path(file).name for file in linked})
            owners = {line.split(":")[0] for line in run("dpkg", "-S", *linked).splitlines()}
            self.assertEqual({self.packages[name]["SPDXID"] for name in owners},
                             {one["relatedSpdxElement"] for one in self.bill["relationships"]
                              if one["spdxElementId"] == self.packages[program]["SPDXID"]})

    def test_has_the_versions_of_the_packages(self):
        for name, one in self.packages.items():
            expected = f"{VERSION}.0" if name in PROGRAMS else \
                run("dpkg-query", "-W", "-f", "${Version}", name)
            self.assertEqual(expected, one["versionInfo"])

    def test_knows_the_programs_and_the_licences(self):
        for program in PROGRAMS:
            self.assertEqual(hashlib.sha256((FIRST / program).read_bytes()).hexdigest(),
                             self.packages[program]["checksums"][0]["checksumValue"])
        self.assertEqual([], [name for name, one in self.packages.items()
                              if name not in PROGRAMS and one["licenseDeclared"] == "NOASSERTION"])

    def test_notices_have_the_licences_of_all_packages(self):
        notices = (FIRST / "NOTICES.txt").read_text("utf-8")
        for name in set(self.packages) - set(PROGRAMS):
            self.assertIn(name, notices)
        for words in ("Redistributions in binary form must reproduce", "GCC RUNTIME LIBRARY EXCEPTION",
                      "GNU GENERAL PUBLIC LICENSE"):
            self.assertIn(words.lower(), notices.lower())


class Installer(unittest.TestCase):
    def properties(self, msi):
        return {row["Property"]: row["Value"] for row in table(msi, "Property")}

    def order(self):
        return {row["Action"]: int(row["Sequence"])
                for row in table(MSI, "InstallExecuteSequence")}

    def test_has_the_version(self):
        self.assertEqual(f"{VERSION}.0", self.properties(MSI)["ProductVersion"])
        files = {row["File"]: row for row in table(MSI, "File")}
        for program in PROGRAMS:
            self.assertEqual(f"{VERSION}.0", files[program]["Version"])
        self.assertEqual({*PROGRAMS, "NOTICES.txt"}, set(files))
        self.assertEqual(["NOTICES.txt"], [row["File_"] for row in table(MSI, "MsiFileHash")])

    def test_is_one_product_whose_versions_follow_each_other(self):
        one, other = self.properties(MSI), self.properties(NEXT_MSI)
        self.assertEqual(UPGRADE_CODE, one["UpgradeCode"])
        self.assertEqual(UPGRADE_CODE, other["UpgradeCode"])
        self.assertNotEqual(one["ProductCode"], other["ProductCode"])
        for msi in (MSI, NEXT_MSI):
            self.assertEqual(COMPONENTS, {row["Component"]: row["ComponentId"]
                                          for row in table(msi, "Component")})

    def test_removes_the_older_version_when_the_new_one_stands(self):
        order = self.order()
        self.assertEqual(order["RemoveExistingProducts"], order["InstallFinalize"] + 1)
        self.assertEqual(max(order.values()), order["RemoveExistingProducts"])

    def test_searches_before_it_decides(self):
        order = self.order()
        settings = [order[row["Action"]] for row in table(MSI, "CustomAction")]
        self.assertLess(order["AppSearch"], min(settings))
        self.assertLess(max(settings), order["LaunchConditions"])
        self.assertLess(order["LaunchConditions"], order["CostInitialize"])

    def test_runs_no_code_and_registers_by_rows(self):
        names = run("msiinfo", "tables", MSI).split()
        self.assertEqual([], [name for name in names if name in ("SelfReg", "TypeLib", "Class")])
        self.assertNotIn("SelfRegModules", self.order())
        self.assertEqual({SET_PROPERTY}, {row["Type"] for row in table(MSI, "CustomAction")})

    def test_speaks_swedish(self):
        self.assertEqual("1053", self.properties(MSI)["ProductLanguage"])
        self.assertIn("1252\t_ForceCodepage", run("msiinfo", "export", MSI, "_ForceCodepage"))
        self.assertRegex(run("msiinfo", "suminfo", MSI), "Intel;1053")
        self.assertIn("kräver administratörsrättigheter".encode("cp1252"), MSI.read_bytes())

    def test_names_the_group_that_may_write_and_administrators_alone(self):
        rights = {(row["LockObject"], row["User"]): int(row["Permission"])
                  for row in table(MSI, "LockPermissions")}
        self.assertEqual({("EXCHANGEDIR", "Administrators"): 0x1F01FF,
                          ("EXCHANGEDIR", "[EXCHANGEGROUP]"): 0x1301BF,
                          ("HostPath", "Administrators"): 0xF003F,
                          ("HostPath", "Everyone"): 0x20019,
                          ("HostPath", "[EXCHANGEGROUP]"): 0x2003F}, rights)
        there = {row["Registry"] for row in table(MSI, "Registry")}
        self.assertIn("HostPath", there)
        conditions = {row["Component"]: row["Condition"] for row in table(MSI, "Component")}
        self.assertEqual("HOST AND EXCHANGEGROUP", conditions["ExchangeFolder"])
        self.assertEqual("HOSTPATH", conditions["HostRegistration"])


class RegistrationFree(unittest.TestCase):
    SPACE = "{urn:schemas-microsoft-com:asm.v1}"

    def setUp(self):
        self.assembly = tree.parse(MANIFEST).getroot()
        prefix = "Software\\Classes\\"
        self.rows = {(row["Key"].removeprefix(prefix), row["Name"]): row["Value"]
                     for row in table(MSI, "Registry") if row["Key"].startswith(prefix)}

    def all(self, name):
        return list(self.assembly.iter(self.SPACE + name))

    def test_has_the_version_of_the_release(self):
        identity = self.all("assemblyIdentity")[0].attrib
        self.assertEqual(f"{VERSION}.0", identity["version"])
        snippet = tree.parse(FIRST / "registration-free/host-manifest-snippet.xml").getroot()
        self.assertEqual(identity, next(snippet.iter("assemblyIdentity")).attrib)

    def test_has_the_classes_of_the_registration(self):
        classes = {one.get("clsid"): one for one in self.all("comClass")}
        registered = {key.split("\\")[1] for key, _ in self.rows if key.startswith("CLSID\\")}
        self.assertEqual(registered, set(classes))
        for identifier, one in classes.items():
            key = f"CLSID\\{identifier}"
            self.assertEqual(self.rows[key + "\\ProgID", ""], one.get("progid"))
            self.assertEqual(self.rows[key + "\\TypeLib", ""], one.get("tlbid"))
            self.assertEqual(self.rows[key + "\\InprocServer32", "ThreadingModel"],
                             one.get("threadingModel"))

    def test_has_the_interfaces_of_the_registration(self):
        described = {one.get("iid"): one for one in self.all("comInterfaceExternalProxyStub")}
        registered = {key.split("\\")[1] for key, _ in self.rows if key.startswith("Interface\\")}
        self.assertEqual(registered, set(described))
        for identifier, one in described.items():
            key = f"Interface\\{identifier}"
            self.assertEqual(self.rows[key, ""], one.get("name"))
            self.assertEqual(self.rows[key + "\\ProxyStubClsid32", ""], one.get("proxyStubClsid32"))
            self.assertEqual(self.rows[key + "\\TypeLib", ""], one.get("tlbid"))

    def test_has_the_type_library_of_the_registration(self):
        library = self.all("typelib")[0]
        key = f"TypeLib\\{library.get('tlbid')}\\{library.get('version')}"
        self.assertEqual("Vilnor", self.rows[key, ""])


class Signatures(unittest.TestCase):
    CERTIFICATE = Path(os.environ["signer"]) / "certificate.pem"

    def verified(self, file):
        done = subprocess.run(["osslsigncode", "verify", "-CAfile", self.CERTIFICATE, "-in", file],
                              capture_output=True, text=True, check=False)
        return done.returncode == 0

    def test_of_dll_and_installer_are_good(self):
        for program in PROGRAMS:
            self.assertTrue(self.verified(SECOND / program))
        self.assertTrue(self.verified(NEXT_MSI))
        self.assertFalse(self.verified(DLL))

    def test_end_with_a_changed_byte(self):
        with tempfile.TemporaryDirectory() as folder:
            image = bytearray((SECOND / "Vilnor.dll").read_bytes())
            image[0x2000] ^= 1
            changed = Path(folder) / "Vilnor.dll"
            changed.write_bytes(image)
            self.assertFalse(self.verified(changed))

    def test_are_in_the_installer_too(self):
        with tempfile.TemporaryDirectory() as folder:
            run("msiextract", "-C", folder, NEXT_MSI)
            for program in PROGRAMS:
                inside = next(Path(folder).rglob(program))
                self.assertEqual((SECOND / program).read_bytes(), inside.read_bytes())

    def test_leave_nothing_of_the_key(self):
        key = (Path(os.environ["signer"]) / "key.pem").read_bytes().splitlines()[1]
        self.assertEqual([], [file for file in SECOND.rglob("*")
                              if file.is_file() and key in file.read_bytes()])


if __name__ == "__main__":
    sys.exit(unittest.main())
