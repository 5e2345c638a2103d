"""How often the tests repeat what a longer time makes stronger."""

import os
import sys

FACTOR = float(os.environ.get("LUMEQ_ENDURANCE", "1"))
"""1 suits a check of every change; 25 takes an hour of patience and finds what comes once in a thousand."""


def times(count: int) -> int:
    return max(1, round(count * FACTOR))


def print_done(text: str) -> None:
    """What was done, for the reader of the test's output."""
    print(text, file=sys.stderr, flush=True)
