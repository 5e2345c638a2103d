"""What the summary of the tests tells of files that cannot run here."""

import re
import subprocess
import tempfile
import unittest
from pathlib import Path

from support import ROOT

PROJECT = f"""cmake_minimum_required(VERSION 3.25)
project(scratch NONE)
enable_testing()
include({ROOT}/cmake/PythonTests.cmake)
file(GLOB files *.py)
foreach(file IN LISTS files)
  get_filename_component(name ${{file}} NAME)
  lumeq_python_test(some ${{name}})
endforeach()
"""

PASSES, FAILS, SKIPS = (f"\n    def test_{name}(self):\n        {body}\n" for name, body in (
    ("that_passes", "pass"), ("that_fails", "self.fail()"), ("that_cannot_run", 'self.skipTest("not here")')))
SKIPPED_CLASS = """
    @classmethod
    def setUpClass(cls):
        raise unittest.SkipTest("not here")
"""


def file_of(*classes: str) -> str:
    return "import unittest\n" + "".join(f"\n\nclass C{number}(unittest.TestCase):{body}"
                                         for number, body in enumerate(classes)) + "\n\nunittest.main()\n"


class SkippedFile(unittest.TestCase):
    def reports(self, **files: str) -> dict[str, str]:
        """What stands behind each name in the summary."""
        with tempfile.TemporaryDirectory() as name:
            folder = Path(name)
            (folder / "CMakeLists.txt").write_text(PROJECT)
            for file, content in files.items():
                (folder / f"{file}.py").write_text(content)
            subprocess.run(["cmake", "-G", "Ninja", "-S", folder, "-B", folder / "build"], check=True,
                           stdout=subprocess.PIPE)
            done = subprocess.run(["ctest", "--test-dir", folder / "build"], stdout=subprocess.PIPE,
                                  stderr=subprocess.DEVNULL, text=True)
        return dict(re.findall(r"^ *\d+/\d+ Test +#\d+: some\.(\w+) \.*(?:\*{3}| +)(\w+) ", done.stdout, re.MULTILINE))

    def test_is_told_as_skipped_if_nothing_of_it_ran_and_as_what_ran_otherwise(self):
        self.assertEqual(
            {"whole": "Skipped", "whole_of_two": "Skipped", "class_of_two": "Passed", "case_of_two": "Passed",
             "passing": "Passed", "failing": "Failed", "failing_beside_a_skipped_class": "Failed"},
            self.reports(whole=file_of(SKIPPED_CLASS + PASSES), whole_of_two=file_of(*[SKIPPED_CLASS + PASSES] * 2),
                         class_of_two=file_of(SKIPPED_CLASS + PASSES, PASSES), case_of_two=file_of(SKIPS + PASSES),
                         passing=file_of(PASSES), failing=file_of(FAILS),
                         failing_beside_a_skipped_class=file_of(SKIPPED_CLASS + PASSES, FAILS)))


if __name__ == "__main__":
    unittest.main()
