"""The end of a process, and of the library in it, while the worker thread of the C interface has calls to make."""

import os
import shutil
import sys
import time
import unittest
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "host"))
from support import BUILD, HOST_SECONDS, SessionTestCase, call  # noqa: E402
from session_player import Conditions  # noqa: E402

CLICK = call("ButtonClicked", screenName="Home", controlName="ok")
ENDLESS_CLICKS = {"times": 100_000_000, "calls": [CLICK]}


# Without files to write: Wine ends a process with 1, before any library is notified, in one of five runs of a program
# whose only other thread opens a file, writes and closes it all the time. It need not have any library of ours loaded.
WITHOUT_FILES = {"road": "basic", "log": "off"}


@mock.patch.dict(os.environ, LUMEQ_HOST_EDGE="c-queued")
class WorkerEndings(SessionTestCase):
    def test_process_ends_with_its_own_code_while_calls_wait(self):
        for way in ("return", "exit", "ExitProcess", "TerminateProcess"):
            with self.subTest(way):
                self.assertEqual(7, self.play({"times": 500, "calls": [CLICK]}, {"end": way, "code": 7},
                                              **WITHOUT_FILES).status)

    def test_process_ends_by_another_thread_while_calls_are_made(self):
        for way in ("exit", "ExitProcess", "TerminateProcess"):
            with self.subTest(way):
                self.assertEqual(7, self.play({"background": [{"sleepMsec": 300}, {"end": way, "code": 7}]},
                                              ENDLESS_CLICKS, **WITHOUT_FILES).status)

    def test_library_is_gone_some_seconds_after_it_was_freed(self):
        outcome = self.play_to_end(CLICK, {"unload": True, "waitMsec": 60_000}, CLICK, {"load": True}, CLICK)
        self.assertEqual(["#ok", "#ok"], [record["app_event_object_label"][-3:] for record in outcome.records])
        self.assertEqual([None, "Lumeq.dll is not loaded", None], [line.get("error") for line in outcome.host])

    def test_library_can_be_freed_again_and_again(self):
        rounds = 30
        outcome = self.play_to_end(*[CLICK, {"unload": True}, {"load": True}] * rounds, CLICK)
        self.assertEqual(rounds + 1, len(outcome.records))

    def test_library_is_gone_after_shutdown(self):
        began = time.monotonic()
        self.play_to_end(call("ShutdownEx", timeoutMsec=10_000), {"unload": True, "waitMsec": 120_000})
        self.assertLess(time.monotonic() - began, 100)

    def test_calls_while_the_process_ends_return_nothing_at_once(self):
        for mode in ("direct", "worker"):
            for way in ("return", "thread"):
                with self.subTest(mode=mode, way=way):
                    self.machine.clear()
                    conditions = Conditions(**WITHOUT_FILES)
                    self.machine.set_up(conditions, BUILD)
                    for name in ("lumeq-ending.exe", "ending-late.dll"):
                        shutil.copy(BUILD / "tests" / name, self.machine.host_folder)
                    output = self.machine.prefix / "output"
                    status = self.machine.run("lumeq-ending.exe", [mode, way], conditions, output, HOST_SECONDS)
                    said = self.machine.host_folder / "ending.txt"
                    self.assertEqual((7, "nothing came at once"), (status, said.read_text() if said.exists() else ""))


if __name__ == "__main__":
    unittest.main()
