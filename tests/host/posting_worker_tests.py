"""How long posting holds its caller, and the life of its worker."""

import unittest

from basic_road_support import START
from posting_support import SENT, PostingTestCase, answer, held, line, response
from support import Outcome, call


class SlowService(PostingTestCase):
    ADDRESS = "127.0.0.33"

    def check_held(self, outcome: Outcome):
        self.assertGreaterEqual(held(outcome), 2.98)
        self.assertLess(held(outcome), 3.9)

    def test_caller_is_held_three_seconds_by_a_server_that_never_answers(self):
        for misbehaviour in ("never-answer", "no-handshake"):
            with self.subTest(misbehaviour), self.serve(misbehaviour):
                outcome = self.post()
                self.check_held(outcome)
                self.check_lines(outcome)

    def test_caller_does_not_wait_for_slow_headers_and_the_worker_goes_on(self):
        with self.serve("slow-headers"):
            outcome = self.post({"sleepMsec": 6000})
        self.check_held(outcome)
        self.check_lines(outcome, SENT, *response(200, "OK", 47),
                         *answer('{"ids": ["1"], "msg": "Messages put on queue."}'))

    def test_other_calls_wait_behind_the_caller_and_then_go_on(self):
        with self.serve("never-answer"):
            outcome = self.run_host({"threads": [[START], [{"sleepMsec": 1500}, call("FlushEx", timeoutMsec=10)]]})
        self.assertEqual(0, outcome.status)
        log = outcome.log
        self.assertGreater(log.index(line("DEBUG", "Executing Basic Functionality")),
                           log.index(line("DEBUG", "PostMessageAndForget about to post")))
        flush = next(at for at, entry in enumerate(log) if entry.function.endswith("::FlushEx"))
        self.assertGreater(flush, log.index(line("DEBUG", "Executing Basic Functionality")))


class WorkerOfAnUnloadedLibrary(PostingTestCase):
    ADDRESS = "127.0.0.34"

    def test_keeps_its_code_through_a_hundred_unloads_and_lets_the_process_end(self):
        with self.serve("never-answer") as service:
            outcome = self.run_host({"times": 100, "calls": [START, {"unload": True}, {"load": True}]}, timeout=90)
            self.assertEqual(0, outcome.status, "ended by itself, with its own exit code")
            self.assertEqual(100, len(outcome.host))
            self.assertEqual(1, len(service.seen.connections), "the worker's library is the one that is loaded again")

    def test_process_ends_with_its_own_exit_code_while_a_worker_waits(self):
        with self.serve("no-handshake"):
            outcome = self.run_host(START, {"unload": True}, {"there is no": "such step"}, timeout=60)
        self.assertEqual(2, outcome.status)

    def test_ends_after_its_host_let_the_library_go_and_the_next_one_starts_afresh(self):
        with self.serve("slow-headers") as service:
            outcome = self.run_host(START, {"unload": True}, {"sleepMsec": 6000}, {"load": True}, START)
        self.assertEqual(0, outcome.status)
        self.assertEqual([[], []], [message.wrong for message in service.seen.messages],
                         "the library was gone and came again")
        sessions = {message.fields["app_session_uuid"] for message in service.seen.messages}
        self.assertEqual(2, len(sessions))

    def test_comes_and_goes_a_hundred_times(self):
        with self.serve("reset") as service:
            outcome = self.run_host({"times": 100, "calls": [START, {"unload": True}, {"load": True}]},
                                    timeout=100, LogLevel="warning")
        self.assertEqual(0, outcome.status)
        self.assertGreaterEqual(len(service.seen.connections), 100)
        self.assertEqual(100, sum(line.message == "<- " for line in outcome.log))


if __name__ == "__main__":
    unittest.main()
