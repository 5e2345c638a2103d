"""Takes from a session the steps that its difference does not need."""

from typing import Callable

from circumstances import Session


def smaller(session: Session, fails: Callable[[Session], bool]) -> Session:
    """A shorter session that still fails, or the same if there is none."""
    length = max(len(session.steps) // 2, 1)
    while True:
        at = 0
        while at < len(session.steps):
            shorter = session._replace(steps=session.steps[:at] + session.steps[at + length:])
            if fails(shorter):
                session = shorter
            else:
                at += length
        if length == 1:
            return session
        length //= 2
