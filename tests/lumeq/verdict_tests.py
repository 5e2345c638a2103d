"""lumeq lint against the built DLL: random sessions, and random texts for each pattern."""

import json
import os
import random
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Iterator

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "host"))
from support import BUILD, SessionTestCase, call  # noqa: E402
from catalogue_tests import OPERATIONS  # noqa: E402
from dll_verdicts import Verdict, flat, marked, read_verdicts  # noqa: E402
from program import run  # noqa: E402
from random_texts import SUBJECTS, texts_for  # noqa: E402
from session_generator import FIXED_SEEDS, session_of  # noqa: E402
from wide_text import spelled  # noqa: E402

TEXTS = int(os.environ.get("LUMEQ_TEXTS", "1000"))
"""For each pattern."""

# What the library reports about an argument that its event classes refuse.
EXCEPTIONS = {
    "taskResult": ("Task result is not formatted correctly.",),
    "version": ("Install version is not formatted correctly.",),
    "url": ("objectLabel is not formatted correctly.", "bad conversion"),
    "discoveredDeviceList": ("invalid unordered_map<K, T> key",),
    "screenPath": ("objectLabel is not formatted correctly.",),
    "mode": ("objectLabel is not formatted correctly.",),
    "screenName": ("objectLabel is not formatted correctly.",),
}


def lint(steps: list[dict]) -> list[dict]:
    """The linter's verdict on each call."""
    with tempfile.TemporaryDirectory(dir=BUILD) as folder:
        file = Path(folder) / "session.jsonl"
        file.write_text("".join(json.dumps(step) + "\n" for step in steps), encoding="utf-8", newline="\n")
        result = run("lint", "--verdicts", str(file))
        if result.stderr:
            raise AssertionError(result.stderr)
        (its,) = json.loads(result.stdout)
        return its["calls"]


def with_own_handles(steps: list[dict], mark: str) -> Iterator[dict]:
    """The steps with names of handles that no other session has."""
    for step in flat(steps):
        yield {name: mark + value if name in ("handle", "taskHandle") else value for name, value in step.items()}


class RandomSessions(SessionTestCase):
    """All sessions of a road in one process, which loads the library anew for each."""

    def sessions_on(self, road: str) -> tuple[list[dict], list[dict]]:
        """As the linter reads them, and as they are played."""
        steps, played = [], []
        for seed in FIXED_SEEDS:
            session = session_of(seed)
            if session.circumstances.road == road:
                for each, its_steps in ((steps, session.steps), (played, with_own_handles(session.steps, f"{seed}-"))):
                    each += [{"load": True}, *its_steps, {"unload": True}]
        return steps, played

    def assert_agree(self, road: str) -> int:
        steps, played = self.sessions_on(road)
        calls = [step for step in flat(played) if "call" in step]
        linted = lint(steps)
        outcome = self.play(*marked(played), road=road, log="warning")
        self.assertEqual(0, outcome.status, outcome.errors)
        verdicts = read_verdicts(outcome, len(calls))
        self.assertEqual([step["call"] for step in calls], [its["call"] for its in linted])
        for step, its, verdict in zip(calls, linted, verdicts):
            with self.subTest(json.dumps(step)[:300]):
                self.assert_same(its, verdict)
                if road == "managed" and OPERATIONS[step["call"]].get("record", {}).get("kind") == "event":
                    self.assertEqual(its["verdict"] == "accepted", bool(verdict.operations))
        return len(calls)

    def assert_same(self, linted: dict, verdict: Verdict):
        of_export = [refusal["argument"] for refusal in linted["refusals"] if refusal["refusedBy"] == "export"]
        of_class = [refusal["argument"] for refusal in linted["refusals"] if refusal["refusedBy"] == "event class"]
        self.assertEqual(linted["verdict"] == "refused", verdict.is_refused)
        if linted["verdict"] == "accepted":
            self.assertEqual(linted.get("skippedPrinters", 0), verdict.skipped)
        reported = [(layer, argument) for layer, argument in verdict.refusals if argument != "timeoutMsec"]
        if of_export or not of_class:
            # The library does not get to the event class.
            names = ["urlNoPii" if name == "url" else name for name in of_export]
            self.assertEqual([("export", name) for name in names], reported)
            return
        ((layer, text),) = reported
        self.assertEqual("event class", layer)
        self.assertTrue(text.startswith(EXCEPTIONS.get(of_class[0], ("[Undefined ",))), (of_class, text))

    def test_of_the_managed_road(self):
        self.assertGreater(self.assert_agree("managed"), 1500)

    def test_of_the_basic_road(self):
        self.assertGreater(self.assert_agree("basic"), 500)


class RandomTexts(SessionTestCase):
    """What the companion library is handed shows which texts the DLL accepted."""

    host_seconds = 600

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.random = random.Random(20261122)

    def test_of_each_pattern(self):
        steps, places = [], {}
        for name, subject in SUBJECTS.items():
            first = len(steps)
            for number, text in enumerate(texts_for(name, TEXTS, self.random)):
                steps += subject.calls(number, spelled(text))
            places[name] = first, len(steps)
        outcome = self.play(*steps, log="off")
        self.assertEqual(0, outcome.status, outcome.errors)
        linted = lint(steps)
        self.assertEqual(len(steps), len(linted))
        handed = iter(outcome.companion)
        operation = next(handed, None)
        for name, (first, end) in places.items():
            wrong, accepted = [], 0
            for step, its in zip(steps[first:end], linted[first:end]):
                came = operation is not None and SUBJECTS[name].is_of(operation, step)
                if came:
                    operation = next(handed, None)
                accepted += came
                if came != (its["verdict"] == "accepted" and "skippedPrinters" not in its):
                    wrong.append(step)
            with self.subTest(name):
                self.assertEqual([], wrong[:5])
                # Neither verdict is rare, so that the comparison means something.
                self.assertGreater(accepted, TEXTS // 20)
                self.assertGreater(end - first - accepted, TEXTS // 20)
        self.assertIsNone(operation)


if __name__ == "__main__":
    unittest.main()
