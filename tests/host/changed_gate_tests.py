"""The registry switch changed while the host runs: nobody notices before the library is loaded afresh."""

import json
import os
import subprocess
import tempfile
import threading
import time
import unittest
from pathlib import Path
from typing import Optional

from support import BUILD, HOST_SECONDS, ROOT, Outcome, call, record, session_player
from task_support import CONFIG, completed, initiated, initiated_line, initiated_record, task_records

KEY = "HKCU\\Software\\Zuvan\\NG\\Tracking\\Lumeq"
SET = ("add", KEY, "/v", "TrackingDisabled", "/t", "REG_DWORD", "/d", "1", "/f")
REMOVE = ("delete", KEY, "/v", "TrackingDisabled", "/f")

SCREEN = call("ScreenDisplayed", screenName="Home")
SHOWN = record("app", "displayed", "screen", "/Home")
LOADED_AFRESH = [{"unload": True}, {"load": True}]

# For how long the host waits for the change; more when a loaded machine took longer.
WAITS = (2000, 10000, 40000)


class ChangedGate(unittest.TestCase):
    maxDiff = None

    def play(self, disabled: Optional[int], before: list[dict], change: tuple, after: list[dict]) -> Outcome:
        """Plays steps, changes the registry while the host waits, and has it go on."""
        for wait in WAITS:
            outcome = self._try([*before, {"sleepMsec": wait}, *after], disabled, len(before), change)
            if outcome:
                self.assertEqual(0, outcome.status)
                return outcome
        self.fail("the change never came in time")

    def _try(self, steps: list[dict], disabled: Optional[int], calls_before: int, change: tuple) -> Optional[Outcome]:
        """None where the host went on before the change was made."""
        conditions = session_player.Conditions(disabled=disabled)
        with session_player.machine(BUILD) as machine, tempfile.TemporaryDirectory(dir=machine.prefix) as name:
            out = Path(name) / "out"
            out.mkdir()
            session, answers = Path(name) / "session.jsonl", out / "host.jsonl"
            session.write_text("".join(json.dumps(step) + "\n" for step in steps))
            answers.touch()
            machine.set_up(conditions, BUILD)
            statuses = []
            host = threading.Thread(target=lambda: statuses.append(
                machine.run_host(session, conditions, answers, HOST_SECONDS)))
            host.start()

            def answered() -> int:
                return answers.read_bytes().count(b"\n")

            while host.is_alive() and answered() < calls_before:
                time.sleep(0.02)
            changed = subprocess.run([ROOT / "tools" / "run-wine", "reg", *change], stdout=subprocess.DEVNULL,
                                     env=dict(os.environ, WINEPREFIX=str(machine.prefix)))
            in_time = answered() == calls_before
            host.join()
            self.assertEqual(0, changed.returncode)
            machine.collect(out)
            return Outcome(statuses[0], "", out) if in_time else None

    def test_removed_switch_still_disables_until_the_next_load(self):
        outcome = self.play(1, [SCREEN], REMOVE, [call("GetUserOptInEx"), SCREEN, *LOADED_AFRESH, SCREEN])
        self.assertEqual([SHOWN], outcome.records)
        self.assertEqual(["ScreenDisplayed"], [line.function.rpartition("::")[2] for line in outcome.calls])
        self.assertEqual(4, len(outcome.host))

    def test_switch_that_is_set_disables_from_the_next_load_on(self):
        outcome = self.play(None, [SCREEN], SET, [SCREEN, SCREEN, *LOADED_AFRESH, SCREEN])
        self.assertEqual([SHOWN] * 3, outcome.records)
        self.assertEqual(4, len(outcome.host))

    def test_completion_while_disabled_leaves_the_handle_as_it_was(self):
        outcome = self.play(None, [initiated(CONFIG)], SET,
                            [*LOADED_AFRESH, completed(CONFIG), completed(CONFIG, result="bad"), initiated(CONFIG, "other")])
        self.assertEqual(["set", "set", "set", "null"], [line["handle"] for line in outcome.host])
        self.assertEqual([initiated_record(CONFIG)], task_records(outcome))
        self.assertEqual([initiated_line(CONFIG)], outcome.calls)


if __name__ == "__main__":
    unittest.main()
