"""How long posting holds its caller, and the life of its worker."""

import concurrent.futures
import json
import subprocess
import time
import unittest
from typing import NamedTuple

from basic_road_support import START, UNTIL_WORKER_ENDS
from posting_support import GOES_ON, SENT, PostingTestCase, answer, line, response
from running_host import wait_until
from support import Outcome, call, lines_of, parse_log, session_player

AT_ONCE = 10
"""Seconds: a process that waited for its worker would take thirty, the system's own patience with a server."""

UNTIL_SENT = {"sleepMsec": 3000}
"""For a worker whose caller goes on before the message is sent, as it does on a machine that is busy."""

BAD_STEP = {"there is no": "such step"}
"""Ends the host with the exit code 2."""


class End(NamedTuple):
    """Of a host's process."""

    status: int
    seconds: float
    """It took so long from its start."""


class WorkerTestCase(PostingTestCase):
    def start_host(self, name: str, *steps: dict) -> subprocess.Popen:
        """Several may run on the prepared machine, each with a name of its own for what it prints."""
        session = self.machine.host_folder / f"{name}.jsonl"
        session.write_text("".join(json.dumps(step) + "\n" for step in steps))
        with open(session.with_suffix(".errors"), "wb") as errors:
            return self.machine.start("lumeq-host.exe", [session.name], session_player.Conditions(road="basic"),
                                      session.with_suffix(".output"), errors)


class SlowService(PostingTestCase):
    ADDRESS = "127.0.0.33"

    def test_caller_is_held_three_seconds_by_a_server_that_never_answers(self):
        for misbehaviour in ("never-answer", "no-handshake"):
            with self.subTest(misbehaviour), self.serve(misbehaviour):
                outcome = self.post(waits=False)
                self.check_held(outcome)
                self.check_lines(outcome)

    def test_caller_does_not_wait_for_slow_headers_and_the_worker_goes_on(self):
        with self.serve("slow-headers", not_before=lambda: self.lines_so_far(f" | {GOES_ON}") == 1):
            outcome = self.post()
        self.check_held(outcome)
        self.check_lines(outcome, SENT, *response(200, "OK", 47),
                         *answer('{"ids": ["1"], "msg": "Messages put on queue."}'))

    def test_other_calls_wait_behind_the_caller_and_then_go_on(self):
        with self.serve("never-answer"):
            outcome = self.run_host({"threads": [[START], [{"sleepMsec": 1500}, call("FlushEx", timeoutMsec=10)]]},
                                    waits=False)
        self.assertEqual(0, outcome.status)
        log = outcome.log
        self.assertGreater(log.index(line("DEBUG", GOES_ON)),
                           log.index(line("DEBUG", "PostMessageAndForget about to post")))
        flush = next(at for at, entry in enumerate(log) if entry.function.endswith("::FlushEx"))
        self.assertGreater(flush, log.index(line("DEBUG", GOES_ON)))


class WorkerOfAnUnloadedLibrary(WorkerTestCase):
    ADDRESS = "127.0.0.34"

    def test_keeps_its_code_through_a_hundred_unloads_and_lets_the_process_end(self):
        with self.serve("never-answer") as service:
            self.prepare()
            host = self.start_host("hundred", {"times": 100, "calls": [START, {"unload": True}, {"load": True}]},
                                   UNTIL_SENT, {"end": "ExitProcess", "code": 77})
            output = self.machine.host_folder / "hundred.output"
            wait_until(lambda: output.read_bytes().count(b"\n") == 100 or host.poll() is not None, 90)
            since_the_last_call = time.monotonic()
            self.assertEqual(77, host.wait(60), "ended by itself, with its own exit code")
            self.assertLess(time.monotonic() - since_the_last_call, AT_ONCE)
            self.assertEqual(100, len(lines_of(output.read_text())))
            self.assertEqual(1, len(service.seen.connections), "the worker's library is the one that is loaded again")
            self.assertEqual([[]], [message.wrong for message in service.seen.messages])
            log = parse_log((self.machine.log_folder() / "Lumeq.Log.txt").read_text(encoding="utf-8"))
        self.assertEqual([], [entry for entry in log if entry.message.startswith(("<- ", "HttpSendRequest"))],
                         "the worker still waited for its answer")

    def test_ends_after_its_host_let_the_library_go_and_the_next_one_starts_afresh(self):
        with self.serve("slow-headers") as service:
            outcome = self.run_host(START, UNTIL_WORKER_ENDS, {"load": True}, START)
        self.assertEqual(0, outcome.status)
        self.assertEqual([[], []], [message.wrong for message in service.seen.messages],
                         "the library was gone and came again")
        sessions = {message.fields["app_session_uuid"] for message in service.seen.messages}
        self.assertEqual(2, len(sessions))

    def test_comes_and_goes_a_hundred_times(self):
        with self.serve("reset") as service:
            outcome = self.run_host({"times": 100, "calls": [START, UNTIL_WORKER_ENDS, {"load": True}]},
                                    timeout=100, LogLevel="warning")
        self.assertEqual(0, outcome.status)
        self.assertGreaterEqual(len(service.seen.connections), 100)
        self.assertEqual(100, sum(line.message == "<- " for line in outcome.log))


class EndingProcess(WorkerTestCase):
    """The service is silent for longer than any of these tests lasts."""

    ADDRESS = "127.0.0.35"
    SOON = 20
    """Seconds from a host's start to its end: three are the wait for the worker, the rest is for a busy machine."""

    def end_of_host(self, name: str, *steps: dict) -> End:
        started = time.monotonic()
        return End(self.start_host(name, *steps).wait(60), time.monotonic() - started)

    def check_end(self, end: End, status: int, slept: float = 0):
        """`slept`: seconds that the host was told to sleep."""
        self.assertEqual(status, end.status)
        self.assertGreaterEqual(end.seconds, 2.98 + slept)
        self.assertLess(end.seconds, self.SOON)

    def test_is_not_held_by_its_waiting_worker(self):
        for misbehaviour in ("no-handshake", "never-answer"):
            with self.subTest(misbehaviour), self.serve(misbehaviour) as service:
                self.prepare()
                end = self.end_of_host("one", START, {"unload": True}, BAD_STEP)
                self.assertEqual(1, len(service.seen.connections))
            self.check_end(end, 2)

    def test_is_one_of_several_with_a_worker_each(self):
        endings = {"one": (), "two": ({"unload": True},), "three": (BAD_STEP,), "four": ({"unload": True}, BAD_STEP)}
        with self.serve("never-answer") as service, concurrent.futures.ThreadPoolExecutor() as hosts:
            self.prepare()
            ends = list(hosts.map(lambda name: self.end_of_host(name, START, UNTIL_SENT, *endings[name]), endings))
        for end, status in zip(ends, (0, 0, 2, 2)):
            self.check_end(end, status, slept=3)
        self.assertEqual([[]] * 4, [message.wrong for message in service.seen.messages])
        self.assertEqual(4, len({message.fields["app_session_uuid"] for message in service.seen.messages}))


if __name__ == "__main__":
    unittest.main()
