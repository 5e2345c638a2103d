"""How long posting holds its caller, and the life of its worker."""

import contextlib
import time
import unittest

from support import call
from support.basic_road_case import START, UNTIL_WORKER_ENDS
from support.host_process import HostProcess
from support.posting import GOES_ON, SENT, PostingTestCase, answer, line, response

AT_ONCE = 10
"""Seconds: a process that waited for its worker would take thirty, which is how long the system waits for a server."""

BAD_STEP = {"there is no": "such step"}
"""Ends the host with the exit code 2."""


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

    def test_other_calls_wait_for_the_caller_and_then_go_on(self):
        self.prepare()
        with self.serve("never-answer") as service, self.host() as host:
            host.send({"background": [START]})
            host.wait_for(lambda: service.seen.messages)
            host.play(call("FlushEx", timeoutMsec=10))
            host.wait_for(lambda: host.printed() == 2)
            outcome = host.finish()
        self.assertEqual(0, outcome.status)
        log = outcome.log
        self.assertGreater(log.index(line("DEBUG", GOES_ON)),
                           log.index(line("DEBUG", "PostMessageAndForget about to post")))
        flush = next(at for at, entry in enumerate(log) if entry.function.endswith("::FlushEx"))
        self.assertGreater(flush, log.index(line("DEBUG", GOES_ON)))


class WorkerOfAnUnloadedLibrary(PostingTestCase):
    ADDRESS = "127.0.0.34"

    def test_keeps_its_code_through_a_hundred_unloads_and_lets_the_process_end(self):
        self.prepare()
        with self.serve("never-answer") as service, self.host() as host:
            host.send({"times": 100, "calls": [START, {"unload": True}, {"load": True}]})
            host.wait_for(lambda: host.printed() == 100 and service.seen.messages)
            host.send({"end": "ExitProcess", "code": 77})
            since_the_last_call = time.monotonic()
            outcome = host.finish()
            self.assertLess(time.monotonic() - since_the_last_call, AT_ONCE)
            self.assertEqual(77, outcome.status, "it ended by itself, with its own exit code")
            self.assertEqual(100, len(outcome.host))
            self.assertEqual(1, len(service.seen.connections), "the worker's library is the one that is loaded again")
            self.assertEqual([[]], [message.wrong for message in service.seen.messages])
        self.assertEqual([], [entry for entry in outcome.log if entry.message.startswith(("<- ", "HttpSendRequest"))],
                         "the worker still waited for its answer")

    def test_ends_after_its_host_freed_the_library_and_the_next_one_starts_afresh(self):
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


class EndingProcess(PostingTestCase):
    """The service stays silent for longer than any of these tests lasts."""

    ADDRESS = "127.0.0.35"
    SOON = 20
    """Seconds from a host's start to its end: three are the wait for the worker, the rest is for a busy machine."""

    def check_end(self, host: HostProcess, started: float, status: int) -> None:
        self.assertEqual(status, host.finish().status)
        seconds = time.monotonic() - started
        self.assertGreaterEqual(seconds, 2.98)
        self.assertLess(seconds, self.SOON)

    def test_is_not_held_by_its_waiting_worker(self):
        for misbehaviour in ("no-handshake", "never-answer"):
            with self.subTest(misbehaviour), self.serve(misbehaviour) as service:
                self.prepare()
                started = time.monotonic()
                with self.host(START, {"unload": True}, BAD_STEP) as host:
                    self.check_end(host, started, 2)
                self.assertEqual(1, len(service.seen.connections))

    def test_is_one_of_several_with_a_worker_each(self):
        endings = {(): 0, ("unload",): 0, ("bad step",): 2, ("unload", "bad step"): 2}
        steps = {"unload": {"unload": True}, "bad step": BAD_STEP}
        self.prepare()
        with self.serve("never-answer") as service, contextlib.ExitStack() as running:
            started = time.monotonic()
            all_hosts = [running.enter_context(self.host()) for _ in endings]
            for host in all_hosts:
                host.send(START)
            self.assertTrue(service.wait_for(lambda seen: len(seen.messages) == len(endings), 60))
            for host, ending in zip(all_hosts, endings):
                host.send(*(steps[name] for name in ending))
            for host, status in zip(all_hosts, endings.values()):
                self.check_end(host, started, status)
        self.assertEqual([[]] * 4, [message.wrong for message in service.seen.messages])
        self.assertEqual(4, len({message.fields["app_session_uuid"] for message in service.seen.messages}))


if __name__ == "__main__":
    unittest.main()
