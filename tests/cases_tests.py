"""Whether everything is run: each case of the GoogleTest programs by one entry of ctest and no other, and each file of
Python tests."""

import fnmatch
import json
import os
import subprocess
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = Path(os.environ["LUMEQ_BUILD_DIR"])
FILTER = "--gtest_filter="


def commands() -> list[list[str]]:
    """Of all entries."""
    told = subprocess.run(["ctest", "--test-dir", BUILD, "--show-only=json-v1"], check=True, stdout=subprocess.PIPE)
    return [entry.get("command", []) for entry in json.loads(told.stdout)["tests"]]


def filters() -> dict[str, list[str]]:
    """Of each program, those that the entries give it."""
    found: dict[str, list[str]] = {}
    for command in commands():
        for argument in command:
            if argument.startswith(FILTER):
                program = next(part for part in command if part.endswith(".exe"))
                found.setdefault(program, []).append(argument.removeprefix(FILTER))
    return found


def cases(program: str) -> list[str]:
    """All that it has, disabled ones included."""
    listed = subprocess.run([ROOT / "tools" / "run-wine", program, "--gtest_list_tests"], check=True, text=True,
                            stdout=subprocess.PIPE)
    found, suite = [], ""
    for line in listed.stdout.splitlines():
        name = line.split("#")[0].rstrip()
        if line.startswith("  "):
            found.append(suite + name.strip())
        elif name.endswith("."):
            suite = name
    return found


def matches(case: str, chosen: str) -> bool:
    """As GoogleTest has it: patterns to run, and behind a dash patterns to leave out."""
    wanted, _, unwanted = chosen.partition("-")

    def matches_any(patterns: str) -> bool:
        return any(fnmatch.fnmatchcase(case, pattern) for pattern in patterns.split(":") if pattern)

    return matches_any(wanted or "*") and not matches_any(unwanted)


class Everything(unittest.TestCase):
    def test_each_file_of_python_tests_is_run(self):
        files = {str(file) for file in (ROOT / "tests").glob("**/*_tests.py")}
        self.assertGreater(len(files), 40)
        self.assertEqual(set(), files - {argument for command in commands() for argument in command})

    def test_each_case_is_run_once(self):
        programs = filters()
        self.assertEqual(["lumeq_c_tests.exe", "lumeq_machine_tests.exe", "lumeq_unit_tests.exe",
                          "lumeq_without_mscoree_tests.exe"],
                         sorted(Path(program).name for program in programs))
        for program, chosen in programs.items():
            found = cases(program)
            self.assertGreater(len(found), 1)
            for case in found:
                self.assertEqual(1, sum(matches(case, one) for one in chosen), case)


if __name__ == "__main__":
    unittest.main()
