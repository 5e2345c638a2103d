"""However and whenever the host ends its process, it ends at once and with the host's own code."""

import time
import unittest
from typing import Iterator

from basic_road_support import START, BasicRoadTestCase
from support import Outcome, SessionTestCase, call

# A process that waited for what still goes on would take thirty seconds: so long the companion sleeps, and so long
# the system waits for a server.
AT_ONCE = 10

SCREEN = call("ScreenDisplayed", screenName="Home")
WAYS = ("return", "exit", "ExitProcess", "TerminateProcess")


def ends(first_code: int, ways: tuple = WAYS) -> Iterator[tuple[dict, int]]:
    """A step for each way, from the main thread and from another, each with a code of its own."""
    code = first_code
    for way in ways:
        yield {"end": way, "code": code}, code
        code += 1
        if way != "return":
            yield {"threads": [[{"end": way, "code": code}]]}, code
            code += 1


class Exit(SessionTestCase):
    def check_ends(self, first_code: int, *steps: dict, **circumstances) -> Iterator[Outcome]:
        for end, code in ends(first_code):
            with self.subTest(end):
                before = time.monotonic()
                outcome = self.play(*steps, end, SCREEN, **circumstances)
                self.assertLess(time.monotonic() - before, AT_ONCE)
                self.assertEqual(code, outcome.status, outcome.errors)
                yield outcome

    def test_without_the_library(self):
        for outcome in self.check_ends(20, {"unload": True}):
            self.assertEqual([], outcome.host)

    def test_after_calls_with_an_open_task(self):
        for outcome in self.check_ends(40, START, SCREEN, call("ScanAcquireInitiated", handle="h")):
            self.assertEqual(["StartupInternal", "PostEventInternal", "PostEventInternal"],
                             [line["operation"] for line in outcome.companion])

    def test_after_calls_with_an_open_task_on_the_basic_road(self):
        for outcome in self.check_ends(60, START, SCREEN, call("ScanAcquireInitiated", handle="h"), road="basic"):
            self.assertEqual([{"call": "StartupEx"}, {"call": "ScreenDisplayed"},
                              {"call": "ScanAcquireInitiated", "handle": "set"}], outcome.host)
            self.assertEqual([], outcome.companion)
            self.assertEqual([], outcome.error_file)

    def test_during_another_threads_call_for_which_others_wait(self):
        waiting = [{"background": [{"sleepMsec": 100}, SCREEN]}] * 3
        for outcome in self.check_ends(80, {"background": [call("FlushEx", timeoutMsec=1)]}, *waiting,
                                       {"sleepMsec": 300}, companion={"sleepMsec": {"FlushInternal": 30_000}}):
            self.assertEqual(["FlushInternal"], [line["operation"] for line in outcome.companion])
            self.assertEqual([], outcome.host, "no call has returned")


class ExitWhilePosting(BasicRoadTestCase):
    ADDRESS = "127.0.0.46"

    def play_until_posting(self, steps: list, end: dict, misbehaving) -> Outcome:
        """A machine that is busy may not have come to post when the host ends: then it gets more time."""
        for milliseconds in (2000, 4000, 8000):
            before = time.monotonic()
            outcome = self.run_host(*steps, {"sleepMsec": milliseconds}, end)
            self.assertLess(time.monotonic() - before, AT_ONCE + milliseconds / 1000)
            if misbehaving.seen.connections:
                return outcome
        raise AssertionError("nothing was posted in time")

    def check_ends(self, first_code: int, ways: tuple, *steps: dict) -> Iterator[Outcome]:
        for end, code in ends(first_code, ways):
            with self.subTest(end), self.serve("never-answer") as service:
                outcome = self.play_until_posting(list(steps), end, service)
                self.assertEqual(code, outcome.status, outcome.errors)
                self.assertEqual(1, len(service.seen.connections))
                self.assertNotIn("<- ", [line.message[:3] for line in outcome.log], "the worker has not ended")
                yield outcome

    def test_while_a_thread_waits_for_the_worker(self):
        for outcome in self.check_ends(120, ("return", "ExitProcess"), {"background": [START]}):
            self.assertEqual([], outcome.host, "the call has not returned")

    def test_while_a_worker_is_left(self):
        for outcome in self.check_ends(140, ("exit",), START):
            self.assertEqual(1, len(outcome.host))


if __name__ == "__main__":
    unittest.main()
