"""The simulation of a fleet, against cases calculated by hand."""

import random
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "tools"))
import fleet_model  # noqa: E402
from fleet_model import Fleet  # noqa: E402

HOUR = 3600


class MeanRates(unittest.TestCase):
    def test_even_starts(self):
        # 72,000 starts over ten hours are two in each second, and none outside of the hours.
        fleet = Fleet(36000, starts=2, morning_share=0)
        self.assertAlmostEqual(2, fleet.mean_between(12 * HOUR, 12 * HOUR + 1))
        self.assertAlmostEqual(60, fleet.mean_between(8 * HOUR - 30, 8 * HOUR + 30))
        self.assertEqual(0, fleet.mean_between(18 * HOUR, 24 * HOUR))

    def test_morning(self):
        # A normal distribution has 0.398942 of a deviation's worth at its middle: 1,000,000 / 1800 * 0.398942.
        fleet = Fleet(1000000, starts=1, morning_share=1, morning=9 * HOUR, morning_deviation=1800)
        self.assertAlmostEqual(221.635, fleet.mean_between(9 * HOUR - 0.5, 9 * HOUR + 0.5), places=3)
        # 68.2689 % lie within a deviation.
        self.assertAlmostEqual(682689, fleet.mean_between(8.5 * HOUR, 9.5 * HOUR), places=0)

    def test_both(self):
        # 2,000,000 starts: half even, 27.778 a second; half in the morning, 221.635 at nine.
        fleet = Fleet(1000000)
        self.assertAlmostEqual(249.412, fleet.mean_between(9 * HOUR - 0.5, 9 * HOUR + 0.5), places=3)

    def test_requests_under_way(self):
        self.assertEqual(6000, fleet_model.open_at_once(200, 30))


class Simulation(unittest.TestCase):
    def test_day_has_the_starts_of_all_machines(self):
        day = fleet_model.simulate(Fleet(10000), random.Random(1))
        # 20,000 with a standard deviation of 141.
        self.assertAlmostEqual(20000, day.total, delta=700)
        self.assertEqual(fleet_model.DAY, len(day.requests))
        self.assertEqual(max(day.requests), day.busiest_second)

    def test_busiest_minute_is_that_of_the_day(self):
        day = fleet_model.Day([0] * fleet_model.DAY)
        day.requests[120:180] = [3] * 60
        day.requests[3700] = 100
        self.assertEqual((180, 100, 280), (day.busiest_minute, day.busiest_second, day.total))

    def test_poisson_numbers_have_their_mean_and_variance(self):
        for mean in (0.5, 4, 100):
            with self.subTest(mean):
                chance = random.Random(7)
                drawn = [fleet_model.poisson(mean, chance) for _ in range(20000)]
                average = sum(drawn) / len(drawn)
                self.assertAlmostEqual(mean, average, delta=0.05 * mean)
                variance = sum((number - average) ** 2 for number in drawn) / len(drawn)
                self.assertAlmostEqual(mean, variance, delta=0.05 * mean)


class Table(unittest.TestCase):
    def test_page_shows_the_one_that_is_printed(self):
        printed = subprocess.run([ROOT / "tools" / "fleet-model"], stdout=subprocess.PIPE, text=True, check=True).stdout
        self.assertIn(printed, (ROOT / "docs" / "fleet.md").read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()
