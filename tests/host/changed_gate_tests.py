"""The registry switch, changed while the host runs: the change takes effect when the library is loaded again."""

import contextlib
import unittest
from typing import Iterator, Optional

from support import BUILD, call, record
from support.host_process import HostProcess
from support.tasks import CONFIG, completed, initiated, initiated_line, initiated_record, task_records
import session_player

KEY = "HKCU\\Software\\Zuvan\\NG\\Tracking\\Lumeq"
SET = ("reg", "add", KEY, "/v", "TrackingDisabled", "/t", "REG_DWORD", "/d", "1", "/f")
REMOVE = ("reg", "delete", KEY, "/v", "TrackingDisabled", "/f")

SCREEN = call("ScreenDisplayed", screenName="Home")
SHOWN = record("app", "displayed", "screen", "/Home")
LOADED_AFRESH = [{"unload": True}, {"load": True}]


class ChangedGate(unittest.TestCase):
    maxDiff = None

    @contextlib.contextmanager
    def session(self, disabled: Optional[int]) -> Iterator[HostProcess]:
        """On a machine with this value of the switch; None: it is not there."""
        conditions = session_player.Conditions(disabled=disabled)
        with session_player.machine(BUILD) as self.machine:
            self.machine.set_up(conditions, BUILD)
            with HostProcess(self.machine, conditions) as session:
                yield session
                self.assertEqual(0, session.finish().status)

    def test_removed_switch_still_disables_until_the_next_load(self):
        with self.session(disabled=1) as session:
            session.play(SCREEN)
            self.machine.run_program(*REMOVE)
            session.send(call("GetUserOptInEx"), SCREEN, *LOADED_AFRESH, SCREEN)
        self.assertEqual([SHOWN], session.outcome.records)
        self.assertEqual(["ScreenDisplayed"], [line.function.rpartition("::")[2] for line in session.outcome.calls])
        self.assertEqual(4, len(session.outcome.host))

    def test_switch_that_is_set_disables_from_the_next_load_on(self):
        with self.session(disabled=None) as session:
            session.play(SCREEN)
            self.machine.run_program(*SET)
            session.send(SCREEN, SCREEN, *LOADED_AFRESH, SCREEN)
        self.assertEqual([SHOWN] * 3, session.outcome.records)
        self.assertEqual(4, len(session.outcome.host))

    def test_completion_while_disabled_leaves_the_handle_as_it_was(self):
        with self.session(disabled=None) as session:
            session.play(initiated(CONFIG))
            self.machine.run_program(*SET)
            session.send(*LOADED_AFRESH, completed(CONFIG), completed(CONFIG, result="bad"), initiated(CONFIG, "other"))
        self.assertEqual(["set", "set", "set", "null"], [line["handle"] for line in session.outcome.host])
        self.assertEqual([initiated_record(CONFIG)], task_records(session.outcome))
        self.assertEqual([initiated_line(CONFIG)], session.outcome.calls)


if __name__ == "__main__":
    unittest.main()
