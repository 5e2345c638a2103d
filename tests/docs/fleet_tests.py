"""A small fleet: hosts that start together are held no longer than promised, whatever the service does."""

import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import BUILD  # noqa: E402
from support.standstill import again_if_disturbed  # noqa: E402
import fleet  # noqa: E402

HOSTS = 12
PROMISED = 3000
"""Milliseconds that a host waits for its post."""
BUSY_MACHINE = 1000
"""Milliseconds that a host may have to wait for a processor when its wait is over."""


class SmallFleet(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.hosts = cls.enterClassContext(fleet.fleet(BUILD, "127.0.0.62"))

    def run_against(self, service: str) -> fleet.Run:
        return again_if_disturbed(lambda: self.run_once(service), 0.2)

    def run_once(self, service: str) -> fleet.Run:
        run = self.hosts.run(HOSTS, 2, service)
        self.assertEqual({0}, run.codes)
        self.assertEqual(HOSTS, len(run.starts))
        for start in run.starts:
            self.assertLess(start.post, PROMISED + BUSY_MACHINE)
            self.assertLess(start.post, start.whole)
        return run

    def test_healthy_service_gets_one_message_of_each(self):
        run = self.run_against("healthy")
        self.assertEqual(HOSTS, len(run.requests))
        for request in run.requests:
            self.assertTrue(request.startswith(f"POST /projects/{fleet.PROJECT}/queues/sys_info_base/messages ".encode()))
            self.assertGreater(2048, len(request))

    def test_slow_and_silent_services_hold_each_host_for_the_promised_time(self):
        for service in ("slow", "silent"):
            with self.subTest(service):
                run = self.run_against(service)
                self.assertGreater(len(run.requests), 0)
                # So it is the wait that is measured.
                self.assertGreaterEqual(min(start.post for start in run.starts), PROMISED - 1)

    def test_service_that_is_gone_gets_nothing(self):
        self.assertEqual([], self.run_against("gone").requests)


if __name__ == "__main__":
    unittest.main()
