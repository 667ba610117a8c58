"""Checks that counting test results never reports a failed program as passed."""

import importlib.util
import json
import tempfile
import unittest
from pathlib import Path

from includes import CHECKOUT

_spec = importlib.util.spec_from_file_location("count_cases", CHECKOUT / "scripts/count_cases.py")
count_cases = importlib.util.module_from_spec(_spec)
_spec.loader.exec_module(count_cases)


MESSAGE = "Actual: the other thing"
TABLE = ("| test | its only failure | reason |\n|---|---|---|\n"
         "| one S.C0 | the other thing | a reason |\n"
         "| one S.C 1 | what | a reason |\n"
         "| two S.C0 | something else | a reason |\n")


def report(*results):
    """Each case's result, and whether, how often or with which message it failed."""
    cases = [{"name": f"C{i}", "result": result,
              "failures": [{"failure": failed if isinstance(failed, str) else MESSAGE}] * bool(failed)}
             for i, (result, failed) in enumerate(results)]
    return json.dumps({"testsuites": [{"name": "S", "testsuite": cases}]})


class Counting(unittest.TestCase):
    def counted(self, status, log, text=None, differences=None):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "report.json")
            if text is not None:
                file.write_text(text, encoding="utf-8")
            return count_cases.count(status, log, file, differences)

    def test_counts_the_cases_of_a_program_that_ran_to_its_end(self):
        self.assertEqual((2, []), self.counted(
            0, "", report(("COMPLETED", False), ("COMPLETED", False))))

    def test_names_a_failed_case(self):
        self.assertEqual((1, ["S.C1"]), self.counted(
            1, "", report(("COMPLETED", False), ("COMPLETED", True))))

    def test_takes_a_skipped_or_disabled_case_for_failed(self):
        self.assertEqual((0, ["S.C0", "S.C1"]), self.counted(
            0, "", report(("SKIPPED", False), ("SUPPRESSED", False))))

    def test_takes_a_crash_for_a_failure_beside_the_cases_that_had_passed(self):
        self.assertEqual((1, ["ended with exit code 139 before its end"]),
                         self.counted(139, "[       OK ] S.A (0 ms)\n[ RUN      ] S.B\n"))

    def test_names_a_case_with_a_parameter_that_had_failed_before_a_crash(self):
        self.assertEqual(
            (0, ["P/S.A/One", "ended with exit code 139 before its end"]),
            self.counted(139, "[  FAILED  ] P/S.A/One, where GetParam() = One (2 ms)\n"))

    def test_takes_an_early_end_with_exit_code_0_for_a_failure(self):
        self.assertEqual((0, ["ended with exit code 0 before its end"]), self.counted(0, ""))

    def test_takes_the_time_limit_for_a_failure(self):
        self.assertEqual((0, ["ended by the time limit"]), self.counted(124, ""))

    def test_takes_a_program_without_tests_for_failed(self):
        self.assertEqual((0, ["ran no test"]), self.counted(0, "", report()))

    def test_takes_a_bad_exit_code_after_good_cases_for_a_failure(self):
        self.assertEqual((1, ["ended with exit code 1 before its end"]),
                         self.counted(1, "", report(("COMPLETED", False))))

    def test_takes_a_crash_for_a_failure_beside_cases_that_failed(self):
        self.assertEqual((0, ["S.C0", "ended with exit code 139 before its end"]),
                         self.counted(139, "", report(("COMPLETED", True))))

    def test_reads_the_differences_of_one_program(self):
        self.assertEqual({"S.C0": "the other thing", "S.C 1": "what"},
                         count_cases.listed_differences(TABLE, "one"))

    def test_takes_a_case_that_fails_as_its_row_says_for_passed(self):
        self.assertEqual((2, []), self.counted(
            1, "", report(("COMPLETED", True), ("COMPLETED", False)), {"S.C0": "other thing"}))

    def test_takes_a_passed_case_that_has_a_row_for_failed(self):
        self.assertEqual(
            (0, ["S.C0 passes: its row in the table of differences is out of date"]),
            self.counted(0, "", report(("COMPLETED", False)), {"S.C0": "other thing"}))

    def test_takes_a_case_that_fails_in_another_way_than_its_row_says_for_failed(self):
        wrong = (0, ["S.C0 does not fail as the table of differences says"])
        row = {"S.C0": "other thing"}
        self.assertEqual(wrong, self.counted(1, "", report(("COMPLETED", "another")), row))
        twice = json.loads(report(("COMPLETED", True)))
        twice["testsuites"][0]["testsuite"][0]["failures"] *= 2
        self.assertEqual(wrong, self.counted(1, "", json.dumps(twice), row))

    def test_takes_a_row_whose_case_did_not_run_for_a_failure(self):
        self.assertEqual(
            (1, ["S.C9 was not run: its row in the table of differences is out of date"]),
            self.counted(0, "", report(("COMPLETED", False)), {"S.C9": "other thing"}))

    def test_compares_a_script_s_reason_with_the_row(self):
        self.assertEqual((2, []), count_cases.count(1, "ok a\nnot ok b: reason: x\n", None,
                                                    {"b": "reason: x"}))

    def test_counts_the_lines_of_a_script(self):
        self.assertEqual((1, ["b"]), count_cases.count(1, "ok a\nnot ok b\n"))


if __name__ == "__main__":
    unittest.main()
