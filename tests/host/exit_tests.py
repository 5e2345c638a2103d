"""However and whenever the host ends its process, it ends at once and with the host's own code."""

import json
import time
import unittest
from typing import Callable, Iterator

from support import BUILD, Outcome, SessionTestCase, call
from support.basic_road_case import START, BasicRoadTestCase
from support.host_process import HostProcess
from support.standstill import again_if_disturbed
import session_player

# A process that waited for the work in progress would take thirty seconds: that is how long the companion sleeps and
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
                check(self.end_of(end, code, *steps, **circumstances))

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
        script = self.machine.prefix / "script.json"
        script.write_text(json.dumps({"sleepMsec": {"FlushInternal": 30_000}}))
        for end, code in ends(80):
            with self.subTest(end):
                outcome = self.end_during_a_flush(end, session_player.Conditions(companion=script))
                self.assertEqual(code, outcome.status, outcome.errors)
                self.assertEqual(["FlushInternal"], [line["operation"] for line in outcome.companion])
                self.assertEqual([], outcome.host, "no call has returned")

    def end_during_a_flush(self, end: dict, conditions: session_player.Conditions) -> Outcome:
        self.machine.clear()
        self.machine.set_up(conditions, BUILD)
        with HostProcess(self.machine, conditions) as host:
            host.send({"background": [call("FlushEx", timeoutMsec=1)]})
            host.wait_for(lambda: host.operations() == ["FlushInternal"])
            # The sleep gives them time to come to the lock, which nothing shows from outside.
            host.send(*[{"background": [SCREEN]}] * 3, {"sleepMsec": 200})
            before = time.monotonic()
            host.send(end)
            outcome = host.finish()
            self.assertLess(time.monotonic() - before, AT_ONCE)
            return outcome


class ExitWhilePosting(BasicRoadTestCase):
    ADDRESS = "127.0.0.46"

    def check_ends(self, first_code: int, ways: tuple, start: dict, returned: int) -> None:
        """Ends the host during a post, when `returned` of its calls have returned."""
        for end, code in ends(first_code, ways):
            with self.subTest(end):
                # The caller is held for three seconds, in which the host has to end.
                again_if_disturbed(lambda end=end, code=code: self.check_end(start, returned, end, code), 0.5)

    def check_end(self, start: dict, returned: int, end: dict, code: int) -> None:
        self.prepare()
        with self.serve("never-answer") as service, self.host() as host:
            host.send(start)
            host.wait_for(lambda: service.seen.messages and host.printed() >= returned)
            before = time.monotonic()
            host.send(end)
            outcome = host.finish()
        self.assertLess(time.monotonic() - before, AT_ONCE)
        self.assertEqual(code, outcome.status, outcome.errors)
        self.assertEqual(1, len(service.seen.connections))
        self.assertEqual(returned, len(outcome.host))
        self.assertNotIn("<- ", [line.message[:3] for line in outcome.log], "the worker has not ended")

    def test_while_a_thread_waits_for_the_worker(self):
        self.check_ends(120, ("return", "ExitProcess"), {"background": [START]}, returned=0)

    def test_while_a_worker_is_left(self):
        self.check_ends(140, ("exit",), START, returned=1)


if __name__ == "__main__":
    unittest.main()
