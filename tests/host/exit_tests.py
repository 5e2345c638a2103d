"""However and whenever the host ends its process, it ends at once and with the host's own code."""

import time
import unittest
from typing import Iterator

from basic_road_support import START, BasicRoadTestCase
from support import Outcome, SessionTestCase, call

from queue_service import QueueService

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

    def check_ends(self, first_code: int, ways: tuple, start: dict, returned: int) -> None:
        """Ends the host amid a post, when as many of its calls have returned."""
        for end, code in ends(first_code, ways):
            with self.subTest(end), self.serve("never-answer") as service:
                outcome = self.end_amid_post(start, returned, end, service)
                self.assertEqual(code, outcome.status, outcome.errors)
                self.assertNotIn("<- ", [line.message[:3] for line in outcome.log], "the worker has not ended")

    def end_amid_post(self, start: dict, returned: int, end: dict, service: QueueService) -> Outcome:
        """On a busy machine the host may end too early or too late for that: then it tries again, some other time."""
        for milliseconds in (2000, 1000, 4000, 2000, 8000):
            service.seen.connections.clear()
            before = time.monotonic()
            outcome = self.run_host(start, {"sleepMsec": milliseconds}, end)
            self.assertLess(time.monotonic() - before, AT_ONCE + milliseconds / 1000)
            if (len(service.seen.connections), len(outcome.host)) == (1, returned):
                return outcome
        raise AssertionError("it was never amid a post")

    def test_while_a_thread_waits_for_the_worker(self):
        self.check_ends(120, ("return", "ExitProcess"), {"background": [START]}, returned=0)

    def test_while_a_worker_is_left(self):
        self.check_ends(140, ("exit",), START, returned=1)


if __name__ == "__main__":
    unittest.main()
