"""Tells whether the machine itself stood still, as one does that shares its processors with others."""

import threading
import time

EVERY = 0.05
"""Seconds."""


class Standstill:
    """Watches from entry to exit of a with statement."""

    def __init__(self):
        self.seconds = 0.0
        """The longest time that a thread which had something to do did not run."""
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
            self.seconds = max(self.seconds, time.monotonic() - before - EVERY)
