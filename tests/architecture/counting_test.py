"""Holds the counting of test results to never taking a program for good that was not."""

import importlib.util
import json
import tempfile
import unittest
from pathlib import Path

from includes import CHECKOUT

_spec = importlib.util.spec_from_file_location("count_cases", CHECKOUT / "scripts/count_cases.py")
count_cases = importlib.util.module_from_spec(_spec)
_spec.loader.exec_module(count_cases)


def report(*results):
    cases = [{"name": f"C{i}", "result": result, **({"failures": [{}]} if failed else {})}
             for i, (result, failed) in enumerate(results)]
    return json.dumps({"testsuites": [{"name": "S", "testsuite": cases}]})


class Counting(unittest.TestCase):
    def counted(self, status, log, text=None):
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "report.json")
            if text is not None:
                file.write_text(text, encoding="utf-8")
            return count_cases.count(status, log, file)

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

    def test_counts_the_lines_of_a_script(self):
        self.assertEqual((1, ["b"]), count_cases.count(1, "ok a\nnot ok b\n"))


if __name__ == "__main__":
    unittest.main()
