"""lumeq view about random sessions that the built DLL played: every record and every log line finds its call."""

import html
import re
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import BUILD  # noqa: E402
import session_player  # noqa: E402
from catalogue_tests import OPERATIONS  # noqa: E402
from session_generator import session_of  # noqa: E402
from viewed import Page, ViewTestCase  # noqa: E402

SEEDS = range(1, 9)
"""On both roads, with threads, unloading and pauses."""


class RandomSessions(ViewTestCase):
    @classmethod
    def setUpClass(cls):
        cls.machine = cls.enterClassContext(session_player.machine(BUILD))

    def played(self, seed: int) -> tuple[Page, session_player.Conditions]:
        session = session_of(seed)
        conditions = session_player.Conditions(road=session.circumstances.road)
        file, out = self.write("played.jsonl", *session.steps), self.folder / "out"
        self.machine.clear()
        self.assertEqual(0, session_player.play_on(self.machine, file, out, conditions, BUILD, 600))
        session_player.keep_conditions(file, out, conditions)
        return self.page(out), conditions

    def assert_nothing_is_left(self, page: Page) -> None:
        # The log's own first lines belong to no call.
        self.assertNotIn("of no known call", page.text)
        (lines,) = re.findall(r"log lines of no call</summary><pre[^>]*>([^<]*)", page.html)
        self.assertEqual([], [line for line in html.unescape(lines).split("\n") if "| Logger: " not in line])

    def test_everything_finds_its_call(self):
        calls = 0
        for seed in SEEDS:
            with self.subTest(seed):
                page, conditions = self.played(seed)
                self.assert_nothing_is_left(page)
                for row, its in zip(page.rows, page.details()):
                    calls += 1
                    verdict = row.outcomes[0].split(" ")[0]
                    self.assertEqual(verdict != "not", "log" in its, row)
                    self.assertFalse([remark for remark in its.get("remarks", ()) if "the linter" in remark], row)
                    is_event = OPERATIONS[row.call.split(" ")[0]].get("record", {}).get("kind") == "event"
                    if is_event and conditions.road == "managed":
                        self.assertIn(verdict, ("recorded", "refused", "not"), row)
        self.assertGreater(calls, 1000)


if __name__ == "__main__":
    unittest.main()
