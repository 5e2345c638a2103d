"""Random sessions over lumeq.h, directly and by the worker thread, against the model of the exported rules."""

import os
import sys
import unittest
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import BUILD, SessionTestCase  # noqa: E402
import played_sessions  # noqa: E402
from c_sessions import over_c  # noqa: E402
from session_generator import FIXED_SEEDS, session_of  # noqa: E402


SEEDS = FIXED_SEEDS[::4]


class RandomSessionsOverC(SessionTestCase):
    def assert_all_comes_as_predicted(self, edge: str):
        with mock.patch.dict(os.environ, LUMEQ_HOST_EDGE=edge):
            for seed in SEEDS:
                with self.subTest(seed=seed):
                    session = over_c(session_of(seed), edge == "c-queued")
                    found = played_sessions.differences_of(session, self.machine, BUILD)
                    self.assertEqual([], found, f"tools/soak 1 --edge {edge} --seed {seed} plays it again")

    def test_directly(self):
        self.assert_all_comes_as_predicted("c")

    def test_by_the_worker_thread(self):
        self.assert_all_comes_as_predicted("c-queued")


if __name__ == "__main__":
    unittest.main()
