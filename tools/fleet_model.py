"""What the queue service sees of a fleet of machines in a day: a small simulation.

Each machine starts a host `starts` times a day. A share of the starts is the morning's: normally distributed around
`morning`. The others are even over the working hours. Each start sends one request and none is repeated, so the requests
of one second are a Poisson number whose mean is the sum of both.
"""

import math
import random
from dataclasses import dataclass

DAY = 86400
HOUR = 3600


@dataclass(frozen=True)
class Fleet:
    machines: int
    starts: float = 2
    """A day, of all hosts of a machine."""
    morning_share: float = 0.5
    morning: float = 9 * HOUR
    morning_deviation: float = 0.5 * HOUR
    opens: float = 8 * HOUR
    closes: float = 18 * HOUR

    def mean_until(self, second: float) -> float:
        """How many requests are expected from midnight on."""
        normal = 0.5 * (1 + math.erf((second - self.morning) / (self.morning_deviation * math.sqrt(2))))
        even = min(max((second - self.opens) / (self.closes - self.opens), 0), 1)
        share = self.morning_share
        return self.machines * self.starts * (share * normal + (1 - share) * even)

    def mean_between(self, begin: float, end: float) -> float:
        return self.mean_until(end) - self.mean_until(begin)


@dataclass
class Day:
    """Requests in each second."""

    requests: list[int]

    @property
    def total(self) -> int:
        return sum(self.requests)

    @property
    def busiest_second(self) -> int:
        return max(self.requests)

    @property
    def busiest_minute(self) -> int:
        return max(sum(self.requests[at:at + 60]) for at in range(0, DAY, 60))


def simulate(fleet: Fleet, chance: random.Random) -> Day:
    return Day([poisson(fleet.mean_between(second, second + 1), chance) for second in range(DAY)])


def poisson(mean: float, chance: random.Random) -> int:
    """Exact for small means; from 30 on rounded from a normal distribution."""
    if mean >= 30:
        return max(0, round(chance.gauss(mean, math.sqrt(mean))))
    limit, product, number = math.exp(-mean), chance.random(), 0
    while product > limit:
        product *= chance.random()
        number += 1
    return number


def open_at_once(requests_a_second: float, seconds: float) -> float:
    """How many requests are under way if each takes so long."""
    return requests_a_second * seconds
