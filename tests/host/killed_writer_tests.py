"""Hosts that are killed while they log, beside one that goes on."""

import random
import time
import unittest

from support import endurance
from support.host_process import hosts, session_of
from support import SessionTestCase, call, trace

LONG = "z" * 3500
ENDLESS = session_of({"times": 1_000_000, "calls": [call("ScreenDisplayed", screenName=LONG)]})
OF_THE_KILLED = trace("ScreenDisplayed", f'flow: (null), screenPath: (null), screenName: "{LONG}", mode: (null), '
                      "localContext: (null), globalContext: (null)")


class KilledWriter(SessionTestCase):
    KILLS = 8
    CALLS = 150

    def test_leaves_whole_lines_and_costs_another_host_one_line_at_most(self):
        chance = random.Random(1)
        kills = endurance.times(self.KILLS)
        count = endurance.times(self.CALLS)
        session = session_of(*(step for number in range(count)
                               for step in (call("FlushEx", timeoutMsec=number), {"sleepMsec": 20})))
        with hosts(self.machine) as start:
            survivor = start(session)
            for _ in range(kills):
                victim = start(ENDLESS)
                victim.wait_for(lambda: victim.printed() > 0)
                time.sleep(chance.uniform(0, 0.02))
                victim.kill()
            outcome = survivor.finish(self.host_seconds * endurance.FACTOR)
            self.assertEqual(0, outcome.status)
            log = outcome.calls
        of_the_killed = log.count(OF_THE_KILLED)
        self.assertGreaterEqual(of_the_killed, kills)
        written = [line for line in log if line != OF_THE_KILLED]
        expected = [trace("FlushEx", f"timeoutMsec: {number}") for number in range(count)]
        self.assertEqual([line for line in expected if line in written], written)
        self.assertGreaterEqual(len(written), count - kills)
        endurance.print_done(f"{kills} kills in {of_the_killed} lines; the other host lost {count - len(written)} of {count}")


if __name__ == "__main__":
    unittest.main()
