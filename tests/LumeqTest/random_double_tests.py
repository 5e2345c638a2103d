"""Random sessions record the same on the double as on the library with the companion stand-in."""

import json
import os
import subprocess
import tempfile
import unittest
from pathlib import Path
from unittest import mock

from double_sessions import differences, for_the_double, play_on_double, play_on_library
from support import BUILD, ROOT, SessionTestCase
from c_sessions import over_c
from session_generator import session_of

FIRST = int(os.environ.get("LUMEQ_DOUBLE_FIRST", "131"))
SESSIONS = int(os.environ.get("LUMEQ_DOUBLE_SESSIONS", "4"))
"""More by hand: LUMEQ_DOUBLE_SESSIONS=200 ctest --preset mingw -R random_double"""


def export_of(report: str) -> str:
    """That a line at ERROR names."""
    return report.split(" in Zuvan::Lumeq::API::")[1].split(":")[0]


def linted(steps: list[dict]) -> set[tuple[str, str, str]]:
    """What the linter refuses: call, argument and message."""
    with tempfile.TemporaryDirectory() as name:
        file = Path(name) / "session.jsonl"
        file.write_text("".join(json.dumps(step) + "\n" for step in steps))
        lint = subprocess.run([ROOT / "tools" / "run-wine", BUILD / "lumeq.exe", "lint", "--json", file],
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=False)
        findings = json.loads(lint.stdout)[0]["findings"]
    return {(finding["call"], finding["argument"], finding["message"]) for finding in findings
            if finding["rule"] in ("refused", "number-replaced")}


class RandomSessionsOverC(SessionTestCase):
    """LumeqC.dll over the double."""

    def assert_records_the_same(self, edge: str):
        session = over_c(for_the_double(session_of(FIRST)), edge == "c-queued")
        with mock.patch.dict(os.environ, LUMEQ_HOST_EDGE=edge):
            double = play_on_double(session, self.machine)
            self.assertGreater(len(double.operations), 50)
            self.assertEqual([], differences(play_on_library(session, self.machine), double))

    def test_directly(self):
        self.assert_records_the_same("c")

    def test_by_the_worker_thread(self):
        self.assert_records_the_same("c-queued")


class RandomSessions(SessionTestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.played = []
        for seed in range(FIRST, FIRST + SESSIONS):
            session = for_the_double(session_of(seed))
            cls.played.append((seed, session, play_on_library(session, cls.machine),
                               play_on_double(session, cls.machine)))
        print(f"{len(cls.played)} sessions, {sum(session.calls for _, session, *_ in cls.played)} calls, "
              f"{sum(len(double.operations) for *_, double in cls.played)} operations, "
              f"{sum(len(double.refusals) for *_, double in cls.played)} refusals")

    def test_record_the_same(self):
        for seed, _, library, double in self.played:
            with self.subTest(seed=seed):
                self.assertGreater(len(double.operations), 50)
                self.assertEqual([], differences(library, double))

    def test_what_is_refused_is_refused_in_the_words_of_the_linter(self):
        for seed, session, _, double in self.played:
            with self.subTest(seed=seed):
                refused = {(refusal["export"], refusal["argument"], refusal["message"]) for refusal in double.refusals
                           if refusal["argument"] != "taskHandle"}
                self.assertGreater(len(refused), 20)
                self.assertEqual(linted(session.steps), refused)

    def test_each_report_has_a_refusal(self):
        for seed, _, library, double in self.played:
            with self.subTest(seed=seed):
                reported = {export_of(line) for line in library.log if line.startswith("ERROR ") and " in Zuvan" in line}
                self.assertEqual(reported, {refusal["export"].removesuffix("_Internal") for refusal in double.refusals})


if __name__ == "__main__":
    unittest.main()
