"""Calls that threads queue for the worker thread, over the real DLLs; many_threads_tests.py makes them directly."""

import os
import re
import sys
import unittest
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import SessionTestCase, call, lines_of  # noqa: E402
from support.log_lines import LINE  # noqa: E402
from support.tasks import PAIRS, completed, initiated  # noqa: E402

THREADS, CLICKS = 8, 80


def calls_of(thread: int) -> list[dict]:
    steps = []
    for number in range(CLICKS):
        steps.append(call("ButtonClicked", screenName="Home", controlName=f"t{thread}n{number}"))
        if number % 10 == 0:
            pair = PAIRS[number // 10 % len(PAIRS)]
            handle = f"{pair.name}{thread}"
            steps += [call("GetUserOptInEx"), initiated(pair, handle), completed(pair, handle)]
    return steps


@mock.patch.dict(os.environ, LUMEQ_HOST_EDGE="c-queued")
class EightThreads(SessionTestCase):
    def test_every_event_arrives_once_and_in_the_order_of_its_thread(self):
        outcome = self.play_to_end(call("StartupEx", appName="App", whyType=4, howType=7, trackSystemInfo=False,
                                        trackPrintQueueInfo=False),
                                   {"threads": [calls_of(thread) for thread in range(THREADS)]},
                                   call("ShutdownEx", timeoutMsec=60_000))
        self.assertEqual([], outcome.error_file)
        self.assertEqual("ShutdownInternal", outcome.companion[-1]["operation"])
        clicks = [re.fullmatch(r".*#t(\d)n(\d+)", record["app_event_object_label"]) for record in outcome.records
                  if record["app_event_object"] == "button"]
        for thread in range(THREADS):
            self.assertEqual(list(range(CLICKS)), [int(click[2]) for click in clicks if int(click[1]) == thread])
        tasks = [record["app_event_action"] for record in outcome.records if record["app_event_object"] == "task"]
        self.assertEqual((THREADS * 8, THREADS * 8), (tasks.count("initiated"), tasks.count("completed")))
        self.assertEqual({"set", "null"}, {line["handle"] for line in outcome.host if "handle" in line})
        threads = {LINE.fullmatch(line)["thread"] for line in lines_of(outcome.text("Lumeq.Log.txt"))}
        self.assertEqual(1, len(threads), "one thread makes all calls")

    def test_calls_use_nothing_up(self):
        # The question waits for its turn, so that the queue is empty at each measurement.
        calls = {"times": 300, "calls": [call("ButtonClicked", screenName="Home", controlName="ok"), call("GetUserOptInEx")]}
        outcome = self.play_to_end(*[calls, {"measure": True}] * 4, log="off")
        measured = [line["bytes"] for line in outcome.host if "bytes" in line]
        self.assertEqual(4, len(measured))
        growths = [after - before for before, after in zip(measured, measured[1:])]
        self.assertLess(min(growths), 10_000, growths)


if __name__ == "__main__":
    unittest.main()
