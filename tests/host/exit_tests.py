"""However and whenever the host ends its process, it ends at once and with the host's own code."""

import time
import unittest
from typing import Callable, Iterator

from basic_road_support import START, BasicRoadTestCase
from standstill import again_if_disturbed
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
    def check_ends(self, first_code: int, check: Callable[[Outcome], None], *steps: dict, **circumstances) -> None:
        for end, code in ends(first_code):
            with self.subTest(end):
                # What goes on in another thread has to have come that far when the host ends.
                again_if_disturbed(lambda end=end, code=code: check(self.end_of(end, code, *steps, **circumstances)), 0.1)

    def end_of(self, end: dict, code: int, *steps: dict, **circumstances) -> Outcome:
        before = time.monotonic()
        outcome = self.play(*steps, end, SCREEN, **circumstances)
        self.assertLess(time.monotonic() - before, AT_ONCE)
        self.assertEqual(code, outcome.status, outcome.errors)
        return outcome

    def test_without_the_library(self):
        self.check_ends(20, lambda outcome: self.assertEqual([], outcome.host), {"unload": True})

    def test_after_calls_with_an_open_task(self):
        def check(outcome: Outcome) -> None:
            self.assertEqual(["StartupInternal", "PostEventInternal", "PostEventInternal"],
                             [line["operation"] for line in outcome.companion])

        self.check_ends(40, check, START, SCREEN, call("ScanAcquireInitiated", handle="h"))

    def test_after_calls_with_an_open_task_on_the_basic_road(self):
        def check(outcome: Outcome) -> None:
            self.assertEqual([{"call": "StartupEx"}, {"call": "ScreenDisplayed"},
                              {"call": "ScanAcquireInitiated", "handle": "set"}], outcome.host)
            self.assertEqual([], outcome.companion)
            self.assertEqual([], outcome.error_file)

        self.check_ends(60, check, START, SCREEN, call("ScanAcquireInitiated", handle="h"), road="basic")

    def test_during_another_threads_call_for_which_others_wait(self):
        def check(outcome: Outcome) -> None:
            self.assertEqual(["FlushInternal"], [line["operation"] for line in outcome.companion])
            self.assertEqual([], outcome.host, "no call has returned")

        waiting = [{"background": [{"sleepMsec": 100}, SCREEN]}] * 3
        self.check_ends(80, check, {"background": [call("FlushEx", timeoutMsec=1)]}, *waiting, {"sleepMsec": 300},
                        companion={"sleepMsec": {"FlushInternal": 30_000}})


class ExitWhilePosting(BasicRoadTestCase):
    ADDRESS = "127.0.0.46"

    def check_ends(self, first_code: int, ways: tuple, start: dict, returned: int) -> None:
        """Ends the host amid a post, when as many of its calls have returned."""
        for end, code in ends(first_code, ways):
            with self.subTest(end):
                again_if_disturbed(lambda end=end, code=code: self.check_end(start, returned, end, code), 0.5)

    def check_end(self, start: dict, returned: int, end: dict, code: int) -> None:
        with self.serve("never-answer") as service:
            outcome = self.play_until_posting(start, end, service)
            self.assertEqual(code, outcome.status, outcome.errors)
            self.assertEqual(1, len(service.seen.connections))
            self.assertEqual(returned, len(outcome.host))
            self.assertNotIn("<- ", [line.message[:3] for line in outcome.log], "the worker has not ended")

    def play_until_posting(self, start: dict, end: dict, service: QueueService) -> Outcome:
        """A machine that is busy may not have come to post when the host ends: then it gets more time."""
        for milliseconds in (2000, 4000, 8000):
            before = time.monotonic()
            outcome = self.run_host(start, {"sleepMsec": milliseconds}, end)
            self.assertLess(time.monotonic() - before, AT_ONCE + milliseconds / 1000)
            if service.seen.connections:
                return outcome
        raise AssertionError("nothing was posted in time")

    def test_while_a_thread_waits_for_the_worker(self):
        self.check_ends(120, ("return", "ExitProcess"), {"background": [START]}, returned=0)

    def test_while_a_worker_is_left(self):
        self.check_ends(140, ("exit",), START, returned=1)


if __name__ == "__main__":
    unittest.main()
