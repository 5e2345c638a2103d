"""The test case that plays whole sessions."""

import contextlib
import functools
import json
import tempfile
import unittest
from pathlib import Path
from typing import Optional

from .host_process import HOST_SECONDS, HostProcess, session_of
from .outcome import Outcome
from .paths import BUILD
import session_player


def call(export: str, /, **arguments) -> dict:
    return {"call": export, **arguments}


@functools.cache
def _machine_of_the_file() -> session_player.Machine:
    return unittest.enterModuleContext(session_player.machine(BUILD))


class SessionTestCase(unittest.TestCase):
    """The sessions of a file share one machine, which is cleared before each."""

    CHANGES_THE_MACHINE = False
    """True for a class that changes what clear does not restore: it gets a machine of its own."""

    maxDiff = None
    host_seconds: float = HOST_SECONDS

    @classmethod
    def setUpClass(cls):
        cls.machine = (cls.enterClassContext(session_player.machine(BUILD)) if cls.CHANGES_THE_MACHINE
                       else _machine_of_the_file())

    def play(self, *steps: dict, **circumstances) -> Outcome:
        """Plays the steps. Circumstances as for play_text."""
        return self.play_text(session_of(*steps), **circumstances)

    def play_to_end(self, *steps: dict, **circumstances) -> Outcome:
        """As play, but fails the test if the host crashed or stopped at a line."""
        outcome = self.play(*steps, **circumstances)
        # Not its standard error, to which Wine's helper processes write too.
        self.assertEqual(0, outcome.status, outcome.errors)
        return outcome

    def play_text(self, session: str, companion: Optional[dict] = None, settings: Optional[str] = None,
                  factory: Optional[str] = None, **conditions) -> Outcome:
        """Takes the contents of files; `conditions` as for Conditions. A registry value needs a machine of its own."""
        with tempfile.TemporaryDirectory(dir=self.machine.prefix) as name, contextlib.ExitStack() as stack:
            def file(file_name: str, content: Optional[str]) -> Optional[Path]:
                if content is None:
                    return None
                (Path(name) / file_name).write_text(content, encoding="utf-8", newline="\n")
                return Path(name) / file_name

            its_conditions = session_player.Conditions(
                companion=file("companion.json", json.dumps(companion) if companion else None),
                settings=file("settings.xml", settings), factory=file("factory.xml", factory), **conditions)
            machine = self.machine
            if its_conditions.disabled is not None:
                machine = stack.enter_context(session_player.machine(BUILD))
            machine.clear()
            machine.set_up(its_conditions, BUILD)
            return stack.enter_context(HostProcess(machine, its_conditions, session)).finish(self.host_seconds)
