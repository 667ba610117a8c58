"""Checks the host developer's kit against the type library, and what can be run of it natively."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from includes import CHECKOUT

sys.path[:0] = [str(CHECKOUT / "packaging"), str(CHECKOUT / "tests/release")]

from interfaces import read_interfaces
from sample_calls import calls, declared_types, variable

KIT = Path(os.environ["first"]) / "sdk"
LIBRARY = read_interfaces()
EVENTS = LIBRARY.interface("__BVilnor")
# The file of each sample that calls the component.
SAMPLES = {"cpp": "vilnor_sample.cpp", "pascal": "VilnorSample.dpr", "vbscript": "vilnor_sample.vbs",
           "csharp": "VilnorSample.cs", "vb6": "VilnorSession.cls", "vba": "VilnorSession.cls",
           "powershell": "vilnor_sample.ps1"}
NOT_RUN = ("csharp", "vb6", "vba", "powershell")
CALLED = {"InitVilnor", "OKToSend", "OpenWithNewCase", "ReadNewFHP", "ReadNewCase", "ReadExistCase"}
# What a variable passed by reference must be declared as; the other languages' compilers check it.
TYPES = {"cls": {"I2": "Integer", "I4": "Long", "BSTR": "String"},
         "ps1": {"I2": "int16", "I4": "int", "BSTR": "string"}}


def text_of(language, name=None):
    return (KIT / language / (name or SAMPLES[language])).read_text("utf-8")


def suffix_of(language):
    return SAMPLES[language].rpartition(".")[2]


def run(*command, **more):
    return subprocess.run(command, capture_output=True, text=True, check=False, **more)


class Calls(unittest.TestCase):
    def each(self):
        for language in SAMPLES:
            for call in calls(text_of(language), suffix_of(language)):
                operation = LIBRARY.interface(call.interface).operation(call.operation)
                self.assertIsNotNone(operation, f"{language}: there is no {call.operation}")
                yield language, call, operation

    def test_are_of_operations_with_that_many_arguments(self):
        for language, call, operation in self.each():
            # In C++ the result is an argument, too.
            more = 1 if language == "cpp" and operation.result else 0
            self.assertEqual(len(operation.parameters) + more, len(call.arguments), call)

    def test_pass_their_arguments_in_order(self):
        for _, call, operation in self.each():
            if len(operation.parameters) > 1:
                for parameter, argument in zip(operation.parameters, call.arguments):
                    self.assertTrue(variable(argument).lower().endswith(parameter.name.lower()),
                                    f"{argument} for {parameter.name}")

    def test_pass_variables_of_the_right_type(self):
        for language, call, operation in self.each():
            types = TYPES.get(suffix_of(language))
            if types:
                declared = declared_types(text_of(language), suffix_of(language))
                for parameter, argument in zip(operation.parameters, call.arguments):
                    self.assertIn(types[parameter.type], declared[variable(argument).lower()],
                                  f"{argument} for {parameter.name}")

    def test_pass_references_in_powershell(self):
        for language, call, _ in self.each():
            if language == "powershell":
                self.assertEqual([], [one for one in call.arguments if not one.startswith("[ref]$")])

    def test_are_the_same_in_every_language(self):
        for language in SAMPLES:
            called = {call.operation for call in calls(text_of(language), suffix_of(language))}
            self.assertEqual(CALLED, called, language)


class Names(unittest.TestCase):
    def test_of_classes_are_registered_ones(self):
        classes = {one.name for one in LIBRARY.classes}
        for language, pattern in {"vbscript": r'CreateObject\("Vilnor\.(\w+)"\)',
                                  "powershell": r"-ComObject Vilnor\.(\w+)",
                                  "vb6": r"= New (\w*BVilnor)",
                                  "csharp": r"new (\w*BVilnor)\(\)",
                                  "pascal": r"Co(\w*BVilnor)\.Create",
                                  "cpp": r"CLSID_(\w+),"}.items():
            self.assertEqual(classes, set(re.findall(pattern, text_of(language))), language)

    def test_of_handlers_are_those_of_events(self):
        for language in ("vbscript", "vb6", "vba"):
            handlers = re.findall(r"Sub vilnor_(\w+)\(\)", text_of(language))
            self.assertEqual(["UpdateJournal"], handlers, language)
            self.assertIsNotNone(EVENTS.operation("UpdateJournal"))
        self.assertRegex(text_of("vb6"), r"Private WithEvents vilnor As BVilnor\b")

    def test_of_events_have_their_numbers(self):
        declared = re.findall(r"\[DispId\((\d+)\)\]\s+void (\w+)\(\);", text_of("powershell"))
        self.assertEqual([(str(one.id), one.name) for one in EVENTS.operations], declared)
        number = re.search(r"kUpdateJournal = (\d+);", text_of("cpp"))[1]
        self.assertEqual(EVENTS.operation("UpdateJournal").id, int(number))

    def test_identifiers_written_out_are_the_librarys(self):
        pattern = re.compile(r"\b[0-9A-F]{8}(?:-[0-9A-F]{4}){3}-[0-9A-F]{12}\b")
        for language in ("pascal", "powershell"):
            self.assertEqual([EVENTS.identifier[1:-1]], pattern.findall(text_of(language)), language)

    def test_of_the_answer_are_the_same_in_every_language(self):
        for language in ("cpp", "pascal", "csharp"):
            self.assertRegex(text_of(language), r"NewCaseAnswer = 10002;")
            self.assertRegex(text_of(language), r"VilnorWindow(?:\[\])? = [L'\"]+KestraToVilnor")


class VisualBasic(unittest.TestCase):
    def test_project_refers_to_the_type_library(self):
        self.assertIn(rf"Reference=*\G{LIBRARY.identifier}#{LIBRARY.version}#0#",
                      text_of("vb6", "VilnorSample.vbp"))

    def test_project_has_its_files(self):
        named = re.findall(r"^(?:Form|Class|Module)=(?:\w+; )?(.*)$",
                           text_of("vb6", "VilnorSample.vbp"), re.M)
        there = {file.name for file in (KIT / "vb6").iterdir()} - {"README.md", "VilnorSample.vbp"}
        self.assertEqual(there, set(named))

    def test_form_and_module_use_what_the_class_has(self):
        public = re.findall(r"^Public (Sub|Function|Property Get|Event) (\w+)\((.*?)\)",
                            text_of("vb6"), re.M)
        members = {name: len([one for one in arguments.split(",") if one])
                   for kind, name, arguments in public}
        for language, name in (("vb6", "MainForm.frm"), ("vba", "VilnorSample.bas")):
            used = re.findall(r"\bsession\.(\w+)([^\r\n]*)", text_of(language, name))
            self.assertLessEqual({"Start", "ReadWaitingResults", "Fits", "NewCase"},
                                 {member for member, _ in used}, language)
            for member, rest in used:
                arguments = [one for one in rest.strip(" ()").split(",") if one]
                self.assertEqual(members.get(member), len(arguments), f"{language} {member}")

    def test_lines_end_as_visual_basic_wants_it(self):
        for file in (*KIT.glob("vb6/*"), *KIT.glob("vba/*")):
            content = file.read_bytes()
            self.assertEqual(content.count(b"\n"), content.count(b"\r\n"), file)
            self.assertTrue(content.isascii(), file)

    def test_64_bit_office_is_refused(self):
        self.assertRegex(text_of("vba", "VilnorSample.bas"),
                         r"#If Win64 Then\s+Problem32Bit = \"Vilnor\.dll is 32-bit.*\"\s+#End If")


class Compiled(unittest.TestCase):
    """What can be compiled or run without Windows, each from its own folder alone."""

    def setUp(self):
        self.work = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.work)

    def copy(self, language):
        return shutil.copytree(KIT / language, self.work / language)

    def test_csharp_for_32_bit(self):
        done = run("mcs", "-platform:x86", "-langversion:5", "-warnaserror", "VilnorSample.cs",
                   "Vilnor.cs", cwd=self.copy("csharp"))
        self.assertEqual((0, ""), (done.returncode, done.stdout + done.stderr))

    def test_csharp_refuses_a_64_bit_process(self):
        folder = self.copy("csharp")
        run("mcs", "VilnorSample.cs", "Vilnor.cs", cwd=folder)
        done = run("mono", "VilnorSample.exe", *"1234567", cwd=folder)
        self.assert_one_line(done.stderr, "VilnorSample: Vilnor.dll is 32-bit")
        self.assertEqual((2, ""), (done.returncode, done.stdout))

    def test_csharp_says_its_arguments(self):
        folder = self.copy("csharp")
        run("mcs", "VilnorSample.cs", "Vilnor.cs", cwd=folder)
        done = run("mono", "VilnorSample.exe", cwd=folder)
        self.assert_one_line(done.stderr, "VilnorSample: usage: ")
        self.assertEqual(1, done.returncode)

    def test_csharp_in_the_powershell_script(self):
        inline = re.search(r"@'\n(.*?)\n'@", text_of("powershell"), re.DOTALL)[1]
        (self.work / "inline.cs").write_text(inline)
        done = run("mcs", "-target:library", "-langversion:5", "-warnaserror", "inline.cs",
                   cwd=self.work)
        self.assertEqual((0, ""), (done.returncode, done.stdout + done.stderr))

    def test_cpp_refuses_a_64_bit_compiler(self):
        done = run("i686-w64-mingw32-g++", "-D_WIN64", "-fsyntax-only", "vilnor_sample.cpp",
                   cwd=self.copy("cpp"))
        first = next(line for line in done.stderr.splitlines() if "error" in line)
        self.assertIn("Build this program as 32-bit: Vilnor.dll is", first)

    def test_pascal_refuses_a_64_bit_compiler(self):
        done = run("fpc", "VilnorSample.dpr", cwd=self.copy("pascal"))
        first = next(line for line in done.stdout.splitlines() if "Fatal" in line)
        self.assertIn("Build this program as 32-bit: Vilnor.dll is", first)

    def test_powershell_asks_for_32_bit_before_anything_else(self):
        script = text_of("powershell")
        self.assertRegex(script, r"\[IntPtr\]::Size -ne 4\) \{\s+Fail 2 \('Vilnor\.dll is 32-bit")
        self.assertLess(script.index("[IntPtr]::Size"), script.index("New-Object -ComObject Vilnor.BV"))

    def assert_one_line(self, text, begins):
        self.assertEqual(1, len(text.splitlines()), text)
        self.assertTrue(text.startswith(begins), text)


class Declarations(unittest.TestCase):
    """Those made of packaging/interfaces.txt, against widl's, which is made of the IDL."""

    # {type in C++: in Pascal, in C#}; a result is the last argument there.
    TYPES = {"BSTR": ("WideString", "string"), "short": ("Smallint", "short"),
             "LONG": ("Integer", "int"), "VARIANT_BOOL": ("WordBool", "bool"),
             "IDispatch": ("IDispatch", "object")}

    def expected(self, language):
        """{interface: [(operation, types of its arguments and result)]} in the order of the vtable."""
        found = {}
        header = text_of("cpp", "Vilnor.h")
        for name, body in re.findall(r"\n(_D?BVilnor) : public IDispatch\n\{(.*?)\n\};", header,
                                     re.DOTALL):
            found[name] = [
                (operation, [self.declared(one, language) for one in arguments.split(",") if one.strip()])
                for operation, arguments in re.findall(r"CALLTYPE (\w+)\((.*?)\) = 0;", body, re.DOTALL)]
        return found

    def declared(self, argument, language):
        """Of "short *dbType", "ref" and the type in that language."""
        kind, stars = re.fullmatch(r"(\w+) (\**)\w+", argument.split("=")[0].strip()).groups()
        return ("ref " if stars else "") + self.TYPES[kind][language]

    def test_of_pascal_are_widls(self):
        found = {}
        for name, body in re.findall(r"(\w+) = interface\(IDispatch\)(.*?)\n  end;",
                                     text_of("pascal", "Vilnor_TLB.pas"), re.DOTALL):
            found[name] = [
                (operation, [("" if start == "const " else "ref ") + kind for start, kind in
                             re.findall(r"(var |const |\))\w*: (\w+)", rest)])
                for operation, rest in
                re.findall(r"(?:procedure|function) (\w+)(.*?) safecall;", body)]
        self.assertEqual(self.expected(0), found)

    def test_of_csharp_are_widls(self):
        found = {}
        for name, body in re.findall(
                r"InterfaceIsDual\)\]\s+public interface (\w+)\s+\{(.*?)\n    \}",
                text_of("csharp", "Vilnor.cs"), re.DOTALL):
            found[name] = []
            for result, operation, rest in re.findall(r"^        (\w+) (\w+)\((.*)\);", body, re.M):
                types = [start + kind for start, kind in
                         re.findall(r"(?:^|, )(?:\[[^\]]*\] )?(ref )?(\w+) \w+", rest)]
                found[name].append((operation, types + ([f"ref {result}"] if result != "void" else [])))
        self.assertEqual(self.expected(1), found)

    def test_of_csharp_have_the_dispatch_ids(self):
        declared = {(int(number), name) for number, name in re.findall(
            r"\[DispId\((-?\d+)\)\](?:\s+\[return: [^\n]*)?\s+\w+ (\w+)\(",
            text_of("csharp", "Vilnor.cs"))}
        self.assertEqual({(one.id, one.name) for interface in LIBRARY.interfaces
                          for one in interface.operations}, declared)

    def test_have_the_identifiers(self):
        everything = {one.identifier[1:-1] for one in LIBRARY.interfaces + LIBRARY.classes}
        pattern = r"[0-9A-F]{8}(?:-[0-9A-F]{4}){3}-[0-9A-F]{12}"
        self.assertEqual(everything, set(re.findall(pattern, text_of("csharp", "Vilnor.cs"))))
        self.assertEqual(everything | {LIBRARY.identifier[1:-1]},
                         set(re.findall(pattern, text_of("pascal", "Vilnor_TLB.pas"))))


class Kit(unittest.TestCase):
    def test_has_a_folder_for_each_language(self):
        self.assertLessEqual(set(SAMPLES), {one.name for one in KIT.iterdir() if one.is_dir()})

    def test_says_what_was_not_run(self):
        table = text_of("", "README.md")
        for language in SAMPLES:
            row = re.search(rf"^\| `{language}/` .*$", table, re.M)[0]
            self.assertEqual(language in NOT_RUN, "**not run here**" in row, language)
            if language in NOT_RUN:
                self.assertIn("**not run here**", text_of(language, "README.md"))

    def test_declarations_name_the_version(self):
        version = re.search("^version=(.*)$", (CHECKOUT / "VERSION").read_text(), re.M)[1]
        for name in ("cpp/Vilnor.h", "pascal/Vilnor_TLB.pas", "csharp/Vilnor.cs"):
            first = text_of("", name).splitlines()[0]
            self.assertIn(f"Vilnor.dll {version}. Generated", first)


if __name__ == "__main__":
    sys.exit(unittest.main())
