"""Checks which changes the mutation run makes, and how it judges each."""

import subprocess
import tempfile
import unittest
from pathlib import Path

from build import CannotCompile, Program
from operators import mutants
from report import summary
from sittings import Sitting
from trial import DOES_NOT_COMPILE, NOTICED, SAME_CODE, SURVIVED, Workshop


def changed(text):
    """The mutants of a piece of source, each as "operator: text"."""
    return [f"{mutant.operator}: {mutant.applied(text)}" for mutant in mutants(text)]


class Operators(unittest.TestCase):
    def assert_changes(self, text, *expected):
        self.assertEqual(sorted(expected), sorted(changed(text)))

    def test_turn_comparisons_round_and_shift_their_bounds(self):
        self.assert_changes("auto x = a <= b;", "comparison: auto x = a < b;",
                            "comparison: auto x = a > b;")

    def test_turn_conditions_round_that_have_no_other_operator(self):
        self.assertIn("condition: {if (!(Found(a))) { }}", changed("{if (Found(a)) { }}"))
        self.assertIn("condition: auto x = !(ready) ? a : b;", changed("auto x = ready ? a : b;"))
        self.assertEqual([], [change for change in changed("if (a == b) {}") if "condition" in change])

    def test_swap_and_with_or_and_drop_not(self):
        self.assert_changes("auto x = !a && b;", "logic: auto x = a && b;", "logic: auto x = !a || b;")

    def test_change_numbers_and_truth(self):
        self.assert_changes("auto x = {0, 1, 7, 0x1FU, 0.5, true};",
                            *(f"constant: auto x = {{{values}}};" for values in (
                                "1, 1, 7, 0x1FU, 0.5, true", "0, 0, 7, 0x1FU, 0.5, true",
                                "0, 1, 8, 0x1FU, 0.5, true", "0, 1, 7, 32U, 0.5, true",
                                "0, 1, 7, 0x1FU, 1.5, true", "0, 1, 7, 0x1FU, 0.5, false")))

    def test_change_and_empty_texts(self):
        self.assert_changes('auto x = u"abc";', 'text: auto x = u"a~c";', 'text: auto x = u"";')
        self.assert_changes("auto x = u'a';", "text: auto x = u'~';")
        self.assert_changes(r'auto x = u"\r\n";', r'text: auto x = u"~";', r'text: auto x = u"";')

    def test_leave_out_calls_and_assignments_but_no_declarations(self):
        self.assertIn("statement: {;}", changed("{Close(file);}"))
        self.assertIn("statement: {;}", changed("{at_ = from;}"))
        for declaration in ("{Rows rows(form);}", "{Rows& rows = form;}", "{const Rows rows{};}",
                            "{std::vector<int> rows(form);}", "{Rows(const Rows&) = delete;}"):
            self.assertEqual([], [c for c in changed(declaration) if "statement" in c], declaration)

    def test_give_a_functions_empty_value(self):
        self.assert_changes("{return Sum(a, b);}", "result: {return {};}")

    def test_leave_comments_includes_and_template_brackets_alone(self):
        self.assert_changes("// if (a == 1)\n/* auto x = 1; */\n#include <array>\n"
                            "std::array<Row> rows;\ntemplate <class T>\nvoid F(T&& value, T* other);")


class TinyBuild:
    """A room of one source and its test program, compiled as the project's are."""

    def __init__(self, folder):
        self.folder = folder
        self.source = folder / "src/tiny/tiny.cpp"
        self.programs = [Program("unit_tiny", (), frozenset({"tiny"}))]

    def dependents(self, file):
        return [file]

    def compile(self, source, shadow, from_shadow, result, optimise):
        text = shadow / "tiny/tiny.cpp" if from_shadow else source
        finished = subprocess.run(["clang++", "-w", optimise, "-c", text, "-o", result],
                                  capture_output=True)
        if finished.returncode != 0:
            raise CannotCompile

    def link(self, program, objects, result):
        subprocess.run(["clang++", *objects, self.folder / "main.cpp", "-o", result], check=True)


class Trials(unittest.TestCase):
    TINY = "int Larger(int a, int b) { int r = a; while (r < b) { r = b; } return r; }\n"
    # Equal numbers are not among its cases.
    TEST = "int Larger(int a, int b);\nint main() { return Larger(1, 2) == 2 ? 0 : 1; }\n"

    def verdict(self, before, after):
        self.assertIn(before, self.TINY)
        with tempfile.TemporaryDirectory() as folder:
            build = TinyBuild(Path(folder))
            build.source.parent.mkdir(parents=True)
            build.source.write_text(self.TINY)
            (build.folder / "main.cpp").write_text(self.TEST)
            workshop = Workshop(build, build.folder / "0", [Sitting(build.programs[0], "*", 0, True)])
            outcome = workshop.try_out(build.source, self.TINY.replace(before, after))
            self.assertEqual("unit_tiny" if outcome.verdict == NOTICED else "", outcome.noticed_by)
            return outcome.verdict

    def test_that_a_test_fails_on_are_noticed(self):
        self.assertEqual(NOTICED, self.verdict("r = b;", "r = a + b;"))

    def test_that_hang_are_noticed(self):
        self.assertEqual(NOTICED, self.verdict("{ r = b; }", "{ }"))

    def test_that_no_test_fails_on_survive(self):
        self.assertEqual(SURVIVED, self.verdict("return r;", "return r == 3 ? 4 : r;"))

    def test_that_do_not_compile_are_told_apart(self):
        self.assertEqual(DOES_NOT_COMPILE, self.verdict("return r;", "return r - ;"))

    def test_that_make_the_same_code_are_told_apart(self):
        self.assertEqual(SAME_CODE, self.verdict("return r;", "return (r);"))
        self.assertEqual(SAME_CODE, self.verdict("return r;", "if (r == 3) { return 3; } return r;"))


class Report(unittest.TestCase):
    @staticmethod
    def result(verdict):
        return {"file": "src/tiny/tiny.cpp", "room": "tiny", "operator": "logic", "before": "a && b",
                "after": "a || b", "verdict": verdict}

    def test_counts_what_was_noticed_and_names_survivors_that_nobody_has_explained(self):
        text, good = summary([self.result(verdict) for verdict in
                              (NOTICED, NOTICED, NOTICED, SURVIVED, SAME_CODE, DOES_NOT_COMPILE)])
        self.assertIn("3 of     4 noticed, 75.0 %", text)
        self.assertIn("- `src/tiny/tiny.cpp`: `` a && b `` → `` a || b ``", text)
        self.assertFalse(good)

    def test_is_good_without_survivors(self):
        self.assertTrue(summary([self.result(NOTICED)])[1])


if __name__ == "__main__":
    unittest.main()
