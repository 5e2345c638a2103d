"""A request that leaves long after its caller went on: all of it must still be there."""

import unittest

from support.posting import GOES_ON, SENT, PostingTestCase, line
from support import Outcome, call

# Of many sizes, so that whatever memory was given back is used again.
OTHER_CALLS = {"times": 5, "calls": [
    call("ButtonClicked", flow="f", screenPath="s", screenName="Home", mode="m",
         controlName={"repeat": "x", "times": 40 * size}) for size in range(1, 25)]}


class LateRequest(PostingTestCase):
    ADDRESS = "127.0.0.39"

    def check_late_request(self, *steps: dict) -> Outcome:
        """Other calls and the steps are played between the caller's return and the request's leaving."""
        with self.serve("late-handshake", not_before=lambda: self.lines_so_far("::FlushEx> timeoutMsec: 0") == 1) as service:
            outcome = self.post(OTHER_CALLS, call("FlushEx", timeoutMsec=0), *steps)
        self.check_held(outcome)
        self.assertLess(outcome.log.index(line("DEBUG", GOES_ON)), outcome.log.index(SENT))
        self.assertEqual([self.expected_request(message) for message in self.logged_messages(outcome)],
                         [message.raw for message in service.seen.messages])
        self.assertEqual([[]], [message.wrong for message in service.seen.messages])
        return outcome

    def test_is_whole_though_its_caller_went_on(self):
        outcome = self.check_late_request()
        last_other_call = max(at for at, entry in enumerate(outcome.log) if entry.function.endswith("::ButtonClicked"))
        self.assertLess(last_other_call, outcome.log.index(SENT))

    def test_is_whole_though_the_library_was_freed(self):
        outcome = self.check_late_request({"unload": True}, OTHER_CALLS)
        self.assertEqual([False] * 122 + [True] * 120, ["error" in line for line in outcome.host])


if __name__ == "__main__":
    unittest.main()
