"""Detects that the machine itself stood still, as a machine does that shares its processors with others."""

import threading
import time
from typing import Callable, TypeVar

Result = TypeVar("Result")

EVERY = 0.05
"""Seconds."""


class Standstill:
    """Watches from entry to exit of a with statement."""

    def __init__(self):
        self.seconds = 0.0
        """The longest time for which a thread with work to do did not run."""
        self.in_all = 0.0
        """The sum of all such times."""
        self._over = threading.Event()
        self._watch = threading.Thread(target=self._measure, daemon=True)

    def __enter__(self) -> "Standstill":
        self._watch.start()
        return self

    def __exit__(self, *_) -> None:
        self._over.set()
        self._watch.join()

    def _measure(self) -> None:
        over = False
        while not over:
            before = time.monotonic()
            over = self._over.wait(EVERY)
            late = max(0.0, time.monotonic() - before - EVERY)
            self.seconds = max(self.seconds, late)
            self.in_all += late


def again_if_disturbed(attempt: Callable[[], Result], seconds: float, tries: int = 5) -> Result:
    """Returns what `attempt` returns. Tries again if it fails while the machine stood still for at least `seconds`."""
    with Standstill() as standstill:
        try:
            return attempt()
        except AssertionError:
            if standstill.seconds < seconds or tries == 1:
                raise
    return again_if_disturbed(attempt, seconds, tries - 1)
